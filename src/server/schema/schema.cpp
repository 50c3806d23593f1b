#include "server/schema/schema.h"

#include <array>
#include <string>

#include "platform/failure.h"
#include "server/customers/customer_index.h"
#include "server/customers/customer_words.h"
#include "server/schema/schema_upgrades.h"

namespace server {
namespace {

using platform::Failure;

// Days and times are texts ("yyyy-mm-dd hh.mm.ss"), amounts whole cents. {key} is the dialect's.
constexpr auto kTables = std::to_array<std::string_view>({
    "CREATE TABLE server_info (NAME VARCHAR(40) PRIMARY KEY, CONTENT TEXT NOT NULL)",
    R"(CREATE TABLE office (
         OFFICE_NBR INTEGER PRIMARY KEY, OFFICE_NM TEXT NOT NULL, OFFICE_ADDR_1 TEXT NOT NULL,
         OFFICE_CITY TEXT NOT NULL, OFFICE_ST VARCHAR(2) NOT NULL, OFFICE_ZIP_CD VARCHAR(9) NOT NULL,
         OFFICE_PHN_NBR TEXT NOT NULL, OFFICER_NM TEXT NOT NULL))",
    R"(CREATE TABLE county (
         QZ_CNTY_NBR VARCHAR(3) PRIMARY KEY, QZ_CNTY_DESC TEXT NOT NULL, TRP_ID VARCHAR(1) NOT NULL,
         TRP_DIST_ID VARCHAR(4) NOT NULL, ZIP_PRFX VARCHAR(5) NOT NULL DEFAULT ''))",
    // Where an address may lie, by the code table that `init` took in last.
    "CREATE TABLE state (ST_CD VARCHAR(2) PRIMARY KEY)",
    // *_BAD_FLG: mail came back from the address. QZ_CNTY_NBR is the customer's own county, the one whose
    // officers see the letters; *_CNTY_CD the addresses'. *_IND: who else keeps the customer.
    R"(CREATE TABLE customer (
         CUST_ID VARCHAR(12) PRIMARY KEY, CUST_BSNS_NM TEXT, FIRST_NM TEXT, LAST_NM TEXT,
         MAIL_ADDR_1 TEXT, MAIL_ADDR_2 TEXT, MAIL_CITY TEXT, MAIL_ST VARCHAR(2), MAIL_ZIP_CD VARCHAR(10),
         MAIL_BAD_FLG CHAR(1) NOT NULL, MAIL_VRFY_CD CHAR(1) NOT NULL,
         RES_ADDR_1 TEXT, RES_ADDR_2 TEXT, RES_CITY TEXT, RES_ST VARCHAR(2), RES_ZIP_CD VARCHAR(10),
         RES_BAD_FLG CHAR(1) NOT NULL, RES_VRFY_CD CHAR(1) NOT NULL,
         PHN_NBR TEXT, ACCNT_NBR TEXT, OT_BAL BIGINT NOT NULL,
         QZ_CNTY_NBR VARCHAR(3) NOT NULL REFERENCES county (QZ_CNTY_NBR),
         CO_CNTCT_NM TEXT, MID_NM TEXT, SUFX_NM TEXT,
         MAIL_CNTY_CD VARCHAR(3),
         RES_CNTY_CD VARCHAR(3),
         DRVR_LIC_IND CHAR(1) NOT NULL DEFAULT 'N', RGSTRTN_IND CHAR(1) NOT NULL DEFAULT 'N',
         DLR_IND CHAR(1) NOT NULL DEFAULT 'N', ACDNT_IND CHAR(1) NOT NULL DEFAULT 'N',
         ENFRC_IND CHAR(1) NOT NULL DEFAULT 'N', DRVR_LIC_NBR TEXT, RGSTRTN_NBR TEXT,
         FUEL_TAX_IND CHAR(1) NOT NULL DEFAULT 'Y', UPDT_NBR INTEGER NOT NULL DEFAULT 1))",
    // Of every change of a customer what it was before and is since. A customer that has gone leaves it
    // behind.
    R"(CREATE TABLE customer_change (
         CUST_ID VARCHAR(12) NOT NULL, UPDT_NBR INTEGER NOT NULL, COL_NM VARCHAR(20) NOT NULL,
         UPDT_TS VARCHAR(19) NOT NULL, UPDT_USER_ID TEXT NOT NULL, OLD_TXT TEXT, NEW_TXT TEXT,
         PRIMARY KEY (CUST_ID, UPDT_NBR, COL_NM)) {by key})",
    R"(CREATE TABLE form (
         FORM_TYP_CD VARCHAR(2) NOT NULL, FORM_NBR VARCHAR(12) NOT NULL, FORM_CK_DGT_NBR VARCHAR(1) NOT NULL,
         CUST_ID VARCHAR(12) NOT NULL REFERENCES customer (CUST_ID), FORM_STTS_CD VARCHAR(1) NOT NULL,
         ISS_DT VARCHAR(10) NOT NULL, STP_DT VARCHAR(10), LST_PYMT_DT VARCHAR(10), PRIMARY KEY (FORM_TYP_CD, FORM_NBR)))",
    "CREATE INDEX form_of_customer ON form (CUST_ID)",
    R"(CREATE TABLE tax_period (
         FORM_TYP_CD VARCHAR(2) NOT NULL, FORM_NBR VARCHAR(12) NOT NULL, PRD_NBR INTEGER NOT NULL,
         PRD_NM TEXT NOT NULL, DUE_DT VARCHAR(10) NOT NULL, TAX_AMT BIGINT NOT NULL, PNLTY_AMT BIGINT NOT NULL,
         INTRST_AMT BIGINT NOT NULL, PRIMARY KEY (FORM_TYP_CD, FORM_NBR, PRD_NBR),
         FOREIGN KEY (FORM_TYP_CD, FORM_NBR) REFERENCES form (FORM_TYP_CD, FORM_NBR)))",
    R"(CREATE TABLE letter_field (
         LTR_TYP_ID VARCHAR(8) NOT NULL, FLD_ORD INTEGER NOT NULL, FLD_NM VARCHAR(80) NOT NULL,
         FLD_PARENT VARCHAR(80) NOT NULL, FLD_DES TEXT NOT NULL, FLD_KIND VARCHAR(10) NOT NULL,
         FLD_SRC TEXT NOT NULL, FLD_REQ CHAR(1) NOT NULL, FLD_DFLT TEXT NOT NULL, FLD_RULE TEXT NOT NULL,
         FLD_LINE INTEGER NOT NULL,
         PRIMARY KEY (LTR_TYP_ID, FLD_ORD)))",
    R"(CREATE TABLE letter_history (
         SEQ_NBR {key}, LTR_TYP_ID VARCHAR(8) NOT NULL, CUST_ID VARCHAR(12) REFERENCES customer (CUST_ID),
         FORM_NBR VARCHAR(12), FORM_CK_DGT_NBR VARCHAR(1), FORM_TYP_CD VARCHAR(2), DCMT_FILE_TXT TEXT,
         PRNT_STTS_CD VARCHAR(1) NOT NULL, PRNT_TS VARCHAR(19), LST_PRNT_TS VARCHAR(19), LST_PRCS_TS VARCHAR(19),
         SYS_RFRNC_CD VARCHAR(1), QZ_CNTY_NBR VARCHAR(3), ADDR_TYP_CD INTEGER, PRCS_ERR_TXT TEXT,
         LST_UPDT_INSP_ID TEXT, FLS_BTCH_NBR INTEGER, BTCH_ACTN_CD VARCHAR(3), WGH_STN_ID TEXT,
         TRP_ID VARCHAR(1), TRP_DIST_ID VARCHAR(4), QZ_CNTY_DESC TEXT))",
    // Searches read letters by the thousand; their contexts would lie between them.
    R"(CREATE TABLE context_dictionary (
         DICT_NBR {key}, LTR_TYP_ID VARCHAR(8) NOT NULL, DICT_TXT TEXT NOT NULL))",
    R"(CREATE TABLE letter_context (
         SEQ_NBR INTEGER PRIMARY KEY REFERENCES letter_history (SEQ_NBR),
         DICT_NBR INTEGER REFERENCES context_dictionary (DICT_NBR), CNTXT_SIZE INTEGER NOT NULL,
         CNTXT {bytes} NOT NULL))",
    // The key makes a changing request that comes twice have its effect once; the reply is kept as it was
    // sent.
    R"(CREATE TABLE request_log (
         MSG_KEY VARCHAR(64) PRIMARY KEY, RCVD_TS VARCHAR(19) NOT NULL, REPLY TEXT NOT NULL))",
    "CREATE INDEX requests_by_time ON request_log (RCVD_TS)",
    // Of every letter that was recorded or printed again, for good: which message said so, and in which of
    // its rows.
    R"(CREATE TABLE letter_message (
         MSG_KEY VARCHAR(64) NOT NULL, ROW_NBR INTEGER NOT NULL,
         SEQ_NBR INTEGER NOT NULL REFERENCES letter_history (SEQ_NBR), PRIMARY KEY (MSG_KEY, ROW_NBR)) {by key})",
    // Which print statuses an action on letters is allowed for, by the code table that `init` took in last.
    "CREATE TABLE letter_action (ACTN_CD VARCHAR(3) PRIMARY KEY, PRNT_STTS_TXT TEXT NOT NULL)",
    // What waits for the coming batch run; BTCH_SEQ_NBR is the run that has claimed it. The letter's status,
    // error and batch action before it waited come back when it is taken back.
    R"(CREATE TABLE batch_item (
         SEQ_NBR INTEGER PRIMARY KEY REFERENCES letter_history (SEQ_NBR), ACTN_CD VARCHAR(3) NOT NULL,
         RQST_TS VARCHAR(19) NOT NULL, RQST_USER_ID TEXT NOT NULL, BTCH_SEQ_NBR INTEGER,
         PRNT_STTS_CD VARCHAR(1) NOT NULL, PRCS_ERR_TXT TEXT, BTCH_ACTN_CD VARCHAR(3)))",
    // Batch runs: the counts are those of their rows in batch_letter. WRKR_TXT: which program, on which
    // machine.
    R"(CREATE TABLE batch_run (
         BTCH_SEQ_NBR {key}, BTCH_STATUS VARCHAR(12) NOT NULL, BTCH_CRTE_TS VARCHAR(19) NOT NULL,
         PRCS_STRT_TS VARCHAR(19), PRCS_END_TS VARCHAR(19), BTCH_LTR_CNT INTEGER NOT NULL DEFAULT 0,
         LTR_PRCS_CNT INTEGER NOT NULL DEFAULT 0, LTR_SCS_CNT INTEGER NOT NULL DEFAULT 0, WRKR_TXT TEXT NOT NULL))",
    "CREATE INDEX batch_runs_by_day ON batch_run (BTCH_CRTE_TS)",
    // What a run has to make, and what became of it: RSLT_CD is null until it has been processed, "S" where
    // it succeeded, "F" where it failed. SEQ_NBR is null until the letter is in the history.
    R"(CREATE TABLE batch_letter (
         BTCH_SEQ_NBR INTEGER NOT NULL REFERENCES batch_run (BTCH_SEQ_NBR), ITM_NBR INTEGER NOT NULL,
         SRC_CD VARCHAR(3) NOT NULL, RULE_NM VARCHAR(40), LTR_TYP_ID VARCHAR(8) NOT NULL, CUST_ID VARCHAR(12),
         FORM_TYP_CD VARCHAR(2), FORM_NBR VARCHAR(12), SEQ_NBR INTEGER, RSLT_CD CHAR(1),
         PRIMARY KEY (BTCH_SEQ_NBR, ITM_NBR)) {by key})",
    "CREATE INDEX runs_of_letter ON batch_letter (SEQ_NBR)",
    // Letters that came back. CLRD_TS: since when the address can be used again.
    R"(CREATE TABLE returned_mail (
         SEQ_NBR INTEGER PRIMARY KEY REFERENCES letter_history (SEQ_NBR), CUST_ID VARCHAR(12) NOT NULL,
         ADDR_TYP_CD INTEGER NOT NULL, RTND_DT VARCHAR(10) NOT NULL, UPDT_USER_ID TEXT NOT NULL,
         CLRD_TS VARCHAR(19)))",
    "CREATE INDEX returned_mail_of_customer ON returned_mail (CUST_ID)",
});

