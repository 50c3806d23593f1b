#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "wordprocessor/docx/tree.h"

namespace wordprocessor {

/// A field of a word processor: what it does (its code) and what it showed last (its result).
/// Decision [plain-fields].
struct DocxField {
  enum class Kind : std::uint8_t {
    kLayout,       ///< page numbers, references, contents, form fields, links: it stays a field
    kDate,         ///< a date that changes from day to day
    kMerge,        ///< of a mail merge
    kCondition,    ///< decides, asks or computes
    kOutside,      ///< shows what stands outside of the document
    kMacro,        ///< starts something
    kInformation,  ///< about the file, its author or the program
    kCut,          ///< its beginning or its end is missing
  };

  Kind kind = Kind::kLayout;
  std::string code;  ///< as the author wrote it, without fields inside
  NodeId node;       ///< where it begins: its first mark, or the w:fldSimple
  bool simple = false;
  std::vector<NodeId> marks = {};            ///< its own, the first one included
  std::vector<NodeId> code_pieces = {};      ///< children of runs, those of fields in the code included
  std::vector<NodeId> code_paragraphs = {};  ///< whose ends lie in the code
  std::vector<NodeId> result_pieces = {};    ///< likewise, those of fields in the result included

  /// Whether the letter shows what the field showed last, as plain text.
  bool stands() const { return kind != Kind::kLayout && kind != Kind::kDate; }
};

/// All fields of a document part by their beginnings; the inner ones follow the outer ones.
std::vector<DocxField> FindFields(const DocxTree& tree);

/// Where the letter's own date goes: a piece of text, and the picture it is shown in.
struct LetterDatePlace {
  NodeId text;
  std::string picture;
};

/// The field's code with the fields inside of it, as an author sees it: `IF { MERGEFIELD STATE } = "K" "a"
/// "b"`.
std::string ShownCode(const DocxTree& tree, const DocxField& field);

/// Whether the field stands in the code of another one of `fields`, which are all of its part.
bool StandsInCode(const DocxField& field, const std::vector<DocxField>& fields);

/// A word of a field's code: what stands in quotes is one, without them.
struct FieldWord {
  std::string text;
  bool is_switch = false;  ///< "\\b", and what follows right behind it is a word of its own
};

std::vector<FieldWord> WordsOfCode(std::string_view code);

/// Makes plain text of all fields that would show in each letter, and at each reprint, something else than
/// the template says: they keep what they showed last. Of date fields the places are returned.
std::vector<LetterDatePlace> SettleFields(DocxTree& tree, bool& changed);

}  // namespace wordprocessor
