#include "server/batch/night_record.h"

#include "platform/agreed/letter_record.h"
#include "server/context/stored_context.h"

namespace server {
namespace {

using platform::Value;

namespace print_status = platform::print_status;

constexpr const char* kBatchUser = "BATCH";
constexpr const char* kRunAction = "RUN";  // BTCH_ACTN_CD of what a run has made

Value NullForNone(const std::string& text) {
  return text.empty() ? Value() : Value(text);
}

std::string NightStatus(const NightLetter& letter, const NightOutcome& outcome) {
  if (outcome.failure.empty()) return outcome.print_status;
  return std::string(letter.as_stored ? print_status::kReprintFailed : print_status::kPrintFailed);
}

/// When it was printed; null for one that was not.
Value PrintTime(const NightOutcome& outcome, platform::Timestamp now) {
  const bool is_printed = outcome.failure.empty() && outcome.print_status == print_status::kPrinted;
  return is_printed ? Value(now) : Value();
}

std::int64_t Add(Database& database, const NightLetter& letter, const NightOutcome& outcome,
                 platform::Timestamp now) {
  const auto& what = letter.what;
  const auto printed = PrintTime(outcome, now);
  const auto county = database.Select(
      "SELECT TRP_ID, TRP_DIST_ID, QZ_CNTY_DESC FROM county WHERE QZ_CNTY_NBR = ?", {letter.county});
  const auto of_county = [&](const char* column) {
    return county->IsEmpty() ? Value() : county->Get(column);
  };
  return database
      .Select(
          R"(INSERT INTO letter_history (LTR_TYP_ID, CUST_ID, FORM_NBR, FORM_CK_DGT_NBR, FORM_TYP_CD, DCMT_FILE_TXT,
                   PRNT_STTS_CD, PRNT_TS, LST_PRNT_TS, LST_PRCS_TS, SYS_RFRNC_CD, QZ_CNTY_NBR, ADDR_TYP_CD, PRCS_ERR_TXT,
                   LST_UPDT_INSP_ID, BTCH_ACTN_CD, TRP_ID, TRP_DIST_ID, QZ_CNTY_DESC)
                 VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) RETURNING SEQ_NBR)",
          {what.letter_type, NullForNone(what.customer), NullForNone(what.form_number), letter.check_digit,
           NullForNone(what.form_type), NullForNone(outcome.template_file), NightStatus(letter, outcome),
           printed, printed, now, std::string(platform::letter_origin::kBatch), letter.county,
           letter.address_type, NullForNone(outcome.failure), kBatchUser, kRunAction, of_county("TRP_ID"),
           of_county("TRP_DIST_ID"), of_county("QZ_CNTY_DESC")})
      ->Get("SEQ_NBR")
      .AsInteger();
}

void StoreAnew(Database& database, std::int64_t number, const NightLetter& letter) {
  database.Change("DELETE FROM letter_context WHERE SEQ_NBR = ?", {number});
  StoreContext(database, number, letter.what.letter_type, letter.context);
}

void Change(Database& database, std::int64_t number, const NightLetter& letter, const NightOutcome& outcome,
            platform::Timestamp now) {
  const auto printed = PrintTime(outcome, now);
  database.Change(
      R"(UPDATE letter_history SET PRNT_STTS_CD = ?, PRNT_TS = COALESCE(PRNT_TS, ?), LST_PRNT_TS = COALESCE(?, LST_PRNT_TS),
           LST_PRCS_TS = ?, PRCS_ERR_TXT = ?, LST_UPDT_INSP_ID = ?, BTCH_ACTN_CD = ? WHERE SEQ_NBR = ?)",
      {NightStatus(letter, outcome), printed, printed, now, NullForNone(outcome.failure), kBatchUser,
       letter.what.source, number});
  if (letter.as_stored) return;
  // No address was found: a corrected one makes the letter due again.
  database.Change("UPDATE letter_history SET ADDR_TYP_CD = ? WHERE SEQ_NBR = ?",
                  {letter.address_type, number});
  if (!outcome.failure.empty()) return;
  database.Change("UPDATE letter_history SET DCMT_FILE_TXT = ? WHERE SEQ_NBR = ?",
                  {outcome.template_file, number});
  StoreAnew(database, number, letter);
}

}  // namespace

std::int64_t RecordNightLetter(Database& database, std::int64_t run, const NightLetter& letter,
                               const NightOutcome& outcome, platform::Timestamp now) {
  const bool is_new = !letter.what.letter;
  const auto number = is_new ? Add(database, letter, outcome, now) : *letter.what.letter;
  if (is_new)
    StoreContext(database, number, letter.what.letter_type,
                 letter.context.empty() ? "<XML_CONTEXT></XML_CONTEXT>" : letter.context);
  else
    Change(database, number, letter, outcome, now);
  RecordItem(database, run, letter.item, number,
             outcome.failure.empty() ? ItemResult::kSucceeded : ItemResult::kFailed);
  return number;
}

}  // namespace server
