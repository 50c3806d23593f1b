#include "wordprocessor/bookmarks/text.h"

#include <algorithm>

#include "platform/paragraph_end.h"

namespace wordprocessor {
namespace {

using platform::kParagraphEnd;

std::size_t LineBreakSize(std::string_view text) {
  if (text.starts_with("\r\n")) return 2;
  return text.starts_with('\n') || text.starts_with('\r') ? 1 : 0;
}

/// Up to what has a meaning of its own. A single "|" is text.
std::size_t PlainSize(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\t' || text[i] == '\r' || text[i] == '\n') return i;
    if (text.substr(i).starts_with(kParagraphEnd)) return i;
  }
  return text.size();
}

}  // namespace

std::vector<TextParagraph> SplitFieldText(std::string_view text) {
  std::vector<TextParagraph> paragraphs(1);
  while (!text.empty()) {
    std::size_t used = 1;
    if (text.starts_with(kParagraphEnd)) {
      paragraphs.emplace_back();
      used = kParagraphEnd.size() + LineBreakSize(text.substr(kParagraphEnd.size()));
    } else if (const auto line_break = LineBreakSize(text); line_break != 0) {
      paragraphs.back().push_back({TextPiece::Kind::kLineBreak, {}});
      used = line_break;
    } else if (text.starts_with('\t')) {
      paragraphs.back().push_back({TextPiece::Kind::kTab, {}});
    } else {
      used = PlainSize(text);
      paragraphs.back().push_back({TextPiece::Kind::kText, text.substr(0, used)});
    }
    text.remove_prefix(used);
  }
  return paragraphs;
}

bool IsBlank(std::string_view text) {
  const auto paragraphs = SplitFieldText(text);
  return std::ranges::all_of(paragraphs, [](const TextParagraph& paragraph) {
    return std::ranges::all_of(paragraph, [](const TextPiece& piece) {
      return piece.kind != TextPiece::Kind::kText ||
             piece.text.find_first_not_of(' ') == std::string_view::npos;
    });
  });
}

}  // namespace wordprocessor
