#pragma once

#include <string>

#include "customers/customer_panel.h"
#include "platform/controls/grid.h"
#include "platform/parties/services.h"

namespace tracking {

/// Listed letters are about to be shown, saved or printed. Where the page shows a customer and some of the
/// letters selected are another one's, the user is asked whether they are meant. Returns whether to go on.
/// Decision [whose-form].
bool AreLettersMeant(const platform::Services& services, const std::string& message_title,
                     const customers::CustomerPanel& shown, const platform::Grid& letters);

}  // namespace tracking
