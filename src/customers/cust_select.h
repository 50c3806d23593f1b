#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "customers/customer_finder.h"
#include "customers/customer_maintenance.h"
#include "customers/found_customers.h"
#include "customers/recent_customers.h"
#include "platform/controls/command.h"
#include "platform/controls/label.h"
#include "platform/controls/text_field.h"
#include "platform/parties/services.h"

namespace customers {

/// The customer select control: one line that takes whatever a caller says (id, account, phone, name, city or
/// zip), the customers it finds, and the one chosen.
///
/// It asks while the user types (CustomerFinder). Before anything is typed the customers that the user chose
/// last stand there. What fails is said in `status`; no failure leaves it. It has no timer: its view tells
/// when the typing rests.
class ZEMLO_CustSelect {
 public:
  static constexpr std::string_view kReturnedMail = "Mail returned";

  /// `services` outlives the control.
  ZEMLO_CustSelect(const platform::Services& services, CustomerMaintenance maintenance);

  platform::TextField txtFind;
  platform::Label status;
  platform::Label chosen_text;  ///< who is chosen, in a line
  platform::Command cmdEdit{"&Edit..."};
  platform::Command cmdNew{"Ne&w..."};
  /// Whether choosing a customer with an alert (mail that came back) raises HasAlerts. Rows show it always.
  bool AlertsOn = true;

  // The customer that was chosen; empty texts while there is none.
  const std::string& CustID() const { return chosen_.CustID; }
  const std::string& CUSTNAME() const { return chosen_.CUSTNAME; }
  const SelectedCustomer& chosen() const { return chosen_; }

  platform::Event<> SelectionChanged;
  /// After SelectionChanged.
  platform::Event<> HasAlerts;

  /// The customers on offer, and the one the keyboard stands on.
  const std::vector<FoundCustomer>& rows() const { return rows_; }
  std::optional<std::size_t> current_row() const { return current_; }
  /// Whether the user has moved in the list since its rows came or one was chosen.
  bool has_moved() const { return has_moved_; }
  FoundCell Cell(std::size_t row, FoundColumn column) const;
  /// What a row warns of; "" for nothing.
  std::string_view AlertOf(std::size_t row) const;
  /// Other rows, more of them, or another current one: for the view.
  platform::Event<> RowsChanged;

  /// The dialog has been loaded: brings the customers chosen last.
  void Start();
  /// The dialog is left: no reply is awaited any more, and no maintenance opens.
  void Leave();
  /// Nobody is chosen any more, and no reply is awaited.
  void Reset();
  /// What the choice has begun did not succeed: choosing the same customer again begins it again.
  void ChoiceFailed() { choice_stands_ = false; }
  /// Does the step at once, or, while what was saved is read again, when it is there: an answer that fails or
  /// Leave() drops it.
  void OnceSavedIsThere(std::function<void()> step);

  // What the user does.
  /// 150 ms after the last key (the view has the clock): asks for what is typed by now, if it has changed.
  void TypingRests();
  /// Chooses the current row, or the only customer that the text finds when its reply comes. Returns false
  /// where there is nothing left to do: the current row is the one chosen.
  bool UserPressesEnter();
  /// Takes the text back. Returns false where there is none.
  bool UserGoesBack();
  void UserMovesBy(int rows);
  void UserMovesTo(std::size_t row);
  /// Choosing the one who is chosen already is no change.
  void UserChooses(std::size_t row);
  /// The user leaves the list for a command: the row he has moved to since is chosen.
  void UserLeavesList();
  /// The end of the list is in sight: the next twenty are asked for, where there are more.
  void EndInSight();

 private:
  void AskRecent();
  void ShowFailure(const std::string& error);
  void ShowRecent(std::vector<FoundCustomer> found);
  void ShowFound(CustomerAnswer answer);
  void AddFound(CustomerAnswer answer);
  void ShowSaved(std::vector<FoundCustomer> found);
  void SavedIsNotThere(const std::string& why);
  void ChooseAwaited();
  bool IsChosen(std::size_t row) const;
  void ShowRows(std::vector<FoundCustomer> rows, std::optional<std::size_t> current);
  std::string FoundText() const;
  void Say(const std::string& text);
  void TakeChosen(const FoundCustomer& customer);
  void EnableCommands();
  void Edit();
  void Add();
  CustomerMaintenance::Saved WhenSaved();
  std::string TypedText() const;

  const platform::Services& services_;
  const CustomerMaintenance maintenance_;
  RecentCustomers recent_;
  CustomerFinder finder_;

  std::string asked_text_;          // what the rows on offer answer, or will
  bool has_failed_ = false;         // the answer to it, or it was dropped: it may be asked again
  bool awaits_found_ = false;       // the first rows of what is typed
  bool choose_when_found_ = false;  // Enter came before the answer
  bool awaits_saved_ = false;
  std::function<void()> once_saved_is_there_;

  std::vector<FoundCustomer> rows_;
  std::size_t total_ = 0;
  bool has_more_ = false;
  std::size_t next_row_ = 1;  // of those that match, to be asked for
  std::optional<std::size_t> current_;
  bool has_moved_ = false;  // the user, since rows came or one was chosen
  SelectedCustomer chosen_;
  bool choice_stands_ = false;

  const std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);  // for a save that ends later
  std::vector<platform::Connection> connections_;
};

}  // namespace customers
