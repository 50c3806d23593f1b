#pragma once

#include <vector>

#include "platform/event.h"
#include "workspace/document/parts.h"

namespace workspace {

/// Connects what the user does on the pages with the parts. The connections last as long as the result; pages
/// and parts outlive it.
std::vector<platform::Connection> ConnectControls(Pages& pages, Parts& parts);

}  // namespace workspace
