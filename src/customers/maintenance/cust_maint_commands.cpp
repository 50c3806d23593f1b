#include <algorithm>
#include <utility>

#include "customers/maintenance/cust_maint.h"

// What the user does in the dialog.
namespace customers {

namespace {

constexpr std::size_t kZipAreaLength = 5;

std::string ZipArea(const platform::TextField& zip) {
  return zip.text().substr(0, kZipAreaLength);
}

}  // namespace

void ZEMLO_CustMaint::TextChanged() {
  DataChanged = true;
  mCmdOption[option_number::kSave].SetCaption(kVerifyAndSave);
  RunChecks();
}

void ZEMLO_CustMaint::RunChecks() {
  if (is_checking_) return;  // a list reads its rows while it is asked
  is_checking_ = true;
  rules_.CheckEdits();
  is_checking_ = false;
}

void ZEMLO_CustMaint::mCmdOption_Click(std::size_t number) {
  RunHandler([&] {
    platform::Trap(services_, "ZEMLO_CustMaint.mCmdOption_Click", [&] {
      switch (number) {
        case option_number::kSave:
          return VerifyAndSave();
        case option_number::kClose:
          return CloseDialog();
        case option_number::kSameAsResident:
          return CopyAddress(kResidentSide, kMailingSide);
        default:
          return CopyAddress(kMailingSide, kResidentSide);
      }
    });
  });
}

void ZEMLO_CustMaint::VerifyAndSave() {
  rules_.ForgetErrors();
  is_checking_ = true;  // the rules are run here
  const bool valid = rules_.AreFieldsValid();
  is_checking_ = false;
  if (!valid) return FocusFirstInvalid();
  std::shared_ptr<platform::RecordSet> record;
  const auto resident = mode_ == "UPD" ? ResidentItems::kAlways : ResidentItems::kWhereEntered;
  const bool built =
      TakeSnapshot(current_, resident) && platform::Trap(services_, "ZEMLO_CustMaint.BuildRecordset", [&] {
        record = BuildRecordset({*this, changes_, opening_, current_, mode_, CustID}, flags);
      });
  if (!built || !SendMessage(record)) return;
  exit_state_ = false;
  DataChanged = false;
}

bool ZEMLO_CustMaint::TakeSnapshot(Snapshot& snapshot, ResidentItems resident) {
  return Procedure("SaveValues", [&] { snapshot = SaveValues(*this, resident); });
}

void ZEMLO_CustMaint::FocusFirstInvalid() {
  const auto invalid = std::ranges::find_if(tab_order_, &platform::Control::marked_invalid);
  if (invalid != tab_order_.end()) MoveFocus(**invalid);
}

void ZEMLO_CustMaint::CloseDialog() {
  // Decision [unstored-changes].
  const bool asks = DataChanged || SaveValues(*this, ResidentItems::kAlways) != opening_;
  auto answer = platform::MessageAnswer::kNo;
  if (asks) {
    answer = services_.host.ShowMessage({.text = "Would you like to save changes to your data ?",
                                         .icon = platform::MessageIcon::kQuestion,
                                         .title = message_title_,
                                         .buttons = platform::MessageButtons::kYesNoCancel,
                                         .default_answer = platform::MessageAnswer::kYes});
  }
  if (answer == platform::MessageAnswer::kYes) VerifyAndSave();
  exit_state_ = true;
  if (answer == platform::MessageAnswer::kNo) Hide();
}

void ZEMLO_CustMaint::CopyAddress(const AddressSide& from, const AddressSide& to) {
  for (std::size_t place = 0; place < 4; ++place)
    mTxtCust[to.first_entered + place].SetText(mTxtCust[from.first_entered + place].text());
  ShowState(to, State(from));
  mCmdOption[option_number::kSameAsResident].SetEnabled(false);
  mCmdOption[option_number::kSameAsMailing].SetEnabled(false);
  mChkReturnMail[to.number].SetTicked(mChkReturnMail[from.number].ticked());
  mLblCounty[to.number].SetCaption(mLblCounty[from.number].caption());
  mLblCounty[to.number].Tag = mLblCounty[from.number].Tag;
}

void ZEMLO_CustMaint::EnableControls(bool enabled) {
  mCmdOption[option_number::kSave].SetEnabled(enabled);
  mCmdOption[option_number::kClose].SetEnabled(enabled);
  mCmdOption[option_number::kSameAsMailing].SetEnabled(enabled && rules_.CanCopy(kMailingSide));
  mCmdOption[option_number::kSameAsResident].SetEnabled(enabled && rules_.CanCopy(kResidentSide));
  for (auto& frame : mFraAddress) frame.SetEnabled(enabled);
  EnableEntry(enabled);
}

/// What was sent stays as it was sent until the answer: name and numbers, and whether a suggestion is
/// accepted.
void ZEMLO_CustMaint::EnableEntry(bool enabled) {
  mFraCustomer.SetEnabled(enabled);
  for (auto& box : mChkAccept) box.SetEnabled(enabled);
}

void ZEMLO_CustMaint::KeepCounties() {
  counties_.clear();
  for (const auto& side : {kMailingSide, kResidentSide}) {
    const auto& label = mLblCounty[side.number];
    counties_.push_back({ZipArea(mTxtCust[side.Zip()]), label.caption(), label.Tag});
  }
}

/// Decision [county-of-zip].
void ZEMLO_CustMaint::ShowCountyOfZip(const AddressSide& side) {
  const auto known = std::ranges::find(counties_, ZipArea(mTxtCust[side.Zip()]), &CountyOfZip::zip);
  const auto county = known == counties_.end() ? CountyOfZip() : *known;
  mLblCounty[side.number].SetCaption(county.caption);
  mLblCounty[side.number].Tag = county.code;
}

}  // namespace customers
