#include "workspace/fields/search_check.h"

#include <chrono>

#include "platform/text.h"

namespace workspace {

namespace {

// Decision [long-range].
constexpr std::chrono::days kLongestRange{365};
constexpr const char* kRangeTooLong = "From and To Date range could not be greater than 365 days";
constexpr const char* kDayTooEarly =
    "If no To Date is selected, From Date could not be 30 days earlier than today";

/// A day as the fields show it, "MM/dd/yyyy".
std::string DayAsShown(platform::Date day) {
  const auto text = platform::DateText(day);
  return text.substr(5, 2) + "/" + text.substr(8, 2) + "/" + text.substr(0, 4);
}

}  // namespace

// Decision [ok-starts-false].
void SearchCheck::ValidateSeach(bool& ok) {
  ok = false;
  platform::Trap(services_, "ZEMLO_Corresp.ValidateSeach", [&] {
    field_check_.DefaultFieldColor(PageIndex::kTracking);
    const auto messages = BrokenRules(services_, Rules());
    ok = messages.empty();
    if (!ok) ShowBrokenRules(services_, message_title_, messages);
  });
}

std::vector<ValidationRule> SearchCheck::Rules() {
  const auto from = platform::ParseDate(search_.from_date);
  const auto to = platform::ParseDate(search_.to_date);
  std::vector<ValidationRule> rules;
  if (!search_.letter.form_text.empty()) {
    rules.push_back(FormNumberRule(services_.utilities, search_.letter.form_type, search_.letter.form_text,
                                   page_.txtFormNum));
  }
  if (to && !from)
    rules.push_back({true, "FROM date is required if TO date is selected", {&page_.from_date}});
  if (from && to) {
    const auto range = std::chrono::sys_days(*to) - std::chrono::sys_days(*from);
    rules.push_back(
        {*from > *to,
         "TO date is greater than FROM date",
         {&page_.to_date},
         "The TO day " + DayAsShown(*to) + " lies before the FROM day " + DayAsShown(*from) + "."});
    rules.push_back({range > kLongestRange,
                     std::string(kRangeTooLong).append(platform::kLineBreak).append(kDayTooEarly),
                     {&page_.to_date},
                     "From " + DayAsShown(*from) + " to " + DayAsShown(*to) + " is longer than 365 days."});
  }
  return rules;
}

}  // namespace workspace
