#include "platform/agreed/template_versions.h"

namespace platform {

const TemplateVersion* TemplateInForce(std::span<const TemplateVersion> versions, Date day) {
  const auto text = DateText(day);
  const TemplateVersion* newest = nullptr;
  for (const auto& version : versions) {
    const bool in_force = version.first_day <= text && (version.last_day.empty() || text <= version.last_day);
    if (in_force && (newest == nullptr || newest->time_stamp < version.time_stamp)) newest = &version;
  }
  return newest;
}

}  // namespace platform
