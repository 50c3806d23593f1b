#include "wordprocessor/authoring/mail_merge.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/text.h"
#include "wordprocessor/authoring/mail_merge_names.h"
#include "wordprocessor/bookmarks/index.h"
#include "wordprocessor/cleaning/stories.h"
#include "wordprocessor/document/blueprint.h"
#include "wordprocessor/docx/blocks.h"
#include "wordprocessor/docx/escape.h"
#include "wordprocessor/docx/runs.h"
#include "wordprocessor/docx/tree_reader.h"
#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {
namespace {

/// What a MERGEFIELD says of itself (ECMA-376, part 1, 17.16.5.35).
struct MergeFieldCode {
  std::string field;
  std::string before;          ///< \b: shown before a value that is not empty
  std::string after;           ///< \f: likewise
  std::string format;          ///< \*, \@ and \# that change the value, as written
  bool looks_of_code = false;  ///< \* CHARFORMAT
};

MergeFieldCode ReadCode(const std::string& code) {
  const auto words = WordsOfCode(code);
  MergeFieldCode read;
  for (std::size_t i = 1; i < words.size(); ++i) {
    const auto& word = words[i];
    if (!word.is_switch) {
      if (read.field.empty()) read.field = word.text;
      continue;
    }
    const bool has_value = i + 1 < words.size() && !words[i + 1].is_switch;
    const auto value = has_value && word.text != "\\m" && word.text != "\\v" ? words[++i].text : "";
    const auto name = platform::UpperCase(value);
    if (word.text == "\\b") read.before = value;
    if (word.text == "\\f") read.after = value;
    if (word.text == "\\*" && name == "CHARFORMAT") read.looks_of_code = true;
    const bool looks = word.text == "\\*" && (name == "CHARFORMAT" || name == "MERGEFORMAT");
    if (!looks && (word.text == "\\*" || word.text == "\\@" || word.text == "\\#")) {
      read.format += (read.format.empty() ? "" : " ") + word.text + " " + value;
    }
  }
  return read;
}

struct LeftReason {
  std::string_view name;
  std::string_view reason;
};

constexpr auto kLeftReasons = std::to_array<LeftReason>({
    {"ADDRESSBLOCK",
     "It stands for a whole address: put the bookmarks CUSTOMER_NAME and CUSTOMER_ADDR in its place."},
    {"GREETINGLINE", "It makes a salutation: write one, with the bookmark CUSTOMER_NAME in it."},
});
constexpr std::string_view kRecordReason =
    "It counts or passes over the records of a mail merge, and a letter has one: delete it.";
constexpr std::string_view kNoNameReason = "It names no column: delete it, or set a bookmark by hand.";
constexpr std::string_view kComposedReason = "Its name is made of other fields: set a bookmark by hand.";

std::string AttributePrefix(std::string_view tag, std::string_view local_name) {
  const auto at = tag.find(std::string(local_name) + "=\"");
  const auto blank = tag.rfind(' ', at);
  return std::string(tag.substr(blank + 1, at - blank - 1));
}

/// One part's merge fields.
class StoryMerge {
 public:
  StoryMerge(DocxTree& tree, DocxPlaces places, MailMergeNames& names, int& next_id, MergeFieldsMade& made)
      : tree_(tree),
        bookmarks_(tree),
        places_(std::move(places)),
        names_(names),
        next_id_(next_id),
        made_(made) {}

  /// Returns whether anything has changed.
  bool Run() {
    const auto fields = FindFields(tree_);
    const auto before = next_id_;
    for (const auto& field : fields) {
      const bool stays = field.kind != DocxField::Kind::kMerge || StandsInCode(field, fields) ||
                         !ReasonAgainstBookmark(ShownCode(tree_, field)).empty();
      if (!stays && tree_.IsAttached(field.node)) Make(field);
    }
    return next_id_ != before;
  }

 private:
  struct Named {
    std::string field;
    std::string bookmark;
    int id;
    bool told_again = false;
  };

  void Make(const DocxField& field) {
    const auto code = ReadCode(field.code);
    const auto place = PlaceFor(field);
    const auto looks = LooksOf(field, code);
    const auto& base = names_.BookmarkOf(code.field);
    const auto named = NameFor(field, code.field);
    const auto prefix =
        " " + AttributePrefix(tree_[field.node].markup, field.simple ? "instr" : "fldCharType");
    const auto id = prefix + "id=\"" + std::to_string(named.id) + "\"";
    const auto put = [&](NodeId node) { tree_.InsertBefore(node, place); };
    if (!code.before.empty()) put(AddRun(tree_, code.before, looks, tree_.root()));
    put(tree_.AddElement(DocxKind::kOther, "bookmarkStart", tree_.root(),
                         id + prefix + "name=\"" + named.bookmark + "\""));
    put(AddRun(tree_, "\u00AB" + base + "\u00BB", looks, tree_.root()));
    put(tree_.AddElement(DocxKind::kOther, "bookmarkEnd", tree_.root(), id));
    if (!code.after.empty()) put(AddRun(tree_, code.after, looks, tree_.root()));
    if (!named.told_again)
      made_.made.push_back({code.field, named.bookmark, places_.Of(field.node), NoteOn(code, base)});
    TakeOut(field);
  }

