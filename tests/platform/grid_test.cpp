#include <gmock/gmock.h>

#include "platform/controls/grid.h"
#include "platform/controls/grid_search.h"
#include "platform/controls/grid_text.h"

namespace platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::size_t kSequence = 0, kTemplate = 1, kStatus = 3;

/// Letters whose status is described as each row is loaded.
class AListOfLetters : public testing::Test {
 protected:
  AListOfLetters() {
    grid_.columns = {{"SEQ_NBR", "", "", false, "", ""},
                     {"DCMT_FILE_TXT", "Template File Name", "", false, "", ""},
                     {"PRNT_STTS_CD", "", "", false, "", ""},
                     {"PRNT_STTS_DESC", "Print Status", "", false, "", "", /*derived=*/true}};
    Append(1, "ctl_0304.docx", "F");
    Append(2, "CTL_0304.docx", "P");
    Append(3, Value::Null(), "F");
    Append(4, "Abc.docx", "P");
    grid_.Bind(rows_);
  }

  void Append(int sequence, Value file, const char* status) {
    rows_->Append({sequence, std::move(file), status, Value::Null()});
  }
  std::vector<std::int64_t> Order() const {
    std::vector<std::int64_t> order;
    for (std::size_t row = 0; row < rows_->RecordCount(); ++row)
      order.push_back(rows_->Get(row, "SEQ_NBR").AsInteger());
    return order;
  }
  std::vector<std::pair<std::size_t, std::size_t>> HitsOf(const GridSearch& search) const {
    std::vector<std::pair<std::size_t, std::size_t>> cells;
    for (const auto& hit : search.hits()) cells.emplace_back(hit.row, search.ColumnOf(hit));
    return cells;
  }

  std::shared_ptr<RecordSet> rows_ = std::make_shared<RecordSet>(
      std::vector<std::string>{"SEQ_NBR", "DCMT_FILE_TXT", "PRNT_STTS_CD", "PRNT_STTS_DESC"});
  Grid grid_;
  std::vector<std::size_t> loaded_;
  Connection row_loaded_ = grid_.RowLoaded.Connect([this](std::size_t row) {
    loaded_.push_back(row);
    rows_->Set(row, "PRNT_STTS_DESC", rows_->Text(row, "PRNT_STTS_CD") == "F" ? "Failed" : "Printed");
  });
};

TEST_F(AListOfLetters, IsSortedByAHeadingUpAndDownWithNullsFirstAndTiesInPlace) {
  grid_.UserSortsBy("DCMT_FILE_TXT");
  EXPECT_THAT(Order(), ElementsAre(3, 4, 1, 2));
  EXPECT_EQ(grid_.order(), (Grid::Order{"DCMT_FILE_TXT", false}));
  grid_.UserSortsBy("DCMT_FILE_TXT");
  EXPECT_THAT(Order(), ElementsAre(1, 2, 4, 3));
  grid_.UserSortsBy("SEQ_NBR");
  EXPECT_EQ(grid_.order(), (Grid::Order{"SEQ_NBR", false}));
  EXPECT_THAT(loaded_, IsEmpty()) << "nothing derived was asked for";

  grid_.SetEnabled(false);
  grid_.UserSortsBy("SEQ_NBR");
  EXPECT_THAT(Order(), ElementsAre(1, 2, 3, 4));
  grid_.Bind(rows_);
  EXPECT_FALSE(grid_.order());
}

// The letter actions take the current row: after a sort they must not take another letter.
TEST_F(AListOfLetters, KeepsSelectionAndCurrentRowWithTheirLettersWhenItIsSorted) {
  grid_.UserSelects({1, 0});
  grid_.MakeCurrent(1);
  std::vector<std::size_t> seen;
  const auto changed = grid_.ContentChanged.Connect([&] { seen.push_back(*rows_->CurrentRow()); });
  grid_.SortBy("SEQ_NBR", /*descending=*/true);
  EXPECT_THAT(grid_.selected_rows(), ElementsAre(2, 3));
  EXPECT_EQ(rows_->Text("SEQ_NBR"), "2");
  EXPECT_THAT(seen, ElementsAre(2)) << "told once, of the whole change";
}

TEST_F(AListOfLetters, LoadsAllRowsBeforeADerivedColumnIsSorted) {
  grid_.EnsureRowLoaded(1);
  int told = 0;
  const auto changed = grid_.ContentChanged.Connect([&] { ++told; });
  grid_.UserSortsBy("PRNT_STTS_DESC");
  EXPECT_THAT(Order(), ElementsAre(1, 3, 2, 4));
  EXPECT_THAT(loaded_, ElementsAre(1, 0, 2, 3));
  EXPECT_EQ(told, 2) << "the loading, the order";
}

TEST_F(AListOfLetters, IsSearchedInTheColumnsShownWithoutRegardToCase) {
  GridSearch search(grid_);
  search.Find("ctl", {kSequence, kTemplate});
  EXPECT_THAT(HitsOf(search), ElementsAre(std::pair(0u, kTemplate), std::pair(1u, kTemplate)));
  EXPECT_THAT(loaded_, IsEmpty());
  EXPECT_TRUE(search.IsHit("The CTL"));

  search.Find("p", {kStatus, kTemplate});
  EXPECT_THAT(HitsOf(search), ElementsAre(std::pair(1u, kStatus), std::pair(3u, kStatus)));
  EXPECT_THAT(loaded_, SizeIs(4));
  search.Find("", {kStatus});
  EXPECT_THAT(search.hits(), IsEmpty());
  EXPECT_FALSE(search.IsHit("anything"));
}

TEST_F(AListOfLetters, FindsNothingAcrossTwoCells) {
  GridSearch search(grid_);
  search.Find("1c", {kSequence, kTemplate});
  EXPECT_THAT(search.hits(), IsEmpty());
}

TEST_F(AListOfLetters, GoesRoundTheHitsFromARowOnAndStaysWithAHitThatMoves) {
  GridSearch search(grid_);
  search.Find("docx", {kTemplate}, /*from_row=*/1);
  EXPECT_EQ(search.current(), 1u);
  search.GoToNext();
  search.GoToNext();
  EXPECT_EQ(search.current(), 0u);
  search.GoToPrevious();
  EXPECT_EQ(search.current(), 2u);

  EXPECT_FALSE(search.FindAgain());
  grid_.SortBy("SEQ_NBR", /*descending=*/true);
  EXPECT_TRUE(search.FindAgain());
  EXPECT_EQ(search.current(), 0u) << "the last letter is the first row now";
  grid_.Bind(nullptr);
  EXPECT_TRUE(search.FindAgain());
  EXPECT_EQ(search.current(), std::nullopt);
}

TEST_F(AListOfLetters, IsCopiedAsTextWithEveryValueInItsCell) {
  Append(5, "two\twords\r\nand a line\n", "P");
  EXPECT_EQ(TextOfRows(grid_, {4, 0}, {kStatus, kTemplate, kSequence}),
            "Print Status\tTemplate File Name\tSEQ_NBR\n"
            "Printed\ttwo words and a line \t5\n"
            "Failed\tctl_0304.docx\t1\n");
  EXPECT_EQ(TextOfRows(grid_, {}, {kStatus}), "");
}

TEST_F(AListOfLetters, TellsOfAllRowsItDressesForACopyAtOnce) {
  int told = 0;
  const auto changes = grid_.ContentChanged.Connect([&] { ++told; });
  TextOfRows(grid_, {0, 1, 2, 3}, {kStatus});
  EXPECT_EQ(told, 1) << "each time costs as much as the rows selected";
}

}  // namespace
}  // namespace platform
