#include "workspace/validation.h"

#include "platform/text.h"

namespace workspace {

ValidationRule FormNumberRule(platform::Utilities& utilities, const std::string& form_type,
                              const std::string& form_number, platform::Control& field) {
  const auto verdict = utilities.ValidateFormNumber(form_type, form_number);
  return {!verdict.valid, verdict.text + ", Invalid Manual Citation Number entered", {&field}};
}

std::string BrokenRules(const platform::Services& services, const std::vector<ValidationRule>& rules) {
  std::string messages;
  for (const auto& [broken, message, marked] : rules) {
    if (!broken) continue;
    messages += message;
    messages += platform::kLineBreak;
    for (auto* field : marked) services.utilities.MarkFieldInvalid(*field);
  }
  return messages;
}

void ShowBrokenRules(const platform::Services& services, const WorkspaceState& state,
                     const std::string& messages) {
  services.host.ShowMessage({messages, platform::MessageIcon::kExclamation, state.message_title});
}

}  // namespace workspace
