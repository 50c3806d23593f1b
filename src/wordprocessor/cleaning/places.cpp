#include "wordprocessor/cleaning/places.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "platform/text.h"
#include "wordprocessor/docx/escape.h"

namespace wordprocessor {
namespace {

constexpr std::size_t kWordsShown = 30;

}  // namespace

DocxPlaces::DocxPlaces(const DocxStory& story, std::string page) : story_(story), page_(std::move(page)) {
  Visit(story.tree.root(), /*again=*/false);
}

std::string DocxPlaces::Place(NodeId node, std::size_t offset) const {
  constexpr auto kStories = std::to_array<std::string_view>({"text", "page header", "page footer", "notes"});
  auto place = std::string(kStories[static_cast<std::size_t>(story_.kind)]) + page_;
  if (story_.tree.Ancestor(node, DocxKind::kTextBox) != kNoNode) place += ", in a text box";
  if (story_.tree.Ancestor(node, DocxKind::kTable) != kNoNode) place += ", in a table";
  const auto words = WordsBefore(offset);
  return words.empty() ? place : place + ", after " + platform::Quoted(words);
}

bool DocxPlaces::NothingBetween(std::size_t from, std::size_t to) const {
  return from <= to && platform::IsBlank(std::string_view(text_).substr(from, to - from));
}

void DocxPlaces::Visit(NodeId node, bool again) {
  const auto& tree = story_.tree;
  const auto kind = tree[node].kind;
  again = again || kind == DocxKind::kFallback;
  begins_[node] = text_.size();
  if (kind == DocxKind::kMarkup && tree[tree[node].parent].kind == DocxKind::kText && !again) {
    text_ += Unescaped(tree[node].markup);
  }
  if ((kind == DocxKind::kBreak || kind == DocxKind::kTab) && !again) text_ += ' ';
  if (kind == DocxKind::kTextBox && !again) text_ += '\n';
  for (auto child = tree[node].first_child; child != kNoNode; child = tree[child].next) Visit(child, again);
  if (kind == DocxKind::kParagraph && !again) text_ += '\n';
  ends_[node] = text_.size();
}

/// The last few before it, of the last line that has some.
std::string DocxPlaces::WordsBefore(std::size_t offset) const {
  auto words = std::string_view(text_).substr(0, offset);
  const auto end = words.find_last_not_of(" \n");
  if (end == words.npos) return {};
  words = words.substr(0, end + 1);
  words.remove_prefix(words.rfind('\n') + 1);  // all of it without one: npos + 1 is 0
  if (words.size() > kWordsShown) {
    const auto blank = words.find(' ', words.size() - kWordsShown);
    words.remove_prefix(blank == words.npos ? 0 : blank + 1);
  }
  return std::string(platform::TrimBlanks(words));
}

}  // namespace wordprocessor
