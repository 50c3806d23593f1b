#include "workspace/fields/validation.h"

#include "platform/text.h"

namespace workspace {

ValidationRule FormNumberRule(platform::Utilities& utilities, const std::string& form_type,
                              const std::string& form_number, platform::Control& field) {
  const auto verdict = utilities.ValidateFormNumber(form_type, form_number);
  return {!verdict.valid, verdict.text + ", Invalid Manual Citation Number entered", {&field}, {}};
}

std::string BrokenRules(const platform::Services& services, const std::vector<ValidationRule>& rules) {
  std::string messages;
  std::string reasons;
  for (const auto& [broken, message, marked, reason] : rules) {
    if (!broken) continue;
    messages += message;
    messages += platform::kLineBreak;
    if (!reason.empty()) reasons += (reasons.empty() ? "" : " ") + reason;
    for (auto* field : marked) services.utilities.MarkFieldInvalid(*field);
  }
  if (!reasons.empty()) services.status.ShowReason(reasons);
  return messages;
}

void ShowBrokenRules(const platform::Services& services, const std::string& message_title,
                     const std::string& messages) {
  services.host.ShowMessage({messages, platform::MessageIcon::kExclamation, message_title});
}

}  // namespace workspace
