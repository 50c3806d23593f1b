#include "platform/parties/print_choice.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "platform/text.h"

namespace platform {
namespace {

using Range = std::pair<int, int>;

constexpr int kLastPage = 9999;

/// 0 for what is no page.
int PageOf(std::string_view text) {
  const auto trimmed = Trim(text);
  int page = 0;
  const auto* const last = trimmed.data() + trimmed.size();
  const auto [end, error] = std::from_chars(trimmed.data(), last, page);
  return error == std::errc() && end == last && page >= 1 && page <= kLastPage ? page : 0;
}

std::optional<Range> RangeOf(std::string_view text) {
  const auto dash = text.find('-');
  const int first = PageOf(text.substr(0, dash));
  const int last = dash == std::string_view::npos ? first : PageOf(text.substr(dash + 1));
  return first == 0 || last < first ? std::nullopt : std::optional(Range(first, last));
}

std::optional<std::vector<Range>> RangesOf(std::string_view text) {
  std::vector<Range> ranges;
  for (std::size_t at = 0; at <= text.size();) {
    const auto comma = std::min(text.find(',', at), text.size());
    const auto range = RangeOf(text.substr(at, comma - at));
    if (!range) return std::nullopt;
    ranges.push_back(*range);
    at = comma + 1;
  }
  std::ranges::sort(ranges);
  return ranges;
}

}  // namespace

std::optional<std::string> PageRanges(std::string_view typed) {
  if (Trim(typed).empty()) return "";
  const auto ranges = RangesOf(typed);
  if (!ranges) return std::nullopt;
  std::vector<Range> merged;
  for (const auto& range : *ranges) {
    if (!merged.empty() && range.first <= merged.back().second + 1) {
      merged.back().second = std::max(merged.back().second, range.second);
    } else {
      merged.push_back(range);
    }
  }
  std::string text;
  for (const auto& [first, last] : merged) {
    text += (text.empty() ? "" : ",") + std::to_string(first);
    if (last > first) text += "-" + std::to_string(last);
  }
  return text;
}

}  // namespace platform
