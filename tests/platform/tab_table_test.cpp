#include "platform/tab_table.h"

#include <array>

#include <gmock/gmock.h>

#include "platform/failure.h"
#include "platform/whole_file.h"
#include "tests/support/failing.h"
#include "tests/support/temporary_folder.h"

namespace {

using platform::TableFaults;
using platform::TabTable;
using testing::AllOf;
using testing::HasSubstr;

constexpr auto kColumns = std::to_array<std::string_view>({"A", "B"});

class ATabTable : public testing::Test {
 protected:
  TabTable Read(const std::string& text) {
    platform::WriteWholeFile(file_, text);
    return TabTable::Read(file_, kColumns, faults_);
  }
  /// All that is wrong with the text; "" for nothing.
  std::string Faults(const std::string& text) {
    faults_ = {};
    Read(text);
    return tests::WhyNot([&] { faults_.OrFail("That is all."); });
  }

  const tests::TemporaryFolder folder_;
  const std::filesystem::path file_ = folder_ / "table.tsv";
  TableFaults faults_;
};

TEST_F(ATabTable, IsTheSameWhateverProgramWroteIt) {
  for (const std::string text : {"A\tB\n1\t 2 \n",
                                 "\xEF\xBB\xBF"
                                 "A\tB\r\n1\t2\r\n\r\n",
                                 "A\tB\n \t \n\n1\t2"}) {
    const auto table = Read(text);
    ASSERT_EQ(table.RowCount(), 1u) << text;
    EXPECT_EQ(table.Text(0, "A") + table.Text(0, "B"), "12") << text;
  }
  EXPECT_TRUE(faults_.IsEmpty());
  EXPECT_THAT(Read("A\tB\n\n1\t2").Place(0, "B"), HasSubstr("table.tsv\", line 3, column B"));
}

TEST_F(ATabTable, NamesEachLineThatIsNoRowAndKeepsTheOthers) {
  EXPECT_EQ(Read("A\tB\n1\n1\t2\n1\t2\t\n\xE9\t2\n").RowCount(), 1u);
  EXPECT_EQ(faults_.Count(), 3u);
  EXPECT_THAT(Faults("A\tB\n1\n1\t2\n1\t2\t\n\xE9\t2\n"),
              AllOf(HasSubstr("line 2: There is 1 cell for 2 columns"),
                    HasSubstr("line 4: There are 3 cells for 2 columns"),
                    HasSubstr("line 5: The line is not written in UTF-8"), HasSubstr("That is all.")));
}

TEST_F(ATabTable, HasToNameItsColumns) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"", "The first line has to name the columns"},
      {"A\n", "line 1: The line of column names ends where B belongs"},
      {"A\tC\n", "names \"C\" where B belongs"},
      {"A\tB\tC\n", "names \"C\" behind the last column"},
      {std::string("\xFF\xFE"
                   "A\0\t\0",
                   6),
       "written in UTF-16. Save it as UTF-8"}};
  for (const auto& [text, fault] : cases) {
    EXPECT_THAT(Faults(text), HasSubstr(fault)) << text;
    EXPECT_EQ(Read(text + "\n1\t2\n").RowCount(), 0u) << text;
  }
  EXPECT_THROW(TabTable::Read(folder_ / "none.tsv"), platform::Failure);
}

}  // namespace
