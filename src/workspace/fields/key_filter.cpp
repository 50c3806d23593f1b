#include "workspace/fields/key_filter.h"

#include <utility>

namespace workspace {

platform::Connection FilterKeys(const platform::Services& services, platform::TextField& field,
                                std::string procedure,
                                std::function<std::optional<char32_t>(char32_t key)> take) {
  field.key_filter = [&services, procedure = std::move(procedure), take = std::move(take)](char32_t key) {
    std::optional<char32_t> taken;
    platform::Trap(services, procedure, [&] { taken = take(key); });
    return taken;
  };
  return platform::Connection([&field] { field.key_filter = nullptr; });
}

}  // namespace workspace
