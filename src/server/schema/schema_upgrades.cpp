#include "server/schema/schema_upgrades.h"

#include <algorithm>
#include <array>

#include "platform/agreed/requests.h"
#include "platform/text.h"
#include "server/context/stored_context.h"
#include "server/customers/customer_index.h"
#include "server/history/letter_history.h"
#include "server/history/letter_time.h"
#include "server/schema/schema.h"
#include "server/wire/wire_format.h"

namespace server {
namespace {

void LetterFieldsGetDefaultsAndRules(Database& database) {
  for (const auto* column : {"FLD_DFLT", "FLD_RULE"}) {
    ChangeTables(database,
                 std::string("ALTER TABLE letter_field ADD COLUMN ") + column + " TEXT NOT NULL DEFAULT ''");
  }
}

void MoveContexts(Database& database) {
  const auto letters = database.Select("SELECT SEQ_NBR, LTR_TYP_ID FROM letter_history");
  for (std::size_t row = 0; row < letters->RecordCount(); ++row) {
    const auto number = letters->Get(row, "SEQ_NBR").AsInteger();
    const auto context =
        database.Select("SELECT XML_CONTEXT FROM letter_history WHERE SEQ_NBR = ?", {number});
    StoreContext(database, number, letters->Text(row, "LTR_TYP_ID"), context->FirstText());
  }
}

void ContextsGetATableOfTheirOwn(Database& database) {
  for (const auto* statement :
       {R"(CREATE TABLE context_dictionary (
             DICT_NBR {key}, LTR_TYP_ID VARCHAR(8) NOT NULL, DICT_TXT TEXT NOT NULL))",
        R"(CREATE TABLE letter_context (
             SEQ_NBR INTEGER PRIMARY KEY REFERENCES letter_history (SEQ_NBR),
             DICT_NBR INTEGER REFERENCES context_dictionary (DICT_NBR), CNTXT_SIZE INTEGER NOT NULL,
             CNTXT {bytes} NOT NULL))",
        "CREATE INDEX requests_by_time ON request_log (RCVD_TS)", "DROP INDEX letters_of_customer",
        "DROP INDEX letters_of_form", "DROP INDEX letters_by_time", "DROP INDEX letters_of_batch"}) {
    ChangeTables(database, statement);
  }
  StoreContextDictionaries(database);
  MoveContexts(database);
  ChangeTables(database, "ALTER TABLE letter_history DROP COLUMN XML_CONTEXT");
  CreateHistoryIndexes(database);
}

void LetterFieldsGetTheirLines(Database& database) {
  ChangeTables(database, "ALTER TABLE letter_field ADD COLUMN FLD_LINE INTEGER NOT NULL DEFAULT 0");
  // Forgotten, so that the next `init` reads the definitions again, and their lines with them.
  database.Change("DELETE FROM server_info WHERE NAME = ?", {kDefinitions});
}

void CustomersAreFoundByWords(Database& database) {
  for (const auto* statement : {"ALTER TABLE customer DROP COLUMN SRCH_TXT",
                                R"(CREATE TABLE customer_search (
             CUST_ID VARCHAR(12) PRIMARY KEY REFERENCES customer (CUST_ID) ON DELETE CASCADE,
             SRCH_TXT TEXT NOT NULL))",
                                R"(CREATE TABLE customer_word (
             WORD TEXT NOT NULL, CUST_ID VARCHAR(12) NOT NULL, PRIMARY KEY (WORD, CUST_ID)) {by key})"}) {
    ChangeTables(database, statement);
  }
}

/// The letters of a reply that was kept, in the order of its rows; none where it is no reply about letters.
std::vector<std::int64_t> LettersOf(const std::string& reply_text) {
  std::vector<std::int64_t> letters;
  for (const auto& record : ReadReply(reply_text).records) {
    if (record.name != platform::record_name::kHistory) continue;
    for (std::size_t row = 0; row < record.rows->RecordCount(); ++row)
      letters.push_back(record.rows->Get(row, "SEQ_NBR").AsInteger());
  }
  return letters;
}

