#pragma once

#include <array>

#include "platform/controls/control.h"
#include "workspace/messaging/page_index.h"
#include "workspace/pages/batch_page.h"
#include "workspace/pages/correspondence_page.h"
#include "workspace/pages/tracking_page.h"

namespace workspace {

/// The tab strip over the pages.
class PageTabs : public platform::Control {
 public:
  static constexpr std::array<const char*, 3> kCaptions = {"&Generate Letter (s)", "&Search Letter (s)",
                                                           "&Track Batch Files"};
  PageIndex current() const { return current_; }
  /// The user, or the code, turns to a page.
  void Select(PageIndex page) {
    if (page == current_ || page == PageIndex::kBatchReprint) return;
    current_ = page;
    Changed();
  }
  platform::Event<> Changed;

 private:
  PageIndex current_ = PageIndex::kCorrespondence;
};

/// The controls of the workspace. Owned by the document; the parts, the views and the tests work them.
struct Pages {
  explicit Pages(const platform::Services& services) : correspondence(services), tracking(services) {}

  PageTabs tabs;
  CorrespondencePage correspondence;
  TrackingPage tracking;
  BatchPage batch;

  /// Throws Failure kInternal for a page that has no letter request: the batch page and none.
  LetterPage& Letter(PageIndex page);
  /// Throws Failure kInternal for none.
  platform::Grid& sdgGrid(PageIndex page);
};

}  // namespace workspace
