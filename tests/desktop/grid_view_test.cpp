#include "desktop/binders/grid_view.h"

#include <gmock/gmock.h>

#include <set>

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
                    {"STATUS", "", "What", false, "", ""}};
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

}  // namespace
