#include "server/history/batch_items.h"

#include <string>
#include <vector>

#include "platform/agreed/letter_record.h"
#include "platform/agreed/record_layouts.h"
#include "platform/agreed/requests.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "server/history/letter_rules.h"

namespace server {
namespace {

using platform::Failure;
using platform::RecordSet;
using platform::Value;

namespace batch_action = platform::batch_action;
namespace item_outcome = platform::item_outcome;
namespace print_status = platform::print_status;
namespace record_name = platform::record_name;

template <typename Columns>
RecordSet& AddRecord(Exchange& exchange, const char* name, const Columns& columns) {
  return exchange.reply.AddRecord(name, {columns.begin(), columns.end()});
}

AskedItem ReadItem(const RecordSet& rows, std::size_t row) {
  AskedItem asked{
      platform::While("reading SEQ_NBR", [&] { return Value(rows.Text(row, "SEQ_NBR")).AsInteger(); }),
      platform::UpperCase(rows.Text(row, "ACTION"))};
  if (asked.action == batch_action::kReprint || asked.action == batch_action::kBatchAgain ||
      asked.action == batch_action::kCancel)
    return asked;
  throw Failure(Failure::Kind::kRefused, "The server does not know the action " +
                                             platform::Quoted(rows.Text(row, "ACTION")) +
                                             " for a batch run; send \"REP\", \"REB\" or \"DEL\".");
}

void TakeBack(Exchange& exchange, std::int64_t letter) {
  exchange.database.Change(
      R"(UPDATE letter_history SET LST_UPDT_INSP_ID = ?, (PRNT_STTS_CD, PRCS_ERR_TXT, BTCH_ACTN_CD) =
             (SELECT PRNT_STTS_CD, PRCS_ERR_TXT, BTCH_ACTN_CD FROM batch_item
              WHERE batch_item.SEQ_NBR = letter_history.SEQ_NBR)
         WHERE SEQ_NBR = ?)",
      {exchange.request.user_id, letter});
  exchange.database.Change("DELETE FROM batch_item WHERE SEQ_NBR = ?", {letter});
}

/// What comes of the letters of one request.
class ItemOutcomes {
 public:
  explicit ItemOutcomes(Exchange& exchange)
      : exchange_(exchange),
        rules_(exchange.database),
        outcomes_(AddRecord(exchange, record_name::kBatchItemOutcomes, platform::kBatchItemOutcomeColumns)) {}

  void Act(const AskedItem& asked) {
    std::string why;
    const auto outcome = Attempt(asked, why);
    const auto letter = exchange_.database.Select(
        "SELECT BTCH_ACTN_CD, PRNT_STTS_CD FROM letter_history WHERE SEQ_NBR = ?", {asked.letter});
    const auto now = [&](const char* column) { return letter->IsEmpty() ? Value() : letter->Get(column); };
    outcomes_.Append({asked.letter, std::string(outcome), why.empty() ? Value() : Value(why),
                      now("BTCH_ACTN_CD"), now("PRNT_STTS_CD")});
  }

 private:
  std::string_view Attempt(const AskedItem& asked, std::string& why) {
    const auto refuse = [&](const std::string& because) {
      why = "Letter " + std::to_string(asked.letter) + " " + because;
      return item_outcome::kRefused;
    };
    const auto letter = exchange_.database.Select(
        R"(SELECT letter_history.PRNT_STTS_CD, batch_item.ACTN_CD, batch_item.BTCH_SEQ_NBR,
             batch_item.PRNT_STTS_CD AS STTS_BEFORE
           FROM letter_history LEFT JOIN batch_item ON batch_item.SEQ_NBR = letter_history.SEQ_NBR
           WHERE letter_history.SEQ_NBR = ?)",
        {asked.letter});
    if (letter->IsEmpty()) return refuse("is not in the history any more. Search again.");
    const bool has_item = !letter->Get("ACTN_CD").IsNull();
    if (has_item && !letter->Get("BTCH_SEQ_NBR").IsNull()) {
      return refuse("is being worked on by batch run " + letter->Text("BTCH_SEQ_NBR") +
                    ". Wait until the run has ended, and search again.");
    }
    if (asked.action == batch_action::kCancel) {
      if (!has_item) return refuse("does not wait for the batch run.");
      TakeBack(exchange_, asked.letter);
      return item_outcome::kTaken;
    }
    if (has_item && letter->Text("ACTN_CD") == asked.action) {
      why = "Letter " + std::to_string(asked.letter) + " was waiting for the batch run already.";
      return item_outcome::kAlready;
    }
    const auto status = letter->Text(has_item ? "STTS_BEFORE" : "PRNT_STTS_CD");
    if (!IsAllowed(asked.action, status))
      return refuse("was not taken: its print status \"" + status + "\" does not allow it.");
    GiveToBatchRun(exchange_, asked.letter, asked.action);
    return item_outcome::kTaken;
  }

