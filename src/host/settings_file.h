#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/ini_file.h"
#include "host/office_mark.h"
#include "platform/parties/settings.h"

namespace host {

/// The user's settings file (settings.ini of the data folder), read once. docs/operations.md describes it.
///
/// Folders that are set to nothing lie in the data folder; relative ones start there. Sections and keys are
/// found without regard to case. A value that is wrong counts as not set, and is named in faults().
/// Decision [settings-reader].
class SettingsFile : public platform::Settings, public platform::SettingsStore {
 public:
  /// Throws Failure kNotFound where the folder has no settings (the message tells a new folder, which `init`
  /// prepares, from one that has lost them), kPermissionDenied where they may not be read, kDamaged where the
  /// file is not written in UTF-8.
  explicit SettingsFile(const DataFolder& folder);

  /// Writes the first settings with an explanation of each, unless there are settings already: the demo
  /// user's, or those of an office whose user is still to be entered.
  static void CreateFor(const DataFolder& folder, OfficeKind kind);

  /// What is wrong in the file, a sentence or two each with the file and the line, in the order of the file.
  const std::vector<std::string>& faults() const { return faults_; }

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
  /// Whether letters go to the printer that was chosen last without a question.
  bool PrintsWithoutAsking() const;
  std::filesystem::path PdfFolder() const;
  /// How long the layout of one letter may take.
  std::chrono::milliseconds LayoutTimeOut() const;

 private:
  void Complain(std::size_t line, const std::string& what);
  void Take(const IniFile::Entry& entry);
  std::string Text(std::string_view section, std::string_view key, const std::string& default_value) const;
  std::filesystem::path Folder(std::string_view key, const std::filesystem::path& default_folder) const;

  const DataFolder folder_;
  std::map<std::string, std::string, std::less<>>
      values_;  // by "[Section] Key" as the first settings write it
  std::vector<std::string> faults_;
};

}  // namespace host
