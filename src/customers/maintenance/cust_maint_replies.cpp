#include <charconv>
#include <utility>

#include "customers/maintenance/address_verdict.h"
#include "customers/maintenance/cust_maint.h"
#include "platform/agreed/requests.h"
#include "platform/agreed/rights.h"
#include "platform/failure.h"
#include "platform/identity.h"
#include "platform/text.h"
#include "platform/xml/xml.h"
#include "workspace/messaging/at_exit.h"

// The save on its way to the server, and what comes back of it.
namespace customers {

namespace {

constexpr const char* kRecordName = "Customer";
constexpr std::string_view kVerdictColumn = "FINALIST_IND";

std::string ThisApplication() {
  return std::string(platform::kApplicationName);
}

/// The first row with an address that did not pass.
std::optional<std::size_t> FailedRow(const platform::RecordSet& rows) {
  if (!rows.HasColumn(kVerdictColumn)) return std::nullopt;
  for (std::size_t row = 0; row < rows.RecordCount(); ++row) {
    const auto& verdict = rows.Get(row, kVerdictColumn);
    if (!verdict.IsNull() && !verdict.AsText().empty() && verdict.AsInteger() > 0) return row;
  }
  return std::nullopt;
}

/// What the first element XML_COL of the text counts; 0 where there is no text, no such element or no number.
std::int64_t CountIn(const std::string& memo) {
  if (platform::IsBlank(memo)) return 0;
  const auto text = platform::XmlDocument::Parse(memo).OrFail();
  const auto count = text.FirstByTagName("XML_COL");
  if (!count) return 0;
  const auto text_of_count = count.Text();
  const auto digits = platform::Trim(text_of_count);
  const auto* const end = digits.data() + digits.size();
  std::int64_t number = 0;
  const auto [stopped, failed] = std::from_chars(digits.data(), end, number);
  return failed == std::errc() && stopped == end ? number : 0;
}

/// Which ones, as the server takes them.
int AcceptedSuggestions(const std::array<platform::CheckBox, 2>& boxes) {
  return (boxes[kMailingSide.number].ticked() ? 1 : 0) + (boxes[kResidentSide.number].ticked() ? 2 : 0);
}

/// The customer that was stored; "" where the answer names none.
std::string SavedCustomer(const platform::RecordSet& rows) {
  if (rows.IsEmpty() || !rows.HasColumn("CUST_ID")) return "";
  const auto id = rows.Text(0, "CUST_ID");
  return platform::IsBlank(id) ? "" : id;
}

}  // namespace

void ZEMLO_CustMaint::InitializeMessage() {
  services_.status.ShowStatus("Saving Customer Information ...");
  message_ = mVemtMessage_->NewMessage();
  message_->Application(ThisApplication());
  message_->Version(std::string(platform::kVersion));
  message_->UserId(services_.settings.UserId());
  message_->MessageType(platform::message_type::kSaveCustomer);
  message_key_ = message_->MessageKey();
}

bool ZEMLO_CustMaint::SendMessage(const std::shared_ptr<platform::RecordSet>& record) {
  const bool made =
      platform::Trap(services_, "ZEMLO_CustMaint.InitializeMessage", [&] { InitializeMessage(); });
  const bool sent =
      made && platform::Trap(services_, "ZEMLO_CustMaint.SendMessage", [&] {
        namespace request_key = platform::request_key;
        if (mode_ == "UPD" && !version.empty())
          message_->AddKey(platform::Criterion(platform::KeyNamed(request_key::kCustomerVersion), version));
        if (const auto accepted = AcceptedSuggestions(mChkAccept); accepted != 0) {
          message_->AddKey(platform::Criterion(platform::KeyNamed(request_key::kAcceptedSuggestions),
                                               std::to_string(accepted)));
        }
        message_->AddRecord(std::make_shared<platform::RequestRecord>(record), kRecordName);
        message_->BuildMessage();
        timed_out_ = false;
        is_saving_ = true;
        EnableControls(false);
        services_.host.SetMousePointer(platform::MousePointer::kHourglass);
        message_->Send();
      });
  if (!sent) EndSaving();
  return sent;
}

/// What was sent is answered, or could not be sent.
void ZEMLO_CustMaint::EndSaving() {
  if (std::exchange(is_saving_, false)) EnableControls(true);
  services_.host.SetMousePointer(platform::MousePointer::kNormal);
  services_.status.ShowStatus("");
}

void ZEMLO_CustMaint::vemtMessage_MsgTimeout() {
  Procedure("vemtMessage_MsgTimeout", [&] { timed_out_ = true; });
}

void ZEMLO_CustMaint::vemtMessage_DataReady(const std::string& application) {
  if (application != platform::kApplicationName) return;
  if (!is_saving_ || !services_.messages.HasReply(message_key_)) return;
  constexpr std::string_view kProcedure = "ZEMLO_CustMaint.vemtMessage_DataReady";
  RunHandler([&] {
    const workspace::AtExit end(services_, kProcedure, [&] {
      services_.host.SetMousePointer(platform::MousePointer::kNormal);
      services_.status.ShowStatus("");
      DataChanged = shown();
    });
    is_saving_ = false;
    DataChanged = true;  // while the dialog stays: nothing was stored. Decision [unstored-changes].
    const bool done = platform::Trap(services_, kProcedure, [&] {
      const auto error = services_.messages.GetReplyError(
          ThisApplication(), "ZEMLO_CustMaint.VemtMessage_DataReady", message_key_);
      if (!error.empty()) return ShowFailure(error);
      const bool names_customer = TakeReply();
      TellRescheduled();
      if (!names_customer) FailUnnamed();
    });
    if (!done && shown()) EnableControls(true);
  });
}

void ZEMLO_CustMaint::ShowFailure(const std::string& error) {
  services_.host.ShowMessage({error, platform::MessageIcon::kCritical, message_title_});
  services_.status.ShowStatus("Query Not Successful.");
  if (timed_out_) {
    Hide();
  } else {
    EnableControls(true);
  }
}

/// Returns whether the answer names the customer that was stored, or that was not for its addresses.
bool ZEMLO_CustMaint::TakeReply() {
  const auto record = services_.messages.GetRecord(ThisApplication(), kRecordName, message_key_);
  const auto rows = record ? record->Recordset() : nullptr;
  if (rows) {
    if (const auto failed = FailedRow(*rows)) {
      ShowVerdict(*rows, *failed);
      return true;
    }
    const auto id = SavedCustomer(*rows);
    saved_ = !id.empty();
    if (saved_) CustID = id;
  }
  Hide();
  return saved_;
}

void ZEMLO_CustMaint::ShowVerdict(const platform::RecordSet& rows, std::size_t row) {
  AddressVerdict verdict(*this, changes_, rows, row);
  const auto text = verdict.Show();
  if (!text.empty()) changes_.RememberVerified();
  EnableEntry(true);
  auto& save = mCmdOption[option_number::kSave];
  save.SetEnabled(true);
  save.SetCaption("Save");
  mCmdOption[option_number::kClose].SetEnabled(true);
  if (!text.empty()) services_.host.ShowMessage({text, platform::MessageIcon::kNone, message_title_});
  FocusSuggestion();
}

/// Decision [saved-unnamed].
void ZEMLO_CustMaint::FailUnnamed() {
  throw platform::Failure(
      platform::Failure::Kind::kDamaged,
      "The server's answer names no customer. Look the customer up to see what was stored.");
}

/// To what the user may accept now, else to what he has to mend.
void ZEMLO_CustMaint::FocusSuggestion() {
  for (const auto& side : {kMailingSide, kResidentSide}) {
    if (mFraFinalist[side.number].enabled()) return MoveFocus(mChkAccept[side.number]);
  }
  const auto& failed = HasMailingSuggestion() ? kMailingSide : kResidentSide;
  MoveFocus(mTxtCust[failed.Line1()]);
}

void ZEMLO_CustMaint::TellRescheduled() {
  const auto record =
      services_.messages.GetRecord(ThisApplication(), platform::record_name::kRescheduled, message_key_);
  if (!record || record->RecordCount() == 0) return;
  const auto count = CountIn(record->Fields("MEMO").AsText());
  if (count < 1 || !services_.utilities.IsAuthorized(platform::right::kToldOfCorrectedLetters)) return;
  services_.host.ShowMessage({std::to_string(count) + " letters corrected and scheduled for tonight's batch",
                              platform::MessageIcon::kNone, message_title_});
}

}  // namespace customers
