#include "tracking/return_mail.h"

#include "platform/agreed/letter_record.h"
#include "platform/agreed/requests.h"
#include "platform/text.h"
#include "workspace/letters/listed_letters.h"

namespace tracking {

namespace {

constexpr const char* kSubmitReturnMail = "ZEMLO_Corresp.SubmitReturnMail";

}  // namespace

bool ReturnMail::SubmitReturnMail() {
  return platform::Trap(uses_.services, kSubmitReturnMail, [&] {
    outcome_.reset();
    answer_.clear();
    auto letter = workspace::CurrentLetter(workspace::ListedLetters(uses_.pages.tracking.sdgGrid));
    const auto number = std::to_string(letter.sequence_number);
    uses_.envelope.Send({
        .type = platform::message_type::kChange,
        .letter = std::move(letter),
        .keys = {platform::Criterion(platform::KeyNamed(platform::request_key::kReturnMail), number)},
        .status = "Submit Return Mail Request",
        .status_when = workspace::RequestDescription::Status::kBeforeSending,
    });
  });
}

void ReturnMail::Replied(const workspace::Reply& reply) {
  platform::Trap(uses_.services, kSubmitReturnMail, [&] {
    const auto came = RowsOf(uses_.services, reply, platform::record_name::kReturnMailOutcome);
    if (!came) return;
    outcome_ = {came->Text("OUTCOME") == platform::item_outcome::kRefused, came->Text("MEMO")};
    answer_ = outcome_->text;
    if (!outcome_->is_refused) ShowMark(*came);
  });
}

void ReturnMail::ShowMark(const platform::RecordSet& came) const {
  namespace address = platform::letter_address;
  const auto marked = came.Get("ADDR_TYP_CD").AsInteger();
  const platform::ReturnedMail returned{.mailing = marked == address::kMailing,
                                        .residential = marked == address::kResidential};
  for (const auto page : {workspace::PageIndex::kCorrespondence, workspace::PageIndex::kTracking}) {
    auto& panel = uses_.pages.Letter(page).panel;
    if (platform::Trim(panel.customer_id.caption()) == platform::Trim(came.Text("CUST_ID"))) {
      panel.AddReturnedMail(returned);
    }
  }
}

void ReturnMail::ReplyHandled() {
  if (!outcome_ || uses_.pending.IsAwaited()) return;
  platform::Trap(uses_.services, kSubmitReturnMail, [&] {
    const auto outcome = *std::exchange(outcome_, std::nullopt);
    if (!outcome.is_refused) return uses_.services.status.ShowReason(outcome.text);
    uses_.services.host.ShowMessage({outcome.text, platform::MessageIcon::kExclamation, uses_.message_title});
  });
}

}  // namespace tracking
