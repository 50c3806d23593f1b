#include "server/batch/batch_runs.h"

#include "platform/agreed/record_layouts.h"

namespace server {
namespace {

using platform::Value;

namespace run_status = platform::run_status;

Value TextOrNull(const std::string& text) {
  return text.empty() ? Value() : Value(text);
}

void AddItem(Database& database, std::int64_t run, std::size_t number, const RunItem& item) {
  database.Change(
      R"(INSERT INTO batch_letter (BTCH_SEQ_NBR, ITM_NBR, SRC_CD, RULE_NM, LTR_TYP_ID, CUST_ID, FORM_TYP_CD, FORM_NBR, SEQ_NBR)
         VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?))",
      {run, number, item.source, TextOrNull(item.rule), item.letter_type, TextOrNull(item.customer),
       TextOrNull(item.form_type), TextOrNull(item.form_number),
       item.letter ? Value(*item.letter) : Value()});
  if (item.letter)
    database.Change("UPDATE batch_item SET BTCH_SEQ_NBR = ? WHERE SEQ_NBR = ?", {run, *item.letter});
}

/// By what became of its letters; a run that had none to make has made all.
std::string_view StatusOf(std::int64_t letters, std::int64_t processed, std::int64_t succeeded) {
  if (processed < letters) return run_status::kIncomplete;
  return letters > 0 && succeeded == 0 ? run_status::kFailed : run_status::kSuccessful;
}

}  // namespace

std::int64_t CreateRun(Database& database, const std::vector<RunItem>& items, platform::Timestamp now,
                       const std::string& worker) {
  const auto run =
      database
          .Select(R"(INSERT INTO batch_run (BTCH_STATUS, BTCH_CRTE_TS, PRCS_STRT_TS, BTCH_LTR_CNT, WRKR_TXT)
                                  VALUES (?, ?, ?, ?, ?) RETURNING BTCH_SEQ_NBR)",
                  {std::string(run_status::kRunning), now, now, items.size(), worker})
          ->Get("BTCH_SEQ_NBR")
          .AsInteger();
  for (std::size_t place = 0; place < items.size(); ++place) AddItem(database, run, place + 1, items[place]);
  return run;
}

void RecordItem(Database& database, std::int64_t run, std::int64_t item, std::int64_t letter,
                ItemResult result) {
  const bool succeeded = result == ItemResult::kSucceeded;
  const auto changed = database.Change(
      "UPDATE batch_letter SET SEQ_NBR = ?, RSLT_CD = ? WHERE BTCH_SEQ_NBR = ? AND ITM_NBR = ? AND RSLT_CD "
      "IS NULL",
      {letter, succeeded ? "S" : "F", run, item});
  if (changed == 0) {
    throw platform::Failure(platform::Failure::Kind::kRefused,
                            "Letter " + std::to_string(item) + " of batch run " + std::to_string(run) +
                                " has been recorded already, or is none of its letters.");
  }
  database.Change(
      "UPDATE batch_run SET LTR_PRCS_CNT = LTR_PRCS_CNT + 1, LTR_SCS_CNT = LTR_SCS_CNT + ? WHERE "
      "BTCH_SEQ_NBR = ?",
      {succeeded ? 1 : 0, run});
  database.Change("UPDATE letter_history SET FLS_BTCH_NBR = ? WHERE SEQ_NBR = ?", {run, letter});
  database.Change("DELETE FROM batch_item WHERE SEQ_NBR = ? AND BTCH_SEQ_NBR = ?", {letter, run});
}

void EndRun(Database& database, std::int64_t run, platform::Timestamp now) {
  const auto counts = database.Select(
      "SELECT BTCH_LTR_CNT, LTR_PRCS_CNT, LTR_SCS_CNT FROM batch_run WHERE BTCH_SEQ_NBR = ?", {run});
  if (counts->IsEmpty()) {
    throw platform::Failure(platform::Failure::Kind::kNotFound,
                            "There is no batch run \"" + std::to_string(run) + "\".");
  }
  const auto count = [&](const char* column) { return counts->Get(column).AsInteger(); };
  const auto status = StatusOf(count("BTCH_LTR_CNT"), count("LTR_PRCS_CNT"), count("LTR_SCS_CNT"));
  database.Change("UPDATE batch_run SET BTCH_STATUS = ?, PRCS_END_TS = ? WHERE BTCH_SEQ_NBR = ?",
                  {std::string(status), now, run});
  database.Change("UPDATE batch_item SET BTCH_SEQ_NBR = NULL WHERE BTCH_SEQ_NBR = ?", {run});
}

std::optional<Run> FindRunningRun(Database& database) {
  const auto found = database.Select(
      "SELECT BTCH_SEQ_NBR, WRKR_TXT, PRCS_STRT_TS FROM batch_run WHERE BTCH_STATUS = ? ORDER BY "
      "BTCH_SEQ_NBR",
      {std::string(run_status::kRunning)});
  if (found->IsEmpty()) return std::nullopt;
  return Run{found->Get("BTCH_SEQ_NBR").AsInteger(), found->Text("WRKR_TXT"), found->Text("PRCS_STRT_TS")};
}

}  // namespace server
