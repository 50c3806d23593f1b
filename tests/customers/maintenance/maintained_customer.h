#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "customers/customer_edit.h"
#include "customers/maintenance/cust_maint.h"
#include "customers/maintenance/customer_fill.h"
#include "tests/fakes/fake_services.h"

namespace customers {

/// A customer in the dialog, before a server that answers what a test says.
class MaintainedCustomer : public testing::Test {
 protected:
  MaintainedCustomer() {
    outside.reference.AnswersWhatContains(
        "FLS_CODE", fakes::RowsOf("", {{{"CD_TBL_CD", ""}, {"CD_TBL_DES", ""}},
                                       {{"CD_TBL_CD", "KV"}, {"CD_TBL_DES", "KV - Korvada"}},
                                       {{"CD_TBL_CD", "OK"}, {"CD_TBL_DES", "OK - Oklahoma"}}}));
    outside.reference.AnswersWhatContains("MVR_COUNTY_TAX", fakes::RowsOf("", {{{"CNTY_NM", "Hartsfield"}}}));
    outside.utilities.control_keys = U"\b '-";
  }

  static fakes::Row Individual() {
    return {{"Cust_Id", "100002"},
            {"FIRST_NM", "HATTIE"},
            {"MID_NM", "J"},
            {"LAST_NM", "SMITH"},
            {"SUFX_NM", platform::Value()},
            {"PHN_NBR", "4055212485"},
            {"ACCNT_NBR", "6200010000201"},
            {"mail_addr_1", "77 ORCHARD RD"},
            {"mail_addr_2", ""},
            {"mail_city", "OAKHAVEN"},
            {"mail_st", "KV "},
            {"mail_zip_cd", "892141234"},
            {"MAIL_CNTY_CD", "22"},
            {"MAIL_RTND_IND", "Y"},
            {"RES_ADDR_1", "77 ORCHARD RD"},
            {"RES_CITY", "OAKHAVEN"},
            {"RES_ST", "KV"},
            {"RES_ZIP_CD", "89214"},
            {"RES_CNTY_CD", "22"},
            {"UPDT_NBR", "7"}};
  }
  static fakes::Row Business() {
    return {{"Cust_Id", "100001"},
            {"CUST_BSNS_NM", "LANTERN FUEL"},
            {"CO_CNTCT_NM", "ANN"},
            {"PHN_NBR", "4055212485"},
            {"ACCNT_NBR", "6200010000101"},
            {"mail_addr_1", "12 DEPOT ST"},
            {"mail_city", "MILLRACE"},
            {"mail_st", "KV"},
            {"mail_zip_cd", "89033"},
            {"MAIL_CNTY_CD", "20"},
            {"UPDT_NBR", "0"}};
  }

  /// The dialog on a customer of the register.
  void Open(const fakes::Row& customer, const char* type) {
    form.SetCustomerType(type);
    form.SetCustomerType();
    const auto rows = fakes::RowsOf("CUSTOMER", {customer});
    rows->MoveFirst();
    MoveCustomerEditInfo(outside.services(), *rows, form);
    form.SetCustomerMode("upd ");
    form.Activate();
  }
  void OpenIndividual() { Open(Individual(), "I"); }
  void OpenBusiness() { Open(Business(), "b "); }
  void OpenNew(const char* type) {
    form.SetCustomerType(type);
    form.SetCustomerType();
    form.SetCustomerMode("ADD");
    form.Activate();
  }
  /// What a new customer needs, but for the names and the resident address.
  void EnterMailing() { Enter(kMailingSide, "12 DEPOT ST", "MILLRACE", "89033"); }
  void Enter(const AddressSide& side, const char* line, const char* city, const char* zip) {
    Text(side.Line1()).SetText(line);
    Text(side.City()).SetText(city);
    Text(side.Zip()).SetText(zip);
    form.mCboState[side.number].Code("KV");
  }

  platform::TextField& Text(std::size_t number) { return form.mTxtCust.at(number); }
  platform::Command& Command(std::size_t number) { return form.mCmdOption.at(number); }
  void UserSaves() { Command(option_number::kSave).UserClicks(); }
  void UserCloses() { Command(option_number::kClose).UserClicks(); }

  void ServerSaves(const char* id = "100002") {
    outside.server.ReplyWith("Customer", {{{"CUST_ID", id}, {"FINALIST_IND", 0}}});
    outside.RunEvents();
  }
  /// The verdict, with the suggestions that the row has.
  void ServerFinds(int verdict, fakes::Row suggestions = {}) {
    suggestions.emplace_back("FINALIST_IND", verdict);
    outside.server.ReplyWith("Customer", {suggestions});
    outside.RunEvents();
  }
  static fakes::Row MailingSuggestion() {
    return {{"MAIL_ADDR_1", "12 DEPOT AVE"},
            {"MAIL_ADDR_2", "STE 4"},
            {"MAIL_CITY", "MILLRACE"},
            {"MAIL_ST", "KV"},
            {"MAIL_ZIP_CD", "890331212"},
            {"MAIL_COUNTY", "Kestrel"},
            {"MAIL_CNTY_CD", "20"},
            {"RES_COUNTY", "Oak"},
            {"RES_CNTY_CD", "22"}};
  }
  static fakes::Row ResidentSuggestion() {
    return {{"RES_ADDR_1", "7 ORCHARD RD"}, {"RES_CITY", "OAKHAVEN"}, {"RES_ST", "KV"},
            {"RES_ZIP_CD", "892140007"},    {"RES_COUNTY", "Oak"},    {"RES_CNTY_CD", "22"},
            {"MAIL_COUNTY", "Kestrel"},     {"MAIL_CNTY_CD", "20"}};
  }
  std::vector<std::string> Sent() { return outside.server.LastRequest().FindRecord("Customer").Assigned(); }
  std::vector<std::string> Messages() const { return outside.host.MessageTexts(); }

  fakes::FakeServices outside;
  ZEMLO_CustMaint form{outside.services(), "Letters"};
};

}  // namespace customers
