#include "composition/node_state.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>

#include "platform/failure.h"

namespace composition {
namespace {

using platform::Failure;

constexpr std::size_t kMostDigits = 8;  // four bits each

/// Nothing where the text is no hexadecimal number of one to eight digits.
std::optional<std::uint32_t> ParseWord(std::string_view text) {
  if (text.size() > kMostDigits) return {};
  std::uint32_t word = 0;
  const char* end = text.data() + text.size();
  const auto parsed = std::from_chars(text.data(), end, word, 16);
  if (parsed.ec != std::errc() || parsed.ptr != end) return {};
  return word;
}

std::uint32_t ReadWord(const platform::XmlElement& element, std::string_view attribute) {
  const auto text = element.Attribute(attribute);
  if (!text) return 0;
  if (const auto word = ParseWord(*text)) return *word;
  throw Failure(Failure::Kind::kDamaged, "The flag word \"" + *text + "\" in attribute " +
                                             std::string(attribute) + " of element " + element.Name() +
                                             " is not a hexadecimal number of one to eight digits");
}

std::string WordText(std::uint32_t word) {
  std::string digits(kMostDigits, '\0');
  const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), word, 16);
  digits.resize(static_cast<std::size_t>(written.ptr - digits.data()));
  std::ranges::transform(digits, digits.begin(), [](char digit) {
    return digit >= 'a' ? static_cast<char>(digit - 'a' + 'A') : digit;
  });
  return digits;
}

}  // namespace

void ZEMLO_NodeState::Clear() {
  state_ = 0;
  err_ = 0;
  addr_state_ = 0;
}

void ZEMLO_NodeState::InitFromNode(platform::XmlElement oNode) {
  if (!oNode) throw Failure(Failure::Kind::kNotFound, "There is no element to read flag words from");
  state_ = ReadWord(oNode, "State");
  err_ = ReadWord(oNode, "Err");
  addr_state_ = ReadWord(oNode, "AddrState");
  changed_ = false;
}

void ZEMLO_NodeState::InitCaps(std::int32_t /*nVal*/) {}

void ZEMLO_NodeState::SaveState(platform::XmlElement /*oNode*/) {}

void ZEMLO_NodeState::Save(platform::XmlElement oNode) {
  if (!changed_) return;
  oNode.RemoveAttribute("State");
  if (state_ != 0) oNode.SetAttribute("State", WordText(state_));
  changed_ = false;
}

void ZEMLO_NodeState::SetIsUserUnSelected(bool bSet) {
  state_ = bSet ? state_ | kUserUnSelected : state_ & ~kUserUnSelected;
  changed_ = true;
}

}  // namespace composition
