#include "server/customers/customer_index.h"

#include <array>
#include <optional>
#include <string_view>

#include "platform/text.h"

namespace server {
namespace {

// A position leaves room before the next for names that come later.
constexpr std::int64_t kGap = 1024;
constexpr std::int64_t kFirstPosition = kGap * kGap;
// Where there is none left, so many customers move, so that so much is between them again.
constexpr std::int64_t kMovedAtOnce = 64;
constexpr std::int64_t kLeastGap = 16;

// The words are those of customer_search already, apart at blanks; the tokenizer has nothing to do but to
// leave the marks in place (https://sqlite.org/fts5.html). Beginnings of up to seven characters have lists of
// their own: of a longer one there are so few in numbers and names that their lists are put together quickly.
constexpr std::size_t kLongestListed = 7;
constexpr auto kTables = std::to_array<const char*>({
    // No reference to the customer: it could not go without the words being told.
    R"(CREATE TABLE customer_search (
         SRCH_POS INTEGER PRIMARY KEY, CUST_ID VARCHAR(12) NOT NULL UNIQUE, SRT_NM TEXT NOT NULL,
         SRCH_TXT TEXT NOT NULL))",
    "CREATE INDEX customers_by_name ON customer_search (SRT_NM, CUST_ID)",
    R"(CREATE VIRTUAL TABLE customer_index USING fts5(
         SRCH_TXT, content='customer_search', content_rowid='SRCH_POS', tokenize="ascii tokenchars '=^'",
         prefix='1 2 3 4 5 6 7', detail=none, columnsize=0))",
});

std::string Beginning(const std::string& word) {
  return '"' + word + "\" *";
}

// Behind every word that begins with what stands before it.
constexpr const char* kLastCharacter = "\U0010FFFF";

bool HasWordBetween(Database& database, const std::string& first, const std::string& behind) {
  return !database
              .Select("SELECT 1 AS IS_THERE FROM customer_term WHERE term >= ? AND term < ? LIMIT 1",
                      {first, behind})
              ->IsEmpty();
}

/// What finds the same as the beginning `word` and has a list of its own, where that can be: "oakhave" for
/// "oakhaven" where no other word begins so. Else `word`, whose list is put together at each search.
std::string Listed(Database& database, const std::string& word) {
  const std::string listed(platform::FirstCharacters(word, kLongestListed));
  if (listed.size() == word.size()) return word;
  // The words of the index as a table, for this connection alone.
  database.Change(
      "CREATE VIRTUAL TABLE IF NOT EXISTS temp.customer_term USING fts5vocab(main, customer_index, row)");
  const bool others = HasWordBetween(database, listed, word) ||
                      HasWordBetween(database, word + kLastCharacter, listed + kLastCharacter);
  return others ? word : listed;
}

template <typename Items, typename ToText>
std::string Group(const Items& items, std::string_view joint, ToText&& to_text) {
  std::string group;
  for (const auto& item : items) group += (group.empty() ? "(" : std::string(joint)) + to_text(item);
  return group + ")";
}

std::string Everything(Database& database, const CustomerQuery& query) {
  const auto beginning = [&](const std::string& word) { return Beginning(Listed(database, word)); };
  const auto way = [&](const CustomerQuery::Words& words) { return Group(words, " AND ", beginning); };
  const auto part = [&](const CustomerQuery::Part& ways) { return Group(ways, " OR ", way); };
  return Group(query.parts, " AND ", part);
}

std::string Expression(Database& database, const CustomerQuery& query, CustomerFit fit) {
  const auto all = Everything(database, query);
  const auto number = Group(query.numbers, " OR ", [](const std::string& whole) {
    return std::string("\"") + kWholeNumberMark + whole + '"';
  });
  const auto name = Beginning(Listed(database, kNameStartMark + query.first_word));
  switch (fit) {
    case CustomerFit::kNumber:
      return number + " AND " + all;
    case CustomerFit::kNameStart:
      return "(" + name + " AND " + all + ") NOT " + number;
    case CustomerFit::kOther:
      break;
  }
  return all + " NOT (" + name + " OR " + number + ")";
}

std::int64_t CountOf(Database& database, const std::string& expression, std::int64_t most) {
  return database
      .Select(R"(SELECT COUNT(*) AS NUMBER_OF FROM
                   (SELECT 1 FROM customer_index WHERE customer_index MATCH ? LIMIT ?) AS found)",
              {expression, most})
      ->Get("NUMBER_OF")
      .AsInteger();
}

