#include "tracking/letter_grid.h"

#include <algorithm>
#include <array>

#include "customers/context_customer.h"

namespace tracking {

namespace {

using workspace::PageIndex;
using workspace::TrackingPage;

/// A letter action, and the statuses it is allowed for.
struct ActionByStatus {
  std::size_t option;
  std::string LetterActionLists::*list;
};
constexpr auto kByStatus = std::to_array<ActionByStatus>({
    {TrackingPage::kViewLetter, &LetterActionLists::ActionViewLtr},
    {TrackingPage::kReprintLocal, &LetterActionLists::ActionPrintLocal},
    {TrackingPage::kSave, &LetterActionLists::ActionSAV},
    {TrackingPage::kReturnMail, &LetterActionLists::ActionURM},
    {TrackingPage::kReprintBatch, &LetterActionLists::ActionPrintBatch},
    {TrackingPage::kResubmit, &LetterActionLists::ActionResubmit},
});

// What goes when no letter is selected ("Return Mail" stays as it was), and what takes one letter only.
constexpr auto kOfSelected = std::to_array<std::size_t>(
    {TrackingPage::kViewLetter, TrackingPage::kReprintLocal, TrackingPage::kSave, TrackingPage::kViewBookmark,
     TrackingPage::kResubmit, TrackingPage::kReprintBatch});
constexpr auto kOfOneLetter = std::to_array<std::size_t>(
    {TrackingPage::kViewLetter, TrackingPage::kSave, TrackingPage::kReturnMail, TrackingPage::kViewBookmark});

void Withdraw(platform::OptionButton& option) {
  option.SetEnabled(false);
  option.SetSelected(false);
}

}  // namespace

void LetterGrid::sdgGrid_Click() {
  platform::Trap(uses_.services, "ZEMLO_Correspondence.sdgGrid_Click", [&] {
    const auto& selected = uses_.page.sdgGrid.selected_rows();
    customer_is_owed_ = false;
    switch (selected.size()) {
      case 0:
        return NoneSelected();
      case 1:
        return OneSelected(selected.front());
      default:
        return SeveralSelected();
    }
  });
}

void LetterGrid::OneSelected(std::size_t row) {
  auto& page = uses_.page;
  page.sdgGrid.MakeCurrent(row);
  if (!uses_.customer.TrackingCustomerFixed) ShowCustomerOfLetter();
  const auto status = page.sdgGrid.rows()->Text("PRNT_STTS_CD");
  for (const auto& [option, list] : kByStatus) {
    page.OptLetter[option].SetEnabled(LetterActionLists::Allows(uses_.action_lists.*list, status));
  }
  page.OptLetter[TrackingPage::kViewBookmark].SetEnabled(true);
}

void LetterGrid::ShowCustomerOfLetter() {
  const auto customer = uses_.page.sdgGrid.rows()->Text("CUST_ID");
  if (customer.empty()) return ShowNoCustomer();
  customer_is_owed_ = true;
  uses_.gate.Run([&] {
    customer_is_owed_ = false;
    AskForCustomer(customer);
  });
}

void LetterGrid::ReplyHandled() {
  if (!customer_is_owed_) return;
  platform::Trap(uses_.services, "ZEMLO_Correspondence.sdgGrid_Click", [&] {
    customer_is_owed_ = false;
    const bool is_wanted =
        uses_.page.sdgGrid.selected_rows().size() == 1 && !uses_.customer.TrackingCustomerFixed;
    if (is_wanted) ShowCustomerOfLetter();
  });
}

void LetterGrid::AskForCustomer(const std::string& customer) {
  auto& panel = uses_.page.panel;
  // The reply leaves what its letter does not tell: it must not be another customer's.
  if (panel.customer_id.caption() != customer || uses_.customer.CustomerId != customer) {
    customers::ShowCustomerIdOnly(customer, uses_.customer, panel);
  }
  // The reply gives the frame back; without a request there is none.
  if (uses_.fetch.RePrintLetter("CustomerFromLetter", PageIndex::kTracking)) {
    uses_.page.letter_action.SetEnabled(false);
  }
}

void LetterGrid::ShowNoCustomer() {
  uses_.customer.CustomerId.clear();
  uses_.page.panel.ClearFields();
}

void LetterGrid::NoneSelected() {
  if (!uses_.customer.TrackingCustomerFixed) ShowNoCustomer();
  for (const auto option : kOfSelected) Withdraw(uses_.page.OptLetter[option]);
}

void LetterGrid::SeveralSelected() {
  auto& options = uses_.page.OptLetter;
  if (!uses_.customer.TrackingCustomerFixed) ShowNoCustomer();
  for (const auto option : kOfOneLetter) Withdraw(options[option]);
  if (AllowsSelected(uses_.action_lists.ActionPrintLocal)) {
    options[TrackingPage::kReprintLocal].SetEnabled(true);
  } else {
    Withdraw(options[TrackingPage::kReprintLocal]);
  }
  options[TrackingPage::kResubmit].SetEnabled(true);
  options[TrackingPage::kReprintBatch].SetEnabled(true);
}

bool LetterGrid::AllowsSelected(const std::string& list) const {
  const auto& grid = uses_.page.sdgGrid;
  return std::ranges::all_of(grid.selected_rows(), [&](std::size_t row) {
    return LetterActionLists::Allows(list, grid.rows()->Text(row, "PRNT_STTS_CD"));
  });
}

}  // namespace tracking
