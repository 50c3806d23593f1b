#pragma once

#include <memory>

#include <QSettings>

#include "apps/office.h"
#include "desktop/preview/qt_preview_viewer.h"
#include "desktop/shell/print_notices.h"
#include "desktop/shell/qt_event_queue.h"
#include "desktop/shell/qt_host_shell.h"
#include "host/data_folder.h"
#include "host/view_settings_file.h"

namespace desktop {
class WorkspaceView;
}

namespace apps {

/// The desktop on one data folder: the window, and the office behind it. Needs a QApplication.
class Desktop {
 public:
  /// Throws Failure where the data folder has not been prepared.
  explicit Desktop(const host::DataFolder& folder);
  ~Desktop();

  /// Starts the workspace and shows it. Returns before the first reply is there.
  void Open();

  desktop::HostWindow& window() { return shell_.window(); }
  Office& office() { return office_; }

 private:
  void OpenWindow();
  void Pressed(int button);
  bool Close();
  void TellFaults();
  void TellLongWork(const std::string& text);
  void TellError(const std::string& description);

  QSettings own_settings_;
  host::ViewSettingsFile view_settings_;
  desktop::QtEventQueue events_;
  desktop::QtHostShell shell_;
  desktop::QtPreviewViewer preview_;
  desktop::PrintNotices notices_;
  Office office_;                                 // uses all of the above
  std::unique_ptr<desktop::WorkspaceView> view_;  // goes before the controls it shows
};

}  // namespace apps
