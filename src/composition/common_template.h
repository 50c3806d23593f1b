#pragma once

#include <string>

#include "platform/agreed/template_versions.h"
#include "platform/parties/settings.h"

namespace composition {

inline std::string CommonTemplatePath(const platform::Settings& settings) {
  return settings.TemplateFolder() + platform::kCommonTemplate;
}

}  // namespace composition
