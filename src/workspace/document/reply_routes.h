#pragma once

#include <vector>

#include "workspace/document/reply_handlers.h"
#include "workspace/messaging/reply_dispatcher.h"
#include "workspace/pages/pages.h"

namespace workspace {

/// Every request of the workspace and what its reply does. The handlers are asked for when a reply comes, so
/// they may be filled in later; both arguments outlive the routes.
std::vector<ReplyRoute> ReplyRoutes(const ReplyHandlers& handlers, Pages& pages);

}  // namespace workspace
