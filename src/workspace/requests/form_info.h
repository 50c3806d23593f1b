#pragma once

#include <string>

#include "customers/customer_selection.h"
#include "platform/parties/services.h"
#include "workspace/pages/pages.h"

namespace workspace {

/// Copies the form that was picked in the customer form inquiry into the form fields of the correspondence or
/// the tracking page, whose form type list remembers its type. A letter type that goes with no such form
/// leaves the list empty. Failures are reported.
void FillFormInfo(const platform::Services& services, const std::string& message_title, Pages& pages,
                  PageIndex page, const customers::PickedForm& form);

}  // namespace workspace
