#include "customers/clear_cust_form.h"

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"

namespace customers {
namespace {

class ClearCustFormTest : public testing::Test {
 protected:
  ClearCustFormTest() {
    form_type_.SetText("Assessment");
    form_number_.SetText("3100004-9");
    for (auto* field : {&panel_.name, &panel_.address, &panel_.city_line, &panel_.phone,
                        &panel_.fuel_tax_account, &panel_.customer_id}) {
      field->SetCaption("4711");
    }
    panel_.EnableSelection(false);
  }

  fakes::FakeServices fakes_;
  composition::ZEMLO_LetterCombo form_type_{fakes_.services(), "REFDOCTYP"};
  platform::TextField form_number_;
  CustomerPanel panel_;
  CurrentCustomer customer_{.CustomerId = "4711", .CustomerName = "ACME", .TrackingCustomerFixed = true};
  workspace::LetterRequestFields request_{.customer_id = "4711",
                                          .form_text = "3100004-9",
                                          .form_type = "C",
                                          .form_number = "3100004",
                                          .check_digit = "9"};
};

TEST_F(ClearCustFormTest, ForgetsWhomTheNextLetterIsFor) {
  ClearCustForm(fakes_.services(), CustomerForm{panel_, form_type_, form_number_}, customer_, request_);
  EXPECT_EQ(form_type_.GetText() + form_number_.text(), "");
  EXPECT_EQ(panel_.name.caption() + panel_.address.caption() + panel_.city_line.caption() +
                panel_.phone.caption() + panel_.fuel_tax_account.caption(),
            "");
  EXPECT_TRUE(panel_.select_customer.enabled());
  EXPECT_TRUE(panel_.select_account.enabled());
  EXPECT_EQ(customer_.CustomerId + request_.customer_id + request_.form_text + request_.form_type +
                request_.form_number + request_.check_digit,
            "");
}

TEST_F(ClearCustFormTest, KeepsTheIdFieldAndWhetherTheCustomerIsFixed) {
  ClearCustForm(fakes_.services(), CustomerForm{panel_, form_type_, form_number_}, customer_, request_);
  EXPECT_EQ(panel_.customer_id.caption(), "4711");
  EXPECT_TRUE(customer_.TrackingCustomerFixed);
  EXPECT_EQ(customer_.CustomerName, "ACME");
}

TEST_F(ClearCustFormTest, LeavesThePagesAloneWithoutOne) {
  ClearCustForm(fakes_.services(), std::nullopt, customer_, request_);
  EXPECT_EQ(customer_.CustomerId + request_.form_number, "");
  EXPECT_EQ(panel_.name.caption(), "4711");
  EXPECT_EQ(form_number_.text(), "3100004-9");
  EXPECT_FALSE(panel_.select_customer.enabled());
}

}  // namespace
}  // namespace customers
