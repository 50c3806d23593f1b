#pragma once

#include "platform/parties/services.h"
#include "workspace/pages/correspondence_page.h"

namespace tracking {

/// The letters listed on the correspondence page: one of them may be viewed and printed.
class CorrespondenceGrid {
 public:
  /// The references outlive this.
  CorrespondenceGrid(const platform::Services& services, workspace::CorrespondencePage& page)
      : services_(services), page_(page) {}

  /// The selection has changed. One letter becomes the current row. A failure is reported.
  void sdgGrid_Click();

 private:
  const platform::Services& services_;
  workspace::CorrespondencePage& page_;
};

}  // namespace tracking
