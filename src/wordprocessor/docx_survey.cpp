#include "wordprocessor/docx_survey.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>

#include "platform/text.h"
#include "wordprocessor/docx_changes.h"
#include "wordprocessor/docx_comments.h"
#include "wordprocessor/docx_escape.h"
#include "wordprocessor/docx_outside.h"
#include "wordprocessor/docx_places.h"
#include "wordprocessor/docx_relations.h"
#include "wordprocessor/docx_tree_reader.h"
#include "wordprocessor/docx_word_xml.h"

namespace wordprocessor {
namespace {

using Kind = DocxLeftover::Kind;

Kind KindOf(TrackedChange::Kind kind) {
  constexpr auto kKinds = std::to_array({Kind::kInserted, Kind::kDeleted, Kind::kMovedHere, Kind::kMovedAway,
                                         Kind::kFormatted, Kind::kCellsMerged});
  return kKinds[static_cast<std::size_t>(kind)];
}

std::optional<Kind> KindOf(DocxField::Kind kind) {
  switch (kind) {
    case DocxField::Kind::kLayout:
      return std::nullopt;
    case DocxField::Kind::kDate:
      return Kind::kDateField;
    case DocxField::Kind::kMerge:
      return Kind::kMergeField;
    case DocxField::Kind::kCondition:
      return Kind::kConditionField;
    case DocxField::Kind::kOutside:
      return Kind::kOutsideField;
    case DocxField::Kind::kMacro:
      return Kind::kMacroField;
    case DocxField::Kind::kInformation:
      return Kind::kInformationField;
    case DocxField::Kind::kCut:
      return Kind::kCutField;
  }
  return std::nullopt;
}

std::optional<Kind> KindOf(RelationUse use) {
  switch (use) {
    case RelationUse::kLinkedPicture:
      return Kind::kLinkedPicture;
    case RelationUse::kLinkedObject:
      return Kind::kLinkedObject;
    case RelationUse::kLinkedFile:
      return Kind::kLinkedFile;
    case RelationUse::kInsertedFile:
      return Kind::kInsertedFile;
    case RelationUse::kEmbeddedObject:
      return Kind::kEmbeddedObject;
    case RelationUse::kControl:
      return Kind::kControl;
    case RelationUse::kMacro:
      return Kind::kMacro;
    default:
      return std::nullopt;
  }
}

struct Comment {
  std::string author;
  std::string text;
};

std::string TextIn(const pugi::xml_node& node) {
  std::string text;
  for (const auto& child : node.children()) {
    text += IsWordElement(child, "t") ? std::string(child.text().get()) : TextIn(child);
  }
  return text;
}

/// By id. None where their part is missing.
std::map<std::string, Comment> ReadComments(const DocxPackage& package, const std::string& main_part) {
  std::map<std::string, Comment> comments;
  for (const auto& relation : ReadRelations(package, main_part)) {
    if (relation.kind != "comments" || relation.external || !package.Has(relation.target)) continue;
    const auto document = LoadPartXml(package.Read(relation.target));
    for (const auto& comment : WordChildren(document.document_element(), "comment")) {
      comments[WordAttribute(comment, "id")] = {WordAttribute(comment, "author"), TextIn(comment)};
    }
  }
  return comments;
}

class StorySurvey {
 public:
  StorySurvey(const DocxStory& story, const std::string& page) : tree_(story.tree), places_(story, page) {}

  void FindAll(const std::map<std::string, Comment>& comments, const HiddenStyles& styles,
               const std::vector<DocxRelation>& relations) {
    for (const auto& mark : FindComments(tree_)) {
      const auto comment = comments.find(mark.id);
      Add(Kind::kComment, mark.node, comment == comments.end() ? "" : comment->second.text,
          comment == comments.end() ? "" : comment->second.author);
    }
    for (const auto& change : FindChanges(tree_)) {
      const bool text = change.about == TrackedChange::About::kText;
      Add(KindOf(change.kind), change.node, text ? TextOf(change.node) : "", AuthorOf(tree_, change));
    }
    for (const auto run : FindHiddenRuns(tree_, styles)) Add(Kind::kHiddenText, run, TextOf(run));
    for (const auto& field : FindFields(tree_)) {
      const auto kind = KindOf(field.kind);
      if (kind) Add(*kind, field.node, std::string(platform::Trim(field.code)));
    }
    for (const auto& reference : FindOutside(tree_, relations)) {
      const auto kind = KindOf(reference.use);
      if (kind) Add(*kind, reference.node, reference.target);
    }
    for (NodeId node = 0; node < tree_.size(); ++node) {
      if (tree_[node].kind != DocxKind::kDataBinding || !tree_.IsAttached(node)) continue;
      Add(Kind::kBoundControl, node, Unescaped(tree_.Attribute(node, "xpath")));
    }
  }

  /// In document order.
  void AppendTo(std::vector<DocxLeftover>& leftovers) {
    std::ranges::stable_sort(found_, {}, &Found::node);
    for (auto& found : found_) leftovers.push_back(std::move(found.leftover));
  }

 private:
  struct Found {
    NodeId node;
    DocxLeftover leftover;
  };

  void Add(Kind kind, NodeId node, std::string what, std::string who = {}) {
    found_.push_back({node, {kind, std::move(what), std::move(who), places_.Of(node)}});
  }

  std::string TextOf(NodeId node) const {
    std::string text;
    const auto& held = tree_[node];
    const bool shown = held.kind == DocxKind::kMarkup && (tree_[held.parent].kind == DocxKind::kText ||
                                                          tree_[held.parent].kind == DocxKind::kDeletedText);
    if (shown) text = Unescaped(held.markup);
    for (auto child = held.first_child; child != kNoNode; child = tree_[child].next) text += TextOf(child);
    return text;
  }

  const DocxTree& tree_;
  const DocxPlaces places_;
  std::vector<Found> found_;
};

}  // namespace

std::vector<DocxLeftover> FindLeftovers(const DocxPackage& package, const std::string& main_part) {
  const auto stories = ReadStories(package, main_part);
  const auto relations = ReadRelations(package, main_part);
  const auto comments = ReadComments(package, main_part);
  const auto pages = PagesOfParts(stories.front().tree, relations);
  const HiddenStyles styles(package, main_part);
  std::vector<DocxLeftover> leftovers;
  for (const auto& story : stories) {
    StorySurvey survey(story, pages.contains(story.part) ? pages.at(story.part) : "");
    survey.FindAll(comments, styles, ReadRelations(package, story.part));
    survey.AppendTo(leftovers);
  }
  // Programs hang on the document as a whole.
  for (const auto& relation : relations) {
    if (UseOf(relation) == RelationUse::kMacro)
      leftovers.push_back({Kind::kMacro, relation.target, {}, "document"});
  }
  return leftovers;
}

}  // namespace wordprocessor
