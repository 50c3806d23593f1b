#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "customers/maintenance/address_changes.h"
#include "customers/maintenance/customer_controls.h"
#include "customers/maintenance/field_rules.h"
#include "customers/maintenance/key_filters.h"
#include "customers/maintenance/save_request.h"
#include "customers/maintenance/snapshot.h"
#include "platform/controls/form.h"
#include "platform/parties/services.h"

namespace customers {

/// The dialog in which a customer is added or changed: name, phone, fuel tax account, both addresses and
/// their marks of returned mail.
///
/// The caller makes it, says type and mode, fills the fields, shows it modally and reads what came of it. It
/// sends the save itself and hears its reply; an address that does not pass the verification brings it back
/// with what is suggested. Hidden, not unloaded, when the user is done: the caller unloads it.
class ZEMLO_CustMaint : public platform::Form, public CustomerControls {
 public:
  /// `services` outlives the form. `message_title` heads its message boxes.
  ZEMLO_CustMaint(const platform::Services& services, std::string message_title);
  ~ZEMLO_CustMaint() override;

  // --- what the caller sets before it is shown
  /// The customer's id: of the one to be updated; after a save of the one that was saved.
  std::string CustID;
  /// UPDT_NBR of the customer as the fields were filled; "" where the caller read none.
  std::string version;
  /// "B" for a business, "I" for an individual; the user cannot switch it afterwards.
  void SetCustomerType(std::string_view type);
  /// Which one is selected ("B", "I"; "" for none). The fields are arranged for it, and the suggestions and
  /// all counties are emptied: read it right after setting it, before the fields are filled.
  std::string SetCustomerType();
  /// "ADD" or "UPD"; after the names, which stand in the caption.
  void SetCustomerMode(std::string_view mode);
  // Seeds of a new customer; fewer than two change nothing.
  /// Business name, fuel tax account, mailing city.
  void SetupCustomerForm(const std::vector<std::string>& seeds);
  /// First name, last name, fuel tax account, mailing city.
  void FillIndividualAdd(const std::vector<std::string>& seeds);

  // --- what the caller reads afterwards
  /// Whether the user ended the dialog with "Close", also after a save from there.
  bool CustomerMaintExitStateGet() const { return exit_state_; }
  /// Whether the server has stored the customer.
  bool saved() const { return saved_; }
  /// A text was changed that is not stored.
  bool DataChanged = false;
  ChangeFlags flags;
  /// The resident address the customer had when the dialog was shown.
  std::string OrigResAddr() const { return ResidentAddressOf(opening_); }

  const std::string& mode() const { return mode_; }
  /// A save is on its way, or the reply to it is being shown.
  bool is_saving() const { return is_saving_; }
  FieldRules& rules() { return rules_; }
  const KeyFilters& key_filters() const { return filters_; }
  const AddressChanges& changes() const { return changes_; }
  /// The controls in the order of the keyboard, for the customer's type.
  const std::vector<platform::Control*>& tab_order() const { return tab_order_; }

  /// The keyboard is to go to a control, which can be used then.
  platform::Event<platform::Control&> FocusWanted;
  /// The dialog is to stand in the middle of the screen.
  platform::Event<> CentreWanted;
  /// tab_order has changed.
  platform::Event<> TabOrderChanged;

 protected:
  void OnLoad() override;
  void OnActivate() override;
  bool OnQueryUnload() override;
  void OnUnload() override;

 private:
  struct CountyOfZip {
    std::string zip;
    std::string caption;
    std::string code;
  };

  void Connect();
  template <typename Work>
  bool Procedure(std::string_view name, Work&& work);
  void ProcessBusiness();
  void ProcessIndividual();
  void ArrangeForType();
  void ForgetSuggestions();
  void SetTabs();
  void ShowNames(bool business);
  void FocusFirstInvalid();
  void MoveFocus(platform::Control& control);

  void TextChanged();
  void RunChecks();
  void mCmdOption_Click(std::size_t number);
  void VerifyAndSave();
  void CloseDialog();
  void CopyAddress(const AddressSide& from, const AddressSide& to);
  void EnableControls(bool enabled);
  void EnableEntry(bool enabled);
  bool TakeSnapshot(Snapshot& snapshot, ResidentItems resident);
  void KeepCounties();
  void ShowCountyOfZip(const AddressSide& side);
  std::string WhyNoSave() const;

  void InitializeMessage();
  bool SendMessage(const std::shared_ptr<platform::RecordSet>& record);
  void EndSaving();
  void vemtMessage_DataReady(const std::string& application);
  void vemtMessage_MsgTimeout();
  void ShowFailure(const std::string& error);
  bool TakeReply();
  [[noreturn]] static void FailUnnamed();
  void ShowVerdict(const platform::RecordSet& rows, std::size_t row);
  void FocusSuggestion();
  void TellRescheduled();

  const platform::Services& services_;
  const std::string message_title_;

  std::string mode_;
  Snapshot opening_;
  Snapshot current_;
  std::vector<CountyOfZip> counties_;  // of the addresses that the customer came with
  KeyFilters filters_;
  FieldRules rules_;
  AddressChanges changes_;
  std::vector<platform::Control*> tab_order_;

  std::unique_ptr<platform::ReplyListener> mVemtMessage_;
  std::unique_ptr<platform::RequestMessage> message_;
  std::string message_key_;
  bool is_saving_ = false;
  bool timed_out_ = false;
  bool exit_state_ = false;
  bool saved_ = false;
  bool is_checking_ = false;
  std::vector<platform::Connection> connections_;
};

template <typename Work>
bool ZEMLO_CustMaint::Procedure(std::string_view name, Work&& work) {
  bool done = false;
  RunHandler([&] {
    done = platform::Trap(services_, std::string("ZEMLO_CustMaint.").append(name), std::forward<Work>(work));
  });
  return done;
}

}  // namespace customers
