#include "host/view_settings_file.h"

#include <QSettings>
#include <QString>

namespace host {
namespace {

QString KeyOf(std::string_view name) {
  return QStringLiteral("View/") + QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

}  // namespace

ViewSettingsFile::ViewSettingsFile(const DataFolder& folder)
    : file_(std::make_unique<QSettings>(QString::fromStdString((folder.Config() / "desktop.ini").string()),
                                        QSettings::IniFormat)) {}

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
