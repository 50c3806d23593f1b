#include "customers/maintenance/address_changes.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"

namespace customers {

namespace {

/// The first item of the opening snapshot that holds `prefix` and differs from the present one.
bool DiffersFrom(const Snapshot& opening, const Snapshot& present, std::string_view prefix) {
  const auto compared = [](const std::string& item) { return platform::UpperCase(platform::Trim(item)); };
  for (std::size_t place = 0; place < opening.size(); ++place) {
    if (!HoldsInCapitals(opening[place], prefix)) continue;
    if (compared(opening[place]) != compared(ItemAt(present, place))) return true;
  }
  return false;
}

}  // namespace

bool AddressChanges::AddressChanged() const {
  if (controls_.HasMailingSuggestion() || controls_.HasResidentSuggestion()) {
    for (auto field = kMailingSide.Line1(); field <= kResidentSide.Zip(); ++field) {
      if (controls_.mTxtCust[field].text() != controls_.mTxtCust[field].Tag) return true;
    }
    return std::ranges::any_of(controls_.mCboState, [](auto& list) { return list.Code() != list.Tag; });
  }
  if (opening_.empty()) return false;
  const auto present = SaveValues(controls_, ResidentItems::kAlways);
  for (std::size_t place = 0; place < present.size(); ++place) {
    const bool is_address = HoldsInCapitals(present[place], kResidentSide.prefix) ||
                            HoldsInCapitals(present[place], kMailingSide.prefix);
    if (is_address && present[place] != ItemAt(opening_, place)) return true;
  }
  return false;
}

bool AddressChanges::AcceptAllFinalist() const {
  return controls_.HasMailingSuggestion() &&
         std::ranges::all_of(controls_.mChkAccept, &platform::CheckBox::ticked);
}

void AddressChanges::CheckChangedAddress(bool& mailing_changed, bool& resident_changed) const {
  mailing_changed = false;
  resident_changed = false;
  if (opening_.empty()) return;
  const auto present = SaveValues(controls_, ResidentItems::kAlways);
  mailing_changed = DiffersFrom(opening_, present, kMailingSide.prefix);
  resident_changed = DiffersFrom(opening_, present, kResidentSide.prefix);
}

void AddressChanges::NoteSent() {
  sent_.clear();
  for (auto field = kMailingSide.Line1(); field <= kResidentSide.Zip(); ++field)
    sent_.push_back(controls_.mTxtCust[field].text());
  for (auto& list : controls_.mCboState) sent_.push_back(list.Code());
}

void AddressChanges::RememberVerified() {
  if (sent_.empty()) return;
  const auto sent = std::exchange(sent_, {});
  auto value = sent.begin();
  for (auto field = kMailingSide.Line1(); field <= kResidentSide.Zip(); ++field)
    controls_.mTxtCust[field].Tag = *value++;
  for (auto& list : controls_.mCboState) list.Tag = *value++;
}

}  // namespace customers
