#include "customers/maintenance/snapshot.h"

#include <utility>

#include "platform/text.h"

namespace customers {

namespace {

constexpr std::string_view kSeparator = "::";

/// Builds a snapshot item by item.
class SnapshotMaker {
 public:
  explicit SnapshotMaker(CustomerControls& controls) : controls_(controls) {}

  void TakeNames() {
    namespace text = text_number;
    if (controls_.IsBusiness()) {
      Add("CUST_TYP_CD", "1");
      Add("CUST_BSNS_NM", Text(text::kBusinessName));
      Add("CO_CNTCT_NM", Text(text::kContactName));
    } else {
      Add("CUST_TYP_CD", "0");
      Add("FIRST_NM", Text(text::kFirstName));
      Add("MID_NM", Text(text::kMiddleName));
      Add("LAST_NM", Text(text::kLastName));
      Add("SUFX_NM", Text(text::kSuffix));
    }
  }
  void TakeNumbers() {
    Add("PHN_NBR", platform::Trim(controls_.mPhone.Value()));
    Add("ACCNT_NBR", controls_.mFuelTaxAcct.Value());
  }
  void TakeAddress(const AddressSide& side) {
    if (controls_.mChkAccept[side.number].ticked()) {
      TakeAddress(side, Text(side.SuggestedLine1()), Text(side.SuggestedLine2()), Text(side.SuggestedCity()),
                  Text(side.SuggestedZip()), Text(side.SuggestedState()), side.SuggestedCounty());
    } else {
      TakeAddress(side, Text(side.Line1()), Text(side.Line2()), Text(side.City()),
                  platform::ReplaceAll(Text(side.Zip()), "-", ""), controls_.State(side), side.number);
    }
  }
  Snapshot Taken() { return std::move(snapshot_); }

 private:
  const std::string& Text(std::size_t field) const { return controls_.mTxtCust.at(field).text(); }
  void Add(std::string_view key, std::string_view value) {
    snapshot_.push_back(std::string(key).append(kSeparator).append(value));
  }
  void TakeAddress(const AddressSide& side, const std::string& line_1, const std::string& line_2,
                   const std::string& city, const std::string& zip, const std::string& state,
                   std::size_t county) {
    const auto key = [&](std::string_view column) { return std::string(side.prefix).append(column); };
    Add(key("ADDR_1"), line_1);
    Add(key("ADDR_2"), line_2);
    Add(key("CITY"), city);
    Add(key("ZIP_CD"), zip);
    Add(key("ST"), state);
    Add(key("CNTY_CD"), controls_.mLblCounty.at(county).Tag);
  }

  CustomerControls& controls_;
  Snapshot snapshot_;
};

}  // namespace

Snapshot SaveValues(CustomerControls& controls, ResidentItems resident) {
  SnapshotMaker maker(controls);
  maker.TakeNames();
  maker.TakeNumbers();
  maker.TakeAddress(kMailingSide);
  const bool is_entered = !platform::Trim(controls.mTxtCust[kResidentSide.Line1()].text()).empty();
  if (resident == ResidentItems::kAlways || is_entered) maker.TakeAddress(kResidentSide);
  return maker.Taken();
}

std::string_view KeyOf(std::string_view item) {
  return item.substr(0, item.find(kSeparator));
}

std::string_view ValueOf(std::string_view item) {
  const auto at = item.find(kSeparator);
  return at == std::string_view::npos ? std::string_view() : item.substr(at + kSeparator.size());
}

const std::string& ItemAt(const Snapshot& snapshot, std::size_t place) {
  static const std::string kNone;
  return place < snapshot.size() ? snapshot[place] : kNone;
}

std::string ResidentAddressOf(const Snapshot& snapshot) {
  std::string joined;
  for (const auto& item : snapshot) {
    if (item.starts_with(kResidentSide.prefix)) joined += ValueOf(item);
  }
  return joined;
}

bool HoldsInCapitals(std::string_view item, std::string_view text) {
  return platform::UpperCase(item).find(text) != std::string::npos;
}

}  // namespace customers
