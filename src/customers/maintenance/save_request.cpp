#include "customers/maintenance/save_request.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/agreed/record_layouts.h"
#include "platform/text.h"

namespace customers {

namespace {

constexpr std::int16_t kTrue = -1;  // as the server reads it

struct SpecialField {
  std::string_view key;
  bool ChangeFlags::*flag;
};
constexpr auto kSpecialFields = std::to_array<SpecialField>({
    {"MID_NM", &ChangeFlags::MiddleNameChanged},
    {"SUFX_NM", &ChangeFlags::SuffixNameChanged},
    {"PHN_NBR", &ChangeFlags::PhoneChanged},
    {"ACCNT_NBR", &ChangeFlags::AccountNumberChanged},
    {"RES_ADDR_2", &ChangeFlags::ResAddr2Changed},
    {"MAIL_ADDR_2", &ChangeFlags::MailAddr2Changed},
    {"CO_CNTCT_NM", &ChangeFlags::ContactNameChanged},
});

// Of a customer that is updated these are sent only where more than their case has changed.
constexpr auto kNames = std::to_array<std::string_view>(
    {"LAST_NM", "FIRST_NM", "MID_NM", "CUST_BSNS_NM", "SUFX_NM", "CO_CNTCT_NM"});

void SpecialFieldChanged(const std::string& item, const std::string& opening, ChangeFlags& flags) {
  if (item == opening) return;
  const auto* const special = std::ranges::find(kSpecialFields, KeyOf(item), &SpecialField::key);
  if (special != kSpecialFields.end()) flags.*special->flag = true;
}

bool IsSent(const std::string& item, const std::string& opening, bool updates) {
  if (!updates || std::ranges::find(kNames, KeyOf(item)) == kNames.end()) return true;
  return platform::UpperCase(item) != platform::UpperCase(opening);
}

class SaveRecord {
 public:
  explicit SaveRecord(const SaveRequest& request)
      : request_(request),
        rows_(std::make_shared<platform::RecordSet>(std::vector<std::string>(
            platform::kCustomerSaveColumns.begin(), platform::kCustomerSaveColumns.end()))) {
    rows_->AddNew();
  }

  void WriteAction() {
    if (Updates()) rows_->Set("CUST_ID", request_.CustID);
    if (!request_.changes.AcceptAllFinalist() && request_.changes.AddressChanged()) {
      rows_->Set("FINALIST_IND", kTrue);
      rows_->Set("ACTION", request_.mode + "F");
      request_.changes.NoteSent();
      return;
    }
    rows_->Set("ACTION", request_.mode);
    if (request_.mode == "ADD") rows_->Set("FUEL_TAX_IND", "Y");
  }
  void WriteItems(ChangeFlags& flags) {
    for (std::size_t place = 0; place < request_.current.size(); ++place) {
      const auto& item = request_.current[place];
      const auto& opening = ItemAt(request_.opening, place);
      SpecialFieldChanged(item, opening, flags);
      if (IsSent(item, opening, Updates())) rows_->Set(KeyOf(item), std::string(ValueOf(item)));
    }
  }
  void WriteSide(const AddressSide& side) {
    const auto& controls = request_.controls;
    const auto column = [&](std::string_view name) { return std::string(side.prefix).append(name); };
    const bool accepted = controls.mChkAccept[side.number].ticked();
    rows_->Set(column("CNTY_CD"), controls.mLblCounty[accepted ? side.SuggestedCounty() : side.number].Tag);
    const auto& returned = controls.mChkReturnMail[side.number];
    const bool was_returned = returned.Tag == "1";
    if (returned.ticked() != was_returned) rows_->Set(column("RTND_IND"), returned.ticked() ? "Y" : "N");
  }
  std::shared_ptr<platform::RecordSet> Written() { return std::move(rows_); }

 private:
  bool Updates() const { return request_.mode == "UPD"; }

  const SaveRequest& request_;
  std::shared_ptr<platform::RecordSet> rows_;
};

}  // namespace

std::shared_ptr<platform::RecordSet> BuildRecordset(const SaveRequest& request, ChangeFlags& flags) {
  SaveRecord record(request);
  record.WriteAction();
  record.WriteItems(flags);
  record.WriteSide(kMailingSide);
  record.WriteSide(kResidentSide);
  return record.Written();
}

}  // namespace customers
