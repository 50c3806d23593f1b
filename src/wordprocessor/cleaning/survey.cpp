#include "wordprocessor/cleaning/survey.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "platform/text.h"
#include "wordprocessor/bookmarks/index.h"
#include "wordprocessor/cleaning/cleaning.h"
#include "wordprocessor/cleaning/comments.h"
#include "wordprocessor/cleaning/outside.h"
#include "wordprocessor/docx/blocks.h"
#include "wordprocessor/docx/escape.h"
#include "wordprocessor/docx/relations.h"
#include "wordprocessor/docx/tree_reader.h"
#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {
namespace {

using LeftoverKind = DocxLeftover::Kind;

LeftoverKind KindOf(TrackedChange::Kind kind) {
  constexpr auto kKinds =
      std::to_array({LeftoverKind::kInserted, LeftoverKind::kDeleted, LeftoverKind::kMovedHere,
                     LeftoverKind::kMovedAway, LeftoverKind::kFormatted, LeftoverKind::kCellsMerged});
  return kKinds[static_cast<std::size_t>(kind)];
}

std::optional<LeftoverKind> KindOf(DocxField::Kind kind) {
  switch (kind) {
    case DocxField::Kind::kLayout:
      return std::nullopt;
    case DocxField::Kind::kDate:
      return LeftoverKind::kDateField;
    case DocxField::Kind::kMerge:
      return LeftoverKind::kMergeField;
    case DocxField::Kind::kCondition:
      return LeftoverKind::kConditionField;
    case DocxField::Kind::kOutside:
      return LeftoverKind::kOutsideField;
    case DocxField::Kind::kMacro:
      return LeftoverKind::kMacroField;
    case DocxField::Kind::kInformation:
      return LeftoverKind::kInformationField;
    case DocxField::Kind::kCut:
      return LeftoverKind::kCutField;
  }
  return std::nullopt;
}

std::optional<LeftoverKind> KindOf(RelationUse use) {
  switch (use) {
    case RelationUse::kLinkedPicture:
      return LeftoverKind::kLinkedPicture;
    case RelationUse::kLinkedObject:
      return LeftoverKind::kLinkedObject;
    case RelationUse::kLinkedFile:
      return LeftoverKind::kLinkedFile;
    case RelationUse::kInsertedFile:
      return LeftoverKind::kInsertedFile;
    case RelationUse::kEmbeddedObject:
      return LeftoverKind::kEmbeddedObject;
    case RelationUse::kControl:
      return LeftoverKind::kControl;
    case RelationUse::kMacro:
      return LeftoverKind::kMacro;
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
std::map<std::string, Comment> ReadComments(const DocxPackage& package,
                                            const std::vector<DocxRelation>& relations) {
  std::map<std::string, Comment> comments;
  for (const auto& relation : relations) {
    if (relation.kind != "comments" || !LeadsToPart(relation, package)) continue;
    const auto document = LoadPartXml(package.Read(relation.target));
    for (const auto& comment : WordChildren(document.document_element(), "comment")) {
      comments[WordAttribute(comment, "id")] = {WordAttribute(comment, "author"), TextIn(comment)};
    }
  }
  return comments;
}

std::string TextOf(const DocxTree& tree, NodeId node) {
  std::string text;
  const auto& held = tree[node];
  const auto around = held.kind == DocxKind::kMarkup ? held.parent : kNoNode;
  const bool shown = around != kNoNode &&
                     (tree[around].kind == DocxKind::kText || LocalNameOf(tree[around].name()) == "delText");
  if (shown) text = Unescaped(held.markup);
  for (auto child = held.first_child; child != kNoNode; child = tree[child].next) {
    text += TextOf(tree, child);
  }
  return text;
}

class StorySurvey {
 public:
  StorySurvey(const DocxStory& story, DocxPlaces places) : tree_(story.tree), places_(std::move(places)) {}

  void FindAll(const std::map<std::string, Comment>& comments, const HiddenStyles& styles,
               const std::vector<DocxRelation>& relations) {
    for (const auto& mark : FindComments(tree_)) {
      const auto comment = comments.find(mark.id);
      const bool known = comment != comments.end();
      Add(LeftoverKind::kComment, mark.node, known ? comment->second.text : "",
          known ? comment->second.author : "");
    }
    for (const auto& change : FindChanges(tree_)) AddChange(change);
    for (const auto run : FindHiddenRuns(tree_, styles)) AddWords(LeftoverKind::kHiddenText, run, run, {});
    const auto fields = FindFields(tree_);
    for (const auto& field : fields) {
      const auto kind = KindOf(field.kind);
      // One inside of another's code is told with that.
      const bool told = kind && (kind == LeftoverKind::kCutField || !StandsInCode(field, fields));
      if (told) Add(*kind, field.node, ShownCode(tree_, field));
    }
    for (const auto& reference : FindOutside(tree_, relations)) {
      const auto kind = KindOf(reference.use);
      if (kind) Add(*kind, reference.node, reference.target);
    }
    for (NodeId node = 0; node < tree_.size(); ++node) {
      if (tree_[node].kind != DocxKind::kDataBinding || !tree_.IsAttached(node)) continue;
      Add(LeftoverKind::kBoundControl, node, Unescaped(tree_.Attribute(node, "xpath")));
    }
  }

  void FindLostBookmarks(const std::set<std::string>& kept) {
    for (const auto& range : BookmarkIndex(tree_).ranges) {
      const auto name = std::string(range.name);
      if (!kept.contains(name)) Add(LeftoverKind::kLostBookmark, range.start, name);
    }
  }

  /// In document order.
  void AppendTo(std::vector<DocxLeftover>& leftovers, std::size_t& paragraphs) {
    std::ranges::stable_sort(found_, {}, &Found::node);
    NodeId paragraph = kNoNode;
    for (auto& found : found_) {
      const auto own = ParagraphOf(tree_, found.node);
      if (own == kNoNode || own != paragraph) ++paragraphs;
      paragraph = own;
      found.leftover.paragraph = paragraphs;
      leftovers.push_back(std::move(found.leftover));
    }
  }

 private:
  struct Found {
    NodeId node;
    DocxLeftover leftover;
    std::size_t text_end = 0;
    NodeId around = kNoNode;  // what an end ends
  };

  /// What a text box tells a second time, to readers that know no newer one, counts once.
  bool IsToldAgain(NodeId node) const { return tree_.Ancestor(node, DocxKind::kFallback) != kNoNode; }

  Found* Add(LeftoverKind kind, NodeId node, std::string what, std::string who = {}) {
    if (IsToldAgain(node)) return nullptr;
    found_.push_back({.node = node, .leftover = {kind, std::move(what), std::move(who), places_.Of(node)}});
    return &found_.back();
  }

  void AddChange(const TrackedChange& change) {
    const auto kind = KindOf(change.kind);
    const auto who = AuthorOf(tree_, change);
    if (change.about == TrackedChange::About::kText) return AddWords(kind, change.node, change.node, who);
    if (change.kind == TrackedChange::Kind::kFormatted) {
      const auto around = tree_[tree_[change.node].parent].parent;
      const auto looks = around == kNoNode ? DocxKind::kOther : tree_[around].kind;
      if (looks == DocxKind::kRun || looks == DocxKind::kParagraph)
        return AddWords(kind, change.node, around, who);
    }
    auto* found = Add(kind, change.node, "", who);
    if (found == nullptr) return;
    found->leftover.about = change.about;
    found->around = change.target;
    if (change.about == TrackedChange::About::kParagraphMark) {
      found->leftover.place = places_.OfEnd(change.target);
    }
  }

  /// Word processors write what is one piece to its author as several, of single runs: what comes with
  /// nothing but blanks in between goes to the piece before it.
  void AddWords(LeftoverKind kind, NodeId node, NodeId held, const std::string& who) {
    const auto text = TextOf(tree_, held);
    const auto begin = places_.TextBefore(held);
    const auto end = places_.TextAfter(held);
    // Ends of paragraphs, rows and cells that came or went with the words.
    const auto is_end = [&](const Found& found) {
      return found.leftover.what.empty() && found.leftover.kind == kind && found.leftover.who == who;
    };
    auto last = found_.size();
    while (last > 0 && is_end(found_[last - 1])) --last;
    const bool told_again = IsToldAgain(node);
    const bool goes_on = last > 0 && !text.empty() && !told_again && found_[last - 1].leftover.kind == kind &&
                         found_[last - 1].leftover.who == who &&
                         places_.NothingBetween(found_[last - 1].text_end, begin);
    if (goes_on) {
      found_.resize(last);
      auto& piece = found_.back();
      const bool same_paragraph = ParagraphOf(tree_, piece.node) == ParagraphOf(tree_, node);
      piece.leftover.what += (same_paragraph ? "" : " ") + text;
      piece.text_end = end;
      return;
    }
    while (!text.empty() && !found_.empty() && is_end(found_.back()) && found_.back().around != kNoNode &&
           tree_.Contains(found_.back().around, node)) {
      found_.pop_back();
    }
    if (auto* found = Add(kind, node, text, who)) found->text_end = end;
  }

  const DocxTree& tree_;
  const DocxPlaces places_;
  std::vector<Found> found_;
};

/// The bookmarks that the letters have.
std::set<std::string> KeptBookmarks(const DocxPackage& package, const std::string& main_part) {
  std::set<std::string> names;
  for (const auto& story : CleanDocument(package, main_part).stories) {
    for (const auto& range : BookmarkIndex(story.tree).ranges) names.emplace(range.name);
  }
  return names;
}

}  // namespace

std::vector<DocxLeftover> FindLeftovers(const DocxStories& written) {
  const auto& package = written.package();
  const auto comments = ReadComments(package, written.relations());
  const auto bookmarks = KeptBookmarks(package, written.main_part());
  const HiddenStyles styles(package, written.main_part());
  std::vector<DocxLeftover> leftovers;
  std::size_t paragraphs = 0;
  for (const auto& story : written.all()) {
    StorySurvey survey(story, written.PlacesOf(story));
    survey.FindAll(comments, styles, ReadRelations(package, story.part));
    survey.FindLostBookmarks(bookmarks);
    survey.AppendTo(leftovers, paragraphs);
  }
  // Programs hang on the document as a whole.
  for (const auto& relation : written.relations()) {
    if (UseOf(relation) == RelationUse::kMacro)
      leftovers.push_back({LeftoverKind::kMacro, relation.target, {}, "document", {}, ++paragraphs});
  }
  return leftovers;
}

}  // namespace wordprocessor
