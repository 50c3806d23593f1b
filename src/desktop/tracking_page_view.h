#pragma once

#include "desktop/page_view.h"
#include "workspace/tracking_page.h"

namespace desktop {

/// "&Search Letter (s)". The page outlives the view.
class TrackingPageView : public PageView {
 public:
  explicit TrackingPageView(workspace::TrackingPage& page, QWidget* parent = nullptr);

 private:
  QWidget* MakeCriteria(workspace::TrackingPage& page);
};

}  // namespace desktop
