#include "desktop/binders/grid_view.h"

#include <gmock/gmock.h>

#include <set>

#include <QAccessible>
#include <QClipboard>
#include <QHeaderView>

#include "tests/desktop/window_driver.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AGrid : public testing::Test {
 protected:
  AGrid() {
    grid.columns = {{"NAME", "Name", "Who", false, "UNBOLD", "UNBOLD"},
                    {"SEQ", "", "Who", true, "", ""},
                    {"STATUS", "", "What", false, "", "", /*derived=*/true}};
    grid.style_sets["UNBOLD"].bold = false;
    grid.style.bold = true;
    desktop::Bind(grid, view, QStringLiteral("Letters"));
    loaded_step = grid.RowLoaded.Connect([this](std::size_t row) {
      loaded.insert(row);
      grid.rows()->Set(row, "STATUS", "dressed " + std::to_string(row));
    });
    click = grid.Click.Connect([this] { ++clicks; });
    view.resize(500, 200);
    shown.emplace(view);
  }
  void GivenRows(int count) {
    auto rows = std::make_shared<platform::RecordSet>(std::vector<std::string>{"NAME", "SEQ", "STATUS"});
    for (int row = 0; row < count; ++row) rows->Append({"name", row, ""});
    grid.Bind(rows);
    tests::Settle();
  }
  QPoint MiddleOf(int row) { return view.visualRect(view.model()->index(row, 0)).center(); }
  void UserClicks(int row, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, MiddleOf(row));
  }
  void UserClicksHeading(int section, bool on_group = false) {
    auto& heading = *view.horizontalHeader();
    const int left = heading.sectionViewportPosition(section);
    QTest::mouseClick(heading.viewport(), Qt::LeftButton, {},
                      {left + 20, on_group ? 4 : heading.height() - 6});
  }
  QString Shown(int row, int column) { return view.model()->index(row, column).data().toString(); }

  platform::Grid grid;
  desktop::GridView view;
  std::optional<tests::ShownWindow> shown;
  platform::Connection loaded_step;
  platform::Connection click;
  std::set<std::size_t> loaded;
  int clicks = 0;
};

TEST_F(AGrid, LoadsTheRowsThatAreSeenAndShowsThemDressed) {
  GivenRows(1000);
  view.grab();

  EXPECT_TRUE(loaded.contains(0));
  EXPECT_LT(loaded.size(), 40u);
  EXPECT_EQ(Shown(0, 2), QStringLiteral("dressed 0"));

  view.scrollToBottom();
  view.grab();
  EXPECT_TRUE(loaded.contains(999));
}

TEST_F(AGrid, HidesColumnsAndHeadsThemWithCaptionOrKey) {
  EXPECT_TRUE(view.isColumnHidden(1));
  EXPECT_FALSE(view.isColumnHidden(2));
  const auto heading = [&](int column) {
    return view.model()->headerData(column, Qt::Horizontal).toString();
  };
  EXPECT_EQ(heading(0), QStringLiteral("Name"));
  EXPECT_EQ(heading(2), QStringLiteral("STATUS"));
  GivenRows(1);
  EXPECT_FALSE(view.model()->index(0, 0).data(Qt::FontRole).value<QFont>().bold());
  EXPECT_TRUE(view.model()->index(0, 2).data(Qt::FontRole).value<QFont>().bold());
}

TEST_F(AGrid, KeepsTheOrderInWhichRowsWereSelected) {
  GivenRows(6);
  UserClicks(3);
  UserClicks(1, Qt::ControlModifier);
  UserClicks(4, Qt::ControlModifier);
  EXPECT_THAT(grid.selected_rows(), ElementsAre(3, 1, 4));

  UserClicks(3, Qt::ControlModifier);
  EXPECT_THAT(grid.selected_rows(), ElementsAre(1, 4));
  EXPECT_EQ(clicks, 4);
}

TEST_F(AGrid, TellsOfADragAndAHeldKeyOnceAtTheirEnd) {
  GivenRows(6);
  QTest::mousePress(view.viewport(), Qt::LeftButton, {}, MiddleOf(0));
  EXPECT_EQ(clicks, 0);
  QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, MiddleOf(0));
  EXPECT_EQ(clicks, 1);

  QTest::keyPress(&view, Qt::Key_Down);
  QTest::keyPress(&view, Qt::Key_Down);
  EXPECT_EQ(clicks, 1);
  QTest::keyRelease(&view, Qt::Key_Down);
  EXPECT_EQ(clicks, 2);
  EXPECT_THAT(grid.selected_rows(), ElementsAre(2));
}

