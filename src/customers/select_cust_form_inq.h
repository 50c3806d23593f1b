#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "composition/letter_combo.h"
#include "customers/cust_select.h"
#include "platform/controls/command.h"
#include "platform/controls/form.h"
#include "platform/controls/grid.h"
#include "platform/controls/label.h"
#include "platform/parties/services.h"
#include "platform/value.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/messaging/request_envelope.h"

namespace customers {

/// "Select Account": finds a customer and lets the user pick one of the customer's forms (accounts) of one
/// type.
///
/// Whoever shows it loads it, sets `skip_next_type_change` and then the account type, and reads it when it is
/// off the screen. It hears its replies itself, under an application name of its own; a newer inquiry takes
/// the place of the one before. Its close box is "Cancel". It lists accounts of the customer and the type
/// that are chosen, or none.
class ZEMLO_SelectCustFormInq : public platform::Form {
 public:
  /// `services` and `message_title`, which heads its message boxes, outlive the form.
  ZEMLO_SelectCustFormInq(const platform::Services& services, const std::string& message_title,
                          CustomerMaintenance maintenance);

  enum Button : std::size_t { kCancel, kOk };

  ZEMLO_CustSelect ZEMLO_CustSelect1;
  composition::ZEMLO_LetterCombo mKvcboDocType;
  platform::Grid mSdgGrid;
  platform::Command mCmdButton[2];
  platform::Label status_bar;

  bool cancelled = false;
  /// The next change of the account type is the opener's: it is ignored.
  bool skip_next_type_change = false;

  // The form that was picked; empty before, and where the server has no value.
  const std::string& DocumentNumber() const { return document_number_; }
  std::optional<platform::Money> DueAmount() const { return due_amount_; }
  std::optional<platform::Date> LastPaymentDate() const { return last_payment_date_; }
  const std::string& Status() const { return status_; }
  std::optional<platform::Date> StopDate() const { return stop_date_; }
  /// The code of the account type whose forms are listed, whatever has been typed since.
  const std::string& FormType() const { return asked_type_; }

 protected:
  void OnLoad() override;
  void OnActivate() override;
  void OnUnload() override;

 private:
  void ConnectEvents();
  void DefaultFieldColor();
  void CheckEdit();
  bool IsRefused();
  void SelectionChanged();
  void DocTypeChanged();
  void Inquire();
  void DropAccounts();
  void DropInquiry();
  void SendPI();
  void DataReady(const std::string& application);
  void ShowReply(const workspace::Reply& reply);
  void ShowForms(const workspace::Reply& reply);
  void GridClick();
  void RowLoaded(std::size_t row);
  void Cancel();
  void Ok();
  void Leave();
  void TakeForm();
  void UpdateStatus(const std::string& text);
  template <typename Work>
  void Handle(std::string_view procedure, Work&& work);

  const platform::Services& services_;
  const std::string& message_title_;

  workspace::PendingRequest pending_;  // of its own: the workspace's goes on beneath it
  std::unique_ptr<platform::ReplyListener> mVemtMessage_;
  workspace::RequestEnvelope envelope_;
  std::string customer_id_;
  std::string asked_type_;
  std::string error_list_;
  std::string shown_type_;  // the account type's text, to tell its changes

  std::string document_number_;
  std::optional<platform::Money> due_amount_;
  std::optional<platform::Date> last_payment_date_;
  std::string status_;
  std::optional<platform::Date> stop_date_;
  std::vector<platform::Connection> connections_;
};

}  // namespace customers
