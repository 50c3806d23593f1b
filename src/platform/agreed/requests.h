#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// What a request is called, by who sends it and who answers it.
namespace platform {

/// The message type codes.
namespace message_type {
inline constexpr int kCustomer = 7;
inline constexpr int kSaveCustomer = 8;
inline constexpr int kCustomerForms = 50;
inline constexpr int kCountPrinted = 78;
inline constexpr int kSearch = 79;
inline constexpr int kChange = 82;
inline constexpr int kFetch = 83;
}  // namespace message_type

/// The criteria of requests. The server reads their names without regard to case and blanks.
namespace request_key {

inline constexpr std::string_view kCustomer = "CUST_ID";
inline constexpr std::string_view kCustomerWords = "CUST_FIND";
inline constexpr std::string_view kListedCustomers =
    "CUST_IDS";  ///< separated by commas; the reply has them in that order, without those that are gone
inline constexpr std::string_view kLeftOutColumns = "ExclCols";
inline constexpr std::string_view kElementName =
    "ELEMENT_NAME";  ///< kCustomers: with all that maintaining takes
inline constexpr std::string_view kSingleCredential = "SINGLECUSTCRED";
inline constexpr std::string_view kFirstRow = "START";  ///< of those found, from 1
inline constexpr std::string_view kLastRow = "END";
inline constexpr std::string_view kFormTypeAsked = "REF_TYP_CD";
inline constexpr std::string_view kCustomerVersion = "UPDT_NBR";  ///< the one a change was made from
inline constexpr std::string_view kAcceptedSuggestions =
    "FINALIST_ACCEPT";  ///< which addresses are suggestions: 1 mailing, 2 resident, 3 both
inline constexpr std::string_view kCustomerChanges = "CUST_CHANGES";  ///< "Y": its history instead
inline constexpr std::string_view kLetterType = "LTR_TYP_ID";
inline constexpr std::string_view kFillBookmarks = "POPULATE_LTR_BOOKMARKS";
inline constexpr std::string_view kFieldDescriptors = "EmitFieldDescriptors";
inline constexpr std::string_view kExplainState = "ExplainState";
inline constexpr std::string_view kFetchContext = "FetchContext";
inline constexpr std::string_view kReturnMail = "ReturnMail";   ///< the letter that came back
inline constexpr std::string_view kBatchItems = "BATCH_ITEMS";  ///< "Y": what waits for the coming batch run
inline constexpr std::string_view kFormNumber = "FORM_NBR";
inline constexpr std::string_view kCheckDigit = "FORM_CK_DGT_NBR";
inline constexpr std::string_view kFormType = "FORM_TYP_CD";
inline constexpr std::string_view kOutcome = "LETTER_TYPE";  ///< one of the outcomes below
inline constexpr std::string_view kLetters = "SEQ_NBRS";     ///< numbers of letters, separated by commas
inline constexpr std::size_t kMostLettersNamed = 1'000;
inline constexpr std::string_view kTroop = "TRP_ID";
inline constexpr std::string_view kDistrict = "TRP_DIST_ID";
inline constexpr std::string_view kDays = "START_DT";  ///< one day, or two with kBetween
inline constexpr std::string_view kBatch = "BATCH_NBR";
inline constexpr std::string_view kRunDays = "BATCH_START_DT";     ///< one day, or two with kBetween
inline constexpr std::string_view kRunStatus = "STATUS";           ///< one of batch_outcome
inline constexpr std::string_view kReprintBatch = "ReprintBatch";  ///< the run to be made once more
inline constexpr std::string_view kBatchStatistics =
    "BATCHSTAT";                                   ///< "Y": those of kBatch instead of its letters
inline constexpr std::string_view kThin = "THIN";  ///< "YES": letters come without their contexts

inline constexpr std::string_view kCustomers = "CUSTOMERS";  ///< value of kElementName

inline constexpr std::string_view kPrefix = "key:";

}  // namespace request_key

/// "key:NAME", as a criterion is sent.
inline std::string KeyNamed(std::string_view name) {
  return std::string(request_key::kPrefix) + std::string(name);
}
/// "key: NAME": the spelling of some criteria is given with a blank.
inline std::string KeyWithBlank(std::string_view name) {
  return std::string(request_key::kPrefix) + " " + std::string(name);
}

/// How a criterion compares.
namespace key_operator {
inline constexpr const char* kLike = "like";
inline constexpr const char* kBetween = "between";
inline constexpr std::string_view kAnd = " and ";  ///< joins the two bounds of kBetween
}  // namespace key_operator

/// Letters by how their processing ended.
namespace letter_outcome {
inline constexpr const char* kAll = "All";
inline constexpr const char* kSucceeded = "Succeeded";
inline constexpr const char* kFailed = "Failed";
}  // namespace letter_outcome

/// Batch runs by how they ended.
namespace batch_outcome {
inline constexpr const char* kAll = "A";
inline constexpr const char* kSuccessful = "S";
inline constexpr const char* kIncomplete = "P";  ///< running ones too
inline constexpr const char* kFailed = "F";
}  // namespace batch_outcome

/// The records that travel with requests and replies; looked up without regard to case. Their columns stand
/// in record_layouts.h.
namespace record_name {
inline constexpr const char* kContextInput = "XML_CONTEXT_INPUT";
inline constexpr const char* kContext = "XML_Context";
inline constexpr const char* kHistory = "CORRHIST";
inline constexpr const char* kBatchRuns = "CORRBATCH";
inline constexpr const char* kBatchStatistics = "CORRSTAT";
inline constexpr const char* kLettersPrinted = "BATCH_LTRS_PRINTED";
inline constexpr const char* kBatchItems = "CORR_BITEM";
inline constexpr const char* kBatchItemOutcomes = "CORR_BITEM_OUTCOME";
inline constexpr const char* kWaitingItems = "CORR_BITEM_WAITING";
inline constexpr const char* kReturnMailOutcome = "RETURN_MAIL";
inline constexpr const char* kCustomer = "CUSTOMER";
inline constexpr const char* kCustomerSearch = "CUSTOMER_SEARCH";
inline constexpr const char* kCustomerForms = "CUSTOMERFORM";
inline constexpr const char* kCustomerChanges = "CUSTOMER_CHANGE";
inline constexpr const char* kRescheduled = "XML_ROW";
}  // namespace record_name

/// The question for the server's template folder, and the element with the answer.
inline constexpr const char* kTemplateFolderInquiry =
    "<XML_CONTEXT_INQUIRY><L_TEMPLATE_PATH></L_TEMPLATE_PATH></XML_CONTEXT_INQUIRY>";
inline constexpr const char* kInquiryElement = "XML_CONTEXT_INQUIRY";
inline constexpr const char* kTemplateFolderElement = "L_TEMPLATE_PATH";

}  // namespace platform
