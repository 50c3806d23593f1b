#include "customers/maintenance/customer_fill.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/parties/trap.h"
#include "platform/text.h"

namespace customers {

namespace {

struct FilledText {
  std::string_view column;
  std::size_t field;
};
constexpr auto kFilledTexts = std::to_array<FilledText>({
    {"CUST_BSNS_NM", text_number::kBusinessName},
    {"CO_CNTCT_NM", text_number::kContactName},
    {"FIRST_NM", text_number::kFirstName},
    {"LAST_NM", text_number::kLastName},
    {"MID_NM", text_number::kMiddleName},
    {"SUFX_NM", text_number::kSuffix},
    {"MAIL_ADDR_1", kMailingSide.Line1()},
    {"MAIL_ADDR_2", kMailingSide.Line2()},
    {"MAIL_CITY", kMailingSide.City()},
    {"MAIL_ZIP_CD", kMailingSide.Zip()},
    {"RES_ADDR_1", kResidentSide.Line1()},
    {"RES_ADDR_2", kResidentSide.Line2()},
    {"RES_CITY", kResidentSide.City()},
    {"RES_ZIP_CD", kResidentSide.Zip()},
});

constexpr auto kKeptElsewhere =
    std::to_array<std::string_view>({"DRVR_LIC_IND", "RGSTRTN_IND", "DLR_IND", "ACDNT_IND", "ENFRC_IND"});
constexpr auto kNamesKeptElsewhere =
    std::to_array<std::size_t>({text_number::kBusinessName, text_number::kContactName,
                                text_number::kFirstName, text_number::kMiddleName, text_number::kSuffix});

std::string ColumnText(const platform::RecordSet& rows, std::string_view column) {
  return rows.HasColumn(column) ? rows.Text(column) : "";
}

void FillSide(const platform::Services& services, const platform::RecordSet& rows, const AddressSide& side,
              ZEMLO_CustMaint& form) {
  const auto text = [&](std::string_view column) {
    return ColumnText(rows, std::string(side.prefix).append(column));
  };
  form.ShowState(side, text("ST"));
  const auto county = text("CNTY_CD");
  form.ShowCounty(side.number, GetCountyDescription(services, county), county);
  auto& returned = form.mChkReturnMail[side.number];
  returned.SetTicked(text("RTND_IND") == "Y");
  returned.Tag = returned.ticked() ? "1" : "0";
}

}  // namespace

std::string GetCountyDescription(const platform::Services& services, const std::string& code) {
  std::string name;
  platform::Trap(services, "frmBatchData.GetCountyDescription", [&] {
    const auto rows = services.reference.Select("SELECT CNTY_NM FROM MVR_COUNTY_TAX WHERE CNTY_CD = '" +
                                                platform::ReplaceAll(code, "'", "''") + "'");
    if (!rows->IsEmpty()) name = rows->Text(0, "CNTY_NM");
  });
  return name;
}

void MoveCustomerEditInfo(const platform::Services& services, const platform::RecordSet& rows,
                          ZEMLO_CustMaint& form) {
  for (const auto& [column, field] : kFilledTexts) form.mTxtCust.at(field).SetText(ColumnText(rows, column));
  const bool is_kept_elsewhere = std::ranges::any_of(
      kKeptElsewhere, [&](std::string_view column) { return ColumnText(rows, column) == "Y"; });
  for (const auto field : kNamesKeptElsewhere) form.mTxtCust.at(field).SetEnabled(!is_kept_elsewhere);
  FillSide(services, rows, kMailingSide, form);
  FillSide(services, rows, kResidentSide, form);
  form.CustID = ColumnText(rows, "CUST_ID");
  form.version = ColumnText(rows, "UPDT_NBR");
  form.mFuelTaxAcct.SetValue(ColumnText(rows, "ACCNT_NBR"));
  form.mPhone.SetValue(ColumnText(rows, "PHN_NBR"));
}

}  // namespace customers
