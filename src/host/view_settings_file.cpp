#include "host/view_settings_file.h"

#include <QSettings>
#include <QString>

#include <unistd.h>

#include "platform/file_access.h"

namespace host {
namespace {

QString KeyOf(std::string_view name) {
  return QStringLiteral("View/") + QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

}  // namespace

ViewSettingsFile::ViewSettingsFile(const DataFolder& folder)
    : file_(std::make_unique<QSettings>(QString::fromStdString((folder.Config() / "desktop.ini").string()),
                                        QSettings::IniFormat)) {
  // The file keeps the permissions that it is made with; where it cannot be made, nothing is remembered.
  if (const int made = platform::OpenNewFile(folder.Config() / "desktop.ini"); made >= 0) close(made);
}

ViewSettingsFile::~ViewSettingsFile() = default;

std::string ViewSettingsFile::Remembered(std::string_view name) const {
  return file_->value(KeyOf(name)).toString().toStdString();
}

void ViewSettingsFile::Remember(std::string_view name, std::string_view text) {
  if (text.empty()) {
    file_->remove(KeyOf(name));
  } else {
    file_->setValue(KeyOf(name), QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
  }
}

}  // namespace host
