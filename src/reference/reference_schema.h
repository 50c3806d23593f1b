#pragma once

#include <array>
#include <span>
#include <string_view>

/// The tables of the reference database, and the files of an installation they are filled from.
namespace reference {

/// Raised whenever a table changes; a database of another version is built anew.
inline constexpr int kSchemaVersion = 1;

enum class ColumnKind {
  kText,          ///< must not be empty
  kOptionalText,  ///< empty is stored as null
  kLetterType,    ///< a whole number, as the programs write it
  kCounty,        ///< the same
  kOnlineIndicator,
  kFileName,      ///< without a folder
  kDate,          ///< "yyyy-mm-dd"
  kOptionalDate,  ///< empty is stored as null: without end
  kTimestamp,     ///< "yyyy-mm-dd hh.mm.ss"
  kOptionalTimestamp,
  kZipPrefix,  ///< three digits
  kTroop,      ///< one character: with the district behind it one value
  kDistrict,   ///< up to four characters
};

struct Column {
  std::string_view name;
  ColumnKind kind = ColumnKind::kText;
};

struct Table {
  std::string_view name;
  std::string_view file;                  ///< under "reference" of the product's data folder
  std::span<const Column> columns;        ///< in the order of the file's header and of the table
  std::span<const std::string_view> key;  ///< what no two rows share
  std::string_view constraints;
  std::string_view last_day = {};  ///< the column that must not lie before EFCTV_DT; "" for none
};

inline constexpr auto kLetterColumns = std::to_array<Column>({
    {"REGION"},
    {"LTR_TYP_ID", ColumnKind::kLetterType},
    {"LTR_NM"},
    {"LTR_ONLN_IND", ColumnKind::kOnlineIndicator},
});

inline constexpr auto kTemplateColumns = std::to_array<Column>({
    {"REGION"},
    {"LTR_TYP_ID", ColumnKind::kLetterType},
    {"DCMT_NM", ColumnKind::kFileName},
    {"TMPLT_TS", ColumnKind::kTimestamp},
    {"EFCTV_DT", ColumnKind::kDate},
    {"EXPRTN_DT", ColumnKind::kOptionalDate},
});

// The statements of the pick lists take this table's columns by their position.
inline constexpr auto kCodeColumns = std::to_array<Column>({
    {"REGION"},
    {"CD_TBL_ID"},
    {"CD_TBL_CD"},
    {"SYS_TS", ColumnKind::kTimestamp},
    {"CD_TBL_DES"},
    {"ADTL_INFO_TXT", ColumnKind::kOptionalText},
    {"RSN_FOR_CHNG_TXT", ColumnKind::kOptionalText},
    {"EFCTV_DT", ColumnKind::kDate},
    {"END_DT", ColumnKind::kOptionalDate},
    {"ENTR_OFCR_ID", ColumnKind::kOptionalText},
    {"LST_UPDT_TS", ColumnKind::kOptionalTimestamp},
    {"ACTN", ColumnKind::kOptionalText},
    {"UNT_NBR", ColumnKind::kOptionalText},
    {"SFTYNT_VLTN_CD", ColumnKind::kOptionalText},
});

inline constexpr auto kCountyColumns = std::to_array<Column>({
    {"CNTY_CD", ColumnKind::kCounty},
    {"CNTY_NM"},
    {"CNTY_SEAT_NM"},
    {"ZIP_PRFX", ColumnKind::kZipPrefix},
    {"TRP_ID", ColumnKind::kTroop},
    {"TRP_DIST_ID", ColumnKind::kDistrict},
});

inline constexpr auto kOfficerColumns = std::to_array<Column>({{"OFCR_ID"}, {"OFCR_NM"}});

using Key = std::string_view;
inline constexpr auto kLetterKey = std::to_array<Key>({"REGION", "LTR_TYP_ID"});
inline constexpr auto kTemplateKey = std::to_array<Key>({"REGION", "LTR_TYP_ID", "TMPLT_TS"});
inline constexpr auto kCodeKey = std::to_array<Key>({"REGION", "CD_TBL_ID", "CD_TBL_CD", "EFCTV_DT"});
inline constexpr auto kCountyKey = std::to_array<Key>({"CNTY_CD"});
inline constexpr auto kOfficerKey = std::to_array<Key>({"OFCR_ID"});

// A table comes after the tables it refers to. The rows of a table without row numbers lie in the order of
// its key: of the versions of a letter type the newest one comes first.
inline constexpr auto kTables = std::to_array<Table>({
    {"FLS_LETTER", "letters.tsv", kLetterColumns, kLetterKey, "PRIMARY KEY (REGION, LTR_TYP_ID)"},
    {"FLS_LTR_TEMPLATE", "templates.tsv", kTemplateColumns, kTemplateKey,
     "PRIMARY KEY (REGION, LTR_TYP_ID, TMPLT_TS DESC), "
     "FOREIGN KEY (REGION, LTR_TYP_ID) REFERENCES FLS_LETTER (REGION, LTR_TYP_ID)",
     "EXPRTN_DT"},
    {"FLS_CODE", "codes.tsv", kCodeColumns, kCodeKey, "PRIMARY KEY (REGION, CD_TBL_ID, CD_TBL_CD, EFCTV_DT)",
     "END_DT"},
    {"MVR_COUNTY_TAX", "counties.tsv", kCountyColumns, kCountyKey, "PRIMARY KEY (CNTY_CD)"},
    {"FLS_OFFICER", "officers.tsv", kOfficerColumns, kOfficerKey, "PRIMARY KEY (OFCR_ID)"},
});

constexpr bool IsOptional(ColumnKind kind) {
  return kind == ColumnKind::kOptionalText || kind == ColumnKind::kOptionalDate ||
         kind == ColumnKind::kOptionalTimestamp;
}

}  // namespace reference
