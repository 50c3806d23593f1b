#include "wordprocessor/cleaning/fields.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "platform/text.h"
#include "wordprocessor/cleaning/outside.h"
#include "wordprocessor/cleaning/removal.h"
#include "wordprocessor/docx/blocks.h"
#include "wordprocessor/docx/escape.h"

namespace wordprocessor {
namespace {

using DocxFieldKind = DocxField::Kind;

struct NamedField {
  std::string_view name;
  DocxFieldKind kind;
};

// ECMA-376, part 1, 17.16.5, and the older names that word processors still read. All others are layout.
constexpr auto kFieldKinds = std::to_array<NamedField>({
    {"DATE", DocxFieldKind::kDate},
    {"TIME", DocxFieldKind::kDate},
    {"PRINTDATE", DocxFieldKind::kDate},
    {"SAVEDATE", DocxFieldKind::kDate},
    {"CREATEDATE", DocxFieldKind::kDate},
    {"MERGEFIELD", DocxFieldKind::kMerge},
    {"MERGEREC", DocxFieldKind::kMerge},
    {"MERGESEQ", DocxFieldKind::kMerge},
    {"ADDRESSBLOCK", DocxFieldKind::kMerge},
    {"GREETINGLINE", DocxFieldKind::kMerge},
    {"NEXT", DocxFieldKind::kMerge},
    {"NEXTIF", DocxFieldKind::kMerge},
    {"SKIPIF", DocxFieldKind::kMerge},
    {"IF", DocxFieldKind::kCondition},
    {"COMPARE", DocxFieldKind::kCondition},
    {"ASK", DocxFieldKind::kCondition},
    {"FILLIN", DocxFieldKind::kCondition},
    {"SET", DocxFieldKind::kCondition},
    {"QUOTE", DocxFieldKind::kCondition},
    {"INCLUDETEXT", DocxFieldKind::kOutside},
    {"INCLUDEPICTURE", DocxFieldKind::kOutside},
    {"INCLUDE", DocxFieldKind::kOutside},
    {"IMPORT", DocxFieldKind::kOutside},
    {"LINK", DocxFieldKind::kOutside},
    {"EMBED", DocxFieldKind::kOutside},
    {"DDE", DocxFieldKind::kOutside},
    {"DDEAUTO", DocxFieldKind::kOutside},
    {"DATABASE", DocxFieldKind::kOutside},
    {"DATA", DocxFieldKind::kOutside},
    {"RD", DocxFieldKind::kOutside},
    {"AUTOTEXT", DocxFieldKind::kOutside},
    {"AUTOTEXTLIST", DocxFieldKind::kOutside},
    {"GLOSSARY", DocxFieldKind::kOutside},
    {"HTMLACTIVEX", DocxFieldKind::kOutside},
    {"CONTROL", DocxFieldKind::kOutside},
    {"MACROBUTTON", DocxFieldKind::kMacro},
    {"MACRO", DocxFieldKind::kMacro},
    {"GOTOBUTTON", DocxFieldKind::kMacro},
    {"ADDIN", DocxFieldKind::kMacro},
    {"PRINT", DocxFieldKind::kMacro},
    {"AUTHOR", DocxFieldKind::kInformation},
    {"LASTSAVEDBY", DocxFieldKind::kInformation},
    {"COMMENTS", DocxFieldKind::kInformation},
    {"KEYWORDS", DocxFieldKind::kInformation},
    {"SUBJECT", DocxFieldKind::kInformation},
    {"TITLE", DocxFieldKind::kInformation},
    {"DOCPROPERTY", DocxFieldKind::kInformation},
    {"DOCVARIABLE", DocxFieldKind::kInformation},
    {"INFO", DocxFieldKind::kInformation},
    {"FILENAME", DocxFieldKind::kInformation},
    {"FILESIZE", DocxFieldKind::kInformation},
    {"TEMPLATE", DocxFieldKind::kInformation},
    {"EDITTIME", DocxFieldKind::kInformation},
    {"REVNUM", DocxFieldKind::kInformation},
    {"NUMCHARS", DocxFieldKind::kInformation},
    {"NUMWORDS", DocxFieldKind::kInformation},
    {"USERNAME", DocxFieldKind::kInformation},
    {"USERINITIALS", DocxFieldKind::kInformation},
    {"USERADDRESS", DocxFieldKind::kInformation},
});

/// The next word or quoted text of a field's code, which it is taken from.
std::string_view TakeWord(std::string_view& code) {
  const auto begin = std::min(code.find_first_not_of(" \t\r\n\xC2\xA0"), code.size());
  code.remove_prefix(begin);
  const bool quoted = code.starts_with('"');
  if (quoted) code.remove_prefix(1);
  const auto end = std::min(code.find_first_of(quoted ? "\"" : " \t\r\n"), code.size());
  const auto word = code.substr(0, end);
  code.remove_prefix(std::min(end + (quoted ? 1 : 0), code.size()));
  return word;
}

bool LinksOut(std::string_view code) {
  const auto address = TakeWord(code);
  return !address.empty() && !address.starts_with('\\') && !IsAddressForReaders(address);
}

DocxFieldKind KindOfCode(std::string_view code) {
  const auto name = platform::UpperCase(TakeWord(code));
  if (name == "HYPERLINK") return LinksOut(code) ? DocxFieldKind::kOutside : DocxFieldKind::kLayout;
  const auto found = std::ranges::find(kFieldKinds, name, &NamedField::name);
  return found == kFieldKinds.end() ? DocxFieldKind::kLayout : found->kind;
}

/// The switch may stand right before its picture: \@"M/d/yy".
std::string PictureOf(std::string_view code) {
  constexpr std::string_view kSwitch = "\\@";
  const auto at = code.find(kSwitch);
  if (at == code.npos) return {};
  code.remove_prefix(at + kSwitch.size());
  return std::string(TakeWord(code));
}

/// What a button shows: all behind the name of what it starts.
std::string ButtonText(std::string_view code) {
  const auto name = platform::UpperCase(TakeWord(code));
  if (name != "MACROBUTTON" && name != "GOTOBUTTON") return {};
  TakeWord(code);
  return std::string(platform::Trim(code));
}

class FieldSearch {
 public:
  explicit FieldSearch(const DocxTree& tree) : tree_(tree) { VisitStory(tree.root()); }

