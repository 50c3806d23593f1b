#pragma once

#include <string>

#include "platform/parties/settings.h"

namespace composition {

/// The template all letters share: letterhead, page set-up and styles.
inline constexpr const char* kCommonTemplate = "kvcorr.dot";

inline std::string CommonTemplatePath(const platform::Settings& settings) {
  return settings.TemplateFolder() + kCommonTemplate;
}

}  // namespace composition