TEST_F(AGrid, ForgetsTheSelectionWithTheRowsAndTakesOverOneFromCode) {
  GivenRows(6);
  UserClicks(3);
  GivenRows(4);
  EXPECT_THAT(view.selectionModel()->selectedRows(), IsEmpty());

  grid.UserSelects({2, 0});
  EXPECT_EQ(view.selectionModel()->selectedRows().size(), 2);
  EXPECT_THAT(grid.selected_rows(), ElementsAre(2, 0));
  EXPECT_EQ(clicks, 2) << "what the view takes over is no click";
}

TEST_F(AGrid, FollowsRowsThatComeAndGo) {
  GivenRows(2);
  grid.rows()->Append({"later", 9, ""});
  EXPECT_EQ(view.model()->rowCount(), 3);
  grid.rows()->Filter(
      [](const platform::RecordSet& rows, std::size_t row) { return rows.Text(row, "NAME") == "later"; });
  EXPECT_EQ(view.model()->rowCount(), 1);
  grid.Bind(nullptr);
  EXPECT_EQ(view.model()->rowCount(), 0);
}

// The list of a dialog that was filled before it was shown lost its selection, and the dialog its "OK".
TEST_F(AGrid, KeepsTheSelectionItHasWhenAViewIsBoundToIt) {
  GivenRows(5);
  grid.UserSelects({3});
  clicks = 0;
  desktop::GridView second;
  desktop::Bind(grid, second, QStringLiteral("Letters again"));
  EXPECT_THAT(grid.selected_rows(), ElementsAre(3));
  EXPECT_EQ(second.selectionModel()->selectedRows().size(), 1);
  EXPECT_EQ(clicks, 0);
}

TEST_F(AGrid, IsSortedByAHeadingAndShowsTheOrder) {
  GivenRows(30);
  UserClicksHeading(2, /*on_group=*/true);
  EXPECT_FALSE(view.horizontalHeader()->isSortIndicatorShown());

  UserClicksHeading(2);
  UserClicksHeading(2);
  EXPECT_EQ(Shown(0, 2), QStringLiteral("dressed 9"));
  EXPECT_EQ(loaded.size(), 30u);
  EXPECT_TRUE(view.horizontalHeader()->isSortIndicatorShown());
  EXPECT_EQ(view.horizontalHeader()->sortIndicatorSection(), 2);
  EXPECT_EQ(view.horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
  GivenRows(3);
  EXPECT_FALSE(view.horizontalHeader()->isSortIndicatorShown());
}

TEST_F(AGrid, KeepsSelectionAndCurrentCellWithTheirRowsWhenTheKeyboardSortsIt) {
  GivenRows(1000);
  UserClicks(1);
  view.setCurrentIndex(view.model()->index(1, 2));
  clicks = 0;
  QTest::keyClick(&view, Qt::Key_Down, Qt::AltModifier);
  tests::Settle();
  const auto row = grid.selected_rows().at(0);
  EXPECT_EQ(grid.rows()->Text(row, "STATUS"), "dressed 1");
  EXPECT_EQ(view.currentIndex(), view.model()->index(static_cast<int>(row), 2));
  EXPECT_TRUE(view.viewport()->rect().intersects(view.visualRect(view.currentIndex())));
  EXPECT_TRUE(view.selectionModel()->isRowSelected(static_cast<int>(row)));
  EXPECT_EQ(clicks, 0) << "the selection is the same";
}

TEST_F(AGrid, CopiesTheSelectedRowsAsTheyStandOnTheScreen) {
  GivenRows(6);
  UserClicks(4);
  UserClicks(2, Qt::ControlModifier);
  view.horizontalHeader()->moveSection(2, 0);
  QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(),
            QStringLiteral("STATUS\tName\ndressed 2\tname\ndressed 4\tname\n"));

  QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(grid.selected_rows().size(), 6u);
  view.columns().SetShown(2, false);
  view.CopyRows();
  EXPECT_EQ(QApplication::clipboard()->text(),
            QStringLiteral("Name\n") + QStringLiteral("name\n").repeated(6));
}

TEST_F(AGrid, IsReadOutWithColumnGroupAndOrder) {
  GivenRows(2);
  UserClicksHeading(0);
  auto& table = *QAccessible::queryAccessibleInterface(&view)->tableInterface();
  EXPECT_EQ(table.cellAt(1, 2)->text(QAccessible::Name), QStringLiteral("STATUS: dressed 1"));
  EXPECT_EQ(table.columnDescription(0), QStringLiteral("Name"));
  const auto heading = view.model()->headerData(0, Qt::Horizontal, Qt::AccessibleTextRole);
  EXPECT_EQ(heading.toString(), QStringLiteral("Who, Name, sorted ascending"));
}

}  // namespace
