#pragma once

#include <QTabWidget>

#include "platform/parties/view_settings.h"
#include "workspace/pages/pages.h"

namespace desktop {

/// The document: the tab strip with its three pages. Pages and settings outlive the
/// view.
class WorkspaceView : public QTabWidget {
 public:
  WorkspaceView(workspace::Pages& pages, platform::ViewSettings& settings, QWidget* parent = nullptr);

  /// Puts the keyboard into the first field of the page in front.
  void FocusFirstField();

 private:
  platform::Connection turned_;
};

}  // namespace desktop
