#pragma once

#include "platform/parties/settings.h"

namespace workspace {

/// Whether the user's setting "DontPrint" asks for diagnostic details.
inline bool IsDiagnosticMode(const platform::SettingsStore& settings) {
  return settings.GetSetting("DMVKorvadsk", "System", "DontPrint", "N") == "Y";
}

}  // namespace workspace
