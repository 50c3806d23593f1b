#include "workspace/requests/online_actions.h"

namespace workspace {

void OnlineActions::OnlineActClick(std::size_t option) {
  platform::Trap(services_, "ZEMLO_Correspondence.OnlineActClick", [&] {
    switch (option) {
      case CorrespondencePage::kCreateLetter:
        request_.CreateLetter(create_);
        break;
      case CorrespondencePage::kClear:
        request_.ClearField(PageIndex::kCorrespondence);
        break;
      case CorrespondencePage::kViewLetter:
        if (reprint_) reprint_("Letter_Preview");
        break;
      case CorrespondencePage::kPrintLetter:
        if (reprint_) reprint_("Letter_Print");
        break;
      default:
        break;
    }
  });
}

}  // namespace workspace
