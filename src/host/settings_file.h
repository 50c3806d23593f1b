#pragma once

#include <memory>
#include <string>

#include "host/office_mark.h"
#include "platform/settings.h"

class QSettings;

namespace host {

/// The user's settings file (settings.ini of the data folder), read once. docs/operations.md describes it.
///
/// Folders that are set to nothing lie in the data folder; relative ones start there.
class SettingsFile : public platform::Settings, public platform::SettingsStore {
 public:
  /// Throws Failure kNotFound where the folder has no settings (the message tells a new folder, which `init`
  /// prepares, from one that has lost them), kDamaged where the file is no settings file.
  explicit SettingsFile(const DataFolder& folder);
  ~SettingsFile() override;

  /// Writes the first settings with an explanation of each, unless there are settings already: the demo
  /// user's, or those of an office whose user is still to be entered.
  static void CreateFor(const DataFolder& folder, OfficeKind kind);

  std::string UserId() const override;
  std::string Region() const override;
  std::string TemplateFolder() const override;
  std::string ConfigFolder() const override;
  std::string LocalDatabasePath() const override;
  std::string ProviderString() const override;
  std::chrono::milliseconds PreviewDelay() const override;
  std::string GetSetting(std::string_view application, std::string_view section, std::string_view key,
                         std::string_view default_value) const override;

  /// The printer letters go to; "" for the system's default queue, or the PDF folder where there is no queue.
  std::string Printer() const;
  std::filesystem::path PdfFolder() const;
  /// How long the layout of one letter may take.
  std::chrono::milliseconds LayoutTimeOut() const;

 private:
  std::string Text(const char* key, const std::string& default_value) const;
  std::filesystem::path Folder(const char* key, const std::filesystem::path& default_folder) const;

  const DataFolder folder_;
  std::unique_ptr<QSettings> file_;
};

}  // namespace host