// Each serves a criterion of the search, with what it is most often combined with behind it. {time} is
// kLetterTime.
constexpr auto kHistoryIndexes = std::to_array<std::string_view>({
    "CREATE INDEX letters_of_customer ON letter_history (CUST_ID, {time})",
    "CREATE INDEX letters_of_form ON letter_history (FORM_NBR, FORM_TYP_CD)",
    "CREATE INDEX letters_by_time ON letter_history ({time}, PRNT_STTS_CD)",
    "CREATE INDEX letters_of_batch ON letter_history (FLS_BTCH_NBR)",
    "CREATE INDEX letters_of_type ON letter_history (LTR_TYP_ID, {time})",
    "CREATE INDEX letters_of_troop ON letter_history (TRP_ID, {time}, TRP_DIST_ID)",
});

constexpr auto kVersionName = "schema version";

std::string StoredVersion(Database& database) {
  const auto version = platform::While("looking for the version of the server's tables", [&] {
    return database.Select("SELECT CONTENT FROM server_info WHERE NAME = ?", {kVersionName});
  });
  if (!version->IsEmpty()) return version->FirstText();
  throw Failure(Failure::Kind::kDamaged, "The server's data carry no version. Restore them from a backup.");
}

}  // namespace

void CreateTables(Database& database) {
  for (const auto table : kTables) ChangeTables(database, table);
  CreateCustomerIndex(database);
  database.Change("INSERT INTO server_info (NAME, CONTENT) VALUES (?, ?)",
                  {kVersionName, std::to_string(kSchemaVersion)});
}

