#include "server/context/field_queries.h"

#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <thread>

#include "server/requests/application_server.h"
#include "tests/server/server_world.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using namespace std::chrono_literals;

// TANK_CNT is the field of letter 121 that a query makes. letter_fields.tsv says on which line.
constexpr auto kQueryLine = "(letter_fields.tsv, line 343)";
constexpr auto kEndless =
    "SELECT MAX(N) FROM (WITH RECURSIVE count(N) AS (SELECT 1 UNION ALL SELECT N + 1 FROM count)"
    " SELECT N FROM count)";

/// The section of docs/templates.md about queries: tables with their columns, and queries to copy.
struct ToldToAuthors {
  std::map<std::string, std::set<std::string>> tables;
  std::vector<std::string> queries;

  static ToldToAuthors Read() {
    std::ifstream document(std::filesystem::path(ZEMLO_SOURCE_DIR) / "docs" / "templates.md");
    ToldToAuthors told;
    std::string line;
    while (std::getline(document, line) && line != "## What a QUERY may use") continue;
    for (std::string table; std::getline(document, line) && !line.starts_with("## ");) {
      if (line.starts_with("SELECT ")) told.queries.push_back(line);
      std::istringstream cells(line);
      std::string cell;
      if (!line.starts_with("| ") || !std::getline(cells.ignore(), cell, '|')) continue;
      if (const auto names = NamesIn(cell); !names.empty()) table = names.front();
      std::getline(cells, cell, '|');
      for (const auto& name : NamesIn(cell)) told.tables[table].insert(name);
    }
    return told;
  }

  /// What stands between backquotes.
  static std::vector<std::string> NamesIn(const std::string& text) {
    std::vector<std::string> names;
    std::istringstream stream(text);
    std::string name;
    while (std::getline(stream, name, '`') && std::getline(stream, name, '`')) names.push_back(name);
    return names;
  }
};

class FieldQuery : public tests::ServerTest {
 protected:
  void GivenQuery(const std::string& statement) {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    ASSERT_EQ(database.Change("UPDATE letter_field SET FLD_SRC = ? WHERE FLD_NM = 'TANK_CNT'", {statement}),
              1);
  }

  static tests::Question Letter() { return ContextOf("121", {{"CUST_ID", "100001"}}); }

  platform::XmlElement Field() {
    const auto reply = Ask(Letter());
    EXPECT_EQ(reply.error, "");
    document_ = platform::XmlDocument::Parse(tests::Record(reply, "XML_Context")->FirstText()).OrFail();
    EXPECT_NE(document_->FirstByTagName("CUSTOMER_NAME").Text(), "") << "the other fields have their values";
    return document_->FirstByTagName("TANK_CNT");
  }
  std::string Explanation() { return Field().Attribute("V_ExplainErr").value_or(""); }

  std::optional<platform::XmlDocument> document_;
};

TEST_F(FieldQuery, OneThatFailsNamesItsFieldItsLineAndTheReason) {
  GivenQuery("SELECT TANK_CNT FROM customer");
  EXPECT_THAT(Explanation(), AllOf(HasSubstr("The query failed. Field \"TANK_CNT\""), HasSubstr(kQueryLine),
                                   HasSubstr("no such column: TANK_CNT.")));
}

TEST_F(FieldQuery, AValueThatALetterCannotHoldIsAnErrorOfItsFieldOnly) {
  struct Case {
    const char* statement;
    const char* reason;
  };
  for (const auto& [statement, reason] :
       std::initializer_list<Case>{{"SELECT 'a' || CHAR(1)", "characters no letter can"},
                                   {"SELECT HEX(ZEROBLOB(100000000))", "too big"},
                                   {"SELECT CUST_ID FROM customer WHERE", "incomplete input"},
                                   {"SELECT \"SHOE_SIZE\" FROM customer", "no such column: "},
                                   {"SELECT LOAD_EXTENSION('mod_spatialite')", "not authorized"}}) {
    GivenQuery(statement);
    EXPECT_THAT(Explanation(), AllOf(HasSubstr(reason), HasSubstr(kQueryLine))) << statement;
  }
}

