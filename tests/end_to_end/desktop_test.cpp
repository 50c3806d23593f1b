#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <algorithm>

#include "apps/corresp/desktop.h"
#include "tests/desktop/window_driver.h"
#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

/// The window as a user without a mouse has it: keys go to whatever has the keyboard.
class DesktopByKeyboard : public PreparedOffice {
 protected:
  DesktopByKeyboard() {
    desktop_.Open();
    desktop_.window().activateWindow();
    WaitForKeyboard(desktop_.window());
    // "Ready" comes with the window; commands are taken once the first reply has been handled.
    EXPECT_TRUE(WaitFor([this] { return Status() == "Ready" && !desktop_.office().HasWorkUnderWay(); }));
  }

  static QWidget& Focus() {
    EXPECT_TRUE(WaitFor([] { return QApplication::focusWidget() != nullptr; })) << "nothing has the keyboard";
    auto* focus = QApplication::focusWidget();
    return focus != nullptr ? *focus : *QApplication::topLevelWidgets().front();
  }
  static std::string FocusName() { return Focus().accessibleName().toStdString(); }
  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&Focus(), key, modifiers);
    Settle();
  }
  static void Type(const char* text) {
    for (const char* character = text; *character != '\0'; ++character) QTest::keyClick(&Focus(), *character);
    Settle();
  }
  static void TabTo(const std::string& name) {
    for (int stop = 0; stop < 60 && FocusName() != name; ++stop) Press(Qt::Key_Tab);
    ASSERT_EQ(FocusName(), name);
  }
  /// Types what a caller says into the dialog, and chooses the only customer that it finds.
  static void Find(QWidget& dialog, const char* text, const std::string& id) {
    EXPECT_TRUE(WaitFor([] { return FocusName() == "Find"; }));
    Type(text);
    Press(Qt::Key_Return);
    EXPECT_TRUE(WaitFor([&] { return Says(dialog, "Chosen: " + id); }));
  }
  static bool IsOffered(QWidget& dialog, const QString& command) {
    return std::ranges::any_of(dialog.findChildren<QPushButton*>(), [&](const QPushButton* button) {
      return button->isEnabled() && button->accessibleName() == command;
    });
  }
  static void PressUntilClosed(QWidget& dialog, Qt::Key key,
                               Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    Press(key, modifiers);
    EXPECT_TRUE(WaitFor([&] { return !dialog.isVisible(); }))
        << dialog.windowTitle().toStdString() << " stays; the keyboard is at " << FocusName();
  }
  /// Opens the dialog, finds the customer by id, and chooses it.
  void ChooseCustomer(const char* id) {
    TabTo("Select Customer");
    OnNextModal([id](QWidget& dialog) {
      Find(dialog, id, id);
      PressUntilClosed(dialog, Qt::Key_Return);
    });
    Press(Qt::Key_Space);
  }
  /// The preview, once it has the keyboard; null where none comes.
  static QWidget* Preview() {
    const auto has_keyboard = [] {
      const auto* modal = QApplication::activeModalWidget();
      const auto* focus = QApplication::focusWidget();
      return modal != nullptr && focus != nullptr && focus->window() == modal;
    };
    return WaitFor(has_keyboard) ? QApplication::activeModalWidget() : nullptr;
  }
  /// Prints from the preview; the question how is answered with Enter.
  static void PrintByKey() {
    OnNextModal([](QWidget& question) {
      EXPECT_EQ(question.windowTitle(), QStringLiteral("Print Letter"));
      PressUntilClosed(question, Qt::Key_Return);
    });
    Press(Qt::Key_P, Qt::ControlModifier);
  }
  /// What the status bar says, as a screen reader finds it.
  std::string Status() {
    for (const auto* label : desktop_.window().findChildren<QLabel*>())
      if (label->accessibleName() == QStringLiteral("Status")) return label->text().toStdString();
    return "";
  }
  bool Says(const std::string& text) { return Says(desktop_.window(), text); }
  static bool Says(const QWidget& window, const std::string& text) {
    for (const auto* label : window.findChildren<QLabel*>()) {
      if (label->isVisible() && label->text().contains(QString::fromStdString(text))) return true;
    }
    return false;
  }

  apps::Desktop desktop_{host::DataFolder(data_.path())};
};

