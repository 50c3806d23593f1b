#include "desktop/binders/grid_panel.h"

#include <gmock/gmock.h>

#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

#include "desktop/binders/grid_menu.h"
#include "tests/desktop/window_driver.h"
#include "tests/fakes/fake_view_settings.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kFile = 0, kSequence = 1, kCode = 2, kStatus = 3;

/// A page with a field and a list of ten letters, as every start of the program makes it anew.
class APageWithAList : public testing::Test {
 protected:
  APageWithAList() {
    grid.columns = {{"FILE", "File Name", "", false, "", ""},
                    {"SEQ_NBR", "", "", /*hidden=*/true, "", ""},
                    {"CODE", "", "", false, "", ""},
                    {"STATUS", "Status", "", false, "", ""}};
    auto rows =
        std::make_shared<platform::RecordSet>(std::vector<std::string>{"FILE", "SEQ_NBR", "CODE", "STATUS"});
    for (int row = 0; row < 10; ++row)
      rows->Append({"CTL_0304.DOCX", row, row % 2 == 0 ? "F" : "P", row % 5 == 0 ? "Failed" : "Printed"});
    grid.Bind(rows);
    Start();
  }

  void Start() {
    shown.reset();
    page = std::make_unique<QWidget>();
    field = new QLineEdit(page.get());
    panel = new desktop::GridPanel(grid, QStringLiteral("Letters"), settings);
    panel->TakeKeysOf(*page);
    auto* layout = new QVBoxLayout(page.get());
    layout->addWidget(field);
    layout->addWidget(panel);
    page->resize(600, 400);
    shown.emplace(*page);
  }
  QHeaderView& Heading() { return *panel->view().horizontalHeader(); }
  desktop::GridColumns& Columns() { return panel->view().columns(); }
  QLineEdit& FindText() { return *panel->findChild<QLineEdit*>(); }
  std::string Count() { return FindText().accessibleDescription().toStdString(); }
  std::pair<int, int> CurrentCell() {
    return {panel->view().currentIndex().row(), panel->view().currentIndex().column()};
  }
  void UserFinds(const char* text) {
    UserPresses(Qt::Key_F, Qt::ControlModifier);
    FindText().clear();
    QTest::keyClicks(&FindText(), QString::fromUtf8(text));
  }
  void UserPresses(int key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
    tests::Settle();
  }

  platform::Grid grid;
  fakes::FakeViewSettings settings;
  std::unique_ptr<QWidget> page;
  QLineEdit* field = nullptr;
  desktop::GridPanel* panel = nullptr;
  int clicks = 0;
  platform::Connection click = grid.Click.Connect([this] { ++clicks; });
  std::optional<tests::ShownWindow> shown;
};

TEST_F(APageWithAList, RemembersWhatTheUserMakesOfTheColumns) {
  Heading().resizeSection(kFile, 177);
  Heading().moveSection(Heading().visualIndex(kStatus), 0);
  Columns().SetShown(kCode, false);
  Start();
  EXPECT_THAT(Columns().Shown(), ElementsAre(kStatus, kFile));
  EXPECT_EQ(panel->view().columnWidth(kFile), 177);

  Columns().ShowAll();
  EXPECT_THAT(Columns().Shown(), ElementsAre(kStatus, kFile, kCode));
  EXPECT_GT(panel->view().columnWidth(kCode), 30) << "a column that comes back can be read";
  Columns().Reset();
  Start();
  EXPECT_THAT(Columns().Shown(), ElementsAre(kFile, kCode, kStatus));
  EXPECT_NE(panel->view().columnWidth(kFile), 177);
}

