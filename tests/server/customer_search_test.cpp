#include "server/customers/customer_search.h"

#include <algorithm>

#include "server/customers/customer_words.h"
#include "server/schema/schema.h"

#include "tests/server/server_world.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Ids = std::vector<std::string>;
using Columns = std::map<std::string, std::string>;

/// A register with the customers of each test alone.
class CustomerSearch : public testing::Test {
 protected:
  CustomerSearch() {
    server::CreateTables(database_);
    database_.Change("INSERT INTO county VALUES ('13', 'Hartsfield', 'C', '1', '883')");
  }

  void Given(const std::string& id, const Columns& columns) {
    database_.Change(
        "INSERT INTO customer (CUST_ID, MAIL_BAD_FLG, MAIL_VRFY_CD, RES_BAD_FLG, RES_VRFY_CD, OT_BAL,"
        " QZ_CNTY_NBR) VALUES (?, 'N', 'V', 'N', 'V', 0, '13')",
        {id});
    Change(id, columns);
  }
  void Change(const std::string& id, const Columns& columns) {
    for (const auto& [column, value] : columns)
      database_.Change("UPDATE customer SET " + column + " = ? WHERE CUST_ID = ?", {value, id});
    server::IndexCustomer(database_, id);
  }
  Ids Found(std::string_view text, std::int64_t skipped = 0, std::int64_t limit = 1000) {
    const auto found = server::FindCustomers(database_, text, skipped, limit);
    if (skipped == 0 && limit == 1000) {
      EXPECT_EQ(server::CountCustomers(database_, text, 1000), std::ssize(found)) << text;
    }
    return found;
  }
  /// The engine compares its index with the texts it was made from, and throws where they differ.
  void ExpectSoundIndex() {
    EXPECT_NO_THROW(
        database_.Change("INSERT INTO customer_index (customer_index, rank) VALUES ('integrity-check', 1)"));
    const auto misplaced = database_.Select(
        R"(SELECT COUNT(*) AS NUMBER_OF FROM
             (SELECT SRT_NM, CUST_ID, LAG(SRT_NM) OVER by_place AS NAME_BEFORE,
                LAG(CUST_ID) OVER by_place AS ID_BEFORE
              FROM customer_search WINDOW by_place AS (ORDER BY SRCH_POS)) AS placed
           WHERE (NAME_BEFORE, ID_BEFORE) > (SRT_NM, CUST_ID))");
    EXPECT_EQ(misplaced->Get("NUMBER_OF").AsInteger(), 0);
  }

  server::Database database_{":memory:", server::Database::Opening::kNew};
};

TEST_F(CustomerSearch, FindsAPersonByWhatACallerSays) {
  Given("100002", {{"FIRST_NM", "Hattie"},
                   {"MID_NM", "Zoë"},
                   {"LAST_NM", "Merriweather"},
                   {"MAIL_CITY", "Oakhaven"},
                   {"MAIL_ZIP_CD", "892140431"},
                   {"RES_CITY", "Heron Bay"},
                   {"RES_ZIP_CD", "88409"},
                   {"PHN_NBR", "5550117722"},
                   {"ACCNT_NBR", "6200010000201"},
                   {"DRVR_LIC_NBR", "KV-4471 902"},
                   {"RGSTRTN_NBR", "R 88 1200"}});
  Given("100003", {{"FIRST_NM", "Harold"},
                   {"LAST_NM", "Merrick"},
                   {"MAIL_CITY", "Oakdale"},
                   {"MAIL_ZIP_CD", "87001"},
                   {"PHN_NBR", "5550999999"},
                   {"ACCNT_NBR", "6299910000301"}});
  for (const auto* text : {"hat merr",
                           "MERR HAT",
                           "Merriweather, Hattie",
                           "h m 89214",
                           "zoe m",
                           "merr oakh",
                           "merr 89214",
                           "merr 89214-0431",
                           "merr heron b",
                           "merr 88409",
                           "100002",
                           "1000 hat",
                           "6200010000201",
                           "62-000100002-01",
                           "62-0001",
                           "000100002-01",
                           "62 000100002 01 merr",
                           "5550117722",
                           "(555) 011-7722",
                           "555.011.77",
                           "+1 555 011 7722",
                           "15550117722",
                           "011-7722",
                           "0117722",
                           "555 0117722 oakhaven",
                           "555 011 7722 89214",
                           "KV-4471 902",
                           "kv4471902",
                           "4471902",
                           "R 88 1200",
                           "r881200"}) {
    EXPECT_THAT(Found(text), ElementsAre("100002")) << text;
  }
  for (const auto* text : {"hat merrick", "attie", "erri", "merr 87001 hat", "100002 100003", "5550117723",
                           "1000022", "hattie merriweatherby", "555 011 7722 7722"})
    EXPECT_THAT(Found(text), IsEmpty()) << text;
}

