#include "reference/sql_dialect.h"

#include <gmock/gmock.h>

#include "platform/failure.h"
#include "tests/support/failing.h"

namespace {

using platform::Failure;
using testing::HasSubstr;

const platform::Date kToday{std::chrono::year(2026) / 11 / 22};

TEST(SqlDialect, WritesDatesAndTodayAsTheTablesHoldThem) {
  struct Case {
    const char* given;
    const char* expected;
  };
  const Case cases[] = {
      {"select 1", "select 1"},
      {"  SELECT a From t", "  SELECT a From t"},
      {"select a from t where d >= #2024-02-29#", "select a from t where d >= '2024-02-29'"},
      {"select #2024-01-01#,#2024-01-02#", "select '2024-01-01','2024-01-02'"},
      {"select date()", "select '2026-11-22'"},
      {"select DATE ( ) , d", "select '2026-11-22' , d"},
      {"select date(d), update(), a_date() from t", "select date(d), update(), a_date() from t"},
      {"select date from t", "select date from t"},
      {"select '#2024-01-01# date()'", "select '#2024-01-01# date()'"},
      {"select 'it''s #1', \"a#b\", [c#d], `e#f`", "select 'it''s #1', \"a#b\", [c#d], `e#f`"},
      {"select 'a' as \"b''c\", #2024-01-01#", "select 'a' as \"b''c\", '2024-01-01'"},
  };
  for (const auto& [given, expected] : cases) {
    EXPECT_EQ(reference::TranslateStatement(given, kToday), expected) << given;
  }
}

TEST(SqlDialect, RefusesWhatItCannotReadAndNamesIt) {
  struct Case {
    const char* given;
    const char* named;
  };
  const Case cases[] = {
      {"select #2024-13-99#", "\"#2024-13-99#\" is no date"},
      {"select #2023-02-29#", "\"#2023-02-29#\" is no date"},
      {"select ##", "\"##\" is no date"},
      {"select a from t where d > #2024-01-01", "\"#2024-01-01\" is not closed"},
      {"select 'abc", "\"'abc\" is not closed"},
      {"select [abc", "\"[abc\" is not closed"},
      {"", "is no SELECT"},
      {"delete from t", "\"delete from t\" is no SELECT"},
      {"selected", "is no SELECT"},
      {"pragma user_version", "is no SELECT"},
  };
  for (const auto& [given, named] : cases) {
    EXPECT_THAT([&] { reference::TranslateStatement(given, kToday); },
                tests::Fails(Failure::Kind::kRefused, HasSubstr(named)))
        << given;
  }
}

}  // namespace
