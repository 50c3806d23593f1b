#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/controls/text_field.h"
#include "platform/parties/services.h"

namespace workspace {

/// Lets `take` decide, for as long as the result lives, which typed characters the field takes, and as what.
/// Where `take` fails, that is reported under `procedure` and the key is refused. `services` and the field
/// outlive the result.
platform::Connection FilterKeys(const platform::Services& services, platform::TextField& field,
                                std::string procedure,
                                std::function<std::optional<char32_t>(char32_t key)> take);

}  // namespace workspace
