#include <array>

#include <gmock/gmock.h>

#include "platform/failure.h"
#include "server/context/stored_context.h"
#include "server/customers/customer_search.h"
#include "server/schema/schema.h"
#include "server/wire/wire_format.h"
#include "tests/fakes/rows.h"
#include "tests/support/failing.h"
#include "tests/support/temporary_folder.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct OlderTables {
  std::int64_t version;
  std::vector<const char*> taken_back;  ///< what makes them of the tables of the next version
};
// Newest first.
const OlderTables kOlder[] = {
    {10, {"DROP TABLE batch_letter", "DROP TABLE batch_run"}},
    {9, {"DROP TABLE letter_action", "DROP TABLE batch_item", "DROP TABLE returned_mail"}},
    {8,
     {"DROP TRIGGER customer_was_put_in", "DROP TRIGGER customer_was_changed",
      "DROP TRIGGER customer_was_taken_out", "DROP TABLE customer_to_index", "DROP TABLE state"}},
    {7,
     {"DROP TABLE customer_index", "DROP TABLE customer_search",
      "CREATE TABLE customer_search (CUST_ID VARCHAR(12) PRIMARY KEY REFERENCES customer (CUST_ID)"
      " ON DELETE CASCADE, SRCH_TXT TEXT NOT NULL)",
      "CREATE TABLE customer_word (WORD TEXT NOT NULL, CUST_ID VARCHAR(12) NOT NULL,"
      " PRIMARY KEY (WORD, CUST_ID)) WITHOUT ROWID"}},
    {6,
     {"DROP TABLE customer_change", "ALTER TABLE form DROP COLUMN STP_DT",
      "ALTER TABLE form DROP COLUMN LST_PYMT_DT", "ALTER TABLE county DROP COLUMN ZIP_PRFX",
      "ALTER TABLE customer DROP COLUMN CO_CNTCT_NM", "ALTER TABLE customer DROP COLUMN MID_NM",
      "ALTER TABLE customer DROP COLUMN SUFX_NM", "ALTER TABLE customer DROP COLUMN MAIL_CNTY_CD",
      "ALTER TABLE customer DROP COLUMN RES_CNTY_CD", "ALTER TABLE customer DROP COLUMN DRVR_LIC_IND",
      "ALTER TABLE customer DROP COLUMN RGSTRTN_IND", "ALTER TABLE customer DROP COLUMN DLR_IND",
      "ALTER TABLE customer DROP COLUMN ACDNT_IND", "ALTER TABLE customer DROP COLUMN ENFRC_IND",
      "ALTER TABLE customer DROP COLUMN DRVR_LIC_NBR", "ALTER TABLE customer DROP COLUMN RGSTRTN_NBR",
      "ALTER TABLE customer DROP COLUMN FUEL_TAX_IND", "ALTER TABLE customer DROP COLUMN UPDT_NBR"}},
    {5, {"DROP TABLE letter_message"}},
    {4,
     {"DROP TABLE customer_word", "DROP TABLE customer_search",
      "ALTER TABLE customer ADD COLUMN SRCH_TXT TEXT NOT NULL DEFAULT 'old'"}},
    {3, {"ALTER TABLE letter_field DROP COLUMN FLD_LINE"}},
    {2,
     {"DROP TABLE letter_context", "DROP TABLE context_dictionary", "DROP INDEX requests_by_time",
      "DROP INDEX letters_of_type", "DROP INDEX letters_of_troop",
      "ALTER TABLE letter_history ADD COLUMN XML_CONTEXT TEXT NOT NULL DEFAULT "
      "'<XML_CONTEXT>é</XML_CONTEXT>'"}},
    {1, {"ALTER TABLE letter_field DROP COLUMN FLD_DFLT", "ALTER TABLE letter_field DROP COLUMN FLD_RULE"}},
};

