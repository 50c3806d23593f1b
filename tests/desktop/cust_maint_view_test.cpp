#include "desktop/forms/cust_maint_view.h"

#include <gmock/gmock.h>

#include <QClipboard>

#include "desktop/binders/invalid_mark.h"
#include "desktop/shell/form_dialog.h"
#include "tests/desktop/window_driver.h"
#include "tests/fakes/fake_services.h"

namespace {

class MaintainingACustomer : public testing::Test {
 protected:
  MaintainingACustomer() {
    outside.utilities.control_keys = U"\b' -";
    outside.reference.AnswersWhatContains(
        "FLS_CODE", fakes::RowsOf("", {{{"CD_TBL_CD", ""}, {"CD_TBL_DES", ""}},
                                       {{"CD_TBL_CD", "KV"}, {"CD_TBL_DES", "KV - Korvada"}}}));
  }
  void Open(const char* type) {
    form.SetCustomerType(type);
    form.SetCustomerType();
    form.SetCustomerMode("ADD");
    view = new desktop::CustMaintView(form);
    dialog = std::make_unique<desktop::FormDialog>(form, view, nullptr);
    dialog->Present();
    dialog->activateWindow();
    tests::WaitForKeyboard(*dialog);
    tests::Settle();
  }
  void UserTypes(const char* text) {
    tests::Settle();
    QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text));
  }
  void UserPresses(Qt::Key key, Qt::KeyboardModifiers held = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, held);
    tests::Settle();
  }
  std::string Focus() { return QApplication::focusWidget()->accessibleName().toStdString(); }
  /// Types each text into a field and goes on to the next one.
  void UserFillsIn(std::initializer_list<const char*> texts) {
    for (const auto* text : texts) {
      UserTypes(text);
      UserPresses(Qt::Key_Tab);
    }
  }
  QWidget& Named(const char* name) {
    for (auto* widget : view->findChildren<QWidget*>()) {
      if (widget->accessibleName() == QLatin1String(name) && !qobject_cast<QLabel*>(widget)) return *widget;
    }
    throw std::runtime_error(std::string("no widget ") + name);
  }
  std::vector<std::string> Sent() { return outside.server.LastRequest().FindRecord("Customer").Assigned(); }

  fakes::FakeServices outside;
  customers::ZEMLO_CustMaint form{outside.services(), "Letters"};
  desktop::CustMaintView* view = nullptr;
  std::unique_ptr<desktop::FormDialog> dialog;
};

TEST_F(MaintainingACustomer, IsDoneWithTheKeyboardAlone) {
  Open("I");
  EXPECT_EQ(Focus(), "First Name");
  UserFillsIn({"Hattie", "", "Merriweather", "", "405 521 2485", "", "77 Orchard Rd", "", "oakhaven", "kv"});
  EXPECT_EQ(Focus(), "Mailing zip");
  EXPECT_EQ(form.mPhone.text(), "(405) 521-2485");
  EXPECT_EQ(form.mTxtCust[8].text(), "OAKHAVEN");
  EXPECT_EQ(form.State(customers::kMailingSide), "KV");
  UserTypes("89214");
  UserPresses(Qt::Key_G, Qt::AltModifier);  // "Same as Mailing"
  EXPECT_TRUE(tests::WaitFor([&] { return !form.mTxtCust[13].text().empty(); }))
      << "a pressed button takes time";
  EXPECT_EQ(form.mTxtCust[12].text(), "OAKHAVEN");
  UserPresses(Qt::Key_V, Qt::AltModifier);  // "Verify & Save"
  ASSERT_TRUE(tests::WaitFor([&] { return outside.server.requests.size() == 1; }));
  EXPECT_THAT(Sent(),
              testing::IsSupersetOf({"ACTION=ADDF", "FIRST_NM=Hattie", "MAIL_ST=KV", "RES_ZIP_CD=89214"}));

  outside.server.ReplyWith(
      "Customer", {{{"FINALIST_IND", 1}, {"MAIL_ADDR_1", "7 ORCHARD RD"}, {"MAIL_CITY", "OAKHAVEN"}}});
  outside.RunEvents();
  tests::Settle();
  auto& suggested = Named("Suggested mailing address");
  EXPECT_EQ(suggested.accessibleDescription(), QStringLiteral("Differs from the address entered."));
  QTest::keyClicks(&suggested, QStringLiteral("7"));
  EXPECT_EQ(form.mTxtCust[14].text(), "7 ORCHARD RD") << "nobody has verified what is typed here";
  EXPECT_EQ(Named("Suggested mailing city").accessibleDescription(), QString());
  // Without a window system a list that was open keeps the window from being the active one.
  QTest::keyClick(&Named("Mailing: accept Finalist"), Qt::Key_Space);
  EXPECT_TRUE(form.mChkAccept[0].ticked());
  UserPresses(Qt::Key_V, Qt::AltModifier);  // it is called "Save" now
  ASSERT_TRUE(tests::WaitFor([&] { return outside.server.requests.size() == 2; }));
  EXPECT_THAT(Sent(), testing::IsSupersetOf({"ACTION=ADD", "MAIL_ADDR_1=7 ORCHARD RD"}));
  outside.server.ReplyWith("Customer", {{{"CUST_ID", "100777"}, {"FINALIST_IND", 0}}});
  outside.RunEvents();
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(form.CustID, "100777");
}

