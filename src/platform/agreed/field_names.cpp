#include "platform/agreed/field_names.h"

#include <algorithm>

namespace platform {
namespace {

constexpr std::string_view kRepeatMark = "__";

}  // namespace

bool IsParagraphField(std::string_view name) {
  return name.find(kParagraphMark) != std::string_view::npos;
}

bool IsRepeat(std::string_view name) {
  const auto mark = name.rfind(kRepeatMark);
  if (mark == std::string_view::npos) return false;
  const auto number = name.substr(mark + kRepeatMark.size());
  return !number.empty() && std::ranges::all_of(number, [](char c) { return c >= '0' && c <= '9'; });
}

std::string_view RepeatedName(std::string_view name) {
  return IsRepeat(name) ? name.substr(0, name.rfind(kRepeatMark)) : std::string_view();
}

}  // namespace platform
