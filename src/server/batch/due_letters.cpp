#include "server/batch/due_letters.h"

#include <set>
#include <string>

#include "platform/agreed/letter_record.h"

namespace server {
namespace {

using platform::RecordSet;
using platform::Value;

constexpr auto kLetterColumns = "letter_history.SEQ_NBR, LTR_TYP_ID, CUST_ID, FORM_TYP_CD, FORM_NBR";

RunItem ItemOf(const RecordSet& rows, std::size_t row, std::string source) {
  return {.source = std::move(source),
          .letter_type = rows.Text(row, "LTR_TYP_ID"),
          .customer = rows.Text(row, "CUST_ID"),
          .form_type = rows.Text(row, "FORM_TYP_CD"),
          .form_number = rows.Text(row, "FORM_NBR"),
          .letter = rows.Get(row, "SEQ_NBR").AsInteger()};
}

void AddWaiting(Database& database, std::vector<RunItem>& due) {
  const auto rows =
      database.Select(std::string("SELECT ACTN_CD, ") + kLetterColumns +
                      " FROM batch_item JOIN letter_history ON letter_history.SEQ_NBR = batch_item.SEQ_NBR"
                      " WHERE BTCH_SEQ_NBR IS NULL ORDER BY letter_history.SEQ_NBR");
  for (std::size_t row = 0; row < rows->RecordCount(); ++row)
    due.push_back(ItemOf(*rows, row, rows->Text(row, "ACTN_CD")));
}

void AddOfRule(Database& database, const BatchRule& rule, platform::Date today, std::vector<RunItem>& due) {
  std::vector<Value> values = {rule.form_type};
  values.insert(values.end(), rule.condition.values.begin(), rule.condition.values.end());
  std::string since;
  values.emplace_back(rule.letter_type);
  if (rule.again_after_days > 0) {
    since = " AND COALESCE(LST_PRNT_TS, LST_PRCS_TS) >= ?";
    values.emplace_back(platform::DateText(
        platform::Date(std::chrono::local_days(today) - std::chrono::days(rule.again_after_days - 1))));
  }
  const auto rows = database.Select(
      "SELECT FORM_TYP_CD, FORM_NBR, CUST_ID FROM form WHERE FORM_TYP_CD = ? AND " + rule.condition.text +
          " AND NOT EXISTS (SELECT 1 FROM letter_history WHERE letter_history.FORM_NBR = form.FORM_NBR"
          " AND letter_history.FORM_TYP_CD = form.FORM_TYP_CD AND letter_history.LTR_TYP_ID = ?" +
          since + ") ORDER BY FORM_NBR",
      values);
  // A letter that waits to be made again is the one that the rule asks for.
  std::set<std::string> made_again;
  for (const auto& item : due) {
    if (item.letter_type == rule.letter_type && item.form_type == rule.form_type)
      made_again.insert(item.form_number);
  }
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
    if (made_again.contains(rows->Text(row, "FORM_NBR"))) continue;
    due.push_back({.source = std::string(run_source::kRule),
                   .letter_type = rule.letter_type,
                   .customer = rows->Text(row, "CUST_ID"),
                   .form_type = rows->Text(row, "FORM_TYP_CD"),
                   .form_number = rows->Text(row, "FORM_NBR"),
                   .rule = rule.name});
  }
}

void AddMadeOnline(Database& database, std::vector<RunItem>& due) {
  const auto rows =
      database.Select(std::string("SELECT ") + kLetterColumns +
                          " FROM letter_history WHERE PRNT_STTS_CD = ? AND NOT EXISTS"
                          " (SELECT 1 FROM batch_item WHERE batch_item.SEQ_NBR = letter_history.SEQ_NBR)"
                          " ORDER BY SEQ_NBR",
                      {std::string(platform::print_status::kWaitsForBatch)});
  for (std::size_t row = 0; row < rows->RecordCount(); ++row)
    due.push_back(ItemOf(*rows, row, std::string(run_source::kOnline)));
}

}  // namespace

std::vector<RunItem> FindDueLetters(Database& database, const std::vector<BatchRule>& rules,
                                    platform::Date today) {
  std::vector<RunItem> due;
  AddWaiting(database, due);
  for (const auto& rule : rules) AddOfRule(database, rule, today, due);
  AddMadeOnline(database, due);
  return due;
}

}  // namespace server