  // A letter that is resubmitted is printed again where printing is all it lacks.
  bool IsAllowed(const std::string& action, const std::string& status) const {
    return rules_.Allows(letter_action::kResubmit, status) ||
           (action == batch_action::kReprint && rules_.Allows(letter_action::kReprint, status));
  }

  Exchange& exchange_;
  const LetterRules rules_;
  RecordSet& outcomes_;
};

}  // namespace

std::optional<BatchItem> FindBatchItem(Database& database, std::int64_t letter) {
  const auto item =
      database.Select("SELECT ACTN_CD, BTCH_SEQ_NBR FROM batch_item WHERE SEQ_NBR = ?", {letter});
  if (item->IsEmpty()) return std::nullopt;
  BatchItem found{item->Text("ACTN_CD")};
  if (!item->Get("BTCH_SEQ_NBR").IsNull()) found.run = item->Get("BTCH_SEQ_NBR").AsInteger();
  return found;
}

void GiveToBatchRun(Exchange& exchange, std::int64_t letter, std::string_view action) {
  auto& database = exchange.database;
  if (FindBatchItem(database, letter)) TakeBack(exchange, letter);
  database.Change(
      R"(INSERT INTO batch_item (SEQ_NBR, ACTN_CD, RQST_TS, RQST_USER_ID, PRNT_STTS_CD, PRCS_ERR_TXT, BTCH_ACTN_CD)
         SELECT SEQ_NBR, ?, ?, ?, PRNT_STTS_CD, PRCS_ERR_TXT, BTCH_ACTN_CD FROM letter_history WHERE SEQ_NBR = ?)",
      {std::string(action), exchange.now, exchange.request.user_id, letter});
  if (action != batch_action::kBatchAgain) {
    database.Change("UPDATE letter_history SET BTCH_ACTN_CD = ?, LST_UPDT_INSP_ID = ? WHERE SEQ_NBR = ?",
                    {std::string(action), exchange.request.user_id, letter});
    return;
  }
  database.Change(
      R"(UPDATE letter_history SET PRNT_STTS_CD = ?, BTCH_ACTN_CD = ?, PRCS_ERR_TXT = NULL,
           LST_UPDT_INSP_ID = ? WHERE SEQ_NBR = ?)",
      {std::string(print_status::kWaitsForBatch), std::string(action), exchange.request.user_id, letter});
}

void AnswerBatchItems(Exchange& exchange) {
  const auto& rows = *exchange.request.Rows(record_name::kBatchItems);
  if (rows.IsEmpty())
    throw Failure(Failure::Kind::kRefused, "The record \"CORR_BITEM\" came without a letter.");
  std::vector<AskedItem> asked;
  asked.reserve(rows.RecordCount());
  for (std::size_t row = 0; row < rows.RecordCount(); ++row) asked.push_back(ReadItem(rows, row));
  GiveLetters(exchange, asked);
}

void GiveLetters(Exchange& exchange, const std::vector<AskedItem>& asked) {
  ItemOutcomes outcomes(exchange);
  for (const auto& one : asked) outcomes.Act(one);
}

std::shared_ptr<RecordSet> SelectWaitingItems(Database& database) {
  return database.Select(
      R"(SELECT batch_item.SEQ_NBR, ACTN_CD AS ACTION, RQST_TS, RQST_USER_ID, BTCH_SEQ_NBR, LTR_TYP_ID, CUST_ID,
           FORM_NBR, letter_history.PRNT_STTS_CD
         FROM batch_item JOIN letter_history ON letter_history.SEQ_NBR = batch_item.SEQ_NBR
         ORDER BY batch_item.SEQ_NBR)");
}

void AnswerWaitingItems(Exchange& exchange) {
  if (!exchange.keys.IsYes(platform::request_key::kBatchItems)) {
    throw Failure(Failure::Kind::kRefused,
                  "The key \"BATCH_ITEMS\" asks for what waits for the batch run; send \"Y\".");
  }
  const auto items = SelectWaitingItems(exchange.database);
  if (!items->IsEmpty()) exchange.reply.records.push_back({record_name::kWaitingItems, items});
}

}  // namespace server