  std::vector<DocxField> Fields() && {
    for (auto& field : fields_) {
      if (field.kind != DocxFieldKind::kCut) field.kind = KindOfCode(field.code);
    }
    // What is computed from a date or from a merge field is as old as its result.
    for (std::size_t i = fields_.size(); i-- > 0;) {
      const auto outer = code_of_[i];
      if (outer == kNone || fields_[i].kind == DocxFieldKind::kLayout) continue;
      if (fields_[outer].kind == DocxFieldKind::kLayout) fields_[outer].kind = DocxFieldKind::kCondition;
    }
    return std::move(fields_);
  }

 private:
  struct Open {
    std::size_t field;
    bool in_code;
  };

  static constexpr auto kNone = ~std::size_t{0};

  void Add(DocxField field) {
    code_of_.push_back(InCode() ? open_.back().field : kNone);
    fields_.push_back(std::move(field));
  }

  /// A text box and a note have fields of their own.
  void VisitStory(NodeId node) {
    auto outer = std::exchange(open_, {});
    VisitChildren(node);
    for (const auto& open : open_) fields_[open.field].kind = DocxFieldKind::kCut;
    open_ = std::move(outer);
  }

  void VisitChildren(NodeId node) {
    for (auto child = tree_[node].first_child; child != kNoNode; child = tree_[child].next) Visit(child);
  }

  void Visit(NodeId node) {
    const auto kind = tree_[node].kind;
    if (IsProperties(kind)) return;
    const bool piece = tree_[tree_[node].parent].kind == DocxKind::kRun && tree_[node].is_element();
    if (piece) AddPiece(node);
    if (kind == DocxKind::kFieldMark) return VisitMark(node);
    if (kind == DocxKind::kSimpleField) return VisitSimple(node);
    if (kind == DocxKind::kTextBox || kind == DocxKind::kNote) return VisitStory(node);
    if (kind == DocxKind::kFieldCode && InCode()) fields_[open_.back().field].code += TextIn(node);
    VisitChildren(node);
    if (kind == DocxKind::kParagraph && InCode()) fields_[open_.back().field].code_paragraphs.push_back(node);
  }