TEST_F(APageWithAList, ShowsSomeColumnsWhereItIsWideAndSomeWhenAskedFor) {
  using AtFirst = platform::Grid::AtFirst;
  grid.columns[kFile].at_first = AtFirst::kShownWhereWide;
  grid.columns[kCode].at_first = AtFirst::kNotShown;
  Start();
  EXPECT_THAT(Columns().Shown(), ElementsAre(kStatus));
  page->resize(3000, 400);
  tests::Settle();
  EXPECT_THAT(Columns().Shown(), ElementsAre(kFile, kStatus));
  EXPECT_THAT(settings.remembered, IsEmpty());

  Columns().SetShown(kCode, true);
  Start();
  EXPECT_THAT(Columns().Shown(), ElementsAre(kCode, kStatus)) << "remembered, in the narrow window again";
  Columns().SetShown(kFile, true);
  Start();
  EXPECT_THAT(Columns().Shown(), ElementsAre(kFile, kCode, kStatus)) << "asked for, it stays";
  Columns().Reset();
  EXPECT_THAT(Columns().Shown(), ElementsAre(kStatus));
}

TEST_F(APageWithAList, RemembersNothingTheUserDidNotDo) {
  page->resize(900, 500);
  tests::Settle();
  Start();
  EXPECT_THAT(settings.remembered, IsEmpty());
}

TEST_F(APageWithAList, MakesTheBestOfARememberedTextThatIsNoLongerRight) {
  for (const auto* text :
       {"-FILE -CODE -STATUS", "GONE=90 = - -SEQ_NBR=x STATUS=-5 FILE=99999999", "FILE FILE FILE"}) {
    settings.remembered["Columns of Letters"] = text;
    Start();
    EXPECT_FALSE(Columns().Shown().empty()) << text;
    EXPECT_TRUE(panel->view().isColumnHidden(kSequence)) << text;
    EXPECT_LE(panel->view().columnWidth(kFile), 4000) << text;
  }
}

TEST_F(APageWithAList, OffersItsColumnsInAMenuButNotWhatTheListHides) {
  QMenu menu;
  desktop::FillHeadingMenu(menu, panel->view(), kFile);
  std::vector<std::string> offered;
  for (auto* action : menu.actions()) {
    if (action->isCheckable()) offered.push_back(action->text().toStdString());
  }
  EXPECT_THAT(offered, ElementsAre("File Name", "CODE", "Status"));

  Columns().SetShown(kFile, false);
  Columns().SetShown(kCode, false);
  EXPECT_FALSE(Columns().CanHide(kStatus));
  Columns().SetShown(kStatus, false);
  EXPECT_THAT(Columns().Shown(), ElementsAre(kStatus)) << "one column stays";
}

