#pragma once

#include <string>

#include "platform/parties/services.h"

namespace composition {

/// Reports a data context that cannot be read: the fact, and the beginning of its text, each under the name
/// of the procedure that reports it.
void ReportUnreadable(const platform::Services& services, const std::string& xml, const char* fact_procedure,
                      const char* text_procedure);

}  // namespace composition
