#include "server/history/rescheduling.h"

#include <map>
#include <string>

#include "platform/agreed/letter_record.h"
#include "platform/record_set.h"
#include "server/context/letter_fields.h"
#include "server/subject/address_verdict.h"

namespace server {
namespace {

namespace print_status = platform::print_status;

constexpr const char* kMakeAgain = "REB";  // of LTRBATCH
constexpr const char* kSentToResidential = "2";

bool IsSamePlace(const Address& one, const Address& other) {
  return one.line_1 == other.line_1 && one.line_2 == other.line_2 && one.city == other.city &&
         one.state == other.state && one.zip == other.zip;
}

/// What a letter type asks of its address, each read once.
class RulesOfTypes {
 public:
  explicit RulesOfTypes(Database& database) : database_(database) {}
  FieldRules Of(const std::string& type) {
    const auto known = rules_.find(type);
    if (known != rules_.end()) return known->second;
    return rules_[type] = AddressRules(FindLetterFields(database_, type));
  }

 private:
  Database& database_;
  std::map<std::string, FieldRules> rules_;
};

/// Whether the letter in that row failed because of what has been corrected.
bool IsCorrected(const platform::RecordSet& letters, std::size_t row, const Customer& before,
                 const Customer& after, const std::string& home_state, FieldRules rules) {
  if (!JudgeAddresses(after, home_state, rules).IsUsable()) return false;
  if (letters.Text(row, "PRNT_STTS_CD") != print_status::kMailReturned)
    return !JudgeAddresses(before, home_state, rules).IsUsable();
  return letters.Text(row, "ADDR_TYP_CD") == kSentToResidential
             ? !IsSamePlace(before.residential, after.residential)
             : !IsSamePlace(before.mail, after.mail);
}

}  // namespace

std::int64_t RescheduleCorrectedLetters(Exchange& exchange, const Customer& before, const Customer& after) {
  auto& database = exchange.database;
  // Of the letters whose data were incomplete, those that had no address to go to.
  const auto letters = database.Select(
      "SELECT SEQ_NBR, LTR_TYP_ID, PRNT_STTS_CD, ADDR_TYP_CD FROM letter_history WHERE CUST_ID = ?"
      " AND (PRNT_STTS_CD IN (?, ?) OR (PRNT_STTS_CD = ? AND ADDR_TYP_CD IS NULL))",
      {after.id, print_status::kAddressNotVerified, print_status::kMailReturned,
       print_status::kDataIncomplete});
  if (letters->IsEmpty()) return 0;
  const auto home_state = FindOffice(database).state;
  RulesOfTypes rules(database);
  std::int64_t corrected = 0;
  for (std::size_t row = 0; row < letters->RecordCount(); ++row) {
    const auto type_rules = rules.Of(letters->Text(row, "LTR_TYP_ID"));
    if (!IsCorrected(*letters, row, before, after, home_state, type_rules)) continue;
    corrected += database.Change(
        "UPDATE letter_history SET PRNT_STTS_CD = ?, BTCH_ACTN_CD = ?, PRCS_ERR_TXT = NULL,"
        " LST_UPDT_INSP_ID = ? WHERE SEQ_NBR = ?",
        {print_status::kWaitsForBatch, kMakeAgain, exchange.request.user_id, letters->Get(row, "SEQ_NBR")});
  }
  return corrected;
}

}  // namespace server
