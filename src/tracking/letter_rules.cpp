#include "tracking/letter_rules.h"

#include <algorithm>
#include <array>
#include <set>

#include "platform/text.h"
#include "workspace/pages/tracking_page.h"

namespace tracking {

namespace {

using Takes = LetterRule::Takes;
using workspace::TrackingPage;

enum class Verdict { kAllowed, kNothingListed, kNoneSelected, kTooMany, kStatus };

constexpr const char* kNothingListed = "No letters are listed. Search for some first.";
constexpr const char* kNoneSelected = "Select a letter in the list first.";
constexpr const char* kTooMany = "This goes with one letter only. Select one in the list.";

struct RuleOfOption {
  std::size_t option;
  LetterRule rule;
};
constexpr auto kRules = std::to_array<RuleOfOption>({
    {TrackingPage::kViewLetter, {Takes::kOneLetter, &LetterActionLists::ActionViewLtr}},
    {TrackingPage::kSave, {Takes::kOneLetter, &LetterActionLists::ActionSAV}},
    {TrackingPage::kReturnMail, {Takes::kOneLetter, &LetterActionLists::ActionURM}},
    {TrackingPage::kReprintLocal, {Takes::kSeveral, &LetterActionLists::ActionPrintLocal}},
    {TrackingPage::kResubmit, {Takes::kSeveralWhateverTheyAre, &LetterActionLists::ActionResubmit}},
    {TrackingPage::kReprintBatch, {Takes::kSeveralWhateverTheyAre, &LetterActionLists::ActionPrintBatch}},
    {TrackingPage::kViewBookmark, {Takes::kOneLetter, nullptr}},
});
static_assert([] {
  for (std::size_t option = 0; option < kRules.size(); ++option) {
    if (kRules[option].option != option) return false;
  }
  return kRules.size() == decltype(TrackingPage::OptLetter)::size();
}());

std::string StatusOf(const platform::Grid& letters, std::size_t row) {
  return letters.rows()->Text(row, "PRNT_STTS_CD");
}

bool AllowsStatus(const LetterRule& rule, const LetterActionLists& lists, const std::string& status) {
  return rule.list == nullptr || LetterActionLists::Allows(lists.*rule.list, status);
}

Verdict Judge(const LetterRule& rule, const LetterActionLists& lists, const platform::Grid& letters) {
  if (!letters.rows() || letters.rows()->IsEmpty()) return Verdict::kNothingListed;
  const auto& selected = letters.selected_rows();
  if (selected.empty()) return Verdict::kNoneSelected;
  if (selected.size() > 1 && rule.takes == Takes::kOneLetter) return Verdict::kTooMany;
  const bool any_status = rule.list == nullptr || (lists.*rule.list).empty() ||
                          (selected.size() > 1 && rule.takes == Takes::kSeveralWhateverTheyAre);
  const bool allowed = any_status || std::ranges::all_of(selected, [&](std::size_t row) {
                         return AllowsStatus(rule, lists, StatusOf(letters, row));
                       });
  return allowed ? Verdict::kAllowed : Verdict::kStatus;
}

/// The statuses that do not allow it, as the list describes them, and how many of the selected have one.
std::string WhyNotByStatus(const platform::Services& services, const LetterRule& rule,
                           const LetterActionLists& lists, const platform::Grid& letters) {
  std::set<std::string> codes;
  std::size_t count = 0;
  for (const auto row : letters.selected_rows()) {
    const auto code = StatusOf(letters, row);
    if (AllowsStatus(rule, lists, code)) continue;
    codes.insert(code);
    ++count;
  }
  std::string statuses;
  for (const auto& code : codes) {
    const std::string described(platform::Trim(services.utilities.GetCodeDescription("LTRPRNTCD", code)));
    statuses += (statuses.empty() ? "" : ", ") + platform::Quoted(described.empty() ? code : described);
  }
  const auto selected = letters.selected_rows().size();
  const auto how_many = selected == 1 ? ""
                                      : " That is " + std::to_string(count) + " of the " +
                                            std::to_string(selected) + " selected.";
  return "Letters with the print status " + statuses + " do not allow this." + how_many;
}

}  // namespace

bool LetterRule::Allows(const LetterActionLists& lists, const platform::Grid& letters) const {
  return Judge(*this, lists, letters) == Verdict::kAllowed;
}

std::string LetterRule::WhyNot(const platform::Services& services, const LetterActionLists& lists,
                               const platform::Grid& letters) const {
  switch (Judge(*this, lists, letters)) {
    case Verdict::kNothingListed:
      return kNothingListed;
    case Verdict::kNoneSelected:
      return kNoneSelected;
    case Verdict::kTooMany:
      return kTooMany;
    case Verdict::kStatus:
      return WhyNotByStatus(services, *this, lists, letters);
    case Verdict::kAllowed:
      break;
  }
  return "";
}

const LetterRule& RuleOf(std::size_t option) {
  return kRules.at(option).rule;
}

}  // namespace tracking