  bool InCode() const { return !open_.empty() && open_.back().in_code; }

  /// Of every field that is open: of its code, where a field inside is in the result of that.
  void AddPiece(NodeId node) {
    for (const auto& open : open_) {
      auto& field = fields_[open.field];
      (open.in_code ? field.code_pieces : field.result_pieces).push_back(node);
    }
  }

  void VisitMark(NodeId node) {
    const auto type = tree_.Attribute(node, "fldCharType");
    if (type == "begin") {
      Add({.kind = DocxFieldKind::kLayout, .code = {}, .node = node, .marks = {node}});
      open_.push_back({fields_.size() - 1, true});
    } else if (open_.empty() || fields_[open_.back().field].simple) {
      Add({.kind = DocxFieldKind::kCut, .code = {}, .node = node, .marks = {node}});
    } else {
      fields_[open_.back().field].marks.push_back(node);
      open_.back().in_code = false;
      if (type == "end") open_.pop_back();
    }
  }

  void VisitSimple(NodeId node) {
    DocxField field{
        .kind = DocxFieldKind::kLayout, .code = Unescaped(tree_.Attribute(node, "instr")), .node = node};
    field.simple = true;
    const auto depth = open_.size();
    Add(std::move(field));
    open_.push_back({fields_.size() - 1, false});
    VisitChildren(node);
    for (auto i = depth + 1; i < open_.size(); ++i) fields_[open_[i].field].kind = DocxFieldKind::kCut;
    open_.resize(depth);
  }

  std::string TextIn(NodeId node) const {
    std::string text;
    for (auto child = tree_[node].first_child; child != kNoNode; child = tree_[child].next) {
      text += Unescaped(tree_[child].markup);
    }
    return text;
  }

  const DocxTree& tree_;
  std::vector<DocxField> fields_;
  std::vector<std::size_t> code_of_;  // by field: the one in whose code it stands
  std::vector<Open> open_;
};

class FieldSettler {
 public:
  explicit FieldSettler(DocxTree& tree) : tree_(tree), removal_(tree) {}

  std::vector<LetterDatePlace> Run(bool& changed) && {
    for (const auto& field : FindFields(tree_)) {
      if (field.kind == DocxFieldKind::kLayout || !tree_.IsAttached(field.node)) continue;
      changed = true;
      if (field.kind == DocxFieldKind::kDate) AddDate(field);
      if (field.kind == DocxFieldKind::kMacro) AddButtonText(field);
      Settle(field);
    }
    removal_.Run();
    return std::move(dates_);
  }

 private:
  /// What the date is formatted as: the first text of the result, else the field's beginning.
  void AddDate(const DocxField& field) {
    const auto shown = std::ranges::find_if(
        field.result_pieces, [&](NodeId piece) { return tree_[piece].kind == DocxKind::kText; });
    std::string text;
    for (const auto piece : field.result_pieces) text += TextOf(piece);
    auto place = shown != field.result_pieces.end() ? *shown : field.node;
    if (field.simple && place == field.node) place = AddRunBefore(field.node);
    dates_.push_back({AddTextBefore(place, text), PictureOf(field.code)});
    for (const auto piece : field.result_pieces) TakeOut(piece);
  }

  void AddButtonText(const DocxField& field) {
    const bool shows_nothing = std::ranges::all_of(
        field.result_pieces, [&](NodeId piece) { return tree_[piece].kind == DocxKind::kFieldMark; });
    const auto text = ButtonText(field.code);
    if (!text.empty() && shows_nothing && !field.simple) AddTextBefore(field.node, text);
  }

  NodeId AddTextBefore(NodeId place, std::string_view text) {
    const auto element = tree_.AddElement(DocxKind::kText, "t", tree_.root(), " xml:space=\"preserve\"");
    const auto markup = tree_.AddText(text);
    tree_.Append(markup, element);
    tree_.InsertBefore(element, place);
    return markup;
  }

