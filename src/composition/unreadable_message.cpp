#include "composition/unreadable_message.h"

#include "platform/text.h"

namespace composition {
namespace {

constexpr std::size_t kReportedCharacters = 1000;

}  // namespace

void ReportUnreadable(const platform::Services& services, const std::string& xml, const char* fact_procedure,
                      const char* text_procedure) {
  const std::string start(platform::FirstCharacters(xml, kReportedCharacters));
  services.errors.ReportError("Message parsing error", platform::kComponentTitle, fact_procedure);
  services.errors.ReportError("Message; " + start, platform::kComponentTitle, text_procedure);
}

}  // namespace composition