TEST_F(DesktopByKeyboard, ALetterIsMadeFromTheFirstKeyToThePrintedPage) {
  ChooseCustomer("100001");
  EXPECT_TRUE(Says("100001"));

  Press(Qt::Key_N, Qt::AltModifier);
  ASSERT_EQ(FocusName(), "Correspondence Names");
  Type("Registration C");
  Press(Qt::Key_Tab);
  ASSERT_EQ(FocusName(), "Create Letter") << "what the letter type enables is the next stop";
  Press(Qt::Key_Space);

  auto* preview = Preview();
  ASSERT_NE(preview, nullptr) << Status();
  PrintByKey();
  ASSERT_TRUE(WaitFor([this] { return Printed().size() == 1; }));
  const auto text = PdfText(Printed().front());
  EXPECT_THAT(text, HasSubstr("Your motor fuel tax registration is confirmed"));
  EXPECT_THAT(text, HasSubstr("100001"));
  EXPECT_TRUE(WaitFor([this] { return !History("SEQ_NBR").empty(); }));
  EXPECT_EQ(History("LTR_TYP_ID || CUST_ID"), "101100001\n");

  if (QApplication::activeModalWidget() != nullptr) Press(Qt::Key_Escape);
  EXPECT_TRUE(WaitFor([] { return QApplication::activeModalWidget() == nullptr; }));
  EXPECT_TRUE(Says(Printed().front().filename().string())) << "where the letter went";

  // Looked at once more from the list, which stays as it was.
  auto& office = desktop_.office();
  auto& page = office.workspace().pages().tracking;
  Press(Qt::Key_S, Qt::AltModifier);
  office.workspace().FillCustomerField(*office.FindCustomer("100001"), workspace::PageIndex::kTracking);
  page.OptLetterStatus[workspace::TrackingPage::kAll].UserClicks();
  page.search.UserClicks();
  ASSERT_TRUE(WaitFor(
      [&] { return page.sdgGrid.enabled() && page.sdgGrid.rows() && !page.sdgGrid.rows()->IsEmpty(); }));
  TabTo("Letters found");
  Press(Qt::Key_Space);
  ASSERT_THAT(page.sdgGrid.selected_rows(), SizeIs(1));
  EXPECT_TRUE(WaitFor([&] { return !office.HasWorkUnderWay(); }));
  page.OptLetter[workspace::TrackingPage::kViewLetter].UserClicks();
  ASSERT_NE(Preview(), nullptr) << Status();
  Press(Qt::Key_Escape);
  EXPECT_TRUE(WaitFor([] { return QApplication::activeModalWidget() == nullptr; }));
  EXPECT_THAT(page.sdgGrid.selected_rows(), SizeIs(1));
  EXPECT_EQ(FocusName(), "Letters found");
}

TEST_F(DesktopByKeyboard, AnAccountIsPickedByItsCustomersNameAndOfferedAgainByItself) {
  TabTo("Select Account");
  OnNextModal([](QWidget& dialog) {
    EXPECT_TRUE(WaitFor([] { return FocusName() == "Find"; }));
    Type("hat merr");
    EXPECT_TRUE(WaitFor([&] { return Says(dialog, "customer matches."); })) << "while one types";
    Press(Qt::Key_Return);
    EXPECT_TRUE(WaitFor([] { return FocusName() == "Account List"; }));
    EXPECT_TRUE(Says(dialog, "Displaying Tax Liability Assessments for Hattie Merriweather"));
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_TRUE(WaitFor([&] { return !dialog.isVisible(); }))
        << dialog.windowTitle().toStdString() << " stays; the keyboard is at " << FocusName();
  });
  Press(Qt::Key_Space);
  auto& page = desktop_.office().workspace().pages().correspondence;
  EXPECT_EQ(page.panel.customer_id.caption(), "100002");
  EXPECT_EQ(page.ZEMLO_FormTypeCodes.Code(), "C");
  EXPECT_EQ(page.txtFormNum.text(), "3100008-2");

  page.OptOnline[workspace::CorrespondencePage::kClear].UserClicks();
  TabTo("Select Customer");
  OnNextModal([](QWidget& dialog) {
    EXPECT_TRUE(WaitFor([] { return FocusName() == "Find"; }));
    EXPECT_TRUE(WaitFor([&] { return Says(dialog, "The customers you chose last."); }));
    Press(Qt::Key_Down);
    Press(Qt::Key_Return);
    EXPECT_TRUE(WaitFor([&] { return Says(dialog, "Chosen: 100002"); }));
    Press(Qt::Key_Return);
    EXPECT_TRUE(WaitFor([&] { return !dialog.isVisible(); }))
        << dialog.windowTitle().toStdString() << " stays; the keyboard is at " << FocusName();
  });
  Press(Qt::Key_Space);
  EXPECT_EQ(page.panel.customer_id.caption(), "100002");
}

