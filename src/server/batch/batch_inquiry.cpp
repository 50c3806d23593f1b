#include "server/batch/batch_inquiry.h"

#include <algorithm>
#include <string>
#include <vector>

#include "platform/agreed/letter_record.h"
#include "platform/agreed/record_layouts.h"
#include "platform/failure.h"
#include "server/batch/account_balance.h"
#include "server/batch/batch_runs.h"
#include "server/history/batch_items.h"

namespace server {
namespace {

using platform::Failure;
using platform::RecordSet;
using platform::Value;

namespace request_key = platform::request_key;

struct AskedStatus {
  std::string_view code;
  std::string_view condition;  ///< "" for all runs
};
constexpr auto kAskedStatuses = std::to_array<AskedStatus>({
    {platform::batch_outcome::kAll, ""},
    {platform::batch_outcome::kSuccessful, "BTCH_STATUS = 'SUCCESSFUL'"},
    {platform::batch_outcome::kIncomplete, "BTCH_STATUS IN ('INCOMPLETE', 'RUNNING')"},
    {platform::batch_outcome::kFailed, "BTCH_STATUS = 'FAILED'"},
});
// A run that begins in the evening is the night's.
constexpr auto kEvening = " 18";

/// The letters of `of` ("... = ?"), counted by what their accounts owe.
std::string AccountCounts(std::string_view of) {
  const auto count = [&](const char* compared) {
    return "COALESCE(SUM(CASE WHEN FORM_NBR IS NOT NULL AND " + BalanceOf("batch_letter") + compared +
           " THEN 1 ELSE 0 END), 0)";
  };
  return "SELECT " + count(" <= 0") + " AS PAID_COUNT, " + count(" > 0") +
         " AS UNPAID_COUNT FROM batch_letter WHERE " + std::string(of);
}

std::string ConditionsOf(const RequestKeys& keys, std::vector<Value>& values) {
  std::string conditions;
  const auto add = [&](std::string_view condition) {
    if (!condition.empty()) conditions += (conditions.empty() ? " WHERE " : " AND ") + std::string(condition);
  };
  if (const auto days = keys.Days(request_key::kRunDays)) {
    add("BTCH_CRTE_TS >= ? AND BTCH_CRTE_TS < ?");
    const platform::Date before(std::chrono::local_days(days->first) - std::chrono::days(1));
    values.emplace_back(platform::DateText(before) + kEvening);
    values.emplace_back(platform::DateText(days->last) + " 24");
  }
  const auto code = keys.Text(request_key::kRunStatus);
  const auto status = std::ranges::find(kAskedStatuses, code, &AskedStatus::code);
  if (!code.empty() && status == kAskedStatuses.end()) {
    throw Failure(Failure::Kind::kRefused,
                  "The key \"STATUS\" has the value \"" + code + "\"; send \"A\", \"S\", \"P\" or \"F\".");
  }
  if (!code.empty()) add(status->condition);
  return conditions;
}

template <typename Columns>
RecordSet& AddRecord(Exchange& exchange, const char* name, const Columns& columns) {
  return exchange.reply.AddRecord(name, {columns.begin(), columns.end()});
}

/// Copies what the row has of the record's columns.
void Append(RecordSet& record, const RecordSet& rows, std::size_t row) {
  record.AddNew();
  for (const auto& column : record.columns()) {
    if (rows.HasColumn(column)) record.Set(column, rows.Get(row, column));
  }
}

/// The run that a key names. Throws Failure kNotFound where there is none.
std::int64_t RequireRun(Exchange& exchange, std::string_view key) {
  const auto number = exchange.keys.Number(key);
  if (!number)
    throw Failure(Failure::Kind::kRefused,
                  "The request names no batch run. Send its number as " + std::string(key) + ".");
  if (exchange.database.Select("SELECT 1 FROM batch_run WHERE BTCH_SEQ_NBR = ?", {*number})->IsEmpty())
    throw Failure(Failure::Kind::kNotFound, "There is no batch run \"" + std::to_string(*number) + "\".");
  return *number;
}

}  // namespace

void AnswerBatchRuns(Exchange& exchange) {
  std::vector<Value> values;
  const auto conditions = ConditionsOf(exchange.keys, values);
  const auto runs = exchange.database.Select(
      R"(SELECT BTCH_SEQ_NBR, BTCH_STATUS, BTCH_CRTE_TS, PRCS_STRT_TS, PRCS_END_TS, BTCH_LTR_CNT, LTR_PRCS_CNT,
           LTR_SCS_CNT, LTR_PRCS_CNT - LTR_SCS_CNT AS LTR_FAIL_CNT FROM batch_run)" +
          conditions + " ORDER BY BTCH_CRTE_TS DESC, BTCH_SEQ_NBR DESC",
      values);
  if (runs->IsEmpty()) return;
  auto& record = AddRecord(exchange, platform::record_name::kBatchRuns, platform::kBatchColumns);
  const auto counts = AccountCounts("BTCH_SEQ_NBR = ?");
  for (std::size_t row = 0; row < runs->RecordCount(); ++row) {
    Append(record, *runs, row);
    const auto accounts = exchange.database.Select(counts, {runs->Get(row, "BTCH_SEQ_NBR")});
    for (const auto* column : {"PAID_COUNT", "UNPAID_COUNT"}) record.Set(column, accounts->Get(column));
  }
  record.MoveFirst();
}

