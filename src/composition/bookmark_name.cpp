#include "composition/bookmark_name.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/text.h"

namespace composition {
namespace {

using Replacement = std::pair<std::string_view, std::string_view>;

// In this order: with "&amp;" first, "&amp;lt;" would lose two levels.
constexpr auto kReferences = std::to_array<Replacement>({
    {"&lt;", "<"},
    {"&gt;", ">"},
    {"&apos;", "'"},
    {"&quot;", "\""},
    {"&amp;", "&"},
});

}  // namespace

bool CheckDoubleUnderScore(std::string_view name) {
  constexpr std::string_view kMark = "__";
  const auto trimmed = platform::Trim(name);
  const auto place = trimmed.rfind(kMark);
  if (place == std::string_view::npos) return false;
  const auto number = trimmed.substr(place + kMark.size());
  return !number.empty() && std::ranges::all_of(number, [](char c) { return c >= '0' && c <= '9'; });
}

void XmlEscapeDecode(std::string& text) {
  if (text.find('&') == std::string::npos) return;
  for (const auto& [reference, character] : kReferences) {
    text = platform::ReplaceAll(text, reference, character);
  }
}

}  // namespace composition
