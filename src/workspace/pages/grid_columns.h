#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls/grid.h"

/// What the three result grids show. A column without a caption carries its key as caption.
namespace workspace {

struct GridColumn {
  std::string_view key;
  std::string_view caption;
  std::string_view group;
  bool hidden = false;
  bool derived = false;  ///< filled, or changed, by the row formatter
  platform::Grid::AtFirst at_first = platform::Grid::AtFirst::kShown;
};

/// A code, or a part of another column: the user may ask for it.
constexpr GridColumn OnRequest(std::string_view key, std::string_view caption, std::string_view group) {
  return {key, caption, group, false, false, platform::Grid::AtFirst::kNotShown};
}
constexpr GridColumn WhereWide(std::string_view key, std::string_view caption, std::string_view group,
                               bool derived) {
  return {key, caption, group, false, derived, platform::Grid::AtFirst::kShownWhereWide};
}

inline constexpr std::string_view kCorrespondenceGroup = "Correspondence Information";
inline constexpr std::string_view kPrintGroup = "Print History";
inline constexpr std::string_view kBatchGroup = "Batch Information";
inline constexpr std::string_view kBatchStatusGroup = "Batch Status";

inline constexpr bool kDerived = true;

inline constexpr auto kCorrespondenceColumns = std::to_array<GridColumn>({
    {"DCMT_FILE_TXT", "Template File Name", kCorrespondenceGroup},
    WhereWide("LTR_NM", "Letter", kCorrespondenceGroup, kDerived),
    {"FORM_NBR_WITH_DGT", "Account No.", kCorrespondenceGroup, false, kDerived},
    {"Form_Type", "Account Type", kCorrespondenceGroup, false, kDerived},
    {"SEQ_NBR", "", kCorrespondenceGroup, /*hidden=*/true},
    OnRequest("FORM_NBR", "", kCorrespondenceGroup),
    OnRequest("FORM_CK_DGT_NBR", "Form Check Digit", kCorrespondenceGroup),
    OnRequest("FORM_TYP_CD", "", kCorrespondenceGroup),
    OnRequest("LST_UPDT_INSP_ID", "", kCorrespondenceGroup),
    {"OFFICER_NAME", "Last Update Officer", kCorrespondenceGroup, false, kDerived},
    OnRequest("SYS_RFRNC_CD", "", kCorrespondenceGroup),
    {"PRNT_TS", "Date/Time First Printed", kPrintGroup},
    {"PRNT_STTS_DESC", "Print Status", kPrintGroup, false, kDerived},
    OnRequest("PRNT_STTS_CD", "", kPrintGroup),
    {"LST_PRNT_TS", "Last Print Timestamp", kPrintGroup},
    {"PRCS_ERR_TXT", "Print Error Text", kPrintGroup},
});

inline constexpr auto kTrackingColumns = std::to_array<GridColumn>({
    {"DCMT_FILE_TXT", "Template File Name", kCorrespondenceGroup},
    WhereWide("LTR_NM", "Letter", kCorrespondenceGroup, kDerived),
    WhereWide("CUST_NM", "Customer", kCorrespondenceGroup, /*derived=*/false),
    {"Job_Type", "Job Type", kCorrespondenceGroup, false, kDerived},
    {"FORM_NBR_WITH_DGT", "Account No.", kCorrespondenceGroup, false, kDerived},
    {"Form_Type", "Account Type", kCorrespondenceGroup, false, kDerived},
    OnRequest("SEQ_NBR", "", kCorrespondenceGroup),
    OnRequest("FORM_NBR", "", kCorrespondenceGroup),
    OnRequest("FORM_CK_DGT_NBR", "Form Check Digit", kCorrespondenceGroup),
    OnRequest("FORM_TYP_CD", "", kCorrespondenceGroup),
    OnRequest("LST_UPDT_INSP_ID", "", kCorrespondenceGroup),
    {"FLS_BTCH_NBR", "Batch No.", kCorrespondenceGroup, false, kDerived},
    OnRequest("BTCH_ACTN_CD", "", kCorrespondenceGroup),
    {"BTCH_ACTN_DESC", "Batch Action Description", kCorrespondenceGroup, false, kDerived},
    {"OFFICER_NAME", "Last Update Officer", kCorrespondenceGroup, false, kDerived},
    OnRequest("SYS_RFRNC_CD", "", kCorrespondenceGroup),
    {"CUST_ID", "", kCorrespondenceGroup},
    OnRequest("WGH_STN_ID", "STN_ID", kCorrespondenceGroup),
    {"TroopDistrict", "Troop/District", kCorrespondenceGroup, false, kDerived},
    {"QZ_CNTY_DESC", "County", kCorrespondenceGroup},
    OnRequest("TRP_ID", "", kCorrespondenceGroup),
    OnRequest("TRP_DIST_ID", "", kCorrespondenceGroup),
    {"PRNT_TS", "Date/Time First Printed", kPrintGroup},
    {"PRNT_STTS_DESC", "Print Status", kPrintGroup, false, kDerived},
    OnRequest("PRNT_STTS_CD", "", kPrintGroup),
    {"LST_PRNT_TS", "Last Print Timestamp", kPrintGroup},
    {"PRCS_ERR_TXT", "Print Error Text", kPrintGroup},
});

inline constexpr auto kBatchRunColumns = std::to_array<GridColumn>({
    {"BTCH_SEQ_NBR", "Sequence No.", kBatchGroup},
    {"BTCH_STATUS", "Status", kBatchGroup},
    {"BTCH_CRTE_TS", "Job Creation Time", kBatchGroup},
    {"PRCS_STRT_TS", "Process Started", kBatchGroup},
    {"PRCS_END_TS", "Process Ended", kBatchGroup},
    {"BTCH_LTR_CNT", "Letter Count", kBatchStatusGroup},
    {"LTR_PRCS_CNT", "Process Count", kBatchStatusGroup},
    {"PAID_COUNT", "No. Paid", kBatchStatusGroup},
    {"LTR_SCS_CNT", "Success Count", kBatchStatusGroup},
    {"LTR_FAIL_CNT", "Failure Count", kBatchStatusGroup, false, kDerived},
    {"UNPAID_COUNT", "No. Outstanding", kBatchStatusGroup},
});

inline std::vector<platform::Grid::Column> ColumnsOf(std::span<const GridColumn> table) {
  std::vector<platform::Grid::Column> columns;
  for (const auto& [key, caption, group, hidden, derived, at_first] : table) {
    columns.push_back(
        {std::string(key), std::string(caption), std::string(group), hidden, "", "", derived, at_first});
  }
  return columns;
}

}  // namespace workspace