void AnswerBatchStatistics(Exchange& exchange) {
  if (!exchange.keys.IsYes(request_key::kBatchStatistics))
    throw Failure(Failure::Kind::kRefused, "The key \"BATCHSTAT\" asks for a run's statistics; send \"Y\".");
  const auto run = RequireRun(exchange, request_key::kBatch);
  const auto types = exchange.database.Select(
      R"(SELECT LTR_TYP_ID, COUNT(*) AS LETTER_COUNT, COUNT(RSLT_CD) AS PROCESS_COUNT,
           SUM(CASE RSLT_CD WHEN 'S' THEN 1 ELSE 0 END) AS SUCCESS_COUNT,
           SUM(CASE RSLT_CD WHEN 'F' THEN 1 ELSE 0 END) AS FAILURE_COUNT
         FROM batch_letter WHERE BTCH_SEQ_NBR = ? GROUP BY LTR_TYP_ID ORDER BY LTR_TYP_ID)",
      {run});
  if (types->IsEmpty()) return;
  auto& record =
      AddRecord(exchange, platform::record_name::kBatchStatistics, platform::kBatchStatisticsColumns);
  const auto counts = AccountCounts("BTCH_SEQ_NBR = ? AND LTR_TYP_ID = ?");
  for (std::size_t row = 0; row < types->RecordCount(); ++row) {
    Append(record, *types, row);
    const auto accounts = exchange.database.Select(counts, {run, types->Get(row, "LTR_TYP_ID")});
    for (const auto* column : {"PAID_COUNT", "UNPAID_COUNT"}) record.Set(column, accounts->Get(column));
  }
  record.MoveFirst();
}

void AnswerBatchAgain(Exchange& exchange) {
  const auto run = RequireRun(exchange, request_key::kReprintBatch);
  if (const auto running = FindRunningRun(exchange.database); running && running->number == run) {
    throw Failure(Failure::Kind::kRefused, "Batch run " + std::to_string(run) + " is running since " +
                                               running->started + ". Resubmit it when it has ended.");
  }
  const auto letters = exchange.database.Select(
      R"(SELECT DISTINCT letter_history.SEQ_NBR, PRNT_STTS_CD FROM batch_letter
         JOIN letter_history ON letter_history.SEQ_NBR = batch_letter.SEQ_NBR
         WHERE BTCH_SEQ_NBR = ? ORDER BY letter_history.SEQ_NBR)",
      {run});
  if (letters->IsEmpty()) {
    throw Failure(Failure::Kind::kRefused,
                  "Batch run " + std::to_string(run) +
                      " has made no letter that could be resubmitted. Those it did not come to "
                      "are made by the next run anyway.");
  }
  std::vector<AskedItem> asked;
  for (std::size_t row = 0; row < letters->RecordCount(); ++row) {
    asked.push_back({letters->Get(row, "SEQ_NBR").AsInteger(),
                     std::string(platform::ResubmissionOf(letters->Text(row, "PRNT_STTS_CD")))});
  }
  GiveLetters(exchange, asked);
}

}  // namespace server
