#include "workspace/requests/history_search.h"

#include <string>

#include "platform/agreed/requests.h"
#include "platform/text.h"
#include "workspace/requests/letter_list.h"
#include "workspace/requests/letter_request.h"

namespace workspace {

namespace {

namespace request_key = platform::request_key;
using platform::Criterion;
using platform::KeyItem;
using platform::KeyNamed;
using platform::Trap;

constexpr const char* kClearForAll = " only. Clear the page to search those of all customers.";

std::string DayText(const platform::DateField& field) {
  return field.value() ? platform::DateText(*field.value()) : "";
}

void AddIfGiven(std::vector<KeyItem>& keys, std::string_view name, const std::string& value) {
  if (!value.empty()) keys.push_back(Criterion(KeyNamed(name), value));
}

}  // namespace

void HistorySearch::mCmdTracking_Click() {
  Trap(uses_.services, "ZEMLO_Correspndnce.mCmdTracking_Click", [&] {  // spelt so as given
    TakeCriteria();
    bool ok = false;
    uses_.check.ValidateSeach(ok);
    if (!ok) return;
    auto& panel = uses_.pages.tracking.panel;
    const bool could_select = panel.select_customer.enabled();
    panel.EnableSelection(false);
    GetFormAndCheckDigit(uses_.services, uses_.search.letter);
    if (!SendLetterInq(PageIndex::kTracking)) return panel.EnableSelection(could_select);
    narrowed_to_ = CustomerOfAListedLetter();
    if (!narrowed_to_.empty()) {
      uses_.services.status.ShowReason("Searching letters of " + narrowed_to_ + kClearForAll);
    }
  });
}

std::string HistorySearch::CustomerOfAListedLetter() const {
  const auto& panel = uses_.pages.tracking.panel;
  if (uses_.customer.TrackingCustomerFixed || panel.customer_id.caption().empty()) return "";
  const auto name = platform::ReplaceAll(panel.name.caption(), "&&", "&");
  return panel.customer_id.caption() + (name.empty() ? "" : " " + name);
}

void HistorySearch::TakeCriteria() {
  auto& page = uses_.pages.tracking;
  auto& search = uses_.search;
  search.letter.form_text = page.txtFormNum.text();
  search.letter.customer_id = page.panel.customer_id.caption();
  search.letter.form_type = platform::Trim(page.ZEMLO_FormTypeCodes.Code());
  search.from_date = DayText(page.from_date);
  search.to_date = DayText(page.to_date);
  search.batch_number = page.txtBatch.text();
  uses_.troop_district.TroopDistrictSplit();
  // A number without a digit keeps the digit of the one before it: that was another search.
  search.letter.check_digit.clear();
}

bool HistorySearch::ListLetters(const std::vector<std::int64_t>& numbers) {
  narrowed_to_.clear();
  return Send(PageIndex::kTracking, [&] {
    std::string list;
    for (const auto number : numbers) list += (list.empty() ? "" : ",") + std::to_string(number);
    return std::vector{Criterion(KeyNamed(request_key::kLetters), list),
                       Criterion(KeyNamed(request_key::kThin), "YES")};
  });
}

bool HistorySearch::SendLetterInq(PageIndex page) {
  return Send(page, [&] { return Keys(page); });
}

bool HistorySearch::Send(PageIndex page, const std::function<std::vector<KeyItem>()>& keys) {
  return Trap(uses_.services, "ZEMLO_Corresp.SendLetterInq", [&] {
    uses_.envelope.Send({
        .type = platform::message_type::kSearch,
        .name = "Letter_History",
        .keys = keys(),
        .status = "Requesting letter history",
        .status_when = RequestDescription::Status::kBeforeSending,
        .mode = RequestDescription::SendMode::kSendAndWait,
    });
    uses_.pages.sdgGrid(page).SetEnabled(false);
  });
}

std::vector<KeyItem> HistorySearch::Keys(PageIndex page) {
  const bool is_tracking = page == PageIndex::kTracking;
  const auto& request = is_tracking ? uses_.search.letter : uses_.request;
  std::vector<KeyItem> keys;
  AddIfGiven(keys, request_key::kLetterType, uses_.pages.Letter(page).ZEMLO_LetterType.Code());
  if (is_tracking || request.form_number.empty())
    AddIfGiven(keys, request_key::kCustomer, request.customer_id);
  AddIfGiven(keys, request_key::kFormNumber, request.form_number);
  AddIfGiven(keys, request_key::kCheckDigit, request.check_digit);
  AddIfGiven(keys, request_key::kFormType, request.form_type);
  if (is_tracking) AddTrackingKeys(keys);
  keys.push_back(Criterion(KeyNamed(request_key::kThin), "YES"));
  return keys;
}

void HistorySearch::AddTrackingKeys(std::vector<KeyItem>& keys) const {
  keys.push_back(Criterion(KeyNamed(request_key::kOutcome), LetterStatus()));
  AddIfGiven(keys, request_key::kTroop, uses_.search.troop);
  AddIfGiven(keys, request_key::kDistrict, uses_.search.district);
  AddDates(keys);
  AddIfGiven(keys, request_key::kBatch, uses_.search.batch_number);
}

// A to date alone is no criterion: the check refuses it.
void HistorySearch::AddDates(std::vector<KeyItem>& keys) const {
  const auto& from = uses_.search.from_date;
  const auto& to = uses_.search.to_date;
  if (from.empty()) return;
  const bool is_range = !to.empty() && to != from;
  keys.push_back(is_range ? Criterion(KeyNamed(request_key::kDays),
                                      from + std::string(platform::key_operator::kAnd) + to,
                                      platform::key_operator::kBetween)
                          : Criterion(KeyNamed(request_key::kDays), from));
}

const char* HistorySearch::LetterStatus() const {
  const auto& options = uses_.pages.tracking.OptLetterStatus;
  if (options[TrackingPage::kSuccessful].selected()) return platform::letter_outcome::kSucceeded;
  if (options[TrackingPage::kFailure].selected()) return platform::letter_outcome::kFailed;
  return platform::letter_outcome::kAll;
}

void HistorySearch::FillHistory(const Reply& reply, PageIndex index) {
  const bool is_done = Trap(uses_.services, "ZEMLO_Corresp.FillHistory", [&] {
    const auto listing = index == PageIndex::kBatch ? PageIndex::kTracking : index;
    uses_.services.host.SetMousePointer(platform::MousePointer::kNormal);
    ListReply(reply, uses_.pages.Letter(listing));
    if (listing == PageIndex::kTracking && !narrowed_to_.empty()) {
      uses_.services.status.ShowReason("These are letters of " + narrowed_to_ + kClearForAll);
    }
    listing == PageIndex::kTracking ? WithdrawLetterActions() : WithdrawOnlineActions();
  });
  if (!is_done) uses_.services.status.ShowStatus("Ready");
}

void HistorySearch::ListReply(const Reply& reply, LetterPage& page) {
  const auto letters = RowsOf(uses_.services, reply, platform::record_name::kHistory);
  if (!letters) {
    ShowNoLetters(uses_.services, page.sdgGrid);
    uses_.services.status.ShowStatus("No letter history record found");
    return;
  }
  ShowLetters(page.sdgGrid, letters);
  uses_.services.status.ShowStatus("Displaying letter history");
}

void HistorySearch::WithdrawLetterActions() {
  for (auto& option : uses_.pages.tracking.OptLetter) {
    option.SetEnabled(false);
    option.SetSelected(false);
  }
}

// No letter of the new list is selected. Decision [no-letter-selected].
void HistorySearch::WithdrawOnlineActions() {
  for (const auto option : {CorrespondencePage::kViewLetter, CorrespondencePage::kPrintLetter}) {
    uses_.pages.correspondence.OptOnline[option].SetEnabled(false);
  }
}

}  // namespace workspace
