#include "tracking/letter_actions.h"

namespace tracking {

using workspace::PageIndex;
using workspace::TrackingPage;

void LetterActions::LetterActClick(std::size_t option) {
  platform::Trap(uses_.services, "ZEMLO_Correspondence.LetterActClick", [&] {
    if (Act(option)) uses_.page.letter_action.SetEnabled(false);
  });
}

/// Whether a request is under way.
bool LetterActions::Act(std::size_t option) {
  switch (option) {
    case TrackingPage::kViewLetter:
      return uses_.fetch.RePrintLetter("Letter_Preview", PageIndex::kTracking);
    case TrackingPage::kSave:
      return uses_.fetch.RePrintLetter("Letter_Save", PageIndex::kTracking);
    case TrackingPage::kReturnMail:
      return MarkReturned();
    case TrackingPage::kReprintLocal:
      return uses_.local_reprint.Start();
    case TrackingPage::kResubmit:
      return Submit("tonight's batch", "RESUBMIT");
    case TrackingPage::kReprintBatch:
      return Submit("batch reprint", "REP");
    case TrackingPage::kViewBookmark:
      return uses_.fetch.RePrintLetter("Letter_BKView", PageIndex::kTracking);
    default:
      return false;
  }
}

bool LetterActions::Submit(const std::string& for_what, const std::string& action) {
  const auto letters = std::to_string(uses_.page.sdgGrid.selected_rows().size());
  return IsConfirmed("Should these " + letters + " letters be resubmitted for " + for_what + "?") &&
         uses_.batch_submission.SubmitBatch(action);
}

// The question does not say whom it is about, and the letter may be selected no more.
bool LetterActions::MarkReturned() {
  auto& letters = uses_.page.sdgGrid;
  if (!letters.rows() || !letters.rows()->CurrentRow()) return false;
  letters.ShowCurrent();
  const auto& letter = *letters.rows();
  uses_.services.status.ShowReason("It is about letter " + letter.Text("SEQ_NBR") + ", to customer " +
                                   letter.Text("CUST_ID") + ".");
  if (IsConfirmed("Should this customer be marked as return mail?")) {
    return uses_.return_mail.SubmitReturnMail();
  }
  uses_.services.status.ShowStatus("Ready");
  return false;
}

bool LetterActions::IsConfirmed(const std::string& question) const {
  using platform::MessageAnswer;
  return uses_.services.host.ShowMessage({question, platform::MessageIcon::kQuestion, uses_.message_title,
                                          platform::MessageButtons::kYesNo, MessageAnswer::kNo}) ==
         MessageAnswer::kYes;
}

}  // namespace tracking
