#include "server/history/rescheduling.h"

#include <map>
#include <string>

#include "platform/agreed/letter_record.h"
#include "platform/record_set.h"
#include "server/context/letter_fields.h"
#include "server/history/batch_items.h"
#include "server/subject/address_verdict.h"

namespace server {
namespace {

namespace print_status = platform::print_status;

constexpr const char* kSentToResidential = "2";

platform::PostalAddress PostalOf(const Address& address) {
  return {.line1 = address.line_1,
          .line2 = address.line_2,
          .city = address.city,
          .state = address.state,
          .zip = address.zip};
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

/// What a correction is judged by.
struct Correction {
  const Customer& before;
  const Customer& after;
  const platform::AddressVerifier& verifier;
  const std::string home_state;

  bool IsUsable(const Customer& customer, FieldRules rules) const {
    return JudgeAddresses(customer, home_state, rules).IsUsable();
  }

  /// Whether letters that came back from that address can go to it now: it is another place, or its mark of
  /// returned mail has gone.
  bool Mends(Address Customer::*place, FieldRules rules) const {
    const auto& was = before.*place;
    const auto& is = after.*place;
    Customer alone;
    alone.*place = is;
    return IsUsable(alone, rules) &&
           ((was.marked_bad && !is.marked_bad) || !verifier.IsSamePlace(PostalOf(was), PostalOf(is)));
  }

  /// Whether the letter in that row failed because of what has been corrected.
  bool IsOf(const platform::RecordSet& letters, std::size_t row, FieldRules rules) const {
    if (letters.Get(row, "RTND_DT").IsNull()) return !IsUsable(before, rules) && IsUsable(after, rules);
    const bool to_residential = letters.Text(row, "ADDR_TYP_CD") == kSentToResidential;
    return Mends(to_residential ? &Customer::residential : &Customer::mail, rules);
  }
};

}  // namespace

std::int64_t RescheduleCorrectedLetters(Exchange& exchange, const Customer& before, const Customer& after) {
  auto& database = exchange.database;
  // Of the letters whose data were incomplete, or that a run could not make, those that had no address to go
  // to. A letter that waits to be made again, or that a run has claimed, is left to it; one that waits to be
  // printed as it was is not.
  const auto letters = database.Select(
      R"(SELECT letter_history.SEQ_NBR, LTR_TYP_ID, letter_history.ADDR_TYP_CD, RTND_DT
         FROM letter_history LEFT JOIN returned_mail
           ON returned_mail.SEQ_NBR = letter_history.SEQ_NBR AND CLRD_TS IS NULL
         WHERE letter_history.CUST_ID = ?
           AND (PRNT_STTS_CD = ? OR RTND_DT IS NOT NULL
                OR (PRNT_STTS_CD IN (?, ?) AND letter_history.ADDR_TYP_CD IS NULL))
           AND NOT EXISTS (SELECT 1 FROM batch_item WHERE batch_item.SEQ_NBR = letter_history.SEQ_NBR
                           AND (ACTN_CD = ? OR BTCH_SEQ_NBR IS NOT NULL)))",
      {after.id, print_status::kAddressNotVerified, print_status::kDataIncomplete, print_status::kPrintFailed,
       std::string(platform::batch_action::kBatchAgain)});
  if (letters->IsEmpty()) return 0;
  const Correction correction{before, after, exchange.verifier, FindOffice(database).state};
  RulesOfTypes rules(database);
  std::int64_t corrected = 0;
  for (std::size_t row = 0; row < letters->RecordCount(); ++row) {
    const auto type_rules = rules.Of(letters->Text(row, "LTR_TYP_ID"));
    if (!correction.IsOf(*letters, row, type_rules)) continue;
    GiveToBatchRun(exchange, letters->Get(row, "SEQ_NBR").AsInteger(), platform::batch_action::kBatchAgain);
    ++corrected;
  }
  return corrected;
}

}  // namespace server