TEST_F(DesktopByKeyboard, AWrongZipIsCorrectedAsTheStreetFileSuggests) {
  TabTo("Select Customer");
  OnNextModal([](QWidget& dialog) {
    Find(dialog, "hat merr", "100002");
    bool is_saved = false;
    OnNextModal([&is_saved](QWidget& maintenance) {
      TabTo("Mailing zip");
      Type("89241");
      OnNextModal([](QWidget& box) {
        EXPECT_TRUE(Says(box, "The suggested address is displayed."));
        PressUntilClosed(box, Qt::Key_Return);
      });
      Press(Qt::Key_V, Qt::AltModifier);
      EXPECT_TRUE(WaitFor([] { return FocusName() == "Mailing: accept Finalist"; }));
      Press(Qt::Key_Space);
      PressUntilClosed(maintenance, Qt::Key_Return);
      is_saved = true;
    });
    Press(Qt::Key_E, Qt::AltModifier);
    EXPECT_TRUE(WaitFor([&] { return is_saved && IsOffered(dialog, "OK"); })) << "what was saved is chosen";
    EXPECT_TRUE(Says(dialog, "Chosen: 100002"));
    PressUntilClosed(dialog, Qt::Key_Return);
  });
  Press(Qt::Key_Space);
  EXPECT_TRUE(Says("77 ORCHARD RD"));
  EXPECT_TRUE(Says("89214-"));
  EXPECT_EQ(ServerSql("SELECT MAIL_ADDR_1, RES_ADDR_1, substr(MAIL_ZIP_CD, 1, 5) FROM customer"
                      " WHERE CUST_ID = '100002'"),
            "77 ORCHARD RD|77 Orchard Rd|89214\n");
  EXPECT_EQ(ServerSql("SELECT COL_NM, OLD_TXT FROM customer_change WHERE CUST_ID = '100002'"),
            "MAIL_ADDR_1|77 Orchard Rd\nMAIL_CITY|Oakhaven\nMAIL_ZIP_CD|89214\n");
}

TEST_F(DesktopByKeyboard, ANewCustomerIsAddedFromWhatWasTyped) {
  TabTo("Select Customer");
  OnNextModal([](QWidget& dialog) {
    EXPECT_TRUE(WaitFor([] { return FocusName() == "Find"; }));
    Type("Zelda Quickwater");
    bool is_saved = false;
    const std::function<void(QWidget&)> enter = [&](QWidget& maintenance) {
      if (&maintenance == &dialog) return OnNextModal(enter);  // for a moment, behind the question
      WaitForKeyboard(maintenance);
      for (const auto& [field, text] : {std::pair("Mailing address", "77 Orchard Rd"),
                                        {"Mailing city", "Oakhaven"},
                                        {"Mailing state", "KV"},
                                        {"Mailing zip", "89214"}}) {
        TabTo(field);
        Type(text);
      }
      TabTo("Same as Mailing");
      Press(Qt::Key_Space);
      TabTo("Verify & Save");
      PressUntilClosed(maintenance, Qt::Key_Space);
      is_saved = true;
    };
    OnNextModal([&](QWidget& question) {
      EXPECT_TRUE(WaitFor([&] { return Focus().window() == &question; }));
      OnNextModal(enter);
      Press(Qt::Key_N, Qt::AltModifier);
    });
    Press(Qt::Key_W, Qt::AltModifier);
    EXPECT_TRUE(WaitFor([&] { return is_saved && IsOffered(dialog, "OK"); })) << "who was saved is chosen";
    PressUntilClosed(dialog, Qt::Key_Return);
  });
  Press(Qt::Key_Space);
  EXPECT_TRUE(Says("77 ORCHARD RD"));
  EXPECT_EQ(ServerSql("SELECT FIRST_NM, LAST_NM, MAIL_CITY, CUST_BSNS_NM IS NULL FROM customer"
                      " WHERE CUST_ID = (SELECT MAX(CUST_ID) FROM customer)"),
            "Zelda|Quickwater|OAKHAVEN|1\n");
}

}  // namespace
}  // namespace tests
