#include "workspace/letters/history_record.h"

#include <string>
#include <utility>

#include "platform/agreed/letter_record.h"
#include "platform/agreed/requests.h"
#include "platform/text.h"
#include "platform/value.h"

namespace workspace {

namespace {

using platform::Value;

Value OrNull(const std::string& text) {
  return text.empty() ? Value::Null() : Value(text);
}

}  // namespace

void HistoryRecord::SendLetterHistoryADD(RequestDescription& message, LetterData& letter) const {
  constexpr const char* kProcedure = "ZEMLO_Corresp.SendLetterHistoryADD";
  platform::Trap(services_, kProcedure, [&] {
    letter.context = platform::ReplaceAll(letter.context, "'", "`");
    RecordDescription::Row row = {
        {"ACTION", platform::record_action::kAdd},    {"PRNT_STTS_CD", platform::kStatusForTheServer},
        {"LST_PRNT_TS", platform::kTimeForTheServer}, {"SYS_RFRNC_CD", platform::letter_origin::kOnline},
        {"LTR_TYP_ID", letter.letter_type},           {"CUST_ID", letter.customer_id},
        {"FORM_NBR", OrNull(letter.form_number)},     {"FORM_CK_DGT_NBR", OrNull(letter.check_digit)},
        {"FORM_TYP_CD", OrNull(letter.form_type)},    {"DCMT_FILE_TXT", letter.template_name},
        {"QZ_CNTY_NBR", letter.county_number},        {"LST_PRCS_TS", letter.process_time},
        {"ADDR_TYP_CD", letter.address_type},         {"XML_CONTEXT", letter.context},
    };
    message.records.push_back({platform::record_name::kHistory, {std::move(row)}, kProcedure});
  });
}

void HistoryRecord::SendLetterHistoryUPD(RequestDescription& message, const LetterData& letter) const {
  constexpr const char* kProcedure = "ZEMLO_Corresp.SendLetterHistoryUPD";
  platform::Trap(services_, kProcedure, [&] {
    RecordDescription::Row row = {
        {"ACTION", platform::record_action::kUpdate},
        {"SEQ_NBR", letter.sequence_number},
        {"PRNT_STTS_CD", platform::kStatusForTheServer},
        {"LST_PRNT_TS", platform::kTimeForTheServer},
    };
    message.records.push_back({platform::record_name::kHistory, {std::move(row)}, kProcedure});
  });
}

}  // namespace workspace
