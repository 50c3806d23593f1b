#include "server/history/letter_history.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "platform/agreed/letter_record.h"
#include "platform/agreed/record_layouts.h"
#include "platform/agreed/requests.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "platform/xml/xml.h"
#include "server/context/stored_context.h"
#include "server/context/stored_explanations.h"
#include "server/subject/letter_subject.h"

namespace server {
namespace {

using platform::Failure;
using platform::RecordSet;
using platform::Timestamp;
using platform::Value;

namespace print_status = platform::print_status;
namespace record_action = platform::record_action;
namespace record_name = platform::record_name;
namespace request_key = platform::request_key;

// What a new letter's row may bring, as it is stored. Times, status, officer and district are the server's.
constexpr auto kGivenTexts = std::to_array<std::string_view>(
    {"LTR_TYP_ID", "CUST_ID", "FORM_NBR", "FORM_CK_DGT_NBR", "FORM_TYP_CD", "DCMT_FILE_TXT", "SYS_RFRNC_CD",
     "QZ_CNTY_NBR", "PRCS_ERR_TXT", "BTCH_ACTN_CD", "WGH_STN_ID"});
constexpr auto kGivenNumbers = std::to_array<std::string_view>({"ADDR_TYP_CD", "FLS_BTCH_NBR"});

/// One row of the record, read with its place in mind.
class GivenLetter {
 public:
  GivenLetter(const RecordSet& rows, std::size_t row) : rows_(rows), row_(row) {}

  /// Trimmed; "" where the column is absent or null.
  std::string Text(std::string_view column) const {
    return rows_.HasColumn(column) ? std::string(platform::Trim(rows_.Text(row_, column))) : "";
  }
  Value TextOrNull(std::string_view column) const {
    auto text = Text(column);
    return text.empty() ? Value() : Value(std::move(text));
  }
  Value NumberOrNull(std::string_view column) const {
    const auto text = Text(column);
    if (text.empty()) return {};
    return platform::While("reading " + std::string(column), [&] { return Value(Value(text).AsInteger()); });
  }
  std::optional<Timestamp> Time(std::string_view column) const {
    const auto text = Text(column);
    if (text.empty()) return std::nullopt;
    const auto time = platform::ParseTimestamp(text);
    if (time) return time;
    throw Failure(Failure::Kind::kRefused, std::string(column) + " has the value \"" + text +
                                               "\", which is no time; send it as \"yyyy-mm-dd hh.mm.ss\".");
  }
  /// When the letter was printed last: the server's own time where the row asks for it.
  std::optional<Timestamp> PrintTime(Timestamp now) const {
    return AsksForTime() ? now : Time("LST_PRNT_TS");
  }
  /// The status to store: that of a printed letter where the row says that printing is done.
  std::string Status() const {
    const auto sent = Text("PRNT_STTS_CD");
    return sent == platform::kStatusForTheServer && AsksForTime() ? std::string(print_status::kPrinted)
                                                                  : sent;
  }
  /// To the letter, blanks included.
  std::string Context() const {
    return rows_.HasColumn("XML_CONTEXT") ? rows_.Text(row_, "XML_CONTEXT") : "";
  }

 private:
  bool AsksForTime() const {
    static const auto kAsked = platform::ParseTimestamp(platform::kTimeForTheServer);
    return Time("LST_PRNT_TS") == kAsked;
  }

