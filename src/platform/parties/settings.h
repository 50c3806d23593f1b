#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace platform {

/// What the office has set for this user. Read by both programs from one file; constant while one runs.
class Settings {
 public:
  virtual ~Settings() = default;

  /// The officer's user id, sent with most requests.
  virtual std::string UserId() const = 0;
  /// The user's region code as it was set: blanks and lower case are possible.
  virtual std::string Region() const = 0;
  /// The local template folder, ending with its separator: a file's path is this text followed by its name.
  virtual std::string TemplateFolder() const = 0;
  /// The folder of the workspace's own files, ending with its separator.
  virtual std::string ConfigFolder() const = 0;
  virtual std::string LocalDatabasePath() const = 0;
  /// Start of the reference database's connection text.
  virtual std::string ProviderString() const = 0;
  /// The wait before a preview is merged, in milliseconds; anything up to 1500 means 1500.
  virtual std::chrono::milliseconds PreviewDelay() const = 0;
};

/// The per-user settings store, keyed by application, section and key.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  /// The stored text, or `default_value` when there is none.
  virtual std::string GetSetting(std::string_view application, std::string_view section, std::string_view key,
                                 std::string_view default_value) const = 0;
};

}  // namespace platform