TEST_F(FieldQuery, OnlyTheFirstRowIsRead) {
  GivenQuery("SELECT a.CUST_ID FROM customer a, customer b, customer c, customer d, customer e, customer f");
  EXPECT_NE(Field().Text(), "");
}

TEST_F(FieldQuery, DoubleQuotesHoldANameAndNoText) {
  GivenQuery("SELECT \"CUST_ID\" FROM customer WHERE CUST_ID = :customer");
  EXPECT_EQ(Field().Text(), "100001");
}

TEST_F(FieldQuery, OneThatBeginsWithItsTablesIsRead) {
  GivenQuery("WITH own AS (SELECT CUST_ID FROM customer WHERE CUST_ID = :customer) SELECT CUST_ID FROM own");
  EXPECT_EQ(Field().Text(), "100001");
  GivenQuery("WITH gone AS (SELECT 1) DELETE FROM customer");
  EXPECT_THAT(Explanation(), AllOf(HasSubstr("it does more than read"), HasSubstr(kQueryLine)));
}

TEST_F(FieldQuery, WhatIsNoSelectIsRefusedWithTheRule) {
  for (const std::string statement : {"DELETE FROM customer", "SELECT 1; SELECT 2", "SELECT :shoe_size"}) {
    GivenQuery(statement);
    EXPECT_THAT(Ask(Letter()).error, AllOf(HasSubstr("\"TANK_CNT\""), HasSubstr("\"" + statement + "\""),
                                           HasSubstr("A QUERY is one SELECT")));
  }
  EXPECT_THAT(Ask(Letter()).error, HasSubstr("\":shoe_size\" stands for nothing"));
  server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
  EXPECT_EQ(database.Select("SELECT COUNT(*) FROM customer")->FirstText(), "30");
}

TEST_F(FieldQuery, MayUseWhatAuthorsAreTold) {
  const auto told = ToldToAuthors::Read();
  server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
  EXPECT_EQ(told.tables.size(), 6u);
  for (const auto& [table, columns] : told.tables) {
    const auto stored = database.Select("SELECT * FROM " + table)->columns();
    EXPECT_EQ(columns, std::set<std::string>(stored.begin(), stored.end())) << table;
  }
  EXPECT_EQ(told.queries.size(), 3u);
  for (const auto& query : told.queries) {
    EXPECT_EQ(server::FieldQueryFault(query), "") << query;
    EXPECT_EQ(server::TryFieldQuery(database, query, tests::kToday), "") << query;
  }
}

TEST_F(FieldQuery, OneThatDoesNotEndCostsItsFieldAndTheNextRequestIsAnswered) {
  GivenQuery(kEndless);
  EXPECT_THAT(Explanation(),
              AllOf(HasSubstr("it was stopped"), HasSubstr("2 seconds"), HasSubstr(kQueryLine)));
  EXPECT_EQ(Ask(PrintedLetter("m-2")).error, "");
  EXPECT_EQ(LettersRecorded(), 1);
}

TEST_F(FieldQuery, NoStatementOfALetterChangesAnything) {
  server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
  const auto limits = server::FieldQueryLimits({});
  for (const auto* statement : {"DELETE FROM customer", "PRAGMA user_version = 7"}) {
    EXPECT_THROW(database.SelectOne(statement, {}, limits), platform::Failure) << statement;
  }
  EXPECT_EQ(database.SelectOne("SELECT COUNT(*) FROM customer", {}, limits)->AsInteger(), 30);
}

// The server's thread stayed at 100 % for good, and the program with it.
TEST_F(FieldQuery, TheServerEndsWhileOneRuns) {
  GivenQuery(kEndless);
  const auto letter = tests::WireText(Letter());
  const auto started = std::chrono::steady_clock::now();
  int answered = 0;
  {
    server::ApplicationServer server(folder_.path(), parties_);
    for (int i = 0; i < 20; ++i) server.Submit(letter, [&](const std::string&) { ++answered; });
    server.Submit(tests::WireText(PrintedLetter("m-2")), [&](const std::string&) { ++answered; });
  }
  EXPECT_EQ(answered, 21);
  EXPECT_EQ(LettersRecorded(), 1) << "what changes something is still answered";
  EXPECT_LT(std::chrono::steady_clock::now() - started, 40s) << "20 letters of 2 seconds";
}

}  // namespace
