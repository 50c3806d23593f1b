#pragma once

#include <string>

#include "customers/customer_panel.h"
#include "platform/parties/services.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/messaging/request_envelope.h"

namespace customers {

/// Shows the customer of a listed letter on the tracking page: from the letter's data context, or, where that
/// has no address, as the server knows the customer. No failure leaves its members.
class CustomerInquiry {
 public:
  /// What it works with and on; all of it outlives the inquiry.
  struct Uses {
    const platform::Services& services;
    workspace::RequestEnvelope& envelope;
    CurrentCustomer& customer;
    CustomerPanel& panel;  ///< of the tracking page
  };
  explicit CustomerInquiry(Uses uses) : uses_(uses) {}

  /// Asks the server who the customer is: request "CustomerInq".
  void SendCustPI(const std::string& customer_id);
  /// The reply to "CustomerInq": the customer becomes the current one and is shown. Without a record the
  /// panel is emptied.
  void FillCustomerInfo(const workspace::Reply& reply);
  /// The reply to "CustomerFromLetter": the panel shows name, id and address of the letter's data context and
  /// keeps phone and account. A context without an address, or none that can be read, has the server asked.
  void FillCustFromLetter(const workspace::Reply& reply);

 private:
  void TakeOver(const platform::RecordSet& rows);
  void Show();
  void ShowContext(const std::string& context);
  void ShowMarks(const workspace::Reply& reply);
  void AskServer();

  const Uses uses_;
};

}  // namespace customers
