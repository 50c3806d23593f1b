#include <gmock/gmock.h>

#include <map>
#include <set>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QLabel>
#include <QRadioButton>
#include <QTabBar>

#include "desktop/binders/date_field_edit.h"
#include "desktop/pages/workspace_view.h"
#include "tests/desktop/sample_pages.h"
#include "tests/desktop/window_driver.h"
#include "tests/fakes/fake_view_settings.h"

namespace {

using workspace::PageIndex;

constexpr std::array kPages = {PageIndex::kCorrespondence, PageIndex::kTracking, PageIndex::kBatch};

class TheWorkspaceWindow : public testing::Test {
 protected:
  TheWorkspaceWindow() { view.resize(1268, 700); }

  QWidget& TurnTo(PageIndex page) {
    sample.pages.tabs.Select(page);
    tests::Settle();
    return *view.currentWidget();
  }
  /// Where Tab leads, from the first stop of the page on.
  std::vector<QWidget*> TabStops(QWidget& page) {
    std::vector<QWidget*> stops;
    for (auto* widget = page.nextInFocusChain(); widget != &page; widget = widget->nextInFocusChain()) {
      const bool stop = (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr &&
                        widget->isEnabled() && widget->isVisible();
      if (stop && page.isAncestorOf(widget)) stops.push_back(widget);
    }
    return stops;
  }

  tests::SamplePages sample;
  fakes::FakeViewSettings view_settings;
  desktop::WorkspaceView view{sample.pages, view_settings};
  tests::ShownWindow shown{view};
};

TEST_F(TheWorkspaceWindow, HasItsThreePagesAndTurnsThemBothWays) {
  ASSERT_EQ(view.count(), 3);
  EXPECT_EQ(view.tabText(1), QStringLiteral("&Search Letter (s)"));

  TurnTo(PageIndex::kBatch);
  EXPECT_EQ(view.currentIndex(), 2);
  QTest::keyClick(&view, Qt::Key_S, Qt::AltModifier);
  EXPECT_EQ(sample.pages.tabs.current(), PageIndex::kTracking);
}

TEST_F(TheWorkspaceWindow, NamesEveryStopOfTheKeyboardForThoseWhoListen) {
  for (const auto page : kPages) {
    for (auto* widget : TabStops(TurnTo(page))) {
      auto* interface = QAccessible::queryAccessibleInterface(widget);
      ASSERT_NE(interface, nullptr);
      EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty())
          << widget->metaObject()->className() << " on page " << int(page);
      EXPECT_FALSE(interface->text(QAccessible::Name).contains(QLatin1Char('&')));
    }
  }
}

TEST_F(TheWorkspaceWindow, IsWalkedThroughByTabAsItIsRead) {
  const std::map<PageIndex, std::string> expected = {
      {PageIndex::kCorrespondence,
       "Select Customer, Select Account, Correspondence Names, Form Type, Form Number, Create Letter, Clear, "
       "View Letter, Print Letter, Letters of the customer, "},
      {PageIndex::kTracking,
       "Select Customer, Select Account, Correspondence Names, Form Type, Form Number, Troop/District, "
       "Batch No., Use From, From, Use To, To, All, Successful, Failure, Search, Clear, View Letter, "
       "Save (To Hard Drive), Return Mail, Reprint (Local), Resubmit Letters, Reprint (Batch), Letters "
       "found, "},
      {PageIndex::kBatch,
       "Last Night, Date/Date Range, Use Start, Use End, All, Successful, Incomplete, Failure, Search, "
       "Clear, "
       "Print Certificate of Tax Liability, Print Tax Warrant, Resubmit Batch, Batch Details, "
       "Batch Statistics, Batch runs, "},
  };
  for (const auto& [page, names] : expected) {
    std::string walked;
    for (const auto* widget : TabStops(TurnTo(page))) walked += widget->accessibleName().toStdString() + ", ";
    EXPECT_EQ(walked, names);
  }
}

TEST_F(TheWorkspaceWindow, GivesEachMnemonicOnceOnAPage) {
  for (const auto page : kPages) {
    auto& shown_page = TurnTo(page);
    std::multiset<QString> keys;
    for (int tab = 0; tab < view.count(); ++tab) {
      keys.insert(QKeySequence::mnemonic(view.tabText(tab)).toString());
    }
    const auto add = [&](const QString& text) {
      const auto key = QKeySequence::mnemonic(text).toString();
      if (!key.isEmpty()) keys.insert(key);
    };
    for (const auto* label : shown_page.findChildren<QLabel*>()) {
      if (label->buddy() != nullptr) add(label->text());
    }
    for (const auto* button : shown_page.findChildren<QAbstractButton*>()) add(button->text());
    for (const auto& key : keys) EXPECT_EQ(keys.count(key), 1u) << key.toStdString() << " on " << int(page);
  }
}

TEST_F(TheWorkspaceWindow, BeginsInItsFirstFieldAndReachesTheCustomersByKey) {
  view.FocusFirstField();
  for (const auto page : {PageIndex::kCorrespondence, PageIndex::kTracking}) {
    TurnTo(PageIndex::kBatch);
    TurnTo(page);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), QStringLiteral("Correspondence Names"));
    int selections = 0;
    const auto selected =
        sample.pages.Letter(page).panel.select_customer.Click.Connect([&] { ++selections; });
    QTest::keyClick(&view, Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(tests::WaitFor([&] { return selections == 1; }));
  }
}