void Insert(Database& database, std::int64_t position, const std::string& id,
            const CustomerKeywords& keywords) {
  database.Change("INSERT INTO customer_search (SRCH_POS, CUST_ID, SRT_NM, SRCH_TXT) VALUES (?, ?, ?, ?)",
                  {position, id, keywords.sort_name, keywords.text});
  database.Change("INSERT INTO customer_index (rowid, SRCH_TXT) VALUES (?, ?)", {position, keywords.text});
}

/// The index has to be told what it holds of a row that goes.
void Remove(Database& database, std::int64_t position, const std::string& text) {
  database.Change("INSERT INTO customer_index (customer_index, rowid, SRCH_TXT) VALUES ('delete', ?, ?)",
                  {position, text});
  database.Change("DELETE FROM customer_search WHERE SRCH_POS = ?", {position});
}

/// Moves those behind `position` further apart.
void MakeRoomBehind(Database& database, std::int64_t position) {
  for (auto count = kMovedAtOnce;; count *= 2) {
    const auto behind = database.Select(
        "SELECT * FROM customer_search WHERE SRCH_POS > ? ORDER BY SRCH_POS LIMIT ?", {position, count + 1});
    const auto found = static_cast<std::int64_t>(behind->RecordCount());
    const bool to_the_end = found <= count;
    const auto moved = to_the_end ? found : count;
    const auto gap =
        to_the_end
            ? kGap
            : (behind->Get(behind->RecordCount() - 1, "SRCH_POS").AsInteger() - position) / (moved + 1);
    if (gap < kLeastGap) continue;
    for (std::size_t row = 0; row < static_cast<std::size_t>(moved); ++row)
      Remove(database, behind->Get(row, "SRCH_POS").AsInteger(), behind->Text(row, "SRCH_TXT"));
    for (std::size_t row = 0; row < static_cast<std::size_t>(moved); ++row) {
      Insert(database, position + gap * (static_cast<std::int64_t>(row) + 1), behind->Text(row, "CUST_ID"),
             {.text = behind->Text(row, "SRCH_TXT"), .sort_name = behind->Text(row, "SRT_NM")});
    }
    return;
  }
}

/// The next position before or behind a name; nothing where there is none.
std::optional<std::int64_t> Neighbour(Database& database, const std::string& name, const std::string& id,
                                      bool before) {
  const auto rows =
      database.Select(before ? R"(SELECT SRCH_POS FROM customer_search WHERE (SRT_NM, CUST_ID) < (?, ?)
                  ORDER BY SRT_NM DESC, CUST_ID DESC LIMIT 1)"
                             : R"(SELECT SRCH_POS FROM customer_search WHERE (SRT_NM, CUST_ID) > (?, ?)
                  ORDER BY SRT_NM, CUST_ID LIMIT 1)",
                      {name, id});
  return rows->IsEmpty() ? std::nullopt : std::optional(rows->Get("SRCH_POS").AsInteger());
}

std::int64_t PositionFor(Database& database, const std::string& name, const std::string& id) {
  const auto before = Neighbour(database, name, id, true);
  const auto behind = Neighbour(database, name, id, false);
  if (!before) return behind ? *behind - kGap : kFirstPosition;
  if (!behind) return *before + kGap;
  if (*behind - *before > 1) return *before + (*behind - *before) / 2;
  MakeRoomBehind(database, *before);
  return PositionFor(database, name, id);
}

}  // namespace

void CreateCustomerIndex(Database& database) {
  for (const auto* table : kTables) database.Change(table);
  NoteCustomersToIndex(database);
}

void NoteCustomersToIndex(Database& database) {
  database.Change(
      "CREATE TABLE IF NOT EXISTS customer_to_index (CUST_ID VARCHAR(12) PRIMARY KEY) WITHOUT ROWID");
  std::string columns;
  for (const auto column : SearchedColumns()) columns += (columns.empty() ? "" : ", ") + std::string(column);
  const auto trigger = [&](const std::string& name, const std::string& event,
                           std::initializer_list<const char*> ids) {
    std::string notes;
    // No conflict clause: that of the statement which changes the customer would take its place.
    for (const std::string id : ids) {
      notes += "INSERT INTO customer_to_index (CUST_ID) SELECT " + id + " WHERE " + id +
               " NOT IN (SELECT CUST_ID FROM customer_to_index); ";
    }
    database.Change("CREATE TRIGGER IF NOT EXISTS " + name + " AFTER " + event + " ON customer BEGIN " +
                    notes + "END");
  };
  trigger("customer_was_put_in", "INSERT", {"NEW.CUST_ID"});
  trigger("customer_was_changed", "UPDATE OF " + columns, {"OLD.CUST_ID", "NEW.CUST_ID"});
  trigger("customer_was_taken_out", "DELETE", {"OLD.CUST_ID"});
}

