#pragma once

#include <string>

#include "customers/customer_panel.h"
#include "tracking/letter_action_lists.h"
#include "workspace/fields/search_fields.h"
#include "workspace/messaging/letter_request_fields.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/pages/pages.h"

namespace workspace {

/// What the parts of the workspace share.
struct WorkspaceData {
  explicit WorkspaceData(const platform::Services& services) : pages(services) {}

  std::string message_title;  ///< caption of the host window: the title of every message box
  bool dont_print = false;    ///< the user's setting: diagnostic details are shown

  PendingRequest pending;
  LetterRequestFields request;  ///< of the correspondence page
  SearchFields search;          ///< of the tracking page
  customers::CurrentCustomer customer;
  tracking::LetterActionLists action_lists;
  Pages pages;
};

}  // namespace workspace
