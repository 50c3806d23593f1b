#pragma once

#include <string>

#include "customers/customer_panel.h"
#include "platform/parties/services.h"
#include "tracking/letter_action_lists.h"
#include "tracking/letter_fetch.h"
#include "workspace/messaging/command_gate.h"
#include "workspace/pages/tracking_page.h"

namespace tracking {

/// The letters listed on the tracking page: choosing some decides which letter actions are offered, and,
/// while the user has picked no customer, which customer the page shows.
class LetterGrid {
 public:
  /// What it works with and on; all of it outlives the grid.
  struct Uses {
    const platform::Services& services;
    const LetterActionLists& action_lists;
    customers::CurrentCustomer& customer;
    workspace::TrackingPage& page;
    LetterFetch& fetch;
    const workspace::CommandGate& gate;
  };
  explicit LetterGrid(Uses uses) : uses_(uses) {}

  /// The selection has changed. One letter becomes the current row; its customer is asked for, and the letter
  /// actions are held back until the reply. While another reply is awaited nobody asks for the customer yet.
  /// A failure is reported.
  void sdgGrid_Click();
  /// A reply has been handled: asks for the customer of the letter that was chosen meanwhile, if one was.
  void ReplyHandled();
  /// Offers what can be done with the letters selected, as their statuses are now (letter_rules.h). What
  /// cannot be used with none or several of them is deselected, too.
  void EnableActions();

 private:
  void ShowCustomerOfLetter();
  void AskForCustomer(const std::string& customer);
  void ShowNoCustomer();

  const Uses uses_;
  bool customer_is_owed_ = false;  // of the selected letter, since a reply was awaited
};

}  // namespace tracking
