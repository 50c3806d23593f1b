#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/controls/control.h"
#include "platform/parties/services.h"

namespace workspace {

/// A rule that the user's request has to keep, asked when a command is chosen.
struct ValidationRule {
  bool broken;
  std::string message;
  std::vector<platform::Control*> marked;  ///< the fields that are wrong
  std::string reason = {};                 ///< a plain sentence, where the message leaves something open
};

/// That the form number is valid for the form type.
ValidationRule FormNumberRule(platform::Utilities& utilities, const std::string& form_type,
                              const std::string& form_number, platform::Control& field);

/// Marks the fields of every broken rule and returns their messages, each with its line break; "" when all
/// are kept. The reasons go to the status bar.
std::string BrokenRules(const platform::Services& services, const std::vector<ValidationRule>& rules);

/// Shows what BrokenRules found, in one box.
void ShowBrokenRules(const platform::Services& services, const std::string& message_title,
                     const std::string& messages);

}  // namespace workspace
