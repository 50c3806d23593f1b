#include "server/setup/office_tables.h"

#include <map>
#include <set>
#include <string>

#include "platform/tab_table.h"
#include "platform/text.h"

namespace server {
namespace {

using platform::TabTable;

void TakeInStates(Database& database, const std::filesystem::path& file) {
  const auto codes = TabTable::Read(file);
  std::set<std::string> states;  // a code may have ended and begun again
  for (std::size_t row = 0; row < codes.RowCount(); ++row) {
    if (codes.Text(row, "CD_TBL_ID") == "STATE")
      states.insert(platform::UpperCase(codes.Text(row, "CD_TBL_CD")));
  }
  database.Change("DELETE FROM state");
  for (const auto& state : states) database.Change("INSERT INTO state (ST_CD) VALUES (?)", {state});
}

/// The print statuses that actions on letters are allowed for; of an action that began anew, the last row's.
void TakeInLetterActions(Database& database, const std::filesystem::path& file) {
  const auto codes = TabTable::Read(file);
  std::map<std::string, std::string> statuses;
  for (std::size_t row = 0; row < codes.RowCount(); ++row) {
    if (codes.Text(row, "CD_TBL_ID") == "LTRACTION")
      statuses[codes.Text(row, "CD_TBL_CD")] = codes.Text(row, "ADTL_INFO_TXT");
  }
  database.Change("DELETE FROM letter_action");
  for (const auto& [action, list] : statuses)
    database.Change("INSERT INTO letter_action (ACTN_CD, PRNT_STTS_TXT) VALUES (?, ?)", {action, list});
}

/// Returns whether any was missing.
bool TakeInZipPrefixes(Database& database, const std::filesystem::path& file) {
  const auto counties = TabTable::Read(file);
  bool any = false;
  for (std::size_t row = 0; row < counties.RowCount(); ++row) {
    const auto& prefix = counties.Text(row, "ZIP_PRFX");
    if (prefix.empty()) continue;
    any |= database.Change("UPDATE county SET ZIP_PRFX = ? WHERE QZ_CNTY_NBR = ? AND ZIP_PRFX = ''",
                           {prefix, counties.Text(row, "CNTY_CD")}) > 0;
  }
  return any;
}

void GiveAddressesTheirCounties(Database& database) {
  for (const std::string prefix : {"MAIL_", "RES_"}) {
    database.Change("UPDATE customer SET " + prefix + "CNTY_CD = (SELECT QZ_CNTY_NBR FROM county WHERE" +
                    " ZIP_PRFX <> '' AND SUBSTR(" + prefix + "ZIP_CD, 1, LENGTH(ZIP_PRFX)) = ZIP_PRFX" +
                    " ORDER BY LENGTH(ZIP_PRFX) DESC, QZ_CNTY_NBR LIMIT 1) WHERE " + prefix +
                    "CNTY_CD IS NULL AND " + prefix +
                    "ST = (SELECT OFFICE_ST FROM office ORDER BY OFFICE_NBR LIMIT 1)");
  }
}

}  // namespace

void TakeInOfficeTables(Database& database, const std::filesystem::path& product_data_folder) {
  const auto reference = product_data_folder / "reference";
  TakeInStates(database, reference / "codes.tsv");
  TakeInLetterActions(database, reference / "codes.tsv");
  if (TakeInZipPrefixes(database, reference / "counties.tsv")) GiveAddressesTheirCounties(database);
}

}  // namespace server
