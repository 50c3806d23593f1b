#include "desktop/forms/cust_select_view.h"

#include <gmock/gmock.h>

#include <QScrollBar>
#include <QTextLayout>

#include "desktop/forms/account_dialog_view.h"
#include "desktop/forms/customer_dialog_view.h"
#include "desktop/shell/form_dialog.h"
#include "tests/desktop/window_driver.h"
#include "tests/fakes/fake_services.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A dialog worked by keyboard, over a server that a test answers for.
class CustomerDialogs : public testing::Test {
 protected:
  void Present(desktop::FormDialog& dialog) {
    dialog.Present();
    dialog.activateWindow();
    tests::WaitForKeyboard(dialog);
  }
  static void UserTypes(const char* text) {
    QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text));
  }
  static void UserPresses(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
  bool ServerIsAsked(std::size_t requests) {
    return tests::WaitFor([&] { return services.server.requests.size() == requests; });
  }
  void ServerFinds(int count, const char* more = "N", int first = 1) {
    std::vector<fakes::Row> rows;
    for (int number = first; number < first + count; ++number)
      rows.push_back({{"Cust_Id", std::to_string(number)},
                      {"CUST_BSNS_NM", "ACME OAK " + std::to_string(number)},
                      {"mail_city", "TULSA"}});
    services.server.Reply(fakes::ScriptedReply::With("CUSTOMER", rows)
                              .And("CUSTOMER_SEARCH", {{{"MORE", more}, {"TOTAL", 100}}}));
    services.RunEvents();
    tests::Settle();
  }
  static std::string Focus() { return QApplication::focusWidget()->accessibleName().toStdString(); }

  fakes::FakeServices services;
  const std::string title = "Letters";
};

class TheCustomerDialog : public CustomerDialogs {
 protected:
  TheCustomerDialog() { Present(dialog); }
  QTableView& List() { return *view->findChild<QTableView*>(); }

  customers::frmCustSelect form{services.services(), {}};
  desktop::CustomerDialogView* view = new desktop::CustomerDialogView(form);
  desktop::FormDialog dialog{form, view, nullptr};
};

TEST_F(TheCustomerDialog, FindsWhileOneTypesAndIsWorkedFromItsLine) {
  EXPECT_EQ(Focus(), "Find");
  UserTypes("acme");
  EXPECT_EQ(services.server.requests.size(), 0u) << "the typing has not rested";
  ASSERT_TRUE(ServerIsAsked(1));
  ServerFinds(3);
  UserPresses(Qt::Key_Down);
  UserPresses(Qt::Key_Down);
  UserPresses(Qt::Key_Up);
  EXPECT_EQ(List().currentIndex().row(), 1);
  EXPECT_EQ(QApplication::focusWidget()->accessibleDescription(),
            QStringLiteral("2 of 3: ACME OAK 2, TULSA"));
  UserPresses(Qt::Key_Return);
  EXPECT_TRUE(dialog.isVisible());
  EXPECT_EQ(form.ZEMLO_CustSelect1.CustID(), "2");
  UserPresses(Qt::Key_Return);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(form.ZEMLO_CustSelect1.CustID(), "2");
}

TEST_F(TheCustomerDialog, ShowsWhatMatchedInBold) {
  UserTypes("oak");
  ASSERT_TRUE(ServerIsAsked(1));
  ServerFinds(1);
  const auto met = List()
                       .model()
                       ->index(0, 0)
                       .data(desktop::CustomerRowsModel::kMetRole)
                       .value<QList<QTextLayout::FormatRange>>();
  ASSERT_EQ(met.size(), 1);
  EXPECT_EQ(met[0].start, 5);
  EXPECT_EQ(met[0].length, 3);
  EXPECT_EQ(met[0].format.fontWeight(), QFont::Bold);
}

TEST_F(TheCustomerDialog, BringsMoreOnScrollingAndKeepsItsPlace) {
  UserTypes("acme");
  ASSERT_TRUE(ServerIsAsked(1));
  dialog.resize(dialog.width(), dialog.minimumSizeHint().height());
  ServerFinds(20, "Y");
  ASSERT_EQ(services.server.requests.size(), 1u) << "the end is out of sight";
  auto& bar = *List().verticalScrollBar();
  bar.setValue(bar.maximum());
  ASSERT_TRUE(ServerIsAsked(2));
  const int place = bar.value();
  ServerFinds(20, "Y", 21);
  EXPECT_EQ(List().model()->rowCount(), 40);
  EXPECT_EQ(bar.value(), place);
}

