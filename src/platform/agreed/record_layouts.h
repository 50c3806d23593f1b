#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "platform/agreed/requests.h"

/// The columns of every record that travels between the workspace and the server.
namespace platform {

struct RecordLayout {
  std::string_view name;
  std::span<const std::string_view> columns;
};

/// What a letter is asked for with.
inline constexpr auto kContextInputColumns = std::to_array<std::string_view>(
    {"CUST_ID", "FORM_NBR", "FORM_CK_DGT_NBR", "RCPT_NBR", "RCPT_CK_DGT_NBR", "FORM_TYP_CD"});

/// A letter's data context.
inline constexpr auto kContextColumns = std::to_array<std::string_view>({"XML_CONTEXT"});

/// One letter of the letter history; recording and search go by it (see kNotStored in letter_search.cpp).
inline constexpr auto kHistoryColumns = std::to_array<std::string_view>({
    "ACTION",       "SEQ_NBR",       "LTR_TYP_ID",   "CUST_ID",      "FORM_NBR",         "FORM_CK_DGT_NBR",
    "FORM_TYP_CD",  "DCMT_FILE_TXT", "PRNT_STTS_CD", "PRNT_TS",      "LST_PRNT_TS",      "LST_PRCS_TS",
    "SYS_RFRNC_CD", "QZ_CNTY_NBR",   "ADDR_TYP_CD",  "PRCS_ERR_TXT", "LST_UPDT_INSP_ID", "FLS_BTCH_NBR",
    "BTCH_ACTN_CD", "WGH_STN_ID",    "TRP_ID",       "TRP_DIST_ID",  "QZ_CNTY_DESC",     "XML_CONTEXT",
});

/// BTCH_STATUS of a run. SUCCESSFUL has processed all its letters; what any other left waits for the next
/// one.
namespace run_status {
inline constexpr std::string_view kSuccessful = "SUCCESSFUL";
inline constexpr std::string_view kRunning = "RUNNING";
inline constexpr std::string_view kIncomplete = "INCOMPLETE";
inline constexpr std::string_view kFailed = "FAILED";  ///< not one of its letters could be made
}  // namespace run_status

/// One nightly batch run.
inline constexpr auto kBatchColumns = std::to_array<std::string_view>(
    {"BTCH_SEQ_NBR", "BTCH_STATUS", "BTCH_CRTE_TS", "PRCS_STRT_TS", "PRCS_END_TS", "BTCH_LTR_CNT",
     "LTR_PRCS_CNT", "PAID_COUNT", "LTR_SCS_CNT", "LTR_FAIL_CNT", "UNPAID_COUNT"});

/// The letters of one type in a batch run; PAID_COUNT and UNPAID_COUNT by what the letters' accounts owe now.
inline constexpr auto kBatchStatisticsColumns =
    std::to_array<std::string_view>({"LTR_TYP_ID", "LETTER_COUNT", "PROCESS_COUNT", "SUCCESS_COUNT",
                                     "FAILURE_COUNT", "PAID_COUNT", "UNPAID_COUNT"});

/// One customer, as it is stored; OT_BAL is what is owed on all accounts. *_CNTY_CD and *_COUNTY are an
/// address's county and its name, *_RTND_IND "Y" where mail came back from it, UPDT_NBR counts the customer's
/// changes.
inline constexpr auto kCustomerColumns = std::to_array<std::string_view>(
    {"Cust_Id",      "CUST_TYP_CD",   "CUST_BSNS_NM", "CO_CNTCT_NM", "FIRST_NM",   "MID_NM",
     "LAST_NM",      "SUFX_NM",       "mail_addr_1",  "mail_addr_2", "mail_city",  "mail_st",
     "mail_zip_cd",  "MAIL_CNTY_CD",  "MAIL_COUNTY",  "RES_ADDR_1",  "RES_ADDR_2", "RES_CITY",
     "RES_ST",       "RES_ZIP_CD",    "RES_CNTY_CD",  "RES_COUNTY",  "PHN_NBR",    "ACCNT_NBR",
     "DRVR_LIC_IND", "RGSTRTN_IND",   "DLR_IND",      "ACDNT_IND",   "ENFRC_IND",  "DRVR_LIC_NBR",
     "RGSTRTN_NBR",  "MAIL_RTND_IND", "RES_RTND_IND", "UPDT_NBR",    "OT_BAL"});

/// A customer being saved, and what came of it: ACTION is one of customer_action, FINALIST_IND asks for the
/// addresses to be verified and brings the verdict back. What is not assigned stays as it is stored.
inline constexpr auto kCustomerSaveColumns = std::to_array<std::string_view>(
    {"CUST_ID",      "ACTION",      "FINALIST_IND", "FUEL_TAX_IND",  "CUST_TYP_CD", "FIRST_NM",
     "MID_NM",       "LAST_NM",     "SUFX_NM",      "CUST_BSNS_NM",  "CO_CNTCT_NM", "PHN_NBR",
     "ACCNT_NBR",    "MAIL_ADDR_1", "MAIL_ADDR_2",  "MAIL_CITY",     "MAIL_ZIP_CD", "MAIL_ST",
     "MAIL_CNTY_CD", "MAIL_COUNTY", "RES_ADDR_1",   "RES_ADDR_2",    "RES_CITY",    "RES_ZIP_CD",
     "RES_ST",       "RES_CNTY_CD", "RES_COUNTY",   "MAIL_RTND_IND", "RES_RTND_IND"});

/// One form (account) of a customer. Dates as text, amounts of money.
inline constexpr auto kCustomerFormColumns = std::to_array<std::string_view>(
    {"FORM_CK_DGT_NBR", "FORM_NBR", "FORM_NUMBER", "STP_DT", "CTTN_STTS_TXT", "ASSMT_DUE_AMT",
     "ORIG_ASSMT_AMT", "FORM_TYP_CD", "CTTN_STTS_CD", "BAL_DUE", "LST_PYMT_DT"});

/// How a search for customers ended: MORE is "Y" where more match than the reply brings, else "N"; TOTAL how
/// many match; no more than kMostCustomersCounted are counted.
inline constexpr auto kCustomerSearchColumns = std::to_array<std::string_view>({"MORE", "TOTAL"});
inline constexpr int kMostCustomersCounted = 250'000;

/// What was changed in a customer: the change's number (UPDT_NBR of the customer since), when, by whom, which
/// column, and what it held before and since; null for nothing.
inline constexpr auto kCustomerChangeColumns =
    std::to_array<std::string_view>({"UPDT_NBR", "UPDT_TS", "UPDT_USER_ID", "COL_NM", "OLD_TXT", "NEW_TXT"});

/// Letters that a corrected address lets go out: MEMO is an XML text whose element XML_COL holds their
/// number.
inline constexpr auto kRescheduledColumns = std::to_array<std::string_view>({"MEMO"});

/// How many letters of a batch run were printed for a Troop/District.
inline constexpr auto kLettersPrintedColumns =
    std::to_array<std::string_view>({"ACTION", "STATION_ID", "CTL_TOT", "TW_TOT", "CTL_PRNTD", "TW_PRNTD"});

/// A letter given to the coming batch run: ACTION is one of batch_action.
inline constexpr auto kBatchItemColumns = std::to_array<std::string_view>({"ACTION", "SEQ_NBR"});

/// What came of each letter that was given, in the order sent: OUTCOME is one of item_outcome, MEMO says in a
/// sentence why a letter was not taken (null where it was), the rest is the letter as it stands now.
inline constexpr auto kBatchItemOutcomeColumns =
    std::to_array<std::string_view>({"SEQ_NBR", "OUTCOME", "MEMO", "BTCH_ACTN_CD", "PRNT_STTS_CD"});

/// A letter that waits for the coming batch run, or is claimed by the run BTCH_SEQ_NBR (null while none has).
inline constexpr auto kWaitingItemColumns =
    std::to_array<std::string_view>({"SEQ_NBR", "ACTION", "RQST_TS", "RQST_USER_ID", "BTCH_SEQ_NBR",
                                     "LTR_TYP_ID", "CUST_ID", "FORM_NBR", "PRNT_STTS_CD"});

/// What came of a returned letter: OUTCOME is one of item_outcome, MEMO says it in a sentence, ADDR_TYP_CD is
/// the address it had been sent to.
inline constexpr auto kReturnMailColumns =
    std::to_array<std::string_view>({"SEQ_NBR", "CUST_ID", "ADDR_TYP_CD", "OUTCOME", "MEMO"});

inline constexpr auto kRecordLayouts = std::to_array<RecordLayout>({
    {record_name::kContextInput, kContextInputColumns},
    {record_name::kContext, kContextColumns},
    {record_name::kHistory, kHistoryColumns},
    {record_name::kBatchRuns, kBatchColumns},
    {record_name::kBatchStatistics, kBatchStatisticsColumns},
    {record_name::kLettersPrinted, kLettersPrintedColumns},
    {record_name::kCustomer, kCustomerColumns},
    {record_name::kCustomerSearch, kCustomerSearchColumns},
    {record_name::kCustomerForms, kCustomerFormColumns},
    {record_name::kCustomerChanges, kCustomerChangeColumns},
    {record_name::kRescheduled, kRescheduledColumns},
    {record_name::kBatchItems, kBatchItemColumns},
    {record_name::kBatchItemOutcomes, kBatchItemOutcomeColumns},
    {record_name::kWaitingItems, kWaitingItemColumns},
    {record_name::kReturnMailOutcome, kReturnMailColumns},
});

/// Looked up without regard to case; nothing when there is no such layout.
std::optional<RecordLayout> FindRecordLayout(std::string_view name);

}  // namespace platform
