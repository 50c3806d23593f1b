#pragma once

#include <memory>
#include <string>
#include <vector>

#include "customers/maintenance/cust_maint.h"
#include "platform/event.h"
#include "platform/parties/services.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/messaging/request_envelope.h"

namespace customers {

/// Opens the maintenance of a customer over whatever dialog stands, and tells who was saved.
///
/// One at a time: what is asked for while another is under way does nothing. It asks under an application
/// name of its own. No failure leaves its members.
class CustomerEdit {
 public:
  /// `services` outlives this. `message_title` heads its message boxes.
  CustomerEdit(const platform::Services& services, std::string message_title);

  /// Whether the user may change customers, add them; for the commands that offer it.
  bool MayEdit() const;
  bool MayAdd() const;

  /// Asks the server for the customer, and shows it to be changed when it has come. Returns at once.
  void Edit(const std::string& customer_id);
  /// The customer that has been asked for is not shown any more when it comes. One on the screen stays there.
  void Forget();
  // A new customer, seeded as ZEMLO_CustMaint takes it: business name, fuel tax account, mailing city; first
  // name, last name, fuel tax account, mailing city. Return when the dialog has closed.
  void AddBusiness(const std::vector<std::string>& seeds);
  void AddIndividual(const std::vector<std::string>& seeds);

  /// Whether a customer has been asked for, or is shown.
  bool IsUnderWay() const { return is_under_way_; }

  /// A customer was stored: its id. Told when the dialog has closed.
  platform::Event<std::string> Saved;
  /// What was begun is over, however it ended; after Saved.
  platform::Event<> Ended;

 private:
  void DataReady(const std::string& application);
  /// Returns the id of the customer that was stored; "" for none.
  std::string CustomerMaint(const workspace::Reply& reply);
  void ProcessCustomerEdit(ZEMLO_CustMaint& form, const platform::RecordSet& row);
  void Add(const char* type, const std::vector<std::string>& seeds);
  void ShowRefusal(const std::string& text);
  void End(const std::string& saved_id);

  const platform::Services& services_;
  const std::string message_title_;
  bool is_under_way_ = false;
  workspace::PendingRequest pending_;  // of its own: what was asked for before goes on beneath it
  std::unique_ptr<platform::ReplyListener> mVemtMessage_;
  workspace::RequestEnvelope envelope_;
  std::vector<platform::Connection> connections_;
};

}  // namespace customers