TEST_F(TheCustomerDialog, IsLeftByEscapeAndNotByItsCloseBox) {
  UserTypes("acme");
  UserPresses(Qt::Key_Escape);
  EXPECT_EQ(form.ZEMLO_CustSelect1.txtFind.text(), "");
  EXPECT_TRUE(dialog.isVisible());
  dialog.close();
  EXPECT_TRUE(dialog.isVisible());
  UserPresses(Qt::Key_Escape);
  EXPECT_FALSE(dialog.isVisible());
}

TEST_F(TheCustomerDialog, ChoosesWithAClickAndLeavesWithADoubleClick) {
  UserTypes("acme");
  ASSERT_TRUE(ServerIsAsked(1));
  ServerFinds(3);
  const auto place = List().visualRect(List().model()->index(2, 0)).center();
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(form.ZEMLO_CustSelect1.CustID(), "3");
  EXPECT_TRUE(dialog.isVisible());
  QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, place);
  EXPECT_FALSE(dialog.isVisible());
}

TEST_F(CustomerDialogs, EnterPressesTheCommandThatHasTheKeyboard) {
  std::string added = "nobody";
  customers::frmCustSelect form(
      services.services(), {.add = [&](const std::string& typed,
                                       const customers::CustomerMaintenance::Saved&) { added = typed; }});
  auto* view = new desktop::CustomerDialogView(form);
  desktop::FormDialog dialog(form, view, nullptr);
  Present(dialog);
  UserTypes("zelda");
  for (int stop = 0; stop < 9 && Focus() != "New..."; ++stop) UserPresses(Qt::Key_Tab);
  ASSERT_EQ(Focus(), "New...");
  UserPresses(Qt::Key_Return);
  EXPECT_EQ(added, "zelda");
  EXPECT_TRUE(dialog.isVisible());
}

class TheAccountDialog : public CustomerDialogs {
 protected:
  TheAccountDialog() {
    services.reference.AnswersWhatContains(
        "CORDOC", fakes::RowsOf("", {{{"CD_TBL_CD", "C"}, {"CD_TBL_DES", "Notice"}}}));
    form.Load();
    form.skip_next_type_change = true;
    form.mKvcboDocType.Code("C");
    Present(dialog);
  }

  void AccountsCome() {
    services.server.ReplyWith("CUSTOMERFORM", {{{"FORM_NBR", "1234"}, {"FORM_CK_DGT_NBR", "5"}},
                                               {{"FORM_NBR", "1235"}, {"FORM_CK_DGT_NBR", "6"}}});
    services.RunEvents();
    tests::Settle();
  }

  customers::ZEMLO_SelectCustFormInq form{services.services(), title, {}};
  desktop::AccountDialogView* view = new desktop::AccountDialogView(form);
  desktop::FormDialog dialog{form, view, nullptr};
};

TEST_F(TheAccountDialog, GoesFromTheNameToTheAccountByKeyboardAlone) {
  EXPECT_EQ(Focus(), "Find");
  UserTypes("acme");
  ASSERT_TRUE(ServerIsAsked(1));
  ServerFinds(2);
  UserPresses(Qt::Key_Return);
  ASSERT_TRUE(ServerIsAsked(2));
  AccountsCome();
  EXPECT_EQ(Focus(), "Account List");
  UserPresses(Qt::Key_Return);
  EXPECT_TRUE(dialog.isVisible()) << "no account is selected";
  UserPresses(Qt::Key_Down);
  UserPresses(Qt::Key_Down);
  UserPresses(Qt::Key_Return);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_FALSE(form.cancelled);
  EXPECT_EQ(form.DocumentNumber(), "0001235-6");
}

// The rest of a name went into the list of accounts.
TEST_F(TheAccountDialog, LeavesTheKeyboardToWhoeverTypesOn) {
  UserTypes("acme");
  ASSERT_TRUE(ServerIsAsked(1));
  ServerFinds(2);
  UserPresses(Qt::Key_Return);
  ASSERT_TRUE(ServerIsAsked(2));
  UserTypes("x");
  AccountsCome();
  EXPECT_EQ(Focus(), "Find");
  form.mSdgGrid.SortBy("FORM_NBR");
  EXPECT_EQ(Focus(), "Find");
}

TEST_F(TheAccountDialog, IsCancelledByEscape) {
  UserPresses(Qt::Key_Escape);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_TRUE(form.cancelled);
}

}  // namespace
