#include "workspace/document/command_reasons.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string>
#include <utility>

#include "platform/text.h"

namespace workspace {

namespace {

using Reason = std::function<std::string()>;

constexpr const char* kNothingListed = "No letters are listed. Search for some first.";
constexpr const char* kNoneSelected = "Select a letter in the list first.";
constexpr const char* kTooMany = "This goes with one letter only. Select one in the list.";
constexpr const char* kPageHasItsCustomer = "Clear the page first, then choose another customer.";
constexpr const char* kNothingToClear = "There is nothing to clear.";

constexpr auto kOfOneLetter = std::to_array<std::size_t>(
    {TrackingPage::kViewLetter, TrackingPage::kSave, TrackingPage::kReturnMail, TrackingPage::kViewBookmark});

/// Why nothing can be done with the letters selected; "" where their number is right.
std::string WhyNotWithSelected(const platform::Grid& letters, bool of_one) {
  if (!letters.rows() || letters.rows()->IsEmpty()) return kNothingListed;
  const auto selected = letters.selected_rows().size();
  if (selected == 0) return kNoneSelected;
  return of_one && selected > 1 ? kTooMany : "";
}

/// The statuses of the selected letters, as grids describe them: at least one does not allow the action.
std::string StatusesOf(const platform::Services& services, const platform::Grid& letters) {
  std::string statuses;
  for (const auto row : letters.selected_rows()) {
    const auto code = letters.rows()->Text(row, "PRNT_STTS_CD");
    const auto described = services.utilities.GetCodeDescription("LTRPRNTCD", code);
    const auto status = platform::Quoted(platform::Trim(described.empty() ? code : described));
    if (statuses.find(status) == std::string::npos) statuses += (statuses.empty() ? "" : ", ") + status;
  }
  return statuses;
}

class CommandReasons {
 public:
  CommandReasons(const platform::Services& services, const PendingRequest& pending)
      : services_(services), pending_(pending) {}

  /// A command that waits for a reply says so; otherwise `reason` tells.
  void Explain(platform::Control& control, Reason reason) const {
    control.why_disabled = [&pending = pending_, reason = std::move(reason)] {
      return pending.IsAwaited() ? "The server's reply is awaited. " + pending.status() : reason();
    };
  }
  void ExplainPanel(customers::CustomerPanel& panel) const {
    for (auto* command : {&panel.select_customer, &panel.select_account}) {
      Explain(*command, [] { return kPageHasItsCustomer; });
    }
  }
  void ExplainLetterAction(platform::Control& action, const platform::Grid& letters, bool of_one) const {
    Explain(action, [&services = services_, &letters, of_one] {
      auto reason = WhyNotWithSelected(letters, of_one);
      if (!reason.empty()) return reason;
      std::string by_status;
      platform::Trap(services, "ZEMLO_Correspondence.LetterActClick", [&] {
        const auto statuses = StatusesOf(services, letters);
        by_status =
            letters.selected_rows().size() == 1
                ? "Letters with the print status " + statuses + " do not allow this."
                : "Not every selected letter allows this. Their print statuses are: " + statuses + ".";
      });
      return by_status;
    });
  }

 private:
  const platform::Services& services_;
  const PendingRequest& pending_;
};

}  // namespace

void ExplainCommands(const platform::Services& services, Pages& pages, FieldCheck& field_check,
                     const PendingRequest& pending) {
  const CommandReasons reasons(services, pending);
  const auto by_fields = [&field_check](PageIndex page) -> Reason {
    return [&field_check, page] { return field_check.WhyDisabled(page); };
  };
  auto& online = pages.correspondence.OptOnline;
  auto& tracking = pages.tracking;
  reasons.ExplainPanel(pages.correspondence.panel);
  reasons.ExplainPanel(tracking.panel);
  reasons.Explain(online[CorrespondencePage::kCreateLetter], by_fields(PageIndex::kCorrespondence));
  reasons.Explain(online[CorrespondencePage::kClear], [] { return kNothingToClear; });
  for (const auto option : {CorrespondencePage::kViewLetter, CorrespondencePage::kPrintLetter}) {
    reasons.ExplainLetterAction(online[option], pages.correspondence.sdgGrid, /*of_one=*/true);
  }
  reasons.Explain(tracking.search, by_fields(PageIndex::kTracking));
  for (std::size_t option = 0; option < tracking.OptLetter.size(); ++option) {
    const bool of_one = std::ranges::find(kOfOneLetter, option) != kOfOneLetter.end();
    reasons.ExplainLetterAction(tracking.OptLetter[option], tracking.sdgGrid, of_one);
  }
}

}  // namespace workspace