  const RecordSet& rows_;
  const std::size_t row_;
};

/// The row that the statement finds; `missing` is the refusal where it finds none.
std::shared_ptr<RecordSet> RequireRow(Exchange& exchange, const std::string& statement,
                                      const std::vector<Value>& values, const std::string& missing) {
  auto rows = exchange.database.Select(statement, values);
  if (!rows->IsEmpty()) return rows;
  throw Failure(Failure::Kind::kNotFound, missing);
}

/// A letter is recorded with its own data and its own customer, or not at all.
void CheckContext(const std::string& context, const std::string& customer) {
  const auto document = platform::While("reading the letter's context",
                                        [&] { return platform::XmlDocument::Parse(context).OrFail(); });
  if (document.Root().Name() != "XML_CONTEXT") {
    throw Failure(Failure::Kind::kRefused, "The letter's context begins with the element \"" +
                                               document.Root().Name() + "\"; it has to be XML_CONTEXT.");
  }
  const auto named = std::string(platform::Trim(document.FirstByTagName("CUST_ID").Text()));
  if (named.empty() || customer.empty() || named == customer) return;
  throw Failure(Failure::Kind::kRefused, "The letter's context is that of the customer \"" + named +
                                             "\", the letter is recorded for \"" + customer + "\".");
}

void CheckNewLetter(Exchange& exchange, const GivenLetter& letter) {
  const auto type = letter.Text("LTR_TYP_ID");
  RequireRow(exchange, "SELECT 1 FROM letter_field WHERE LTR_TYP_ID = ?", {type},
             "There is no letter type \"" + type + "\".");
  const auto customer = letter.Text("CUST_ID");
  const auto form = letter.Text("FORM_NBR");
  if (customer.empty() && form.empty()) {
    throw Failure(Failure::Kind::kRefused, "The letter names neither a customer nor a form.");
  }
  if (!customer.empty()) {
    RequireRow(exchange, "SELECT 1 FROM customer WHERE CUST_ID = ?", {customer},
               "There is no customer \"" + customer + "\".");
  }
  if (!form.empty()) {
    const auto owner =
        RequireRow(exchange, "SELECT CUST_ID FROM form WHERE FORM_TYP_CD = ? AND FORM_NBR = ?",
                   {letter.Text("FORM_TYP_CD"), form},
                   "There is no form \"" + form + "\" of type \"" + letter.Text("FORM_TYP_CD") + "\".");
    RequireOwner(exchange.database, form, owner->FirstText(), customer);
  }
  if (letter.Status().empty())
    throw Failure(Failure::Kind::kRefused, "The letter came without a PRNT_STTS_CD.");
  CheckContext(letter.Context(), customer);
}

/// The columns of the county that the letter belongs to; nulls where it has none or an unknown one.
void AddCounty(Exchange& exchange, const GivenLetter& letter, std::vector<std::string>& columns,
               std::vector<Value>& values) {
  const auto county =
      exchange.database.Select("SELECT TRP_ID, TRP_DIST_ID, QZ_CNTY_DESC FROM county WHERE QZ_CNTY_NBR = ?",
                               {letter.Text("QZ_CNTY_NBR")});
  for (const auto& column : county->columns()) {
    columns.push_back(column);
    values.push_back(county->IsEmpty() ? Value() : county->Get(column));
  }
}

std::string InsertStatement(const std::vector<std::string>& columns) {
  std::string names;
  std::string places;
  for (const auto& column : columns) {
    names += (names.empty() ? "" : ", ") + column;
    places += places.empty() ? "?" : ", ?";
  }
  return "INSERT INTO letter_history (" + names + ") VALUES (" + places + ") RETURNING SEQ_NBR";
}

std::int64_t AddLetter(Exchange& exchange, const GivenLetter& letter) {
  CheckNewLetter(exchange, letter);
  std::vector<std::string> columns;
  std::vector<Value> values;
  const auto put = [&](std::string_view column, Value value) {
    columns.emplace_back(column);
    values.push_back(std::move(value));
  };
  for (const auto column : kGivenTexts) put(column, letter.TextOrNull(column));
  for (const auto column : kGivenNumbers) put(column, letter.NumberOrNull(column));
  const auto print_time = letter.PrintTime(exchange.now);
  put("PRNT_STTS_CD", letter.Status());
  put("PRNT_TS", print_time ? Value(*print_time) : Value());
  put("LST_PRNT_TS", print_time ? Value(*print_time) : Value());
  put("LST_PRCS_TS", letter.Time("LST_PRCS_TS").value_or(exchange.now));
  put("LST_UPDT_INSP_ID", exchange.request.user_id);
  AddCounty(exchange, letter, columns, values);
  const auto number = exchange.database.Select(InsertStatement(columns), values)->Get("SEQ_NBR").AsInteger();
  StoreContext(exchange.database, number, letter.Text("LTR_TYP_ID"), letter.Context());
  return number;
}

std::int64_t UpdateLetter(Exchange& exchange, const GivenLetter& letter) {
  const auto number =
      platform::While("reading SEQ_NBR", [&] { return Value(letter.Text("SEQ_NBR")).AsInteger(); });
  const auto stored = exchange.database.Select(
      "SELECT PRNT_STTS_CD, PRNT_TS, LST_PRNT_TS FROM letter_history WHERE SEQ_NBR = ?", {number});
  if (stored->IsEmpty()) {
    throw Failure(Failure::Kind::kNotFound,
                  "There is no letter \"" + std::to_string(number) + "\" in the history.");
  }
  const auto time = letter.PrintTime(exchange.now);
  auto status =
      print_status::IsFailure(stored->Text("PRNT_STTS_CD")) ? stored->Text("PRNT_STTS_CD") : letter.Status();
  if (status.empty()) status = stored->Text("PRNT_STTS_CD");
  // A letter that waits to be made again goes on waiting; it gets the new status when it is taken back.
  const bool has_item = exchange.database.Change("UPDATE batch_item SET PRNT_STTS_CD = ? WHERE SEQ_NBR = ?",
                                                 {status, number}) > 0;
  if (has_item && stored->Text("PRNT_STTS_CD") == print_status::kWaitsForBatch)
    status = print_status::kWaitsForBatch;
  const auto& first_time = stored->Get("PRNT_TS");
  exchange.database.Change(
      R"(UPDATE letter_history SET PRNT_STTS_CD = ?, PRNT_TS = ?, LST_PRNT_TS = ?, LST_UPDT_INSP_ID = ?
         WHERE SEQ_NBR = ?)",
      {status, first_time.IsNull() && time ? Value(*time) : first_time,
       time ? Value(*time) : stored->Get("LST_PRNT_TS"), exchange.request.user_id, number});
  return number;
}

std::int64_t RecordLetter(Exchange& exchange, const GivenLetter& letter) {
  const auto action = letter.Text("ACTION");
  if (action == record_action::kAdd) return AddLetter(exchange, letter);
  if (action == record_action::kUpdate) return UpdateLetter(exchange, letter);
  throw Failure(Failure::Kind::kRefused,
                "The server does not know the action \"" + action + "\"; send \"ADD\" or \"UPD\".");
}

void AppendStored(Exchange& exchange, RecordSet& letters, std::int64_t number) {
  const auto stored = exchange.database.Select("SELECT * FROM letter_history WHERE SEQ_NBR = ?", {number});
  letters.AddNew();
  for (const auto& column : letters.columns()) {
    if (stored->HasColumn(column)) letters.Set(column, stored->Get(column));
  }
}

/// The letters that a message of this key has recorded before, in the order of its rows.
std::vector<std::int64_t> LettersOfMessage(Database& database, const std::string& message_key) {
  const auto rows =
      database.Select("SELECT SEQ_NBR FROM letter_message WHERE MSG_KEY = ? ORDER BY ROW_NBR", {message_key});
  std::vector<std::int64_t> letters;
  for (std::size_t row = 0; row < rows->RecordCount(); ++row)
    letters.push_back(rows->Get(row, "SEQ_NBR").AsInteger());
  return letters;
}

/// Records each row, unless this message has done so already: then its letters stay as they are.
std::vector<std::int64_t> RecordOnce(Exchange& exchange, const RecordSet& rows) {
  const auto& key = exchange.request.message_key;
  auto letters = LettersOfMessage(exchange.database, key);
  if (!letters.empty()) return letters;
  for (std::size_t row = 0; row < rows.RecordCount(); ++row)
    letters.push_back(RecordLetter(exchange, GivenLetter(rows, row)));
  StoreLetterMessage(exchange.database, key, letters);
  return letters;
}

}  // namespace

