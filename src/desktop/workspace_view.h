#pragma once

#include <QTabWidget>

#include "workspace/pages.h"

namespace desktop {

/// The document: the tab strip with its three pages. The pages outlive the view.
class WorkspaceView : public QTabWidget {
 public:
  explicit WorkspaceView(workspace::Pages& pages, QWidget* parent = nullptr);

 private:
  platform::Connection turned_;
};

}  // namespace desktop
