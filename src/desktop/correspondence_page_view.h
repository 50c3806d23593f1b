#pragma once

#include "desktop/page_view.h"
#include "workspace/correspondence_page.h"

namespace desktop {

/// "&Generate Letter (s)". The page outlives the view.
class CorrespondencePageView : public PageView {
 public:
  explicit CorrespondencePageView(workspace::CorrespondencePage& page, QWidget* parent = nullptr);
};

}  // namespace desktop
