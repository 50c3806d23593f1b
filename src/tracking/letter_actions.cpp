#include "tracking/letter_actions.h"

namespace tracking {

using workspace::PageIndex;
using workspace::TrackingPage;

void LetterActions::LetterActClick(std::size_t option) {
  platform::Trap(services_, "ZEMLO_Correspondence.LetterActClick", [&] {
    if (Act(option)) page_.letter_action.SetEnabled(false);
  });
}

/// Whether a request is under way.
bool LetterActions::Act(std::size_t option) {
  switch (option) {
    case TrackingPage::kViewLetter:
      return fetch_.RePrintLetter("Letter_Preview", PageIndex::kTracking);
    case TrackingPage::kSave:
      return fetch_.RePrintLetter("Letter_Save", PageIndex::kTracking);
    case TrackingPage::kReprintLocal:
      return local_reprint_.Start();
    case TrackingPage::kViewBookmark:
      return fetch_.RePrintLetter("Letter_BKView", PageIndex::kTracking);
    default:
      return false;
  }
}

}  // namespace tracking
