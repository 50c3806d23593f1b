#include <gmock/gmock.h>

#include "platform/controls/command.h"
#include "platform/controls/date_field.h"
#include "platform/controls/grid.h"
#include "platform/controls/option_button.h"
#include "platform/controls/text_field.h"
#include "platform/controls/tree.h"

namespace platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// How often an event came.
class Count {
 public:
  explicit Count(Event<>& event) : connection_(event.Connect([this] { ++count_; })) {}
  operator int() const { return count_; }  // NOLINT: reads as the number

 private:
  int count_ = 0;
  Connection connection_;
};

TEST(AnOptionGroup, DeselectsTheOthersWithoutAClick) {
  OptionGroup<3> options({"&View", "&Print", "&Save"});
  Count view(options[0].Click), print(options[1].Click);
  options[0].UserClicks();
  options[1].SetSelected(true);
  EXPECT_FALSE(options[0].selected());
  EXPECT_TRUE(options[1].selected());
  options[1].SetSelected(false);
  EXPECT_EQ(view, 1);
  EXPECT_EQ(print, 1);
}

TEST(AnOption, ThatIsSelectedAnswersTheNextClickAsARelease) {
  OptionButton option("&Print");
  Count clicks(option.Click), releases(option.ReleasedWhenSelected);
  option.UserClicks();
  option.UserClicks();
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(releases, 1);
  option.SetEnabled(false);
  option.UserClicks();
  EXPECT_EQ(releases, 1);
}

TEST(AnOption, IsSelectedAndItsSiblingsAreNotWhenItTellsOfTheClick) {
  OptionGroup<2> options({"a", "b"});
  options[0].SetSelected(true);
  bool whole = false;
  const auto click =
      options[1].Click.Connect([&] { whole = options[1].selected() && !options[0].selected(); });
  options[1].UserClicks();
  EXPECT_TRUE(whole);
}

TEST(ACommand, TakesNoClickWhileItIsDisabledOrHidden) {
  Command command("&Create Letter");
  Count clicks(command.Click), looks(command.LookChanged);
  command.UserClicks();
  command.SetEnabled(false);
  command.UserClicks();
  command.SetEnabled(true);
  command.SetVisible(false);
  command.UserClicks();
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(looks, 3);
}

TEST(AField, TellsOfAChangeOnlyWhereItsValueDiffers) {
  TextField text;
  Count texts(text.Changed);
  text.SetText("B12");
  text.SetText("B12");
  EXPECT_EQ(texts, 1);

  using namespace std::chrono;
  DateField day;
  Count days(day.Changed);
  day.SetEarliest(2024y / January / 1);
  day.SetValue(2023y / May / 5);
  EXPECT_EQ(day.value(), 2024y / January / 1);
  day.SetValue(2023y / June / 6);  // becomes the same earliest day
  day.SetValue({});
  EXPECT_TRUE(day.IsEmpty());
  EXPECT_EQ(days, 2);
}

class AGrid : public testing::Test {
 protected:
  AGrid() {
    for (const auto* id : {"1", "2", "3"}) rows_->Append({id});
    grid_.Bind(rows_);
  }

  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (std::size_t row = 0; row < rows_->RecordCount(); ++row) texts.push_back(rows_->Text(row, "SEQ_NBR"));
    return texts;
  }

  std::shared_ptr<RecordSet> rows_ = std::make_shared<RecordSet>(std::vector<std::string>{"SEQ_NBR"});
  Grid grid_;
  std::vector<std::size_t> loaded_;
  Connection row_loaded_ = grid_.RowLoaded.Connect([this](std::size_t row) {
    loaded_.push_back(row);
    rows_->Set(row, "SEQ_NBR", "#" + rows_->Text(row, "SEQ_NBR"));
    grid_.EnsureRowLoaded(row);  // as a view does that paints again because the row has changed
  });
};

TEST_F(AGrid, LoadsEachRowOnceForEachBinding) {
  grid_.EnsureRowLoaded(1);
  grid_.EnsureRowLoaded(1);
  grid_.EnsureRowLoaded(3);
  EXPECT_THAT(loaded_, ElementsAre(1));
  EXPECT_EQ(rows_->Text(1, "SEQ_NBR"), "#2");
  grid_.Bind(rows_);
  grid_.EnsureRowLoaded(1);
  EXPECT_THAT(loaded_, ElementsAre(1, 1));
}