  /// A node of the field's own paragraph to insert before.
  NodeId PlaceFor(const DocxField& field) {
    return field.simple ? field.node : SplitRunAt(tree_, field.node);
  }

  /// The properties of the first run that shows something.
  NodeId LooksOf(const DocxField& field, const MergeFieldCode& code) const {
    const auto& pieces = code.looks_of_code ? field.code_pieces : field.result_pieces;
    const auto wanted = code.looks_of_code ? DocxKind::kFieldCode : DocxKind::kText;
    const auto shown =
        std::ranges::find_if(pieces, [&](NodeId piece) { return tree_[piece].kind == wanted; });
    if (shown != pieces.end()) return tree_.ChildOfKind(tree_[*shown].parent, DocxKind::kRunProperties);
    return field.simple ? kNoNode : tree_.ChildOfKind(tree_[field.node].parent, DocxKind::kRunProperties);
  }

  /// Both tellings of a text box have the same bookmarks.
  Named NameFor(const DocxField& field, const std::string& column) {
    const auto fallback = tree_.Ancestor(field.node, DocxKind::kFallback);
    if (fallback != kNoNode) {
      auto& twins = told_in_[tree_[fallback].parent];
      const auto twin = std::ranges::find(twins, column, &Named::field);
      if (twin != twins.end()) {
        auto named = *twin;
        twins.erase(twin);
        named.told_again = true;
        return named;
      }
    }
    Named named{column, names_.Next(column), next_id_++};
    for (auto around = tree_.Ancestor(field.node, DocxKind::kAlternate); around != kNoNode;
         around = tree_.Ancestor(around, DocxKind::kAlternate)) {
      told_in_[around].push_back(named);
    }
    return named;
  }

  static std::string NoteOn(const MergeFieldCode& code, const std::string& bookmark) {
    std::string note;
    const auto say = [&](const std::string& sentence) { note += (note.empty() ? "" : " ") + sentence; };
    if (code.field != bookmark)
      say("The field " + platform::Quoted(code.field) + " is called " + platform::Quoted(bookmark) + " now.");
    for (const auto& words : {code.before, code.after}) {
      if (!words.empty())
        say("The words " + platform::Quoted(words) +
            " stand beside it as plain text, with or without a value.");
    }
    if (!code.format.empty())
      say("The format " + platform::Quoted(code.format) + " is gone: values come formatted.");
    return note;
  }

  /// What was marked in the field's result goes with that. A part's nodes are numbered as they stand in it.
  void DropMarksInside(const DocxField& field) {
    for (const auto& range : bookmarks_.ranges) {
      const bool inside =
          field.simple ? tree_.Contains(field.node, range.start) && tree_.Contains(field.node, range.end)
                       : field.node < range.start && range.end < field.marks.back();
      if (!range.has_end() || !inside) continue;
      tree_.Unlink(range.start);
      tree_.Unlink(range.end);
    }
  }

  void TakeOut(const DocxField& field) {
    DropMarksInside(field);
    std::vector<NodeId> paragraphs;
    for (const auto& pieces : {field.marks, field.code_pieces, field.result_pieces}) {
      for (const auto piece : pieces) {
        const auto paragraph = ParagraphOf(tree_, piece);
        if (paragraph != kNoNode) paragraphs.push_back(paragraph);
        TakeOutOfRun(tree_, piece);
      }
    }
    if (field.simple) {
      KeepMarks(field.node, field.node);
      tree_.Unlink(field.node);
    }
    // What it showed may have gone over several.
    for (const auto paragraph : paragraphs) {
      if (tree_.IsAttached(paragraph) && !HasContent(tree_, paragraph) && CanRemoveBlock(tree_, paragraph)) {
        RemoveBlock(tree_, paragraph);
      }
    }
  }

  void KeepMarks(NodeId node, NodeId place) {
    for (auto child = tree_[node].first_child; child != kNoNode;) {
      const auto next = tree_[child].next;
      if (IsBookmarkMark(tree_[child].kind)) {
        tree_.Unlink(child);
        tree_.InsertBefore(child, place);
      } else {
        KeepMarks(child, place);
      }
      child = next;
    }
  }

