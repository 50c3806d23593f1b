#include "workspace/pages/pages.h"

#include "platform/failure.h"

namespace workspace {

using platform::Failure;

LetterPage& Pages::Letter(PageIndex page) {
  if (page == PageIndex::kCorrespondence) return correspondence;
  if (page == PageIndex::kTracking) return tracking;
  throw Failure(Failure::Kind::kInternal, "This page has no letter request.");
}

platform::Grid& Pages::sdgGrid(PageIndex page) {
  return page == PageIndex::kBatch ? batch.sdgGrid : Letter(page).sdgGrid;
}

}  // namespace workspace
