#pragma once

#include "desktop/page_view.h"
#include "workspace/batch_page.h"

namespace desktop {

/// "&Track Batch Files". The page outlives the view.
class BatchPageView : public PageView {
 public:
  explicit BatchPageView(workspace::BatchPage& page, QWidget* parent = nullptr);

 private:
  QWidget* MakeSearch(workspace::BatchPage& page);
};

}  // namespace desktop
