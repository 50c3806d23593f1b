#include "desktop/forms/customer_search_view.h"

#include <gmock/gmock.h>

#include "desktop/shell/form_dialog.h"
#include "tests/desktop/window_driver.h"
#include "tests/fakes/fake_services.h"

namespace {

class TheCustomerSearch : public testing::Test {
 protected:
  TheCustomerSearch() {
    dialog.Present();
    dialog.activateWindow();
    tests::WaitForKeyboard(dialog);
  }
  void UserTypes(const char* text) { QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text)); }
  void UserPresses(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
  void ServerFinds(int count) {
    std::vector<fakes::Row> customers;
    for (int number = 1; number <= count; ++number)
      customers.push_back({{"Cust_Id", std::to_string(number)}, {"CUST_BSNS_NM", "ACME"}});
    services.server.Reply(
        fakes::ScriptedReply::With("CUSTOMER", customers).And("CUSTOMER_SEARCH", {{{"MORE", "N"}}}));
    services.RunEvents();
    tests::Settle();
  }
  std::string Focus() { return QApplication::focusWidget()->accessibleName().toStdString(); }
  std::size_t Searches() { return services.server.requests.size(); }

  fakes::FakeServices services;
  customers::frmCustSearch form{services.services(), "Select Customer", "Letters"};
  desktop::CustomerSearchView* view = new desktop::CustomerSearchView(form);
  desktop::FormDialog dialog{form, view, nullptr};
};

TEST_F(TheCustomerSearch, IsEnterTwiceForACustomerWhoIsTheOnlyOne) {
  EXPECT_EQ(Focus(), "Find");
  UserTypes("acme");
  UserPresses(Qt::Key_Return);
  ServerFinds(1);
  EXPECT_EQ(Focus(), "Customers found");
  UserPresses(Qt::Key_Enter);

  EXPECT_EQ(form.chosen().CustID, "1");
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(Searches(), 1u);
}

TEST_F(TheCustomerSearch, LetsTheArrowsChooseAmongSeveral) {
  UserPresses(Qt::Key_Return);
  ServerFinds(3);
  UserPresses(Qt::Key_Return);
  EXPECT_TRUE(dialog.isVisible()) << "no row is chosen yet";
  EXPECT_EQ(Searches(), 1u);

  UserPresses(Qt::Key_Down);  // to the first
  UserPresses(Qt::Key_Down);
  UserPresses(Qt::Key_Return);
  EXPECT_EQ(form.chosen().CustID, "2");
}

TEST_F(TheCustomerSearch, ComesBackToTheTextWhenNobodyIsFoundAndSearchesAgain) {
  UserTypes("nobody");
  UserPresses(Qt::Key_Return);
  ServerFinds(0);
  EXPECT_EQ(Focus(), "Find");
  UserTypes("acme");
  EXPECT_EQ(form.txtFind.text(), "acme") << "the text that found nobody is replaced";
  UserPresses(Qt::Key_Return);
  EXPECT_EQ(Searches(), 2u);
}

TEST_F(TheCustomerSearch, GoesFromTheTextToTheListWithTheDownKey) {
  UserPresses(Qt::Key_Return);
  ServerFinds(2);
  view->findChild<QLineEdit*>()->setFocus();
  UserPresses(Qt::Key_Down);
  EXPECT_EQ(Focus(), "Customers found");
  EXPECT_TRUE(form.cmdOk.enabled()) << "on the first customer";
  UserPresses(Qt::Key_Return);
  EXPECT_EQ(form.chosen().CustID, "1");
}

TEST_F(TheCustomerSearch, TakesTheOnlyOneFromTheTextToo) {
  UserTypes("acme");
  UserPresses(Qt::Key_Return);
  ServerFinds(1);
  view->findChild<QLineEdit*>()->setFocus();
  UserPresses(Qt::Key_Return);
  EXPECT_EQ(form.chosen().CustID, "1");
  EXPECT_EQ(Searches(), 1u);
}

TEST_F(TheCustomerSearch, IsLeftWithoutACustomerByEscape) {
  UserPresses(Qt::Key_Return);
  ServerFinds(1);
  UserPresses(Qt::Key_Escape);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(form.chosen().CustID, "");
}

}  // namespace
