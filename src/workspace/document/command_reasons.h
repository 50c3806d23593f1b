#pragma once

#include "platform/parties/services.h"
#include "tracking/letter_action_lists.h"
#include "workspace/fields/field_check.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/pages/pages.h"

namespace workspace {

/// Lets every command of the pages that can be disabled say why, as Control::why_disabled. All outlive the
/// controls' use.
void ExplainCommands(const platform::Services& services, Pages& pages, FieldCheck& field_check,
                     const tracking::LetterActionLists& lists, const PendingRequest& pending);

}  // namespace workspace
