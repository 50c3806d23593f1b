#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The settings there are, what their values have to be, and how the first settings file writes them.
namespace host {

struct Setting {
  std::string_view section;
  std::string_view key;
  /// "" where the value, which is not empty, is right; else a clause that follows it.
  std::string_view (*Complaint)(const std::string& value);
};

/// Found without regard to case; null where there is no such setting.
const Setting* FindSetting(std::string_view section, std::string_view key);

/// "[User] Region".
std::string SettingName(std::string_view section, std::string_view key);

/// "The settings there are Id, Region", or which sections there are where there is none of that name.
std::string SettingsThereAre(std::string_view section);

/// Nothing where the text is no whole number.
std::optional<int> WholeNumber(const std::string& text);

/// An explanation of each setting with its first value; {user} stands for the user's id.
extern const std::string_view kFirstSettings;

}  // namespace host