// As far back as the log of requests goes.
void LettersGetTheirMessages(Database& database) {
  ChangeTables(database, R"(CREATE TABLE letter_message (
             MSG_KEY VARCHAR(64) NOT NULL, ROW_NBR INTEGER NOT NULL,
             SEQ_NBR INTEGER NOT NULL REFERENCES letter_history (SEQ_NBR), PRIMARY KEY (MSG_KEY, ROW_NBR)) {by key})");
  const auto keys = database.Select("SELECT MSG_KEY FROM request_log");
  for (std::size_t row = 0; row < keys->RecordCount(); ++row) {
    const auto key = keys->Text(row, "MSG_KEY");
    const auto reply = database.Select("SELECT REPLY FROM request_log WHERE MSG_KEY = ?", {key});
    StoreLetterMessage(database, key, LettersOf(reply->FirstText()));
  }
}

void CustomersAreMaintained(Database& database) {
  for (const auto* column :
       {"CO_CNTCT_NM TEXT", "MID_NM TEXT", "SUFX_NM TEXT", "MAIL_CNTY_CD VARCHAR(3)",
        "RES_CNTY_CD VARCHAR(3)", "DRVR_LIC_IND CHAR(1) NOT NULL DEFAULT 'N'",
        "RGSTRTN_IND CHAR(1) NOT NULL DEFAULT 'N'", "DLR_IND CHAR(1) NOT NULL DEFAULT 'N'",
        "ACDNT_IND CHAR(1) NOT NULL DEFAULT 'N'", "ENFRC_IND CHAR(1) NOT NULL DEFAULT 'N'",
        "DRVR_LIC_NBR TEXT", "RGSTRTN_NBR TEXT", "FUEL_TAX_IND CHAR(1) NOT NULL DEFAULT 'Y'",
        "UPDT_NBR INTEGER NOT NULL DEFAULT 1"}) {
    ChangeTables(database, std::string("ALTER TABLE customer ADD COLUMN ") + column);
  }
  for (const auto* statement : {R"(CREATE TABLE customer_change (
             CUST_ID VARCHAR(12) NOT NULL, UPDT_NBR INTEGER NOT NULL, COL_NM VARCHAR(20) NOT NULL,
             UPDT_TS VARCHAR(19) NOT NULL, UPDT_USER_ID TEXT NOT NULL, OLD_TXT TEXT, NEW_TXT TEXT,
             PRIMARY KEY (CUST_ID, UPDT_NBR, COL_NM)) {by key})",
                                "ALTER TABLE form ADD COLUMN STP_DT VARCHAR(10)",
                                "ALTER TABLE form ADD COLUMN LST_PYMT_DT VARCHAR(10)",
                                "ALTER TABLE county ADD COLUMN ZIP_PRFX VARCHAR(5) NOT NULL DEFAULT ''"}) {
    ChangeTables(database, statement);
  }
  // The county that was kept was the customer's: that of where they live, else of where they get their mail.
  // Of the other address it is known where that has the same zip code, and else by `init` (office_tables.h).
  const std::string home = "(SELECT OFFICE_ST FROM office ORDER BY OFFICE_NBR LIMIT 1)";
  database.Change("UPDATE customer SET RES_CNTY_CD = QZ_CNTY_NBR WHERE RES_ST = " + home);
  database.Change("UPDATE customer SET MAIL_CNTY_CD = QZ_CNTY_NBR WHERE MAIL_ST = " + home +
                  " AND (RES_CNTY_CD IS NULL OR SUBSTR(MAIL_ZIP_CD, 1, 5) = SUBSTR(RES_ZIP_CD, 1, 5))");
}

void CustomersAreFoundByBeginnings(Database& database) {
  for (const auto* statement : {"DROP TABLE customer_word", "DROP TABLE customer_search"})
    ChangeTables(database, statement);
  CreateCustomerIndex(database);
}

void ChangedCustomersAreNoted(Database& database) {
  ChangeTables(database, "CREATE TABLE state (ST_CD VARCHAR(2) PRIMARY KEY)");
  NoteCustomersToIndex(database);
}

