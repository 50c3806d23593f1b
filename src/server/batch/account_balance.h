#pragma once

#include <string>
#include <string_view>

namespace server {

/// In SQL: what the account (form) that a row of `table` names in FORM_TYP_CD and FORM_NBR owes now, in
/// cents.
inline std::string BalanceOf(std::string_view table) {
  const std::string row(table);
  return "(SELECT COALESCE(SUM(TAX_AMT + PNLTY_AMT + INTRST_AMT), 0) FROM tax_period WHERE "
         "tax_period.FORM_TYP_CD = " +
         row + ".FORM_TYP_CD AND tax_period.FORM_NBR = " + row + ".FORM_NBR)";
}

}  // namespace server
