#include "host/settings_file.h"

#include <fstream>
#include <system_error>

#include <QSettings>
#include <QString>

#include "platform/failure.h"
#include "platform/file_access.h"
#include "platform/text.h"

namespace host {
namespace {

using platform::Failure;

// {user} is the demo user, or nobody yet.
constexpr std::string_view kFirstSettings = R"(; Settings of one user. Lines that start with ; are comments.
; Both programs read this file when they start. A folder that is set to nothing lies in the data folder.

[User]
; The officer's user id, sent with requests and stored as the last officer of a letter.
Id={user}
; The region whose letters and templates are offered.
Region=K1

[Folders]
; Local copies of the letter templates.
Templates=
; The workspace's own files.
Config=
; The reference database (code tables, letter definitions, template versions).
ReferenceDatabase=
; Where letters printed to the PDF folder are filed.
Printed=

[Reference]
Provider="Provider=SQLite;"

[Printing]
; A printer queue's name, "PDF folder", or nothing: the system's default queue, else the PDF folder.
Printer=

[Preview]
; Wait before a preview is merged, in milliseconds; anything up to 1500 means 1500.
DelayMilliseconds=1500
; How long the layout of one letter may take, in seconds.
LayoutSeconds=60

[DMVKorvadsk]
; Y shows the "View Bookmark" action and the diagnostic details.
System\DontPrint=N
)";

QString FromText(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string WithSeparator(const std::filesystem::path& folder) {
  return (folder / "").string();
}

std::string WhyNoSettings(const DataFolder& folder) {
  const auto name = "\"" + folder.root().string() + "\"";
  const auto mark = ReadOfficeMark(folder);
  if (mark && !mark->is_whole) {
    return "The data folder " + name + " is not ready yet. Let \"zemlo-letters init\" come to its end.";
  }
  if (folder.IsNew()) {
    const auto init = [&](const std::string& kind) {
      return "\"zemlo-letters init --" + kind + " --data " + folder.root().string() + "\"";
    };
    return "There is no office in the data folder " + name + ". " + init("demo") +
           " makes one with invented customers, " + init("empty") + " one for your own.";
  }
  return "The settings file \"" + folder.Settings().string() +
         "\" is missing from a folder that is in use. Make the disk it lies on available again, or restore "
         "it from "
         "a backup.";
}

}  // namespace

SettingsFile::SettingsFile(const DataFolder& folder) : folder_(folder) {
  const auto file = folder_.Settings();
  if (!std::filesystem::exists(file)) throw Failure(Failure::Kind::kNotFound, WhyNoSettings(folder_));
  file_ = std::make_unique<QSettings>(QString::fromStdString(file.string()), QSettings::IniFormat);
  if (file_->status() != QSettings::NoError) {
    throw Failure(Failure::Kind::kDamaged, "The settings file \"" + file.string() +
                                               "\" cannot be read. Correct it, or restore it from a backup.");
  }
}

SettingsFile::~SettingsFile() = default;

void SettingsFile::CreateFor(const DataFolder& folder, OfficeKind kind) {
  if (folder.IsPrepared()) return;
  const auto part = folder.Settings().string() + ".part";
  std::ofstream file(part, std::ios::binary | std::ios::trunc);
  file << platform::ReplaceAll(kFirstSettings, "{user}", kind == OfficeKind::kDemo ? "DEMO01" : "");
  file.close();
  platform::Protect(part);
  std::error_code error;
  if (file) std::filesystem::rename(part, folder.Settings(), error);
  if (!file || error) {
    throw Failure(Failure::Kind::kUnavailable,
                  "The settings file \"" + folder.Settings().string() +
                      "\" cannot be written. Check the folder's rights and space.");
  }
}

std::string SettingsFile::Text(const char* key, const std::string& default_value) const {
  const auto text = file_->value(QString::fromLatin1(key)).toString().toStdString();
  return text.empty() ? default_value : text;
}

std::filesystem::path SettingsFile::Folder(const char* key,
                                           const std::filesystem::path& default_folder) const {
  const std::filesystem::path set = Text(key, "");
  return set.empty() ? default_folder : folder_.root() / set;
}

std::string SettingsFile::UserId() const {
  return Text("User/Id", "");
}
std::string SettingsFile::Region() const {
  return Text("User/Region", "");
}

std::string SettingsFile::TemplateFolder() const {
  return WithSeparator(Folder("Folders/Templates", folder_.Templates()));
}

std::string SettingsFile::ConfigFolder() const {
  return WithSeparator(Folder("Folders/Config", folder_.Config()));
}

std::string SettingsFile::LocalDatabasePath() const {
  return Folder("Folders/ReferenceDatabase", folder_.ReferenceDatabase()).string();
}

std::string SettingsFile::ProviderString() const {
  return Text("Reference/Provider", "Provider=SQLite;");
}

std::chrono::milliseconds SettingsFile::PreviewDelay() const {
  return std::chrono::milliseconds{file_->value("Preview/DelayMilliseconds", 1500).toInt()};
}

std::string SettingsFile::GetSetting(std::string_view application, std::string_view section,
                                     std::string_view key, std::string_view default_value) const {
  const auto path = FromText(application) + '/' + FromText(section) + '/' + FromText(key);
  return file_->value(path, FromText(default_value)).toString().toStdString();
}

std::string SettingsFile::Printer() const {
  return Text("Printing/Printer", "");
}

std::filesystem::path SettingsFile::PdfFolder() const {
  return Folder("Folders/Printed", folder_.Printed());
}

std::chrono::milliseconds SettingsFile::LayoutTimeOut() const {
  constexpr int kDefaultSeconds = 60;
  return std::chrono::seconds{file_->value("Preview/LayoutSeconds", kDefaultSeconds).toInt()};
}

}  // namespace host
