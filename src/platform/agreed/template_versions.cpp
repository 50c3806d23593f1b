#include "platform/agreed/template_versions.h"

namespace platform {

const TemplateVersion* TemplateInForce(std::span<const TemplateVersion> versions, std::string_view day) {
  const TemplateVersion* newest = nullptr;
  for (const auto& version : versions) {
    const bool in_force = version.first_day <= day && (version.last_day.empty() || day <= version.last_day);
    if (in_force && (newest == nullptr || newest->time_stamp < version.time_stamp)) newest = &version;
  }
  return newest;
}

}  // namespace platform
