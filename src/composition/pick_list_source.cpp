#include "composition/pick_list_source.h"

#include <array>

#include "platform/text.h"

namespace composition {
namespace {

// Sent as they stand, doubled blanks included. The first half of each gives one blank row a row it meets; the
// union leaves one of them, which sorts first.
constexpr std::string_view kLetters =
    "select '' as CD_TBL_CD,  '' as CD_TBL_DES,  '' as LTR_IND  from FLS_LETTER "
    "Where REGION='{R}' "
    "union select LTR_TYP_ID as CD_TBL_CD,  LTR_NM as CD_TBL_DES,  LTR_ONLN_IND AS LTR_IND  "
    "from FLS_LETTER where REGION='{R}' and LTR_ONLN_IND<>'S'  Order By CD_TBL_DES";
constexpr std::string_view kOnline =
    "select '' as CD_TBL_CD,  '' as CD_TBL_DES,  '' as LTR_IND  from FLS_LETTER "
    "Where REGION='{R}' "
    "union select LTR_TYP_ID as CD_TBL_CD,  LTR_NM as CD_TBL_DES,  LTR_ONLN_IND AS LTR_IND  "
    "from FLS_LETTER where REGION='{R}' and LTR_ONLN_IND='O'  Order By CD_TBL_DES";
constexpr std::string_view kBatch =
    "select '' as CD_TBL_CD,  '' as CD_TBL_DES,  '' as LTR_IND  from FLS_LETTER "
    "Where REGION='{R}' "
    "union select LTR_TYP_ID as CD_TBL_CD,  LTR_NM as CD_TBL_DES,  LTR_ONLN_IND AS LTR_IND  "
    "from FLS_LETTER where REGION='{R}' and LTR_ONLN_IND='B'  Order By CD_TBL_DES";
constexpr std::string_view kTemplates =
    "select '' as CD_TBL_CD,  '' as CD_TBL_DES  from FLS_LETTER Where REGION='{R}' "
    "union select LTR_TYP_ID as CD_TBL_CD,  LTR_NM as CD_TBL_DES  from FLS_LETTER "
    "where REGION='{R}' and LTR_ONLN_IND<>'E'  Order By CD_TBL_DES";
// The blank half names the table's columns in their order.
constexpr std::string_view kCodeTable =
    "select '' as REGION, '' as CD_TBL_ID, '' as CD_TBL_CD, '' as SYS_TS, '' as CD_TBL_DES, "
    "'' as ADTL_INFO_TXT, '' as RSN_FOR_CHNG_TXT, '' as EFCTV_DT, '' as END_DT, "
    "'' as ENTR_OFCR_ID, '' as LST_UPDT_TS, '' as ACTN, '' as UNT_NBR, '' as SFTYNT_VLTN_CD "
    "from FLS_code Where REGION='{R}'  "
    "Union Select * From FLS_CODE Where REGION='{R}' "
    "and ((EFCTV_DT <= date() And (END_DT)Is Null)  Or (EFCTV_DT <= date() And END_DT >= date())) "
    "And CD_TBL_ID = '{T}' Order By CD_TBL_DES";

struct LetterList {
  std::string_view code_type;
  std::string_view statement;
};
constexpr auto kLetterLists = std::to_array<LetterList>({
    {"LETTERS", kLetters},
    {"ONLINE", kOnline},
    {"BATCH", kBatch},
    {"TEMPLATES", kTemplates},
});

std::string_view StatementFor(std::string_view code_type) {
  for (const auto& list : kLetterLists) {
    if (platform::EqualsIgnoringCase(code_type, list.code_type)) return list.statement;
  }
  return kCodeTable;
}

}  // namespace

std::string PickListStatement(std::string_view code_type, std::string_view region) {
  const auto in_region =
      platform::ReplaceAll(StatementFor(code_type), "{R}", platform::UpperCase(platform::Trim(region)));
  return platform::ReplaceAll(in_region, "{T}", code_type);
}

}  // namespace composition
