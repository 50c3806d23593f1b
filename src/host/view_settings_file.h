#pragma once

#include <memory>

#include "host/data_folder.h"
#include "platform/parties/view_settings.h"

class QSettings;

namespace host {

/// What the user's windows remember, in the desktop's own file (desktop.ini) beside the workspace's files.
class ViewSettingsFile : public platform::ViewSettings {
 public:
  explicit ViewSettingsFile(const DataFolder& folder);
  ~ViewSettingsFile() override;

  std::string Remembered(std::string_view name) const override;
  void Remember(std::string_view name, std::string_view text) override;

 private:
  std::unique_ptr<QSettings> file_;
};

}  // namespace host
