#include "platform/record_set.h"

#include <gmock/gmock.h>

#include "platform/failure.h"
#include "platform/parties/request_record.h"

namespace platform {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

class ARecordSet : public testing::Test {
 protected:
  ARecordSet() {
    rows_.Append({"110", "CTL", 3});
    rows_.Append({"109", "Tax Warrant", 1});
    rows_.Append({"205", {}, 2});
    rows_.MoveFirst();
    changed_ = rows_.Changed.Connect([this] {
      ++changes_;
      ids_when_told_ = Ids();
    });
  }
  std::vector<std::string> Ids() const {
    std::vector<std::string> ids;
    for (std::size_t row = 0; row < rows_.RecordCount(); ++row) ids.push_back(rows_.Text(row, "LTR_TYP_ID"));
    return ids;
  }

  RecordSet rows_{{"LTR_TYP_ID", "Ltr_Desc", "SORT_NBR"}};
  Connection changed_;
  int changes_ = 0;
  std::vector<std::string> ids_when_told_;
};

TEST_F(ARecordSet, FindsColumnsWithoutRegardToCase) {
  EXPECT_EQ(rows_.Text("LTR_DESC"), "CTL");
  rows_.Set("ltr_desc", "Certificate");
  EXPECT_EQ(rows_.Text(0, "Ltr_Desc"), "Certificate");
  EXPECT_TRUE(rows_.HasColumn("sort_nbr"));
  EXPECT_FALSE(rows_.HasColumn("SORT"));
  EXPECT_EQ(rows_.columns()[1], "Ltr_Desc");
}

TEST_F(ARecordSet, SaysWhichColumnOrRowIsMissing) {
  EXPECT_THAT([&] { rows_.Get("CUST_ID"); }, ThrowsMessage<Failure>(HasSubstr("\"CUST_ID\"")));
  EXPECT_THAT([&] { rows_.Get(3, "LTR_TYP_ID"); }, ThrowsMessage<Failure>(HasSubstr("no row 4")));
  rows_.MoveTo(3);
  EXPECT_THAT([&] { rows_.FirstText(); }, ThrowsMessage<Failure>(HasSubstr("no current row")));
  EXPECT_THROW(rows_.Append({"1"}), Failure);
  EXPECT_EQ(changes_, 0);
}

TEST_F(ARecordSet, HasNoCurrentRowPastItsEnd) {
  EXPECT_TRUE(rows_.MoveTo(2));
  EXPECT_EQ(rows_.FirstText(), "205");
  EXPECT_FALSE(rows_.MoveTo(3));
  rows_.Append({"300", "Late", 9});
  EXPECT_FALSE(rows_.CurrentRow()) << "an appended row is not current";
  EXPECT_TRUE(rows_.MoveTo(3));
}

TEST_F(ARecordSet, MakesANewRowCurrentAndTheFirstRowOfAnEmptySet) {
  rows_.AddNew();
  EXPECT_EQ(rows_.CurrentRow(), 3U);
  EXPECT_TRUE(rows_.Get("Ltr_Desc").IsNull());
  EXPECT_EQ(rows_.Text("Ltr_Desc"), "");

  RecordSet empty({"A"});
  EXPECT_FALSE(empty.MoveFirst());
  empty.Append({"x"});
  EXPECT_EQ(empty.FirstText(), "x");
}

TEST_F(ARecordSet, FindsTextsWithoutRegardToCaseAndTakesPercentInPatternsOnly) {
  struct {
    RecordSet::Match match;
    std::string_view pattern;
    std::optional<std::size_t> found;
  } const cases[] = {
      {RecordSet::Match::kEquals, "tax warrant", 1},
      {RecordSet::Match::kEquals, "Tax%", {}},
      {RecordSet::Match::kLike, "TAX%", 1},
      {RecordSet::Match::kLike, "%warrant", 1},
      {RecordSet::Match::kLike, "%A%RR%T", 1},
      {RecordSet::Match::kLike, "c%c%l", {}},
      {RecordSet::Match::kLike, "ctl", 0},
      {RecordSet::Match::kLike, "ct", {}},
      {RecordSet::Match::kLike, "%", 0},
      {RecordSet::Match::kLike, "ctl%ctl", {}},
      {RecordSet::Match::kLike, "%%l%", 0},
      {RecordSet::Match::kEquals, "", 2},
  };
  for (const auto& c : cases) EXPECT_EQ(rows_.Find("LTR_DESC", c.match, c.pattern), c.found) << c.pattern;
  EXPECT_EQ(rows_.Find("LTR_DESC", RecordSet::Match::kLike, "%", 1), 1U);
  EXPECT_EQ(rows_.CurrentRow(), 0U);
}

TEST_F(ARecordSet, KeepsTheOrderOfEqualRowsWhenSorted) {
  RecordSet letters({"ID", "STATUS"});
  for (const auto* row : {"1b", "2A", "3B", "4", "5a"}) {
    letters.Append({std::string(row, 1), row[1] == '\0' ? Value() : Value(row + 1)});
  }
  const auto order = [&] {
    std::string ids;
    for (std::size_t row = 0; row < letters.RecordCount(); ++row) ids += letters.Text(row, "ID");
    return ids;
  };
  letters.SortBy("status");
  EXPECT_EQ(order(), "42513");
  letters.SortBy("id");
  letters.SortBy("status", /*descending=*/true);
  EXPECT_EQ(order(), "13254");
  EXPECT_EQ(letters.CurrentRow(), 0U);
}

TEST_F(ARecordSet, SortsNumbersBySizeAndMixedKindsByText) {
  RecordSet numbers({"N"});
  for (const Value& value : {Value(10), Value(9), Value("1a")}) numbers.Append({value});
  numbers.SortBy("N");
  EXPECT_EQ(numbers.Text(0, "N") + numbers.Text(1, "N") + numbers.Text(2, "N"), "101a9");
  rows_.SortBy("SORT_NBR");
  EXPECT_THAT(Ids(), ElementsAre("109", "205", "110"));
}

TEST_F(ARecordSet, AsksAboutEveryRowBeforeItDropsOne) {
  rows_.MoveTo(2);
  rows_.Filter([](const RecordSet& rows, std::size_t row) {
    EXPECT_EQ(rows.RecordCount(), 3U);
    return rows.Text(row, "LTR_TYP_ID") != "109";
  });
  EXPECT_THAT(Ids(), ElementsAre("110", "205"));
  EXPECT_EQ(rows_.FirstText(), "110");
  EXPECT_THROW(rows_.Filter([](auto&, std::size_t) -> bool { throw Failure(Failure::Kind::kRefused, "no"); }),
               Failure);
  EXPECT_THAT(Ids(), ElementsAre("110", "205"));
  EXPECT_EQ(changes_, 1);
}

TEST_F(ARecordSet, TellsOfManyChangesOnceAfterTheLastEdit) {
  {
    RecordSet::Edit outer(rows_);
    rows_.AddNew();
    {
      RecordSet::Edit inner(rows_);
      rows_.Set("LTR_TYP_ID", "300");
    }
    EXPECT_EQ(changes_, 0);
    rows_.Set(0, "LTR_TYP_ID", "111");
  }
  EXPECT_EQ(changes_, 1);
  EXPECT_THAT(ids_when_told_, ElementsAre("111", "109", "205", "300"));
  { RecordSet::Edit nothing_changed(rows_); }
  EXPECT_EQ(changes_, 1);
}

TEST_F(ARecordSet, IsWholeWheneverItTellsOfAChange) {
  rows_.SortBy("LTR_TYP_ID");
  EXPECT_THAT(ids_when_told_, ElementsAre("109", "110", "205"));
  rows_.Filter([](auto&, std::size_t row) { return row == 1; });
  EXPECT_THAT(ids_when_told_, ElementsAre("110"));
  rows_.Append({"300", "", 0});
  EXPECT_THAT(ids_when_told_, ElementsAre("110", "300"));
}

TEST_F(ARecordSet, MayBeDroppedByWhoeverHearsOfItsChange) {
  auto shared = std::make_shared<RecordSet>(std::vector<std::string>{"A"});
  auto& rows = *shared;
  const auto connection = rows.Changed.Connect([&] { shared.reset(); });
  {
    RecordSet::Edit edit(rows);
    rows.AddNew();
  }
  EXPECT_FALSE(shared);
}

class NoReference : public ReferenceDatabase {
 public:
  std::shared_ptr<RecordSet> Select(const std::string& statement) override {
    statements.push_back(statement);
    return std::make_shared<RecordSet>(std::vector<std::string>{"A"});
  }
  std::vector<std::string> statements;
};

TEST(ARequestRecord, OpensOnALayoutOrOnAStatement) {
  NoReference reference;
  RequestRecord record(reference);
  EXPECT_THROW(record.AddNew(), Failure) << "not open yet";
  record.Source("CorrHist");
  record.Open();
  record.AddNew();
  record.Fields("seq_nbr") = 12;
  EXPECT_EQ(record.Fields("SEQ_NBR").AsText(), "12");
  EXPECT_EQ(record.Fields("CUST_ID").AsText(), "");

  record.Source("select * from FLS_LETTER");
  record.Open();
  EXPECT_THAT(reference.statements, ElementsAre("select * from FLS_LETTER"));
  record.Source("NO_SUCH");
  EXPECT_THAT([&] { record.Open(); }, ThrowsMessage<Failure>(HasSubstr("NO_SUCH")));
}

}  // namespace
}  // namespace platform
