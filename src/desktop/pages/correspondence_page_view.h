#pragma once

#include "desktop/pages/page_view.h"
#include "workspace/pages/correspondence_page.h"

namespace desktop {

/// "&Generate Letter (s)". Page and settings outlive the view.
class CorrespondencePageView : public PageView {
 public:
  CorrespondencePageView(workspace::CorrespondencePage& page, platform::ViewSettings& settings,
                         QWidget* parent = nullptr);
};

}  // namespace desktop