/// "M" meant that a letter came back; which address it was of is kept beside the letters now.
void ReturnedMailGetsMarksOfItsOwn(Database& database) {
  // An address that was changed since, or whose mark was taken away since, is none that mail comes back from.
  database.Change(R"(INSERT INTO returned_mail (SEQ_NBR, CUST_ID, ADDR_TYP_CD, RTND_DT, UPDT_USER_ID)
      SELECT SEQ_NBR, CUST_ID, ADDR_TYP_CD, SUBSTR(COALESCE(LST_PRNT_TS, LST_PRCS_TS, ''), 1, 10),
        COALESCE(LST_UPDT_INSP_ID, '')
      FROM letter_history WHERE PRNT_STTS_CD = 'M' AND CUST_ID IS NOT NULL AND ADDR_TYP_CD IN (1, 2)
        AND NOT EXISTS (SELECT 1 FROM customer_change AS change WHERE change.CUST_ID = letter_history.CUST_ID
          AND change.UPDT_TS > COALESCE(LST_PRNT_TS, LST_PRCS_TS, '')
          AND change.COL_NM LIKE CASE ADDR_TYP_CD WHEN 1 THEN 'MAIL@_%' ELSE 'RES@_%' END ESCAPE '@'))");
  for (const auto* mark :
       {"MAIL_BAD_FLG = 'Y' WHERE CUST_ID IN (SELECT CUST_ID FROM returned_mail WHERE ADDR_TYP_CD = 1)",
        "RES_BAD_FLG = 'Y' WHERE CUST_ID IN (SELECT CUST_ID FROM returned_mail WHERE ADDR_TYP_CD = 2)"})
    database.Change(std::string("UPDATE customer SET ") + mark);
  database.Change(R"(UPDATE letter_history SET PRNT_STTS_CD = CASE SYS_RFRNC_CD WHEN 'O' THEN 'P' ELSE 'S' END
      WHERE PRNT_STTS_CD = 'M')");
}

void LettersAreGivenToRuns(Database& database) {
  for (const auto* statement :
       {"CREATE TABLE letter_action (ACTN_CD VARCHAR(3) PRIMARY KEY, PRNT_STTS_TXT TEXT NOT NULL)",
        R"(CREATE TABLE batch_item (
             SEQ_NBR INTEGER PRIMARY KEY REFERENCES letter_history (SEQ_NBR), ACTN_CD VARCHAR(3) NOT NULL,
             RQST_TS VARCHAR(19) NOT NULL, RQST_USER_ID TEXT NOT NULL, BTCH_SEQ_NBR INTEGER,
             PRNT_STTS_CD VARCHAR(1) NOT NULL, PRCS_ERR_TXT TEXT, BTCH_ACTN_CD VARCHAR(3)))",
        R"(CREATE TABLE returned_mail (
             SEQ_NBR INTEGER PRIMARY KEY REFERENCES letter_history (SEQ_NBR), CUST_ID VARCHAR(12) NOT NULL,
             ADDR_TYP_CD INTEGER NOT NULL, RTND_DT VARCHAR(10) NOT NULL, UPDT_USER_ID TEXT NOT NULL,
             CLRD_TS VARCHAR(19)))",
        "CREATE INDEX returned_mail_of_customer ON returned_mail (CUST_ID)"}) {
    ChangeTables(database, statement);
  }
  ReturnedMailGetsMarksOfItsOwn(database);
  // What letters that wait were before is not known: that they had no usable address is the likeliest.
  database.Change(R"(INSERT INTO batch_item (SEQ_NBR, ACTN_CD, RQST_TS, RQST_USER_ID, PRNT_STTS_CD)
      SELECT SEQ_NBR, 'REB', COALESCE(LST_PRCS_TS, ''), COALESCE(LST_UPDT_INSP_ID, ''), 'V'
      FROM letter_history WHERE PRNT_STTS_CD = 'W' AND BTCH_ACTN_CD = 'REB')");
}