TEST_F(TheWorkspaceWindow, ReachesTheDaysOfASearchByTheirMnemonics) {
  view.setCurrentIndex(1);
  for (const auto& [key, name] : {std::pair(Qt::Key_R, "From"), std::pair(Qt::Key_O, "To")}) {
    QTest::keyClick(&view, key, Qt::AltModifier);
    EXPECT_THAT(QApplication::focusWidget()->accessibleName().toStdString(), testing::HasSubstr(name));
  }
}

TEST_F(TheWorkspaceWindow, HasTheKeyboardInTheListWhileLetterActionsAreHeldBack) {
  view.setCurrentIndex(1);
  auto& page = sample.pages.tracking;
  for (auto* option : view.currentWidget()->findChildren<QRadioButton*>())
    if (option->text() == QStringLiteral("Resubmit Letters")) option->setFocus();
  ASSERT_NE(qobject_cast<QRadioButton*>(QApplication::focusWidget()), nullptr);
  page.letter_action.SetEnabled(false);
  EXPECT_NE(qobject_cast<QAbstractItemView*>(QApplication::focusWidget()), nullptr);
}

TEST_F(TheWorkspaceWindow, CutsNoTextOff) {
  for (const auto page : kPages) {
    auto& shown_page = TurnTo(page);
    for (auto* label : shown_page.findChildren<QLabel*>()) {
      const int needed =
          label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
      EXPECT_GE(label->height(), needed) << label->text().toStdString();
      const int wide = label->wordWrap() ? 0 : label->sizeHint().width();
      EXPECT_GE(label->width(), wide) << label->text().toStdString();
    }
    for (auto* button : shown_page.findChildren<QAbstractButton*>()) {
      if (!button->isVisible() || button->text().isEmpty()) continue;
      EXPECT_GE(button->width(), button->minimumSizeHint().width()) << button->text().toStdString();
    }
  }
}

TEST_F(TheWorkspaceWindow, SearchesWhenEnterIsPressedInACriterion) {
  int searches = 0;
  const auto searched = sample.pages.tracking.search.Click.Connect([&] { ++searches; });
  auto& page = TurnTo(PageIndex::kTracking);
  const auto stops = TabStops(page);

  stops[4]->setFocus();  // the form number
  QTest::keyClick(stops[4], Qt::Key_Return);
  EXPECT_EQ(searches, 1);
  auto* day = page.findChild<QDateEdit*>();
  sample.pages.tracking.from_date.SetValue(platform::ParseDate("2024-03-01"));
  day->setFocus();
  QTest::keyClicks(day, QStringLiteral("02/28/2024"));
  QTest::keyClick(day, Qt::Key_Return);
  EXPECT_EQ(searches, 2);
  EXPECT_EQ(sample.pages.tracking.from_date.value(), platform::ParseDate("2024-02-28"));
  stops.back()->setFocus();  // the list of results
  QTest::keyClick(stops.back(), Qt::Key_Return);
  EXPECT_EQ(searches, 2);
}

/// The tracking page over a server that answers when the test says so.
class TheSearchPage : public TheWorkspaceWindow {
 protected:
  TheSearchPage() {
    for (auto* widget : TurnTo(PageIndex::kTracking).findChildren<QWidget*>()) {
      if (field == nullptr) field = dynamic_cast<desktop::DateFieldEdit*>(widget);  // no meta-object names it
    }
    searched = page.search.Click.Connect([this] { page.sdgGrid.SetEnabled(false); });
    page.txtBatch.SetText("7");
    field->setFocus();
  }
  void ServerFinds(std::size_t count) {
    std::vector<fakes::Row> letters(count);
    for (std::size_t letter = 0; letter < count; ++letter)
      letters[letter] = {{"SEQ_NBR", std::to_string(letter + 1)}};
    page.sdgGrid.Bind(fakes::RowsOf("CORRHIST", letters));
    ServerEnds();
  }
  void ServerEnds() {
    page.sdgGrid.SetEnabled(true);
    tests::Settle();
  }
  static std::string Focus() { return QApplication::focusWidget()->accessibleName().toStdString(); }

  workspace::TrackingPage& page = sample.pages.tracking;
  platform::Connection searched;
  desktop::DateFieldEdit* field = nullptr;  ///< "From"
};

TEST_F(TheSearchPage, GoesOnInTheLettersThatEnterInADayHasFound) {
  QTest::keyClick(&field->edit(), Qt::Key_Return);
  EXPECT_FALSE(page.sdgGrid.enabled());
  ServerFinds(1);
  EXPECT_EQ(Focus(), "Letters found");
  EXPECT_THAT(page.sdgGrid.selected_rows(), testing::ElementsAre(0u)) << "there is only one";

  field->edit().setFocus();
  QTest::keyClick(&field->edit(), Qt::Key_Return);
  ServerFinds(3);
  EXPECT_THAT(page.sdgGrid.selected_rows(), testing::IsEmpty());
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
  EXPECT_THAT(page.sdgGrid.selected_rows(), testing::ElementsAre(0u));
}

TEST_F(TheSearchPage, StaysInTheFieldWhereNothingIsFoundOrTheMouseSearched) {
  field->edit().setFocus();
  QTest::keyClick(&field->edit(), Qt::Key_Return);
  ServerFinds(0);
  EXPECT_TRUE(field->edit().hasFocus());
  QTest::keyClick(&field->edit(), Qt::Key_Return);
  ServerEnds();  // with an error
  EXPECT_TRUE(field->edit().hasFocus());
  page.search.UserClicks();
  ServerFinds(1);
  EXPECT_THAT(page.sdgGrid.selected_rows(), testing::IsEmpty());
}

}  // namespace