/// A database with one of everything: a customer, a letter, a field of a letter, a message that was answered.
class SchemaUpgrade : public testing::Test {
 protected:
  void GivenVersion(std::int64_t version) {
    std::filesystem::remove(folder_ / "server.db");
    database_.emplace(folder_ / "server.db", server::Database::Opening::kNew);
    server::CreateTables(*database_);
    server::CreateHistoryIndexes(*database_);
    for (const auto* row :
         {"INSERT INTO county VALUES ('13', 'Hartsfield', 'C', '1', '883')",
          "INSERT INTO office VALUES (1, 'Office K1', '', '', 'KV', '', '', '')",
          "INSERT INTO customer (CUST_ID, CUST_BSNS_NM, MAIL_ST, MAIL_ZIP_CD, MAIL_BAD_FLG, MAIL_VRFY_CD,"
          " RES_ST, RES_ZIP_CD, RES_BAD_FLG, RES_VRFY_CD, OT_BAL, QZ_CNTY_NBR) VALUES"
          " ('100004', 'Café Élan', 'KV', '88312', 'N', 'V', 'NX', '10001', 'N', 'V', 0, '13'),"
          " ('100005', 'Both', 'KV', '883120001', 'N', 'V', 'KV', '88312', 'N', 'V', 0, '13'),"
          " ('100006', 'Apart', 'KV', '87101', 'N', 'V', 'KV', '88312', 'N', 'V', 0, '13')",
          "INSERT INTO letter_history (LTR_TYP_ID, CUST_ID, PRNT_STTS_CD) VALUES ('101', '100004', 'P')",
          "INSERT INTO letter_field VALUES ('101', 1, 'LTR_DT', '', 'Date', 'SYSTEM', 'letter.date', 'Y', '',"
          " '', 0)",
          "INSERT INTO server_info VALUES ('letter definitions', 'as they were read')"}) {
      database_->Change(row);
    }
    GivenAnswered("m-1", {.message_key = "m-1",
                          .error = "",
                          .records = {{"CORRHIST", fakes::RowsOf("CORRHIST", {{{"SEQ_NBR", 1}}})}}});
    GivenAnswered("m-2", {.message_key = "m-2", .error = "There is no letter.", .records = {}});
    for (const auto& older : kOlder) {
      if (older.version < version) break;
      for (const auto* statement : older.taken_back) database_->Change(statement);
    }
    SetVersion(std::to_string(version));
    database_->ForgetStatements();
  }
  void GivenAnswered(const std::string& key, const server::Reply& reply) {
    database_->Change("INSERT INTO request_log VALUES (?, '2026-11-22 09.00.00', ?)",
                      {key, server::WriteReply(reply)});
  }
  void SetVersion(const std::string& version) {
    database_->Change("UPDATE server_info SET CONTENT = ? WHERE NAME = 'schema version'", {version});
  }
  void Upgrade() { server::PrepareSchema(*database_); }
  std::string WhyNot() {
    return tests::WhyNot([&] { Upgrade(); });
  }

  /// The rows of a SELECT of one column.
  std::vector<std::string> Rows(const std::string& select) {
    const auto rows = database_->Select(select);
    std::vector<std::string> texts;
    for (std::size_t row = 0; row < rows->RecordCount(); ++row)
      texts.push_back(rows->Text(row, rows->columns().front()));
    return texts;
  }
  /// Every column of every table, and every index as it was made.
  std::vector<std::string> Shape() {
    return Rows(
        "SELECT m.name || '.' || c.name FROM sqlite_master m, pragma_table_info(m.name) c WHERE m.type = "
        "'table'"
        " UNION SELECT sql FROM sqlite_master WHERE type = 'index' AND sql IS NOT NULL ORDER BY 1");
  }
  std::string Version() {
    return Rows("SELECT CONTENT FROM server_info WHERE NAME = 'schema version'").at(0);
  }

  const tests::TemporaryFolder folder_;
  std::optional<server::Database> database_;
};

TEST_F(SchemaUpgrade, FromEveryVersionLeadsToTheTablesOfANewDatabase) {
  GivenVersion(server::kSchemaVersion);
  const auto expected = Shape();
  ASSERT_EQ(kOlder[0].version + 1, server::kSchemaVersion) << "say what the newest version is without";
  for (const auto& older : kOlder) {
    SCOPED_TRACE(older.version);
    GivenVersion(older.version);
    EXPECT_NE(Shape(), expected);
    Upgrade();
    EXPECT_EQ(Shape(), expected);
    EXPECT_EQ(Version(), std::to_string(server::kSchemaVersion));
    EXPECT_THAT(Rows("SELECT CUST_ID FROM letter_history"), ElementsAre("100004"));
  }
}

TEST_F(SchemaUpgrade, From1FieldsHaveNeitherDefaultNorRule) {
  GivenVersion(1);
  Upgrade();
  EXPECT_THAT(Rows("SELECT FLD_NM || '|' || FLD_DFLT || '|' || FLD_RULE FROM letter_field"),
              ElementsAre("LTR_DT||"));
}

TEST_F(SchemaUpgrade, From2LettersKeepTheirContexts) {
  GivenVersion(2);
  Upgrade();
  EXPECT_EQ(server::FindContext(*database_, 1), "<XML_CONTEXT>é</XML_CONTEXT>");
}

TEST_F(SchemaUpgrade, From3TheDefinitionsAreReadAnewForTheirLines) {
  GivenVersion(4);
  Upgrade();
  EXPECT_THAT(Rows("SELECT NAME FROM server_info"), testing::Contains(server::kDefinitions));
  GivenVersion(3);
  Upgrade();
  EXPECT_THAT(Rows("SELECT NAME FROM server_info"), ElementsAre("schema version"));
}

TEST_F(SchemaUpgrade, CustomersAreFoundAfterwards) {
  for (const auto version : {4, 7}) {
    GivenVersion(version);
    Upgrade();
    EXPECT_THAT(server::FindCustomers(*database_, "cafe elan", 0, 5), ElementsAre("100004")) << version;
  }
}