void StoreLetterMessage(Database& database, const std::string& message_key,
                        const std::vector<std::int64_t>& letters) {
  for (std::size_t row = 0; row < letters.size(); ++row) {
    database.Change("INSERT INTO letter_message (MSG_KEY, ROW_NBR, SEQ_NBR) VALUES (?, ?, ?)",
                    {message_key, row, letters[row]});
  }
}

void RecordLetters(Exchange& exchange) {
  const auto& rows = *exchange.request.Rows(record_name::kHistory);
  auto& letters = exchange.reply.AddRecord(
      record_name::kHistory, {platform::kHistoryColumns.begin(), platform::kHistoryColumns.end()});
  if (rows.IsEmpty())
    throw Failure(Failure::Kind::kRefused, "The record \"CORRHIST\" came without a letter.");
  for (const auto number : RecordOnce(exchange, rows)) AppendStored(exchange, letters, number);
  if (!exchange.keys.Has(request_key::kFetchContext)) return;
  try {
    AnswerStoredContext(exchange);
  } catch (const Failure& failure) {
    // The letters that were printed are recorded, whatever becomes of the next one.
    exchange.reply.error = failure.what();
  }
}

void AnswerStoredContext(Exchange& exchange) {
  const auto number = exchange.keys.Number(request_key::kFetchContext);
  const auto context = FindContext(exchange.database, *number);
  if (!context) {
    throw Failure(Failure::Kind::kNotFound,
                  "There is no letter \"" + std::to_string(*number) + "\" in the history.");
  }
  const auto letter = exchange.database.Select(R"(
      SELECT LTR_TYP_ID, customer.CUST_ID, MAIL_BAD_FLG AS MAIL_RTND_IND, RES_BAD_FLG AS RES_RTND_IND
      FROM letter_history LEFT JOIN customer ON customer.CUST_ID = letter_history.CUST_ID
      WHERE SEQ_NBR = ?)",
                                               {*number});
  exchange.reply.AddRecord(record_name::kContext, {"XML_CONTEXT"})
      .Append({WithExplanations(*context, AskedExplanations(exchange.keys),
                                FindLetterFields(exchange.database, letter->FirstText()))});
  if (letter->Get("CUST_ID").IsNull()) return;
  // Of today, where the letter's data are of its own day.
  const std::vector<std::string> marks = {"CUST_ID", "MAIL_RTND_IND", "RES_RTND_IND"};
  auto& customer = exchange.reply.AddRecord(record_name::kCustomer, marks);
  customer.AddNew();
  for (const auto& mark : marks) customer.Set(mark, letter->Get(mark));
}

}  // namespace server