// After a sort the first rows used to count as loaded, whichever they were; others were formatted twice.
TEST_F(AGrid, LoadsEachRowOnceThoughItsPlaceChanges) {
  grid_.EnsureRowLoaded(0);
  rows_->SortBy("SEQ_NBR", /*descending=*/true);
  for (const std::size_t row : {0, 1, 2}) grid_.EnsureRowLoaded(row);
  rows_->Filter([](const auto& rows, std::size_t row) { return rows.Text(row, "SEQ_NBR") != "#3"; });
  rows_->Append({"4"});
  for (const std::size_t row : {0, 1, 2}) grid_.EnsureRowLoaded(row);
  EXPECT_THAT(Texts(), ElementsAre("#2", "#1", "#4"));
}

TEST_F(AGrid, KeepsTheSelectionWithItsRows) {
  grid_.UserSelects({2, 0});
  rows_->SortBy("SEQ_NBR", /*descending=*/true);
  EXPECT_THAT(grid_.selected_rows(), ElementsAre(0, 2));
  rows_->Filter([](const auto& rows, std::size_t row) { return rows.Text(row, "SEQ_NBR") != "3"; });
  EXPECT_THAT(grid_.selected_rows(), ElementsAre(1));
}

TEST_F(AGrid, KeepsTheOrderInWhichRowsWereSelected) {
  Count clicks(grid_.Click);
  grid_.UserSelects({2, 0, 7});
  EXPECT_THAT(grid_.selected_rows(), ElementsAre(2, 0));
  grid_.MakeCurrent(grid_.selected_rows().front());
  EXPECT_EQ(rows_->FirstText(), "3");
  grid_.SetEnabled(false);
  grid_.UserSelects({1});
  EXPECT_EQ(clicks, 1);
  EXPECT_THAT(grid_.selected_rows(), ElementsAre(2, 0));
}

TEST_F(AGrid, ForgetsSelectedRowsThatAreGone) {
  grid_.UserSelects({0, 2});
  Count content(grid_.ContentChanged);
  rows_->Filter([](auto&, std::size_t row) { return row < 2; });
  EXPECT_EQ(content, 1);
  EXPECT_THAT(grid_.selected_rows(), ElementsAre(0));
  grid_.Bind(nullptr);
  EXPECT_THAT(grid_.selected_rows(), IsEmpty());
  rows_->AddNew();
  EXPECT_EQ(content, 2) << "rows that are no longer bound";
}

TEST(ATree, KeepsItsNodesInOrderAndInPlace) {
  Tree tree;
  auto& first = tree.Add(nullptr, {.text = "first"});
  for (int number = 0; number < 1000; ++number) tree.Add(&first, {.text = std::to_string(number)});
  tree.Add(nullptr, {.text = "second"});
  EXPECT_EQ(tree.top_level().front(), &first);
  EXPECT_EQ(tree.top_level().back()->text, "second");
  ASSERT_EQ(first.children.size(), 1000u);
  EXPECT_EQ(first.children[999]->text, "999");
  EXPECT_EQ(first.children[999]->parent, &first);
}

TEST(ATree, TellsOfManyChangesOnce) {
  Tree tree;
  Count changes(tree.ContentChanged);
  {
    const Tree::Edit edit(tree);
    tree.Clear();
    const Tree::Edit inner(tree);
    tree.Add(nullptr, {.text = "a"});
  }
  EXPECT_EQ(changes, 1);
  tree.Add(nullptr, {.text = "b"});
  EXPECT_EQ(changes, 2);
  { const Tree::Edit nothing(tree); }
  EXPECT_EQ(changes, 2);
}

TEST(ATree, TellsWhichNodeIsClickedWhileItCanBeUsed) {
  Tree tree;
  auto& node = tree.Add(nullptr, {.text = "a"});
  std::vector<std::string> clicked;
  const auto click = tree.NodeClick.Connect(
      [&](const Tree::Node& told) { clicked.push_back(tree.selected()->text + told.text); });
  tree.UserClicks(node);
  tree.UserClicks(node);
  tree.SetEnabled(false);
  tree.UserClicks(node);
  EXPECT_THAT(clicked, ElementsAre("aa", "aa"));
  tree.Clear();
  EXPECT_EQ(tree.selected(), nullptr);
}

}  // namespace
}  // namespace platform