  NodeId AddRunBefore(NodeId place) {
    const auto run = tree_.AddElement(DocxKind::kRun, "r", tree_.root());
    tree_.InsertBefore(run, place);
    const auto end = tree_.AddEmptyMarkup();
    tree_.Append(end, run);
    return end;
  }

  void Settle(const DocxField& field) {
    const bool cut = field.kind == DocxFieldKind::kCut;
    for (const auto piece : field.code_pieces) {
      if (!cut || tree_[piece].kind == DocxKind::kFieldCode) TakeOut(piece);
    }
    for (const auto paragraph : field.code_paragraphs) {
      if (!cut) removal_.AddParagraphMark(paragraph);
    }
    for (const auto mark : field.marks) TakeOut(mark);
    if (!field.simple) return;
    while (tree_[field.node].first_child != kNoNode) {
      const auto child = tree_[field.node].first_child;
      tree_.Unlink(child);
      if (!IsProperties(tree_[child].kind) && tree_[child].is_element())
        tree_.InsertBefore(child, field.node);
    }
    tree_.Unlink(field.node);
  }

  /// Out of its run, and the run with it that holds nothing more.
  void TakeOut(NodeId piece) {
    const auto run = tree_[piece].parent;
    if (run == kNoNode) return;
    tree_.Unlink(piece);
    for (auto rest = tree_[run].first_child; rest != kNoNode; rest = tree_[rest].next) {
      if (!IsProperties(tree_[rest].kind)) return;
    }
    tree_.Unlink(run);
  }

  std::string TextOf(NodeId piece) const {
    std::string text;
    if (tree_[piece].kind != DocxKind::kText) return text;
    for (auto child = tree_[piece].first_child; child != kNoNode; child = tree_[child].next) {
      text += Unescaped(tree_[child].markup);
    }
    return text;
  }

  DocxTree& tree_;
  DocxRemoval removal_;
  std::vector<LetterDatePlace> dates_;
};

}  // namespace

std::vector<DocxField> FindFields(const DocxTree& tree) {
  return FieldSearch(tree).Fields();
}

std::string ShownCode(const DocxTree& tree, const DocxField& field) {
  if (field.simple) return std::string(platform::TrimBlanks(field.code));
  std::string code;
  int results = 0;  // of fields inside, which are open
  for (const auto piece : field.code_pieces) {
    const bool own = std::ranges::find(field.marks, piece) != field.marks.end();
    const auto type = tree.Attribute(piece, "fldCharType");
    if (type == "begin") code += results == 0 ? "{" : "";
    if (type == "separate" && !own) ++results;
    if (type == "end") {
      results = std::max(0, results - 1);
      code += results == 0 ? "}" : "";
    }
    if (tree[piece].kind != DocxKind::kFieldCode || results > 0) continue;
    for (auto child = tree[piece].first_child; child != kNoNode; child = tree[child].next) {
      code += Unescaped(tree[child].markup);
    }
  }
  return std::string(platform::TrimBlanks(code));
}

bool StandsInCode(const DocxField& field, const std::vector<DocxField>& fields) {
  const auto piece = !field.marks.empty()           ? field.marks.front()
                     : !field.result_pieces.empty() ? field.result_pieces.front()
                                                    : kNoNode;
  return std::ranges::any_of(fields, [&](const DocxField& other) {
    const bool inside = std::ranges::find(other.code_pieces, piece) != other.code_pieces.end();
    return other.node != field.node && inside;
  });
}

std::vector<FieldWord> WordsOfCode(std::string_view code) {
  std::vector<FieldWord> words;
  while (true) {
    const auto rest = platform::TrimBlanks(code);
    if (rest.empty()) return words;
    if (rest.starts_with('\\') && rest.size() > 1) {
      words.push_back({platform::LowerCase(rest.substr(0, 2)), true});
      code = rest.substr(2);
    } else {
      code = rest;
      words.push_back({std::string(TakeWord(code))});
    }
  }
}

std::vector<LetterDatePlace> SettleFields(DocxTree& tree, bool& changed) {
  return FieldSettler(tree).Run(changed);
}

}  // namespace wordprocessor