void CreateHistoryIndexes(Database& database) {
  for (const auto index : kHistoryIndexes) ChangeTables(database, index);
}

bool HasCurrentTables(Database& database) {
  return StoredVersion(database) == std::to_string(kSchemaVersion);
}

void PrepareSchema(Database& database, const std::function<void(const std::string&)>& tell) {
  const auto current = std::to_string(kSchemaVersion);
  const bool is_upgrade = !HasCurrentTables(database);
  if (!is_upgrade && !LacksCustomerWords(database)) return;
  if (const auto why = WhyIndexingTakesLong(database, is_upgrade); tell && !why.empty()) tell(why);
  Transaction transaction(database, Transaction::Purpose::kChanging);
  // Asked again: another program may have carried them over meanwhile.
  const auto version = StoredVersion(database);
  if (version != current && !CarryOver(database, version)) {
    throw Failure(Failure::Kind::kRefused, "The server's data are of version \"" + version +
                                               "\", this program needs \"" + current +
                                               "\". Use the program they were made with.");
  }
  if (version == current)
    CatchUpWithCustomers(database);
  else
    BringCustomerWordsUpToDate(database);
  database.Change("UPDATE server_info SET CONTENT = ? WHERE NAME = ?", {current, kVersionName});
  transaction.Commit();
}

}  // namespace server
