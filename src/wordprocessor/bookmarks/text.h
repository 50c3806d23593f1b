#pragma once

#include <string_view>
#include <vector>

namespace wordprocessor {

/// A stretch of a field's text as a document shows it.
struct TextPiece {
  enum class Kind { kText, kLineBreak, kTab };
  Kind kind = Kind::kText;
  std::string_view text;  ///< of kText; points into the field's text
};

using TextParagraph = std::vector<TextPiece>;

/// The paragraphs of a field's text, at least one; all but the last end with a paragraph mark.
///
/// "||" ends a paragraph, and so does the line break right after it: the two are one mark. Every other
/// "\r\n", "\n" or "\r" is a line break inside the paragraph.
std::vector<TextParagraph> SplitFieldText(std::string_view text);

/// Whether the text is nothing but white space and paragraph marks.
bool IsBlank(std::string_view text);

}  // namespace wordprocessor