  DocxTree& tree_;
  const BookmarkIndex bookmarks_;
  const DocxPlaces places_;
  MailMergeNames& names_;
  int& next_id_;
  MergeFieldsMade& made_;
  std::map<NodeId, std::vector<Named>> told_in_;  // by mc:AlternateContent
};

struct BookmarksThere {
  std::set<std::string> names;
  int next_id = 1;
};

BookmarksThere BookmarksIn(const std::vector<DocxStory>& stories) {
  BookmarksThere bookmarks;
  for (const auto& story : stories) {
    for (NodeId node = 0; node < story.tree.size(); ++node) {
      if (story.tree[node].kind != DocxKind::kBookmarkStart) continue;
      bookmarks.names.emplace(story.tree.BookmarkOf(node).name);
      const auto digits = story.tree.Attribute(node, "id");
      int id = 0;
      std::from_chars(digits.data(), digits.data() + digits.size(), id);
      bookmarks.next_id = std::max(bookmarks.next_id, id + 1);
    }
  }
  return bookmarks;
}

bool IsOfMailMerge(const DocxRelation& relation) {
  return relation.kind.starts_with("mailMerge") || relation.kind == "recipientData";
}

/// Removes the children that `gone` names. Returns whether there were any.
bool RemoveChildren(pugi::xml_node parent, const auto& gone) {
  bool any = false;
  for (auto child = parent.first_child(); child;) {
    const auto next = child.next_sibling();
    any = (gone(child) && parent.remove_child(child)) || any;
    child = next;
  }
  return any;
}

/// The parts of a package that have changed, and those that are away.
struct PackageChanges {
  std::map<std::string, std::string> written;
  std::set<std::string> gone;  // in lower case
};

/// Where the data came from, and which record was shown last.
void DropMailMerge(const DocxPackage& package, const std::vector<DocxRelation>& relations_of_main_part,
                   PackageChanges& changes) {
  for (const auto& relation : relations_of_main_part) {
    if (relation.kind != "settings" || !LeadsToPart(relation, package)) continue;
    auto settings = LoadPartXml(package.Read(relation.target));
    const auto is_merge = [](const pugi::xml_node& child) { return IsWordElement(child, "mailMerge"); };
    if (RemoveChildren(settings.document_element(), is_merge))
      changes.written[relation.target] = PartText(settings);
    std::set<std::string> ids;
    for (const auto& source : ReadRelations(package, relation.target)) {
      if (!IsOfMailMerge(source)) continue;
      ids.insert(source.id);
      if (!source.external) changes.gone.insert(platform::LowerCase(source.target));
    }
    if (ids.empty()) continue;
    const auto account = RelationsPartOf(relation.target);
    auto relations = LoadPartXml(package.Read(account));
    RemoveChildren(relations.document_element(),
                   [&](const pugi::xml_node& child) { return ids.contains(child.attribute("Id").value()); });
    changes.written[account] = PartText(relations);
  }
  if (changes.gone.empty()) return;
  auto types = LoadPartXml(package.Read(kContentTypesPart));
  RemoveChildren(types.document_element(), [&](const pugi::xml_node& child) {
    return changes.gone.contains(platform::LowerCase(ResolveTarget({}, child.attribute("PartName").value())));
  });
  changes.written[std::string(kContentTypesPart)] = PartText(types);
}

}  // namespace

std::string_view ReasonAgainstBookmark(std::string_view code) {
  const auto words = WordsOfCode(code);
  const auto name = words.empty() ? std::string() : platform::UpperCase(words.front().text);
  if (name == "MERGEFIELD") {
    if (code.find('{') != code.npos) return kComposedReason;
    return ReadCode(std::string(code)).field.empty() ? kNoNameReason : std::string_view();
  }
  const auto reason = std::ranges::find(kLeftReasons, name, &LeftReason::name);
  return reason == kLeftReasons.end() ? kRecordReason : reason->reason;
}

MergeFieldsMade BookmarksOfMergeFields(const DocxPackage& package, const std::vector<TemplateField>& fields) {
  DocxStories stories(package, FindMainPart(package));
  auto bookmarks = BookmarksIn(stories.all());
  MailMergeNames names(std::move(bookmarks.names), fields);
  MergeFieldsMade made;
  PackageChanges changes;
  for (auto& story : stories.all()) {
    StoryMerge merge(story.tree, stories.PlacesOf(story), names, bookmarks.next_id, made);
    if (merge.Run()) changes.written[story.part] = story.tree.Serialize();
  }
  DropMailMerge(package, stories.relations(), changes);
  std::vector<PackagePart> parts;
  for (const auto& [name, content] : changes.written) parts.push_back({name, content});
  made.bytes = package.With(
      parts, [&](std::string_view name) { return !changes.gone.contains(platform::LowerCase(name)); });
  return made;
}

}  // namespace wordprocessor