TEST_F(SchemaUpgrade, From5LettersKnowTheMessagesThatRecordedThem) {
  GivenVersion(5);
  Upgrade();
  EXPECT_THAT(Rows("SELECT MSG_KEY || ' ' || ROW_NBR || ' ' || SEQ_NBR FROM letter_message"),
              ElementsAre("m-1 0 1"));
}

TEST_F(SchemaUpgrade, From6AddressesOfThisStateGetTheCustomersCounty) {
  GivenVersion(6);
  Upgrade();
  EXPECT_THAT(Rows("SELECT COALESCE(MAIL_CNTY_CD, '-') || COALESCE(RES_CNTY_CD, '-') || UPDT_NBR ||"
                   " FUEL_TAX_IND || DLR_IND FROM customer ORDER BY CUST_ID"),
              ElementsAre("13-1YN", "13131YN", "-131YN"));
}

TEST_F(SchemaUpgrade, From9ReturnedLettersMarkTheirAddressAndWaitingOnesAreItems) {
  GivenVersion(9);
  for (const auto* row :
       {"INSERT INTO letter_history (LTR_TYP_ID, CUST_ID, PRNT_STTS_CD, ADDR_TYP_CD, LST_PRNT_TS, "
        "SYS_RFRNC_CD,"
        " BTCH_ACTN_CD) VALUES ('101', '100004', 'M', 1, '2026-01-05 09.00.00', 'B', NULL),"
        " ('101', '100005', 'M', 2, '2026-01-05 09.00.00', 'O', NULL),"  // moved since
        " ('101', '100006', 'M', NULL, '2026-01-05 09.00.00', 'O', NULL),"
        " ('101', '100006', 'W', 1, NULL, 'B', 'REB'), ('101', '100006', 'P', 1, NULL, 'B', 'REP')",
        "INSERT INTO customer_change VALUES ('100005', 2, 'RES_CITY', '2026-02-01 09.00.00', 'A', 'a', 'b'),"
        " ('100004', 2, 'RES_CITY', '2026-02-01 09.00.00', 'A', 'a', 'b')"})
    database_->Change(row);
  Upgrade();
  EXPECT_THAT(Rows("SELECT PRNT_STTS_CD FROM letter_history ORDER BY SEQ_NBR"),
              ElementsAre("P", "S", "P", "P", "W", "P"));
  EXPECT_THAT(Rows("SELECT SEQ_NBR || CUST_ID || RTND_DT FROM returned_mail"),
              ElementsAre("21000042026-01-05"));
  EXPECT_THAT(Rows("SELECT MAIL_BAD_FLG || RES_BAD_FLG FROM customer ORDER BY CUST_ID"),
              ElementsAre("YN", "NN", "NN"));
  EXPECT_THAT(Rows("SELECT SEQ_NBR || ACTN_CD FROM batch_item"), ElementsAre("5REB"));
}

TEST_F(SchemaUpgrade, From10RunsAreMadeOfTheirLetters) {
  GivenVersion(10);
  database_->Change(
      "INSERT INTO letter_history (LTR_TYP_ID, CUST_ID, PRNT_STTS_CD, LST_PRCS_TS, FLS_BTCH_NBR) VALUES"
      " ('101', '100004', 'S', '2026-01-05 01.00.00', 1007), ('110', '100005', 'V', '2026-01-05 01.20.00', "
      "1007),"
      " ('101', '100006', 'W', '2026-01-05 01.30.00', 1008)");
  Upgrade();
  EXPECT_THAT(
      Rows("SELECT BTCH_SEQ_NBR || BTCH_STATUS || PRCS_END_TS || BTCH_LTR_CNT || LTR_PRCS_CNT || LTR_SCS_CNT"
           " FROM batch_run"),
      ElementsAre("1007SUCCESSFUL2026-01-05 01.20.00221"));
  EXPECT_THAT(Rows("SELECT ITM_NBR || LTR_TYP_ID || RSLT_CD FROM batch_letter"),
              ElementsAre("1101S", "2110F"));
}

TEST_F(SchemaUpgrade, ThatFailsLeavesTheOlderTablesAsTheyWere) {
  GivenVersion(2);
  database_->Change("UPDATE request_log SET REPLY = 'no reply' WHERE MSG_KEY = 'm-2'");
  const auto before = Shape();
  EXPECT_NE(WhyNot(), "");
  EXPECT_EQ(Shape(), before);
  EXPECT_EQ(Version(), "2");
}

TEST_F(SchemaUpgrade, IsRefusedForAVersionThatIsNotKnown) {
  for (const auto* version : {"0", "99", ""}) {
    GivenVersion(server::kSchemaVersion);
    SetVersion(version);
    EXPECT_THAT(WhyNot(), HasSubstr("are of version \"" + std::string(version) + "\", this program needs"));
  }
  database_->Change("DELETE FROM server_info");
  EXPECT_THAT(WhyNot(), HasSubstr("carry no version"));
}

}  // namespace
