#include "customers/cust_select.h"

#include <algorithm>
#include <utility>

#include "customers/returned_mail.h"
#include "platform/agreed/record_layouts.h"
#include "platform/agreed/rights.h"
#include "platform/text.h"

namespace customers {

namespace {

namespace right = platform::right;

constexpr std::size_t kLongestEntry = 60;
constexpr const char* kNothingTyped =
    "Type a name, a city or zip code, a customer ID, a fuel tax account or a phone number.";
constexpr const char* kChosenLast = "The customers you chose last.";
constexpr const char* kSearching = "Searching customers.";
constexpr const char* kSavedIsChosen = "The customer that was saved is chosen.";
constexpr const char* kNotInThisVersion = "This version of the program does not do this yet.";

/// "1,234".
std::string Grouped(std::size_t number) {
  auto text = std::to_string(number);
  for (auto place = text.size(); place > 3; place -= 3) text.insert(place - 3, ",");
  return text;
}

std::string Customers(std::size_t count) {
  return Grouped(count) + (count == 1 ? " customer" : " customers");
}

std::string WhyNot(bool is_offered, bool is_allowed, std::string_view right) {
  if (!is_offered) return kNotInThisVersion;
  if (!is_allowed) return "You do not have the right " + std::string(right) + ". The office gives it.";
  return "Choose a customer first.";
}

/// "100001  ACME, TULSA, 62-000100001-01": what is there of it.
std::string ChosenLine(const SelectedCustomer& customer) {
  std::string line = "Chosen: " + customer.CustID + " " + customer.CUSTNAME;
  for (const auto* part : {&customer.City(), &customer.FuelTax, &customer.Phone})
    if (!part->empty()) line += ", " + *part;
  if (customer.returned.Any()) line += ". " + ReturnedMailText(customer.returned);
  return platform::ReplaceAll(line, "&", "&&");
}

/// Whether another entry is the same customer.
auto IsSame(const FoundCustomer& customer) {
  return [&id = customer.values.CustID](const FoundCustomer& other) { return other.values.CustID == id; };
}

}  // namespace

ZEMLO_CustSelect::ZEMLO_CustSelect(const platform::Services& services, CustomerMaintenance maintenance)
    : services_(services), maintenance_(std::move(maintenance)), recent_(services), finder_(services) {
  txtFind.max_length = kLongestEntry;
  Say(kNothingTyped);
  cmdEdit.why_disabled = [this] {
    return WhyNot(maintenance_.edit != nullptr, services_.utilities.IsAuthorized(right::kEditCustomer),
                  right::kEditCustomer);
  };
  cmdNew.why_disabled = [this] {
    return WhyNot(maintenance_.add != nullptr, services_.utilities.IsAuthorized(right::kAddCustomer),
                  right::kAddCustomer);
  };
  EnableCommands();
  const auto keep = [this](platform::Connection connection) {
    connections_.push_back(std::move(connection));
  };
  keep(cmdEdit.Click.Connect([this] { Edit(); }));
  keep(cmdNew.Click.Connect([this] { Add(); }));
}

void ZEMLO_CustSelect::EnableCommands() {
  const bool is_one_meant = !chosen_.CustID.empty() || (has_moved_ && current_);
  cmdEdit.SetEnabled(maintenance_.edit && is_one_meant &&
                     services_.utilities.IsAuthorized(right::kEditCustomer));
  cmdNew.SetEnabled(maintenance_.add && services_.utilities.IsAuthorized(right::kAddCustomer));
}

FoundCell ZEMLO_CustSelect::Cell(std::size_t row, FoundColumn column) const {
  return CellOf(rows_.at(row), column, asked_text_);
}

std::string_view ZEMLO_CustSelect::AlertOf(std::size_t row) const {
  return rows_.at(row).values.returned.Any() ? kReturnedMail : "";
}

std::string ZEMLO_CustSelect::TypedText() const {
  return std::string(platform::TrimBlanks(platform::OnOneLine(txtFind.text())));
}

void ZEMLO_CustSelect::Say(const std::string& text) {
  status.SetCaption(platform::ReplaceAll(text, "&", "&&"));
}

void ZEMLO_CustSelect::Start() {
  AskRecent();
}

void ZEMLO_CustSelect::Leave() {
  finder_.Forget();
  choose_when_found_ = awaits_saved_ = false;
  once_saved_is_there_ = nullptr;
  if (maintenance_.forget) maintenance_.forget();
}

void ZEMLO_CustSelect::Reset() {
  Leave();
  chosen_ = {};
  chosen_text.SetCaption("");
  EnableCommands();
}

void ZEMLO_CustSelect::TypingRests() {
  const auto typed = TypedText();
  if (awaits_saved_ || (typed == asked_text_ && !has_failed_)) return;
  asked_text_ = typed;
  has_failed_ = choose_when_found_ = false;
  awaits_found_ = !typed.empty();
  ShowRows(std::move(rows_), std::nullopt);  // they answer another text: Enter must take none of them
  if (typed.empty()) return AskRecent();
  Say(kSearching);
  finder_.AskFor(asked_text_, 1, [this](CustomerAnswer answer) { ShowFound(std::move(answer)); });
}

void ZEMLO_CustSelect::AskRecent() {
  const auto ids = recent_.Ids();
  if (!ids.empty()) {
    return finder_.AskForIds(ids, [this](CustomerAnswer answer) {
      answer.error.empty() ? ShowRecent(std::move(answer.customers)) : ShowFailure(answer.error);
    });
  }
  finder_.Forget();  // an answer to what was typed before is not wanted any more
  ShowRecent({});
}

bool ZEMLO_CustSelect::UserPressesEnter() {
  TypingRests();
  if (awaits_found_) return choose_when_found_ = true;
  if (!current_ || IsChosen(*current_)) return false;
  UserChooses(*current_);
  return true;
}

bool ZEMLO_CustSelect::UserGoesBack() {
  if (txtFind.IsEmpty()) return false;
  txtFind.SetText("");
  TypingRests();
  return true;
}

void ZEMLO_CustSelect::UserMovesBy(int rows) {
  if (rows_.empty()) return;
  const auto last = static_cast<int>(rows_.size()) - 1;
  const int from = current_ ? static_cast<int>(*current_) : -1;
  UserMovesTo(static_cast<std::size_t>(std::clamp(from + rows, 0, last)));
}

void ZEMLO_CustSelect::UserMovesTo(std::size_t row) {
  if (row >= rows_.size()) return;
  current_ = row;
  has_moved_ = true;
  EnableCommands();
  if (row + 1 == rows_.size()) EndInSight();
  RowsChanged();
}

void ZEMLO_CustSelect::UserChooses(std::size_t row) {
  if (row >= rows_.size()) return;
  current_ = row;
  has_moved_ = choose_when_found_ = false;
  RowsChanged();
  if (!IsChosen(row)) TakeChosen(FoundCustomer(rows_[row]));  // what hears of it may bring other rows
}

bool ZEMLO_CustSelect::IsChosen(std::size_t row) const {
  return choice_stands_ && rows_.at(row).values.CustID == chosen_.CustID;
}

void ZEMLO_CustSelect::UserLeavesList() {
  if (has_moved_ && current_) UserChooses(*current_);
}

void ZEMLO_CustSelect::EndInSight() {
  if (!has_more_ || finder_.IsAwaited()) return;
  finder_.AskFor(asked_text_, next_row_, [this](CustomerAnswer answer) { AddFound(std::move(answer)); });
}

void ZEMLO_CustSelect::TakeChosen(const FoundCustomer& customer) {
  has_moved_ = false;
  choice_stands_ = true;
  chosen_ = customer.values;
  chosen_text.SetCaption(ChosenLine(chosen_));
  recent_.Add(chosen_.CustID);
  EnableCommands();
  SelectionChanged();
  if (AlertsOn && chosen_.returned.Any()) HasAlerts();
}

void ZEMLO_CustSelect::Edit() {
  platform::Trap(services_, "ZEMLO_CustSelect.cmdEdit_Click", [&] {
    UserLeavesList();
    if (!chosen_.CustID.empty()) maintenance_.edit(chosen_.CustID, WhenSaved());
  });
}

void ZEMLO_CustSelect::Add() {
  platform::Trap(services_, "ZEMLO_CustSelect.cmdNew_Click",
                 [&] { maintenance_.add(TypedText(), WhenSaved()); });
}

void ZEMLO_CustSelect::OnceSavedIsThere(std::function<void()> step) {
  if (!awaits_saved_) return step();
  once_saved_is_there_ = std::move(step);
}

CustomerMaintenance::Saved ZEMLO_CustSelect::WhenSaved() {
  return [this, alive = std::weak_ptr<bool>(alive_)](const std::string& customer_id) {
    if (alive.expired() || customer_id.empty()) return;
    if (std::exchange(awaits_found_, false)) has_failed_ = true;  // its answer is dropped
    awaits_saved_ = true;
    finder_.AskForIds({customer_id}, [this](CustomerAnswer answer) {
      awaits_saved_ = false;
      const auto step = std::exchange(once_saved_is_there_, nullptr);
      const bool is_there = answer.error.empty();
      is_there ? ShowSaved(std::move(answer.customers)) : SavedIsNotThere(answer.error);
      TypingRests();  // what was typed meanwhile
      if (step && is_there) step();
    });
  };
}

void ZEMLO_CustSelect::ShowFailure(const std::string& error) {
  has_failed_ = true;
  has_more_ = choose_when_found_ = false;
  ShowRows({}, std::nullopt);
  Say(error);
}

void ZEMLO_CustSelect::ShowRecent(std::vector<FoundCustomer> found) {
  has_more_ = false;
  Say(found.empty() ? kNothingTyped : kChosenLast);
  ShowRows(std::move(found), std::nullopt);  // the first is no answer to anything: Enter must not take it
}

void ZEMLO_CustSelect::ShowFound(CustomerAnswer answer) {
  awaits_found_ = false;
  if (!answer.error.empty()) return ShowFailure(answer.error);
  has_more_ = answer.has_more && !answer.customers.empty();
  total_ = answer.total;
  next_row_ = 1 + CustomerFinder::kRowsAtOnce;
  const auto first = answer.customers.empty() ? std::nullopt : std::optional<std::size_t>(0);
  ShowRows(std::move(answer.customers), first);
  Say(FoundText());
  if (std::exchange(choose_when_found_, false)) ChooseAwaited();
}

void ZEMLO_CustSelect::AddFound(CustomerAnswer answer) {
  has_more_ = answer.error.empty() && answer.has_more && !answer.customers.empty();
  if (!answer.error.empty()) return Say(answer.error);
  next_row_ += CustomerFinder::kRowsAtOnce;
  for (auto& customer : answer.customers) {
    // The register may have changed between two answers.
    if (std::ranges::none_of(rows_, IsSame(customer))) rows_.push_back(std::move(customer));
  }
  Say(FoundText());
  RowsChanged();
}

void ZEMLO_CustSelect::ShowSaved(std::vector<FoundCustomer> found) {
  if (found.empty()) return SavedIsNotThere("The customer that was saved is not in the register any more.");
  const auto listed = std::ranges::find_if(rows_, IsSame(found.front()));
  const auto place = static_cast<std::size_t>(listed == rows_.end() ? 0 : listed - rows_.begin());
  if (listed == rows_.end())
    rows_.insert(rows_.begin(), std::move(found.front()));
  else
    *listed = std::move(found.front());
  current_ = place;
  RowsChanged();
  Say(kSavedIsChosen);
  TakeChosen(FoundCustomer(rows_[place]));
}

// Nobody is chosen then: what stood there is not what is stored.
void ZEMLO_CustSelect::SavedIsNotThere(const std::string& why) {
  Reset();
  Say(why);
  SelectionChanged();
}

// Enter came first: the customer of that id, or the only one.
void ZEMLO_CustSelect::ChooseAwaited() {
  const auto by_id = std::ranges::find_if(
      rows_, [this](const FoundCustomer& customer) { return customer.values.CustID == asked_text_; });
  if (by_id != rows_.end()) return UserChooses(static_cast<std::size_t>(by_id - rows_.begin()));
  if (rows_.size() == 1 && !has_more_) UserChooses(0);
}

void ZEMLO_CustSelect::ShowRows(std::vector<FoundCustomer> rows, std::optional<std::size_t> current) {
  rows_ = std::move(rows);
  current_ = current;
  has_moved_ = false;
  EnableCommands();
  RowsChanged();
}

std::string ZEMLO_CustSelect::FoundText() const {
  if (rows_.empty()) return "No customer matches " + platform::Quoted(asked_text_) + ".";
  if (!has_more_) return Customers(rows_.size()) + (rows_.size() == 1 ? " matches." : " match.");
  const bool are_counted = total_ < static_cast<std::size_t>(platform::kMostCustomersCounted);
  return Grouped(rows_.size()) + (are_counted ? " of " : " of at least ") +
         Customers(std::max(total_, rows_.size())) + ". Scroll for more, or type more to find fewer.";
}

}  // namespace customers
