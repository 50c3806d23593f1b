#pragma once

#include "platform/descriptor.h"

namespace wordprocessor {

using platform::Descriptor;

}  // namespace wordprocessor