TEST_F(MaintainingACustomer, SelectsTheWholeTextOfAFieldThatIsEntered) {
  Open("B");
  EXPECT_EQ(Focus(), "Business Name");
  UserTypes("ACME");
  UserPresses(Qt::Key_Tab);
  EXPECT_EQ(Focus(), "Contact Name");
  UserPresses(Qt::Key_Backtab, Qt::ShiftModifier);
  UserTypes("B");
  EXPECT_EQ(form.mTxtCust[4].text(), "B");
}

TEST_F(MaintainingACustomer, CopiesNoAddressOnEnter) {
  Open("B");
  for (const std::size_t field : {10, 12}) form.mTxtCust[field].SetText("MILLRACE");
  form.mTxtCust[13].SetText("89033");
  form.mCboState[1].Code("KV");
  ASSERT_TRUE(form.mCmdOption[customers::option_number::kSameAsResident].enabled());
  UserPresses(Qt::Key_Return);  // the save is disabled yet
  EXPECT_EQ(form.mTxtCust[8].text(), "");
}

TEST_F(MaintainingACustomer, SaysWhyAFieldIsWrong) {
  Open("B");
  UserTypes("A");
  auto* name = QApplication::focusWidget();
  EXPECT_TRUE(desktop::InvalidMark::IsOn(*name));
  EXPECT_EQ(name->toolTip(),
            QStringLiteral("A business name has at least two characters, with \"%\" in it three."));
  EXPECT_EQ(name->accessibleDescription(), name->toolTip());
  UserPresses(Qt::Key_Backspace);
  EXPECT_EQ(name->toolTip(), QStringLiteral("Business name is a required field."));
  UserTypes("ACME");
  EXPECT_FALSE(desktop::InvalidMark::IsOn(*name));
  EXPECT_EQ(name->toolTip(), QString());
}

TEST_F(MaintainingACustomer, TakesOnlyWhatAFieldIsMadeFor) {
  Open("I");
  UserTypes("Ann1");
  EXPECT_EQ(form.mTxtCust[0].text(), "Ann");
  outside.utilities.no_names = {"Ann2"};
  QApplication::clipboard()->setText(QStringLiteral("Ann 2"));
  UserPresses(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(form.mTxtCust[0].text(), "Ann");
  QApplication::clipboard()->setText(QStringLiteral("12 Main\r\nSt\a\n"));
  Named("Mailing address").setFocus();
  tests::Settle();
  UserPresses(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(form.mTxtCust[6].text(), "12 Main St");
}

TEST_F(MaintainingACustomer, AsksBeforeEscapeLosesChanges) {
  Open("B");
  UserTypes("ACME");
  outside.host.answers = {platform::MessageAnswer::kCancel, platform::MessageAnswer::kNo};
  UserPresses(Qt::Key_Escape);
  EXPECT_TRUE(dialog->isVisible());
  UserPresses(Qt::Key_Escape);
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(outside.host.messages.size(), 2u);
}

}  // namespace