// The found row had the focus frame only: "Reprint (Local)" printed the one that was selected before.
TEST_F(APageWithAList, SelectsTheRowThatIsFoundFromAnywhereOnThePage) {
  grid.UserSelects({9});
  field->setFocus();
  UserPresses(Qt::Key_F, Qt::ControlModifier);
  EXPECT_TRUE(FindText().hasFocus());
  QTest::keyClicks(&FindText(), QStringLiteral("FAIL"));
  EXPECT_EQ(Count(), "1 of 2");
  EXPECT_EQ(CurrentCell(), std::pair(0, kStatus));
  UserPresses(Qt::Key_Return);
  EXPECT_EQ(CurrentCell(), std::pair(5, kStatus));
  UserPresses(Qt::Key_Return);
  EXPECT_EQ(CurrentCell(), std::pair(0, kStatus)) << "after the last comes the first";
  UserPresses(Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(Count(), "2 of 2");
  EXPECT_TRUE(panel->view().selectionModel()->isRowSelected(5)) << "on the screen at once";
  const auto colour = [this] { return panel->view().model()->index(0, kStatus).data(Qt::BackgroundRole); };
  EXPECT_TRUE(colour().isValid());

  clicks = 0;
  UserPresses(Qt::Key_Escape);
  EXPECT_FALSE(FindText().isVisible());
  EXPECT_TRUE(panel->view().hasFocus());
  EXPECT_FALSE(colour().isValid());
  EXPECT_EQ(clicks, 1);
  EXPECT_THAT(grid.selected_rows(), ElementsAre(5));
}

TEST_F(APageWithAList, KeepsItsSelectionWhereNothingIsFound) {
  grid.UserSelects({9});
  UserFinds("fail");
  EXPECT_TRUE(panel->view().selectionModel()->isRowSelected(0));
  QTest::keyClicks(&FindText(), QStringLiteral("x"));
  EXPECT_TRUE(panel->view().selectionModel()->isRowSelected(9));
  EXPECT_EQ(CurrentCell().first, 9);
  UserPresses(Qt::Key_Escape);
  EXPECT_THAT(grid.selected_rows(), ElementsAre(9));
}

TEST_F(APageWithAList, TellsOfTheFoundRowOnceWhenTheSearchRests) {
  UserFinds("fail");
  UserPresses(Qt::Key_Return);
  EXPECT_EQ(clicks, 0);
  EXPECT_TRUE(tests::WaitFor([this] { return clicks > 0; }));
  EXPECT_THAT(grid.selected_rows(), ElementsAre(5));
  UserPresses(Qt::Key_Escape);
  EXPECT_EQ(clicks, 1);
}

TEST_F(APageWithAList, HasTheFoundRowSelectedBeforeAnythingElseIsDone) {
  UserFinds("fail");
  field->setFocus();
  EXPECT_THAT(grid.selected_rows(), ElementsAre(0)) << "what takes the keyboard may act on it";

  UserFinds("fail");
  UserPresses(Qt::Key_Return);
  panel->view().SortBy(kCode, /*descending=*/true);
  ASSERT_EQ(grid.selected_rows().size(), 1u);
  EXPECT_EQ(grid.rows()->Text(grid.selected_rows().front(), "SEQ_NBR"), "5") << "the row, not its place";
}

TEST_F(APageWithAList, EndsTheSearchWithEnterWhereThereIsOneHitAndGoesOnInTheListWithArrows) {
  UserFinds("failed");
  UserPresses(Qt::Key_Return);
  QTest::keyPress(&FindText(), Qt::Key_Down);
  QTest::keyRelease(QApplication::focusWidget(), Qt::Key_Down);
  EXPECT_TRUE(panel->view().hasFocus());
  EXPECT_THAT(grid.selected_rows(), ElementsAre(6)) << "on from the hit";

  grid.rows()->Set(3, "FILE", "WARRANT.DOCX");
  UserFinds("warrant");
  UserPresses(Qt::Key_Return);
  EXPECT_FALSE(FindText().isVisible());
  EXPECT_THAT(grid.selected_rows(), ElementsAre(3));
}

TEST_F(APageWithAList, BringsTheRowThatACommandTakesIntoSight) {
  auto rows = std::make_shared<platform::RecordSet>(grid.rows()->columns());
  for (int row = 0; row < 300; ++row) rows->Append({"CTL_0304.DOCX", row, "P", "Printed"});
  grid.Bind(rows);
  tests::Settle();
  grid.MakeCurrent(250);
  panel->view().scrollToTop();
  grid.ShowCurrent();
  const auto place = panel->view().visualRect(panel->view().model()->index(250, kFile));
  EXPECT_TRUE(panel->view().viewport()->rect().contains(place.center()));
}

TEST_F(APageWithAList, GoesOnFindingInOtherRowsAndColumns) {
  UserPresses(Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(&FindText(), QStringLiteral("printed"));
  EXPECT_EQ(Count(), "1 of 8");
  Columns().SetShown(kStatus, false);
  UserPresses(Qt::Key_F3);
  EXPECT_EQ(Count(), "Not found");
  Columns().ShowAll();
  auto rows = std::make_shared<platform::RecordSet>(grid.rows()->columns());
  rows->Append({"REG.DOCX", 1, "P", "Printed"});
  grid.Bind(rows);
  UserPresses(Qt::Key_F3);
  tests::Settle();
  EXPECT_EQ(Count(), "1 of 1");
}

}  // namespace