TEST_F(CustomerSearch, FindsABusinessByAnyWordOfItsName) {
  Given("1", {{"CUST_BSNS_NM", "Barlow & Sons <Haulage> Co."}, {"CO_CNTCT_NM", "Dag Ólafsson"}});
  Given("2", {{"CUST_BSNS_NM", "O\u2019Marchbanks and Daughters"}});
  Given("3", {{"CUST_BSNS_NM", "Cafe\u0301 E\u0301lan 24/7 Truck Stop"}});
  const std::pair<const char*, const char*> cases[] = {
      {"barlow and sons", "1"},
      {"Barlow & Sons", "1"},
      {"sons haul", "1"},
      {"<haulage>", "1"},
      {"olaf dag", "1"},
      {"O'MARCH", "2"},
      {"march", "2"},
      {"o march", "2"},
      {"daughters & o", "2"},
      {"CAF\u00C9", "3"},
      {"\u00E9lan cafe", "3"},
      {"e\u0301lan", "3"},
      {"24/7", "3"},
      {"247 cafe", "3"},
      {"cafe 24 7", "3"},

      {"truck 7 stop 24", "3"},
  };
  for (const auto& [text, id] : cases) EXPECT_THAT(Found(text), ElementsAre(id)) << text;
}

// A text is never more than words to look for: what means something to the engine stands for nothing.
TEST_F(CustomerSearch, TakesAnyTextForWhatItSays) {
  Given("7", {{"CUST_BSNS_NM", "Near Or Not Fuels"}});
  for (const auto* text : {"near or not", "NEAR OR NOT", "\"near\" *or* not^", "=7", "near\r\n\tfuels\x1B"})
    EXPECT_THAT(Found(text), ElementsAre("7")) << text;
  for (const auto* nobody :
       {"%", "_", "*", "\"", "\\", "' OR '1'='1", "'; DROP TABLE customer; --", "SRCH_TXT : near", "^",
        "near* AND or", "ne%ar", "near) OR (near ear", "{near} 2", "\x01", "\u0301", "\u200B", "\xFF\xFE"}) {
    EXPECT_THAT(Found(nobody), IsEmpty()) << nobody;
  }
  EXPECT_THAT(Found(std::string_view("near\0fuels", 10)), ElementsAre("7"));
  EXPECT_THAT(Found("n o f n o f n o f n o f n o f n o f n o f n o f n o f n o"), ElementsAre("7"));
  EXPECT_THAT(Found("n 7 o 77 777 f 777 777 777 n 7 7 7 7 o 7 7 7 7 7 7 7"), IsEmpty());
  EXPECT_THAT(Found(std::string(10'000, 'n')), IsEmpty());
  EXPECT_THAT(Found(platform::ReplaceAll(std::string(5'000, 'x'), "x", "n ")), IsEmpty());
  EXPECT_THAT(Found(platform::ReplaceAll(std::string(5'000, 'x'), "x", "1 ")), IsEmpty());
  EXPECT_THAT(Found(platform::ReplaceAll(std::string(20, 'x'), "x", "1-")), IsEmpty());
}

TEST_F(CustomerSearch, KnowsLongWordsThatBeginAlikeApart) {
  Given("1", {{"CUST_BSNS_NM", "Fenn Transportation"}});
  EXPECT_THAT(Found("transporta"), ElementsAre("1"));
  EXPECT_THAT(Found("transportx"), IsEmpty());
  EXPECT_THAT(Found("transporz"), IsEmpty());
  Given("2", {{"CUST_BSNS_NM", "Moor Transport"}});
  Given("3", {{"CUST_BSNS_NM", "Transporters"}});
  EXPECT_THAT(Found("transpor"), ElementsAre("3", "1", "2"));
  EXPECT_THAT(Found("transport"), ElementsAre("3", "1", "2"));
  EXPECT_THAT(Found("transporta"), ElementsAre("1"));
  EXPECT_THAT(Found("transporte"), ElementsAre("3"));
  EXPECT_THAT(Found("transporters"), ElementsAre("3"));
  EXPECT_THAT(Found("transportersx"), IsEmpty());
}

TEST_F(CustomerSearch, ListsTheBestFirstAndTheRestByName) {
  Given("5", {{"CUST_BSNS_NM", "Zebra Haulage"}, {"MAIL_CITY", "Larkspur"}});
  Given("55", {{"CUST_BSNS_NM", "Lark Fuels"}});
  Given("555", {{"FIRST_NM", "Ada"}, {"LAST_NM", "Zorn"}, {"CO_CNTCT_NM", "Lark"}});
  Given("9", {{"FIRST_NM", "Lark"}, {"LAST_NM", "Moor"}});
  Given("8", {{"FIRST_NM", "Lark"}, {"LAST_NM", "Éamon"}});
  Given("7", {{"FIRST_NM", "Bo"}, {"LAST_NM", "Larkin"}});
  Given("6", {{"FIRST_NM", "Al"}, {"LAST_NM", "Larkin"}});
  Given("4", {{"FIRST_NM", "Al"}, {"LAST_NM", "Larkin"}});
  Given("3", {{"RES_CITY", "Larkspur"}});  // without a name
  const Ids expected = {"8", "55", "4", "6", "7", "9", "5", "555", "3"};
  EXPECT_EQ(Found("lark"), expected);
  EXPECT_THAT(Found("5"), ElementsAre("5", "55", "555"));
  EXPECT_THAT(Found("55"), ElementsAre("55", "555"));
  EXPECT_THAT(Found("larkspur"), ElementsAre("5", "3"));
  EXPECT_THAT(Found(" "), ElementsAre("3", "4", "5", "55", "555", "6", "7", "8", "9"));
  for (const std::int64_t size : {1, 2, 4, 20}) {
    Ids paged;
    for (std::int64_t skipped = 0; skipped < 12; skipped += size) {
      std::ranges::copy(Found("lark", skipped, size), std::back_inserter(paged));
    }
    EXPECT_EQ(paged, expected) << size;
  }
  EXPECT_EQ(server::CountCustomers(database_, "lark", 4), 4);
  ExpectSoundIndex();
}

// Names that come in order leave less room between their neighbours with each; in the end there is none.
TEST_F(CustomerSearch, KeepsTheOrderHoweverManyComeBetweenTwoNames) {
  Given("A", {{"LAST_NM", "Kettering"}, {"FIRST_NM", "Al"}});
  Given("Z", {{"LAST_NM", "Kettering"}, {"FIRST_NM", "Zoe"}});
  Ids expected = {"A"};
  for (int number = 100; number < 400; ++number) {
    Given(std::to_string(number), {{"LAST_NM", "Kettering"}, {"FIRST_NM", "Jo"}});
    expected.push_back(std::to_string(number));
  }
  expected.emplace_back("Z");
  for (int number = 30; number > 10; --number) {
    Given(std::to_string(number), {{"LAST_NM", "Kettering"}, {"FIRST_NM", "Aaron"}});
    expected.insert(expected.begin(), std::to_string(number));
  }
  EXPECT_EQ(Found("kettering"), expected);
  ExpectSoundIndex();
}

TEST_F(CustomerSearch, FollowsEveryChangeOfACustomer) {
  Given("1", {{"FIRST_NM", "Hattie"}, {"LAST_NM", "Merriweather"}, {"PHN_NBR", "5550117722"}});
  Given("2", {{"FIRST_NM", "Hattie"}, {"LAST_NM", "Nordahl"}});
  Change("1", {{"LAST_NM", "Zorn"}});
  EXPECT_THAT(Found("merriweather"), IsEmpty());
  EXPECT_THAT(Found("hattie"), ElementsAre("2", "1"));
  Change("1", {{"PHN_NBR", "5550110000"}});
  EXPECT_THAT(Found("555 011 7722"), IsEmpty());
  EXPECT_THAT(Found("555 011 0000"), ElementsAre("1"));
  database_.Change("DELETE FROM customer WHERE CUST_ID = '1'");
  server::IndexCustomer(database_, "1");
  EXPECT_THAT(Found("hattie"), ElementsAre("2"));
  ExpectSoundIndex();
}

// What other programs did: a few customers are taken in one by one, many by an index that is made anew.
TEST_F(CustomerSearch, CatchesUpWithWhatOthersDid) {
  for (const int count : {0, 10, 2100, 20}) {
    for (int copy = 0; copy < count; ++copy) {
      database_.Change(
          "INSERT INTO customer (CUST_ID, LAST_NM, MAIL_BAD_FLG, MAIL_VRFY_CD, RES_BAD_FLG, RES_VRFY_CD, "
          "OT_BAL,"
          " QZ_CNTY_NBR) VALUES (?, 'Silverthorn', 'N', 'V', 'N', 'V', 0, '13')",
          {std::to_string(count) + "-" + std::to_string(copy)});
    }
    database_.Change("DELETE FROM customer WHERE CUST_ID LIKE '10-%' AND ? = 20", {count});
    EXPECT_EQ(server::LacksCustomerWords(database_), count > 0) << count;
    server::CatchUpWithCustomers(database_);
    EXPECT_FALSE(server::LacksCustomerWords(database_)) << count;
    ExpectSoundIndex();
  }
  EXPECT_EQ(server::CountCustomers(database_, "silver", 10'000), 2120);
  database_.Change("UPDATE customer SET OT_BAL = 5");
  EXPECT_FALSE(server::LacksCustomerWords(database_)) << "nobody is found by it";
  database_.Change("UPDATE customer SET LAST_NM = 'Brandvold'");
  EXPECT_TRUE(server::LacksCustomerWords(database_));
  server::BringCustomerWordsUpToDate(database_);
  EXPECT_FALSE(server::LacksCustomerWords(database_));
  EXPECT_EQ(server::CountCustomers(database_, "silver", 10'000), 0);
  EXPECT_EQ(server::CountCustomers(database_, "brandv", 10'000), 2120);
  ExpectSoundIndex();
}

}  // namespace
