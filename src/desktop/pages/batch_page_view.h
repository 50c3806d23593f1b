#pragma once

#include "desktop/pages/page_view.h"
#include "workspace/pages/batch_page.h"

namespace desktop {

/// "&Track Batch Files". Page and settings outlive the view.
class BatchPageView : public PageView {
 public:
  BatchPageView(workspace::BatchPage& page, platform::ViewSettings& settings, QWidget* parent = nullptr);

 private:
  QWidget* MakeSearch(workspace::BatchPage& page);
};

}  // namespace desktop
