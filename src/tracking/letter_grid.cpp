#include "tracking/letter_grid.h"

#include "customers/context_customer.h"
#include "tracking/letter_rules.h"

namespace tracking {

using workspace::PageIndex;
using workspace::TrackingPage;

void LetterGrid::sdgGrid_Click() {
  platform::Trap(uses_.services, "ZEMLO_Correspondence.sdgGrid_Click", [&] {
    const auto& selected = uses_.page.sdgGrid.selected_rows();
    customer_is_owed_ = false;
    if (selected.size() == 1) {
      uses_.page.sdgGrid.MakeCurrent(selected.front());
      if (!uses_.customer.TrackingCustomerFixed) ShowCustomerOfLetter();
    } else if (!uses_.customer.TrackingCustomerFixed) {
      ShowNoCustomer();
    }
  });
  EnableActions();
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

void LetterGrid::EnableActions() {
  platform::Trap(uses_.services, "ZEMLO_Correspondence.sdgGrid_Click", [&] {
    auto& page = uses_.page;
    const auto selected = page.sdgGrid.selected_rows().size();
    for (std::size_t option = 0; option < page.OptLetter.size(); ++option) {
      // Without a selection it stays as it was: it goes with the current row.
      if (selected == 0 && option == TrackingPage::kReturnMail) continue;
      const bool is_allowed = RuleOf(option).Allows(uses_.action_lists, page.sdgGrid);
      page.OptLetter[option].SetEnabled(is_allowed);
      if (!is_allowed && selected != 1) page.OptLetter[option].SetSelected(false);
    }
  });
}

}  // namespace tracking
