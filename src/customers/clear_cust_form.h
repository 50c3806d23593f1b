#pragma once

#include <optional>

#include "composition/letter_combo.h"
#include "customers/customer_panel.h"
#include "platform/controls/text_field.h"
#include "platform/parties/services.h"
#include "workspace/messaging/letter_request_fields.h"

namespace customers {

/// Whom a page's next letter is for: its customer and its document.
struct CustomerForm {
  CustomerPanel& panel;
  composition::ZEMLO_LetterCombo& form_type;
  platform::TextField& form_number;
};

/// Forgets whom the next letter is for: the customer's id, the request and what the page shows of both, but
/// for the customer id field. The page's selection commands are enabled. Without a page only id and request
/// are forgotten. Failures are reported.
void ClearCustForm(const platform::Services& services, const std::optional<CustomerForm>& page,
                   CurrentCustomer& customer, workspace::LetterRequestFields& request);

}  // namespace customers
