#include "workspace/document/command_reasons.h"

#include <functional>
#include <string>
#include <utility>

#include "tracking/letter_rules.h"

namespace workspace {

namespace {

using Reason = std::function<std::string()>;

constexpr const char* kPageHasItsCustomer = "Clear the page first, then choose another customer.";
constexpr const char* kNothingToClear = "There is nothing to clear.";

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
  void ExplainLetterAction(platform::Control& action, const tracking::LetterRule& rule,
                           const tracking::LetterActionLists& lists, const platform::Grid& letters) const {
    Explain(action, [&services = services_, &rule, &lists, &letters] {
      std::string reason;
      platform::Trap(services, "ZEMLO_Correspondence.LetterActClick",
                     [&] { reason = rule.WhyNot(services, lists, letters); });
      return reason;
    });
  }

 private:
  const platform::Services& services_;
  const PendingRequest& pending_;
};

}  // namespace

void ExplainCommands(const platform::Services& services, Pages& pages, FieldCheck& field_check,
                     const tracking::LetterActionLists& lists, const PendingRequest& pending) {
  const CommandReasons reasons(services, pending);
  const auto by_fields = [&field_check](PageIndex page) -> Reason {
    return [&field_check, page] { return field_check.WhyDisabled(page); };
  };
  auto& online = pages.correspondence.OptOnline;
  auto& search = pages.tracking;
  reasons.ExplainPanel(pages.correspondence.panel);
  reasons.ExplainPanel(search.panel);
  reasons.Explain(online[CorrespondencePage::kCreateLetter], by_fields(PageIndex::kCorrespondence));
  reasons.Explain(online[CorrespondencePage::kClear], [] { return kNothingToClear; });
  for (const auto option : {CorrespondencePage::kViewLetter, CorrespondencePage::kPrintLetter}) {
    reasons.ExplainLetterAction(online[option], tracking::kRuleOnline, lists, pages.correspondence.sdgGrid);
  }
  reasons.Explain(search.search, by_fields(PageIndex::kTracking));
  reasons.Explain(pages.batch.cmdBatch[BatchPage::kSearch], by_fields(PageIndex::kBatch));
  for (const auto option : {BatchPage::kResubmitBatch, BatchPage::kBatchStatistics}) {
    reasons.Explain(pages.batch.OptBatchAct[option], [&grid = pages.batch.sdgGrid] {
      return std::string(grid.selected_rows().size() > 1
                             ? "This goes with one run only. Select one in the list."
                             : "Select a run in the list first.");
    });
  }
  for (std::size_t option = 0; option < search.OptLetter.size(); ++option) {
    reasons.ExplainLetterAction(search.OptLetter[option], tracking::RuleOf(option), lists, search.sdgGrid);
  }
}

}  // namespace workspace
