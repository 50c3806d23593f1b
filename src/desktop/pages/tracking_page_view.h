#pragma once

#include "desktop/pages/page_view.h"
#include "workspace/pages/tracking_page.h"

namespace desktop {

/// "&Search Letter (s)". Page and settings outlive the view.
class TrackingPageView : public PageView {
 public:
  TrackingPageView(workspace::TrackingPage& page, platform::ViewSettings& settings,
                   QWidget* parent = nullptr);

 private:
  QWidget* MakeCriteria(workspace::TrackingPage& page);
};

}  // namespace desktop
