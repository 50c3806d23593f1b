#include "customers/maintenance/key_filters.h"

#include <algorithm>
#include <array>
#include <optional>

#include "platform/parties/trap.h"
#include "platform/text.h"

namespace customers {

namespace {

enum class Kind { kNone, kName, kCity, kZip };

struct FieldLimit {
  std::size_t max_length;
  Kind kind;
};
// By the number of the field.
constexpr auto kLimits = std::to_array<FieldLimit>({
    {20, Kind::kName}, {20, Kind::kName}, {25, Kind::kName}, {3, Kind::kNone},  {72, Kind::kNone},
    {30, Kind::kNone}, {25, Kind::kNone}, {25, Kind::kNone}, {22, Kind::kCity}, {10, Kind::kZip},
    {25, Kind::kNone}, {25, Kind::kNone}, {22, Kind::kCity}, {10, Kind::kZip},  {25, Kind::kNone},
    {25, Kind::kNone}, {22, Kind::kNone}, {22, Kind::kNone}, {9, Kind::kNone},  {25, Kind::kNone},
    {25, Kind::kNone}, {22, Kind::kNone}, {22, Kind::kNone}, {9, Kind::kNone},
});
static_assert(kLimits.size() == text_number::kCount);

constexpr std::int16_t kBlank = 32;
constexpr std::int16_t kPeriod = 46;

bool IsCapital(std::int16_t key) {
  return key >= 'A' && key <= 'Z';
}

std::int16_t Capital(std::int16_t key) {
  return key >= 'a' && key <= 'z' ? static_cast<std::int16_t>(key - 'a' + 'A') : key;
}

std::u32string Characters(std::string_view digits_and_letters) {
  return {digits_and_letters.begin(), digits_and_letters.end()};
}

}  // namespace

void KeyFilters::AllowKeyPressToPassName(std::int16_t& key, bool& accepted) const {
  accepted = false;
  platform::Trap(services_, "ZEMLO_CustMaint.AllowKeyPressToPassName", [&] {
    if (key == kPasteKey) {
      accepted = PastesAsName(services_.host.ClipboardText());
    } else {
      accepted = services_.utilities.IsControlKey(static_cast<char32_t>(key)) || IsCapital(Capital(key));
    }
  });
}

void KeyFilters::AllowKeyPressToPassCity(std::int16_t& key, bool& accepted) const {
  accepted = false;
  platform::Trap(services_, "ZEMLO_COMMON.AllowKeyPressToPassCity", [&] {
    if (key == kPasteKey) {
      accepted = PastesAsCity(services_.host.ClipboardText());
    } else if (services_.utilities.IsControlKey(static_cast<char32_t>(key)) || key == kBlank ||
               key == kPeriod) {
      accepted = true;
    } else {
      key = Capital(key);
      accepted = IsCapital(key);
    }
  });
}

bool KeyFilters::PastesAsName(const std::string& text) const {
  const auto letters = platform::ReplaceAll(platform::ReplaceAll(text, " ", ""), "%", "");
  return services_.utilities.IsAlphaText(letters);
}

bool KeyFilters::PastesAsCity(const std::string& text) const {
  return services_.utilities.IsAlphaText(text);
}

bool KeyFilters::PastesAsZip(const std::string& text) const {
  const auto all_ascii = platform::CharacterCount(text) == text.size();
  return all_ascii && std::ranges::all_of(Characters(platform::Trim(text)),
                                          [&](char32_t key) { return services_.utilities.AllowZipKey(key); });
}

void KeyFilters::Govern(CustomerControls& controls) const {
  constexpr std::string_view kKeyPress = "ZEMLO_CustMaint.mTxtCust_KeyPress";
  using Filter = void (KeyFilters::*)(std::int16_t&, bool&) const;
  const auto keys = [this](Filter filter) {
    return [this, filter](char32_t typed) -> std::optional<char32_t> {
      constexpr char32_t kMost = 0x7fff;
      if (typed > kMost) return std::nullopt;
      auto key = static_cast<std::int16_t>(typed);
      bool accepted = false;
      (this->*filter)(key, accepted);
      return accepted ? std::optional(static_cast<char32_t>(key)) : std::nullopt;
    };
  };
  const auto texts = [this, kKeyPress](bool (KeyFilters::*judge)(const std::string&) const) {
    return [this, judge, kKeyPress](const std::string& text) {
      bool accepted = false;
      platform::Trap(services_, kKeyPress, [&] { accepted = (this->*judge)(text); });
      return accepted;
    };
  };
  for (std::size_t number = 0; number < kLimits.size(); ++number) {
    auto& field = controls.mTxtCust[number];
    const auto& [max_length, kind] = kLimits[number];
    field.max_length = max_length;
    if (kind == Kind::kName) {
      field.key_filter = keys(&KeyFilters::AllowKeyPressToPassName);
      field.paste_filter = texts(&KeyFilters::PastesAsName);
    } else if (kind == Kind::kCity) {
      field.key_filter = keys(&KeyFilters::AllowKeyPressToPassCity);
      field.paste_filter = texts(&KeyFilters::PastesAsCity);
    } else if (kind == Kind::kZip) {
      field.key_filter = [this, kKeyPress](char32_t key) {
        bool accepted = false;
        platform::Trap(services_, kKeyPress, [&] { accepted = services_.utilities.AllowZipKey(key); });
        return accepted ? std::optional(key) : std::nullopt;
      };
      field.paste_filter = texts(&KeyFilters::PastesAsZip);
    }
  }
}

}  // namespace customers
