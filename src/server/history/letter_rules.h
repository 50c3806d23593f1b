#pragma once

#include <map>
#include <string>
#include <string_view>

#include "server/wire/exchange.h"

namespace server {

/// Codes of the table LTRACTION, as far as the server holds to them.
namespace letter_action {
inline constexpr std::string_view kReprint = "REP";
inline constexpr std::string_view kResubmit = "RES";
inline constexpr std::string_view kReturnMail = "URM";
}  // namespace letter_action

/// The print statuses that an action on letters is allowed for, by the code table that `init` took in last.
class LetterRules {
 public:
  explicit LetterRules(Database& database);

  /// Without a list for it an action is allowed for every status. `action`: a code of LTRACTION.
  bool Allows(std::string_view action, std::string_view print_status) const;

 private:
  std::map<std::string, std::string, std::less<>> statuses_;
};

}  // namespace server
