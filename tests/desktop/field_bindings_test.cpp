#include <gmock/gmock.h>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/binders/command_binding.h"
#include "desktop/binders/date_field_edit.h"
#include "desktop/binders/invalid_mark.h"
#include "desktop/binders/text_field_binding.h"
#include "tests/desktop/window_driver.h"

namespace {

using platform::ParseDate;

std::optional<char32_t> DigitsOnly(char32_t key) {
  return key >= U'0' && key <= U'9' ? std::optional(key) : std::nullopt;
}
std::optional<char32_t> InCapitals(char32_t key) {
  return key >= U'a' && key <= U'z' ? key - U'a' + U'A' : key;
}

struct Typing {
  const char* what;
  const char* before;
  std::size_t max_length;
  std::optional<char32_t> (*filter)(char32_t);
  const char* typed;
  const char* after;

  friend void PrintTo(const Typing& typing, std::ostream* os) { *os << typing.what; }
};

class TypingInATextField : public testing::TestWithParam<Typing> {};

TEST_P(TypingInATextField, ReachesTheControlAsTheFieldAllows) {
  platform::TextField field;
  field.SetText(GetParam().before);
  field.max_length = GetParam().max_length;
  if (GetParam().filter != nullptr) field.key_filter = GetParam().filter;
  QLineEdit edit;
  desktop::Bind(field, edit);

  edit.setCursorPosition(static_cast<int>(edit.text().size()));
  QTest::keyClicks(&edit, QString::fromUtf8(GetParam().typed));

  EXPECT_EQ(field.text(), GetParam().after) << GetParam().what;
  EXPECT_EQ(edit.text().toStdString(), GetParam().after) << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(Cases, TypingInATextField,
                         testing::Values(Typing{"plain", "12", 0, nullptr, "34", "1234"},
                                         Typing{"limit", "12", 3, nullptr, "345", "123"},
                                         Typing{"code set more than the limit", "12345", 3, nullptr, "6",
                                                "12345"},
                                         Typing{"refused keys", "", 0, DigitsOnly, "1a2-3", "123"},
                                         Typing{"changed keys", "", 0, InCapitals, "a1b", "A1B"},
                                         Typing{"filter and limit", "", 2, DigitsOnly, "1x23", "12"}));

TEST(ATextField, CutsWhatIsPastedBeyondItsLimitWhereItWasPasted) {
  platform::TextField field;
  field.SetText("AD");
  field.max_length = 4;
  QLineEdit edit;
  desktop::Bind(field, edit);

  edit.setCursorPosition(1);
  edit.insert(QStringLiteral("BCxyz"));

  EXPECT_EQ(field.text(), "ABCD");
}

TEST(ATextField, IsPutBackByAnObserverWithoutAnEcho) {
  platform::TextField field;
  int told = 0;
  const auto guard = field.Changed.Connect([&] {
    ++told;
    field.SetText("as before");
  });
  QLineEdit edit;
  desktop::Bind(field, edit);

  edit.insert(QStringLiteral("x"));

  EXPECT_EQ(edit.text(), QStringLiteral("as before"));
  EXPECT_EQ(told, 2);  // the user's text, and the one put back
}

class PastingIntoATextField : public testing::Test {
 protected:
  PastingIntoATextField() {
    desktop::Bind(field, edit);
    edit.setText(QStringLiteral("old"));
    connections.push_back(field.KeyDown.Connect([this](const platform::Key& key) {
      told.push_back(key == platform::Key::Paste() ? "paste key" : "key");
    }));
    connections.push_back(field.KeyUp.Connect([this](const platform::Key&) { told.push_back("key up"); }));
    connections.push_back(field.MouseDown.Connect([this] { told.push_back("mouse"); }));
    connections.push_back(field.MouseUp.Connect([this] { told.push_back("mouse up"); }));
    connections.push_back(field.Changed.Connect([this] { told.push_back("text " + field.text()); }));
    QApplication::clipboard()->setText(QStringLiteral("new"));
    edit.selectAll();
  }
  QMenu* UserOpensMenu() {
    QContextMenuEvent event(QContextMenuEvent::Mouse, {2, 2}, edit.mapToGlobal(QPoint(2, 2)));
    QApplication::sendEvent(&edit, &event);
    return edit.findChild<QMenu*>();
  }
  static void UserChooses(QMenu& menu, const QString& beginning) {
    for (auto* action : menu.actions()) {
      if (action->text().startsWith(beginning)) action->trigger();
    }
    menu.close();
  }

  platform::TextField field;
  QLineEdit edit;
  const tests::ShownWindow shown{edit};
  std::vector<std::string> told;
  std::vector<platform::Connection> connections;
};

TEST_F(PastingIntoATextField, IsToldAsTheSameKeyWhicheverKeysPasteHere) {
  for (const auto& [key, modifier] :
       {std::pair(Qt::Key_Insert, Qt::ShiftModifier), std::pair(Qt::Key_V, Qt::ControlModifier)}) {
    edit.setText(QStringLiteral("old"));
    edit.selectAll();
    told.clear();
    QTest::keyClick(&edit, key, modifier);
    EXPECT_THAT(told, testing::ElementsAre("key", "paste key", "text new", "key up", "key up"))
        << key << " after its modifier";
  }
}

TEST_F(PastingIntoATextField, FallsBetweenPressAndReleaseOfTheMouse) {
  auto* menu = UserOpensMenu();
  ASSERT_NE(menu, nullptr);
  EXPECT_THAT(told, testing::ElementsAre("mouse up")) << "a menu that is left again leaves nothing behind";
  told.clear();
  UserChooses(*menu, QStringLiteral("&Paste"));
  EXPECT_THAT(told, testing::ElementsAre("mouse", "text new", "mouse up"));

  edit.selectAll();
  told.clear();
  UserChooses(*UserOpensMenu(), QStringLiteral("Cu&t"));
  EXPECT_THAT(told, testing::ElementsAre("mouse up", "text ")) << "cutting is no pasting";
}

TEST_F(PastingIntoATextField, WithTheMiddleButtonIsTheMousesToo) {
  if (!QApplication::clipboard()->supportsSelection()) GTEST_SKIP() << "this platform has no selection";
  QApplication::clipboard()->setText(QStringLiteral("mid"), QClipboard::Selection);
  edit.clear();
  told.clear();
  QTest::mouseClick(&edit, Qt::MiddleButton);
  tests::Settle();
  EXPECT_THAT(told, testing::ElementsAre("mouse", "text mid", "mouse up"));
}

TEST(ATextField, FiltersWhatAnInputMethodPutsIn) {
  platform::TextField field;
  field.key_filter = DigitsOnly;
  QLineEdit edit;
  desktop::Bind(field, edit);
  QInputMethodEvent composed;
  composed.setCommitString(QString::fromUtf8("1\xC3\xA9 2"));
  QApplication::sendEvent(&edit, &composed);
  EXPECT_EQ(field.text(), "12");
}

TEST(AWidget, FollowsItsControl) {
  QWidget window;
  auto* layout = new QVBoxLayout(&window);
  platform::TextField field;
  auto* edit = new QLineEdit;
  desktop::Bind(field, *edit);
  EXPECT_FALSE(edit->isVisible()) << "binding opens no window";
  layout->addWidget(edit);
  window.show();

  field.SetText("from code");
  field.SetEnabled(false);
  field.SetMarkedInvalid(true);
  EXPECT_EQ(edit->text(), QStringLiteral("from code"));
  EXPECT_FALSE(edit->isEnabled());
  EXPECT_TRUE(desktop::InvalidMark::IsOn(*edit));
  EXPECT_FALSE(edit->accessibleDescription().isEmpty());

  field.SetVisible(false);
  field.SetMarkedInvalid(false);
  EXPECT_FALSE(edit->isVisible());
  EXPECT_FALSE(desktop::InvalidMark::IsOn(*edit));
  EXPECT_TRUE(edit->accessibleDescription().isEmpty());
  field.SetVisible(true);
  EXPECT_TRUE(edit->isVisible());
}

TEST(AFrame, DisablesWhatStandsInItWithoutTouchingItsState) {
  platform::Frame frame("Letter Action");
  platform::Command command("&Search");
  QGroupBox box;
  auto* button = new QPushButton(&box);
  desktop::Bind(frame, box);
  desktop::Bind(command, *button);

  frame.SetEnabled(false);
  EXPECT_FALSE(button->isEnabled());
  EXPECT_TRUE(command.enabled());
  frame.SetEnabled(true);
  EXPECT_TRUE(button->isEnabled());
}

TEST(AButton, CompletesTheFieldTheUserWasInBeforeItActs) {
  QWidget window;
  auto* layout = new QVBoxLayout(&window);
  auto* edit = new QLineEdit;
  auto* button = new QPushButton;
  layout->addWidget(edit);
  layout->addWidget(button);
  std::vector<std::string> order;
  QObject::connect(edit, &QLineEdit::editingFinished, [&] { order.push_back("field left"); });
  platform::Command command("&Search");
  const auto clicked = command.Click.Connect([&] { order.push_back("clicked"); });
  desktop::Bind(command, *button);
  const tests::ShownWindow shown(window);
  edit->setFocus();
  QTest::keyClicks(edit, QStringLiteral("x"));

  button->click();

  EXPECT_THAT(order, testing::ElementsAre("field left", "clicked"));
}

TEST(Captions, ShowAmpersandsAndAreReadWithoutMnemonics) {
  platform::Label label("Meadow && Sons R&D");
  platform::Command command("&Search && Go \xC3\xA9");
  QLabel shown;
  QPushButton button;
  desktop::Bind(label, shown, QStringLiteral("Name"));
  desktop::Bind(command, button);

  EXPECT_EQ(shown.text(), QStringLiteral("Meadow & Sons R&D"));
  EXPECT_EQ(shown.accessibleName(), QStringLiteral("Name Meadow & Sons R&D"));
  EXPECT_EQ(button.accessibleName(), QString::fromUtf8("Search & Go \xC3\xA9"));
}

class ADateField : public testing::Test {
 protected:
  ADateField() {
    field.SetEarliest(*ParseDate("1993-01-01"));
    desktop::Bind(field, edit);
  }
  platform::DateField field;
  desktop::DateFieldEdit edit;
};

TEST_F(ADateField, IsEmptyUntilItsBoxIsTickedAndAgainAfterwards) {
  EXPECT_TRUE(field.IsEmpty());
  EXPECT_EQ(edit.edit().text().trimmed(), QString());

  edit.box().click();
  EXPECT_FALSE(field.IsEmpty());
  edit.edit().setDate(QDate(2024, 2, 29));
  EXPECT_EQ(field.value(), ParseDate("2024-02-29"));

  edit.box().click();
  EXPECT_TRUE(field.IsEmpty());
  edit.box().click();
  EXPECT_EQ(field.value(), ParseDate("2024-02-29")) << "the day is offered again";
}

TEST_F(ADateField, TakesADayThatIsTypedOverTheOneThatWasThere) {
  field.SetValue(ParseDate("2026-11-23"));
  auto& day = edit.edit();
  edit.show();
  auto& text = *day.findChild<QLineEdit*>();

  QTest::mouseClick(&text, Qt::LeftButton, {}, QPoint(3, text.height() / 2));
  QTest::keyClicks(&day, "02/28/2025");
  EXPECT_EQ(field.value(), ParseDate("2025-02-28"));
  QTest::keyClick(&day, Qt::Key_Home);
  QTest::keyClicks(&day, "1/5/2025");
  EXPECT_EQ(field.value(), ParseDate("2025-01-05"));
  QTest::keyClick(&day, Qt::Key_Home);
  QTest::keyClicks(&day, "12312024");
  EXPECT_EQ(field.value(), ParseDate("2024-12-31"));
  QTest::keyClick(&day, Qt::Key_Home);
  QTest::keyClick(&day, Qt::Key_Up);
  EXPECT_EQ(field.value(), ParseDate("2024-12-31")) << "there is no thirteenth month";
  QTest::keyClick(&day, Qt::Key_End);
  QTest::keyClicks(&day, "2023");
  EXPECT_EQ(field.value(), ParseDate("2023-12-31"));
}

// After Ctrl+A, "01/01/2020" gave 11/01/2020; after Ctrl+A and Backspace no digit was taken at all.
TEST_F(ADateField, TakesADayThatIsTypedWhateverWasSelected) {
  const auto press = [](int key, Qt::KeyboardModifiers modifiers = {}) {
    return [key, modifiers](QDateEdit& day, QLineEdit&) {
      if (key != Qt::Key_A) QTest::keyClick(&day, Qt::Key_A, Qt::ControlModifier);
      QTest::keyClick(&day, static_cast<Qt::Key>(key), modifiers);
    };
  };
  const auto all = press(Qt::Key_A, Qt::ControlModifier);
  struct Case {
    const char* name;
    std::function<void(QDateEdit& day, QLineEdit& text)> selects;
    const char* typed;
    const char* day = "2020-01-01";
  };
  for (const auto& [name, selects, typed, wanted] : std::initializer_list<Case>{
           {"all", all, "01/01/2020"},
           {"all, without slashes", all, "01012020"},
           {"all, erased", press(Qt::Key_Backspace), "01/01/2020"},
           {"all, cut", press(Qt::Key_X, Qt::ControlModifier), "01/01/2020"},
           {"by a double click",
            [](auto&, QLineEdit& text) {
              QTest::mouseDClick(&text, Qt::LeftButton, {}, QPoint(3, text.height() / 2));
            },
            "01/01/2020"},
           {"half of the month", [](auto&, QLineEdit& text) { text.setSelection(0, 1); }, "01/01/2020"},
           {"day and year", [](auto&, QLineEdit& text) { text.setSelection(3, 7); }, "01/2020", "2020-11-01"},
           {"nothing, the cursor in the day", [](auto&, QLineEdit& text) { text.setCursorPosition(4); },
            "012020", "2020-11-01"},
           {"the day", [](auto&, QLineEdit& text) { text.setSelection(3, 2); }, "03/04/2021", "2021-03-04"},
           {"the year, short", [](auto&, QLineEdit& text) { text.setSelection(6, 4); }, "2/9/2024",
            "2024-02-09"},
           {"the day, for a day only a leap year has",
            [](auto&, QLineEdit& text) { text.setSelection(3, 2); }, "02/29/2024", "2024-02-29"},
           {"all, with a key too many", all, "01/01/20201"},
       }) {
    SCOPED_TRACE(name);
    desktop::DateFieldEdit fresh;
    desktop::Bind(field, fresh);
    fresh.show();
    field.SetValue(ParseDate("2023-11-30"));
    auto& text = *fresh.edit().findChild<QLineEdit*>();
    for (const auto* time : {"at first", "over a typed one"}) {
      selects(fresh.edit(), text);
      QTest::keyClicks(&fresh.edit(), QString::fromUtf8(typed));
      EXPECT_EQ(field.value(), ParseDate(wanted)) << time << ": " << text.text().toStdString();
      QTest::keyClick(&fresh.edit(), Qt::Key_Home);
      QTest::keyClicks(&fresh.edit(), QStringLiteral("11302023"));
      QTest::keyClick(&fresh.edit(), Qt::Key_Left);
    }
  }
}

TEST_F(ADateField, IsEmptyWhenItsDayIsErased) {
  auto& day = edit.edit();
  edit.show();
  field.SetValue(ParseDate("2023-11-30"));
  QTest::keyClick(&day, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&day, Qt::Key_Backspace);
  EXPECT_TRUE(field.IsEmpty());
  QTest::keyClick(&day, Qt::Key_Return);
  EXPECT_FALSE(edit.box().isChecked());
  edit.box().click();
  EXPECT_EQ(field.value(), ParseDate("2023-11-30")) << "the day is offered again";
}

TEST_F(ADateField, ShowsWhatCodeSetsAndTellsItOnce) {
  int told = 0;
  const auto changed = field.Changed.Connect([&] { ++told; });

  field.SetValue(ParseDate("1990-05-05"));
  EXPECT_EQ(edit.date(), QDate(1993, 1, 1));
  field.SetValue({});
  EXPECT_EQ(edit.date(), std::nullopt);

  EXPECT_EQ(told, 2);
}

}  // namespace