/// Runs were numbers in the letters they made, and nothing else.
void RunsAreKept(Database& database) {
  for (const auto* statement : {R"(CREATE TABLE batch_run (
             BTCH_SEQ_NBR {key}, BTCH_STATUS VARCHAR(12) NOT NULL, BTCH_CRTE_TS VARCHAR(19) NOT NULL,
             PRCS_STRT_TS VARCHAR(19), PRCS_END_TS VARCHAR(19), BTCH_LTR_CNT INTEGER NOT NULL DEFAULT 0,
             LTR_PRCS_CNT INTEGER NOT NULL DEFAULT 0, LTR_SCS_CNT INTEGER NOT NULL DEFAULT 0, WRKR_TXT TEXT NOT NULL))",
                                "CREATE INDEX batch_runs_by_day ON batch_run (BTCH_CRTE_TS)",
                                R"(CREATE TABLE batch_letter (
             BTCH_SEQ_NBR INTEGER NOT NULL REFERENCES batch_run (BTCH_SEQ_NBR), ITM_NBR INTEGER NOT NULL,
             SRC_CD VARCHAR(3) NOT NULL, RULE_NM VARCHAR(40), LTR_TYP_ID VARCHAR(8) NOT NULL, CUST_ID VARCHAR(12),
             FORM_TYP_CD VARCHAR(2), FORM_NBR VARCHAR(12), SEQ_NBR INTEGER, RSLT_CD CHAR(1),
             PRIMARY KEY (BTCH_SEQ_NBR, ITM_NBR)) {by key})",
                                "CREATE INDEX runs_of_letter ON batch_letter (SEQ_NBR)"})
    ChangeTables(database, statement);
  // A letter that waits belongs to no run yet. Why a letter was in its run is not known: the rules are the
  // likeliest.
  database.Change("UPDATE letter_history SET FLS_BTCH_NBR = NULL WHERE PRNT_STTS_CD = 'W'");
  database.Change(
      R"(INSERT INTO batch_run (BTCH_SEQ_NBR, BTCH_STATUS, BTCH_CRTE_TS, PRCS_STRT_TS, PRCS_END_TS, BTCH_LTR_CNT,
           LTR_PRCS_CNT, LTR_SCS_CNT, WRKR_TXT)
         SELECT FLS_BTCH_NBR, 'SUCCESSFUL', MIN(COALESCE(LST_PRCS_TS, '')), MIN(LST_PRCS_TS), MAX(LST_PRCS_TS), COUNT(*),
           COUNT(*), SUM(CASE WHEN PRNT_STTS_CD IN ('F', 'R', 'V', 'E') THEN 0 ELSE 1 END), ''
         FROM letter_history WHERE FLS_BTCH_NBR IS NOT NULL GROUP BY FLS_BTCH_NBR)");
  database.Change(
      R"(INSERT INTO batch_letter (BTCH_SEQ_NBR, ITM_NBR, SRC_CD, LTR_TYP_ID, CUST_ID, FORM_TYP_CD,
        FORM_NBR, SEQ_NBR, RSLT_CD)
      SELECT FLS_BTCH_NBR, ROW_NUMBER() OVER (PARTITION BY FLS_BTCH_NBR ORDER BY SEQ_NBR), 'RUL', LTR_TYP_ID, CUST_ID,
        FORM_TYP_CD, FORM_NBR, SEQ_NBR, CASE WHEN PRNT_STTS_CD IN ('F', 'R', 'V', 'E') THEN 'F' ELSE 'S' END
      FROM letter_history WHERE FLS_BTCH_NBR IS NOT NULL)");
}

struct Step {
  std::string_view from;
  void (*Take)(Database& database);
};
// Each leads to the version of the one below it, the last to kSchemaVersion.
constexpr auto kSteps = std::to_array<Step>({
    {"1", LetterFieldsGetDefaultsAndRules},
    {"2", ContextsGetATableOfTheirOwn},
    {"3", LetterFieldsGetTheirLines},
    {"4", CustomersAreFoundByWords},
    {"5", LettersGetTheirMessages},
    {"6", CustomersAreMaintained},
    {"7", CustomersAreFoundByBeginnings},
    {"8", ChangedCustomersAreNoted},
    {"9", LettersAreGivenToRuns},
    {"10", RunsAreKept},
});
static_assert(kSteps.size() + 1 == kSchemaVersion);

}  // namespace

void ChangeTables(Database& database, std::string_view statement) {
  const auto& dialect = database.dialect();
  auto text = platform::ReplaceAll(statement, "{key}", dialect.NeverReusedKey());
  text = platform::ReplaceAll(text, "{bytes}", dialect.BytesType());
  text = platform::ReplaceAll(text, "{by key}", dialect.StoredByKey());
  database.Change(platform::ReplaceAll(text, "{time}", kLetterTime));
  database.ForgetStatements();
}

bool CarryOver(Database& database, const std::string& version) {
  const auto first = std::ranges::find(kSteps, version, &Step::from);
  for (auto step = first; step != kSteps.end(); ++step) step->Take(database);
  return first != kSteps.end();
}

}  // namespace server