std::vector<std::string> CustomersToIndex(Database& database) {
  const auto rows = database.Select("SELECT CUST_ID FROM customer_to_index ORDER BY CUST_ID");
  std::vector<std::string> ids;
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) ids.push_back(rows->Text(row, "CUST_ID"));
  return ids;
}

std::int64_t CountCustomersToIndex(Database& database) {
  return database.Select("SELECT COUNT(*) AS NUMBER_OF FROM customer_to_index")->Get("NUMBER_OF").AsInteger();
}

bool HasCustomersToIndex(Database& database) {
  return !database.Select("SELECT CUST_ID FROM customer_to_index LIMIT 1")->IsEmpty();
}

void ForgetCustomerToIndex(Database& database, const std::string& id) {
  database.Change("DELETE FROM customer_to_index WHERE CUST_ID = ?", {id});
}

void ForgetCustomersToIndex(Database& database) {
  database.Change("DELETE FROM customer_to_index");
}

CustomerIndexFilling::CustomerIndexFilling(Database& database) : database_(database) {
  database_.Change("INSERT INTO customer_index (customer_index) VALUES ('delete-all')");
  database_.Change("DELETE FROM customer_search");
  database_.Change("CREATE TEMP TABLE unsorted_search (CUST_ID TEXT, SRT_NM TEXT, SRCH_TXT TEXT)");
}

void CustomerIndexFilling::Add(const std::string& id, const CustomerKeywords& keywords) {
  database_.Change("INSERT INTO unsorted_search VALUES (?, ?, ?)", {id, keywords.sort_name, keywords.text});
}

void CustomerIndexFilling::Finish() {
  database_.Change(
      R"(INSERT INTO customer_search (SRCH_POS, CUST_ID, SRT_NM, SRCH_TXT)
         SELECT ? + ? * ROW_NUMBER() OVER (ORDER BY SRT_NM, CUST_ID), CUST_ID, SRT_NM, SRCH_TXT
         FROM unsorted_search ORDER BY SRT_NM, CUST_ID)",
      {kFirstPosition, kGap});
  database_.ForgetStatements();
  database_.Change("DROP TABLE unsorted_search");
  for (const auto* command : {"rebuild", "optimize"})
    database_.Change("INSERT INTO customer_index (customer_index) VALUES (?)", {command});
}

void PutIntoCustomerIndex(Database& database, const std::string& id, const CustomerKeywords& keywords) {
  const auto stored = database.Select("SELECT * FROM customer_search WHERE CUST_ID = ?", {id});
  if (stored->IsEmpty()) {
    return Insert(database, PositionFor(database, keywords.sort_name, id), id, keywords);
  }
  const bool keeps_name = stored->Text(0, "SRT_NM") == keywords.sort_name;
  if (keeps_name && stored->Text(0, "SRCH_TXT") == keywords.text) return;
  const auto position = stored->Get("SRCH_POS").AsInteger();
  Remove(database, position, stored->Text(0, "SRCH_TXT"));
  Insert(database, keeps_name ? position : PositionFor(database, keywords.sort_name, id), id, keywords);
}

void TakeOutOfCustomerIndex(Database& database, const std::string& id) {
  const auto stored = database.Select("SELECT * FROM customer_search WHERE CUST_ID = ?", {id});
  if (!stored->IsEmpty()) Remove(database, stored->Get("SRCH_POS").AsInteger(), stored->Text(0, "SRCH_TXT"));
}

std::vector<std::string> FittingCustomers(Database& database, const CustomerQuery& query, CustomerFit fit,
                                          std::int64_t skipped, std::int64_t limit) {
  const auto rows = database.Select(
      R"(SELECT customer_search.CUST_ID FROM
           (SELECT rowid AS POS FROM customer_index WHERE customer_index MATCH ?
            ORDER BY rowid LIMIT ? OFFSET ?) AS found
           JOIN customer_search ON customer_search.SRCH_POS = found.POS ORDER BY found.POS)",
      {Expression(database, query, fit), limit, skipped});
  std::vector<std::string> ids;
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) ids.push_back(rows->Text(row, "CUST_ID"));
  return ids;
}

std::int64_t CountFitting(Database& database, const CustomerQuery& query, CustomerFit fit) {
  constexpr std::int64_t kAll = -1;
  return CountOf(database, Expression(database, query, fit), kAll);
}

std::int64_t CountFitting(Database& database, const CustomerQuery& query, std::int64_t most) {
  return CountOf(database, Everything(database, query), most);
}

}  // namespace server
