#include "server/history/letter_rules.h"

namespace server {

LetterRules::LetterRules(Database& database) {
  const auto rows = database.Select("SELECT ACTN_CD, PRNT_STTS_TXT FROM letter_action");
  for (std::size_t row = 0; row < rows->RecordCount(); ++row)
    statuses_[rows->Text(row, "ACTN_CD")] = rows->Text(row, "PRNT_STTS_TXT");
}

bool LetterRules::Allows(std::string_view action, std::string_view print_status) const {
  const auto found = statuses_.find(action);
  return found == statuses_.end() || found->second.empty() ||
         found->second.find(print_status) != std::string::npos;
}

}  // namespace server
