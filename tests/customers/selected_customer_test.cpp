#include "customers/selected_customer.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_services.h"

namespace customers {
namespace {

class SelectedCustomerTest : public testing::Test {
 protected:
  void UserChooses(const SelectedCustomer& chosen,
                   workspace::PageIndex page = workspace::PageIndex::kTracking) {
    FillCustomerField(fakes_.services(), chosen, page, customer_, panel_);
  }

  fakes::FakeServices fakes_;
  CurrentCustomer customer_;
  CustomerPanel panel_;
};

TEST_F(SelectedCustomerTest, ShowsTheChosenCustomerWithoutFormatting) {
  UserChooses({.CustID = "4711",
               .CUSTNAME = "ACME",
               .MailAddress = "1 MAIN ST",
               .MailCity = " TULSA ",
               .MailState = "OK",
               .MailZip = "741031234",
               .Phone = "4055212485",
               .FuelTax = "1234567890123"});
  EXPECT_EQ(panel_.customer_id.caption(), "4711");
  EXPECT_EQ(panel_.name.caption(), "ACME");
  EXPECT_EQ(panel_.city_line.caption(), "TULSA, OK 741031234");
  EXPECT_EQ(panel_.phone.caption(), "4055212485");
  EXPECT_EQ(panel_.fuel_tax_account.caption(), "1234567890123");
  EXPECT_TRUE(customer_.TrackingCustomerFixed);
}

TEST_F(SelectedCustomerTest, FallsBackToTheResidentialAddressInTheMembersOnly) {
  UserChooses({.CustID = "4711",
               .MailAddress = "  ",
               .ResAddress = "2 ELM ST",
               .ResAddress2 = "APT 4",
               .ResCity = "ENID",
               .ResState = "OK",
               .ResZip = "73701"});
  EXPECT_EQ(customer_.CustomerAddr1, "2 ELM ST");
  EXPECT_EQ(customer_.CustomerAddr2, "APT 4");
  EXPECT_EQ(panel_.address.caption(), "  ");
  EXPECT_EQ(panel_.city_line.caption(), "ENID, OK 73701");
}

TEST_F(SelectedCustomerTest, KeepsThePanelWhenTheDialogReturnsNobody) {
  UserChooses({.CustID = "4711", .CUSTNAME = "ACME", .MailCity = "TULSA"});
  panel_.EnableSelection(false);
  UserChooses({});
  EXPECT_EQ(panel_.name.caption(), "ACME");
  EXPECT_EQ(customer_.CustomerCityLine, "");
  EXPECT_TRUE(panel_.select_customer.enabled());
  EXPECT_TRUE(panel_.select_account.enabled());
  EXPECT_FALSE(customer_.TrackingCustomerFixed);
}

TEST_F(SelectedCustomerTest, FixesTheTrackingPagesCustomerOnly) {
  UserChooses({.CustID = "4711"}, workspace::PageIndex::kCorrespondence);
  EXPECT_FALSE(customer_.TrackingCustomerFixed);
}

}  // namespace
}  // namespace customers
