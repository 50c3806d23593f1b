#pragma once

#include <string_view>

/// What is asked of the template catalogue, in the office's own dialect: "#2026-11-22#" is a day. {R} stands
/// for the quoted region, {T} for today, {L} for the quoted letter type. The blanks belong to the statements.
/// A raw string would put its line breaks into them.
namespace workspace {

/// For every letter type the newest version without an end and the newest that still is to end.
inline constexpr std::string_view kAllTemplates =
    "SELECT a.*  FROM FLS_Ltr_template AS a "
    "where  a.REGION={R}  and "
    "((a.Tmplt_TS=  (Select MAX(b.tmplt_TS) From FLS_LTR_Template b "
    "where  b.REGION={R}  and b.LTR_TYP_ID = a.LTR_TYP_ID  and b.Exprtn_DT is NULL))  "
    "Or (a.tmplt_TS =  (Select MAX(b.tmplt_TS) From FLS_ltr_template b "
    "where  b.REGION={R}  and b.EXPRTN_DT >= #{T}# And b.ltr_Typ_ID = a.ltr_Typ_ID)))  "
    "ORDER BY a.ltr_Typ_ID, a.tmplt_TS ";

/// For one letter type the same among the versions in force today.
inline constexpr std::string_view kTemplateOfToday =
    "SELECT a.DCMT_NM  FROM FLS_Ltr_template AS a  "
    "WHERE a.REGION={R}  and "
    "((a.Tmplt_TS=   (Select MAX(b.tmplt_TS) From FLS_LTR_Template b "
    "where b.REGION={R} and ltr_Typ_ID={L} and EFCTV_DT <= #{T}# and Exprtn_DT is NULL))  "
    "Or (a.tmplt_TS =   (Select MAX(b.tmplt_TS) From FLS_ltr_template b  "
    "where b.REGION={R} and ltr_Typ_ID={L} and EXPRTN_DT >= #{T}# and EFCTV_DT <= #{T}# )))   "
    "and Ltr_Typ_ID={L}";

/// Every version of one letter type, the oldest first.
inline constexpr std::string_view kTemplateVersions =
    "SELECT DCMT_NM, EFCTV_DT, EXPRTN_DT FROM FLS_LTR_TEMPLATE WHERE REGION={R} AND LTR_TYP_ID={L} "
    "ORDER BY EFCTV_DT, TMPLT_TS";

/// Where letters of the type are made.
inline constexpr std::string_view kLetterType =
    "SELECT LTR_ONLN_IND FROM FLS_LETTER WHERE REGION={R} AND LTR_TYP_ID={L}";

}  // namespace workspace
