#include "reference/reference_builder.h"

#include <functional>
#include <sstream>

#include <gmock/gmock.h>

#include "platform/failure.h"
#include "reference/sqlite_connection.h"
#include "tests/reference/reference_world.h"
#include "tests/support/failing.h"

namespace reference_tests {
namespace {

using platform::Failure;
using testing::HasSubstr;

class ReferenceBuilder : public ReferenceWorld {
 protected:
  void ExpectFailure(Failure::Kind kind, const std::string& named, const std::function<void()>& work) {
    EXPECT_THAT([&] { work(); }, tests::Fails(kind, HasSubstr(named)));
  }
  std::size_t FilesBesideTheDatabase() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(database_file_.parent_path()), {}));
  }
};

// The rows of a case stand below a letter type of region K1, and a form type; ";" separates rows.
TEST_F(ReferenceBuilder, NamesFileLineAndColumnOfWhatCannotBeTakenIn) {
  struct Case {
    const char* file;
    const char* rows;
    const char* named;
  };
  const Case cases[] = {
      {"letters.tsv", "K1|111||O", "line 3, column LTR_NM: \"\" must not be empty"},
      {"letters.tsv", "K1|0111|Warrant|O", "line 3, column LTR_TYP_ID: \"0111\" is no letter type"},
      {"letters.tsv", "K1|111|Warrant|X", "line 3, column LTR_ONLN_IND: \"X\" is unknown. Write O (on line)"},
      {"letters.tsv", "k1|110|The Same Again|O",
       "line 3, column LTR_TYP_ID: The row has the same REGION and LTR_TYP_ID as line 2"},
      {"templates.tsv", "K1|110|a.docx|2024-01-01|2024-01-01|",
       "line 2, column TMPLT_TS: \"2024-01-01\" is no time stamp. Write it as yyyy-mm-dd hh.mm.ss"},
      {"templates.tsv", "K1|110|a.docx|2024-01-01T08:00:00|2024-01-01|", "is no time stamp"},
      {"templates.tsv", "K1|110|a.docx|2024-01-01 8.00.00|2024-01-01|", "is no time stamp"},
      {"templates.tsv", "K1|110|a.docx|2024-01-01 08.00.00|2024-13-99|",
       "line 2, column EFCTV_DT: \"2024-13-99\" is no date"},
      {"templates.tsv", "K1|110|a.docx|2024-01-01 08.00.00|2024-02-01|2024-01-31",
       "line 2, column EXPRTN_DT: \"2024-01-31\" lies before EFCTV_DT \"2024-02-01\""},
      {"templates.tsv",
       "K1|110|a.docx|2024-01-01 08.00.00|2024-01-01|;K1|110|b.docx|2024-01-01 08.00.00|2025-01-01|",
       "line 3, column TMPLT_TS: The row has the same REGION, LTR_TYP_ID and TMPLT_TS as line 2. "
       "Remove one of the two, or change its TMPLT_TS."},
      {"templates.tsv", "K1|999|a.docx|2024-01-01 08.00.00|2024-01-01|",
       "line 2, column LTR_TYP_ID: Region \"K1\" has no letter type \"999\". Enter it in letters.tsv"},
      {"templates.tsv", "K1|110|../a.docx|2024-01-01 08.00.00|2024-01-01|",
       "column DCMT_NM: \"../a.docx\" is no plain file name"},
      {"codes.tsv", "K1|LTRINPUT|111|2020-01-01 06.00.00|Warrant|C||2020-01-01||||||",
       "line 4, column CD_TBL_CD: Region \"K1\" has no letter type \"111\""},
      {"codes.tsv", "K1|LTRINPUT|110|2020-01-01 06.00.00|Certificate|C,Z||2020-01-01||||||",
       "column ADTL_INFO_TXT: \"C,Z\" names a form type"},
      {"codes.tsv", "K1|LTRINPUT|110|2020-01-01 06.00.00|Certificate|C||2020-01-01|2019-12-31|||||",
       "column END_DT: \"2019-12-31\" lies before"},
      {"codes.tsv", "K1|LTRACTION|VLT|2020-01-01 06.00.00|View Letter|P?||2020-01-01||||||",
       "column ADTL_INFO_TXT: \"P?\" names a print status that code table LTRPRNTCD has not"},
      {"counties.tsv", "x|Ash|Ashton|871|A|1", "line 2, column CNTY_CD: \"x\" is no county's number"},
      {"counties.tsv", "1|Ash|Ashton|8715|A|1", "column ZIP_PRFX: \"8715\" begins no zip code"},
      {"counties.tsv", "1|Ash|Ashton|871|AB|1", "column TRP_ID: \"AB\" is no troop"},
      {"counties.tsv", "1|Ash|Ashton|871|A|12345", "column TRP_DIST_ID: \"12345\" is too long"},
      {"counties.tsv", "1|Ash|Ashton|871|A|1;1|Oak|Oakton|872|A|2",
       "line 3, column CNTY_CD: The row has the same CNTY_CD as line 2"},
  };
  GivenRow("letters.tsv", "K1|110|Certificate|O");
  GivenCode("REFDOCTYP", "C", "Assessment");
  GivenCode("LTRPRNTCD", "P", "Printed");
  for (const auto& [file, rows, named] : cases) {
    const auto good = fs::file_size(Source(file));
    std::istringstream stream(rows);
    for (std::string row; std::getline(stream, row, ';');) GivenRow(file, row);
    ExpectFailure(Failure::Kind::kDamaged, named, [this] { Build(); });
    ExpectFailure(Failure::Kind::kDamaged, std::string(file) + "\", line ", [this] { Build(); });
    fs::resize_file(Source(file), good);
  }
  EXPECT_EQ(FilesBesideTheDatabase(), 0U);
}

TEST_F(ReferenceBuilder, NamesTheFaultsOfAllTablesAtOnce) {
  GivenRow("letters.tsv", "K1|110|Certificate");
  for (int i = 0; i < 25; ++i) GivenRow("officers.tsv", "O" + std::to_string(i) + "|");
  Write("counties.tsv", "CNTY_CD\tCNTY_NM\tSEAT\n");
  for (const auto* named :
       {"letters.tsv\", line 2: There are 3 cells for 4 columns", "officers.tsv\", line 2,",
        "counties.tsv\", line 1: The line of column names names \"SEAT\" where CNTY_SEAT_NM",
        "There are 7 more."})
    ExpectFailure(Failure::Kind::kDamaged, named, [this] { Build(); });
  fs::remove(Source("officers.tsv"));
  ExpectFailure(Failure::Kind::kNotFound, "officers.tsv\" is missing", [this] { Build(); });
}

TEST_F(ReferenceBuilder, ChangesNothingUntilItIsPutInPlace) {
  {
    const reference::NextReferenceDatabase next(installation_, database_file_);
    EXPECT_TRUE(next.is_needed());
    EXPECT_FALSE(fs::exists(database_file_));
  }
  EXPECT_EQ(FilesBesideTheDatabase(), 0U);
  EXPECT_TRUE(Build());
  EXPECT_FALSE(reference::NextReferenceDatabase(installation_, database_file_).is_needed());
}

TEST_F(ReferenceBuilder, BuildsAgainOnlyWhenTheTablesHaveChanged) {
  EXPECT_TRUE(Build());
  EXPECT_FALSE(Build());
  GivenRow("officers.tsv", "DEMO09|Somebody New\r");
  EXPECT_TRUE(Build());
  EXPECT_THAT(Column("select OFCR_NM from FLS_OFFICER", "OFCR_NM"), testing::ElementsAre("Somebody New"));
  EXPECT_EQ(FilesBesideTheDatabase(), 1U);
}

TEST_F(ReferenceBuilder, KeepsTheFormerDatabaseWhenTheTablesAreBad) {
  GivenRow("officers.tsv", "DEMO01|Kept");
  Build();
  GivenRow("officers.tsv", "DEMO02|");
  EXPECT_THROW(Build(), Failure);
  reference::ReferenceDatabase former(database_file_, clock);
  EXPECT_EQ(former.Select("select OFCR_NM from FLS_OFFICER")->FirstText(), "Kept");
}

TEST_F(ReferenceBuilder, ReplacesTheFileUnderAReaderWithoutDisturbingIt) {
  GivenRow("officers.tsv", "DEMO01|First");
  auto& reader = Database();
  EXPECT_EQ(reader.Select("select OFCR_NM from FLS_OFFICER")->FirstText(), "First");
  GivenRow("officers.tsv", "DEMO00|Second");
  EXPECT_TRUE(Build());
  EXPECT_EQ(reader.Select("select OFCR_NM from FLS_OFFICER")->RecordCount(), 1U);
  reference::ReferenceDatabase second(database_file_, clock);
  EXPECT_EQ(second.Select("select OFCR_NM from FLS_OFFICER")->RecordCount(), 2U);
}

TEST_F(ReferenceBuilder, AMissingOrDamagedDatabaseIsNamedWithTheWayOut) {
  const auto read = [this] { reference::ReferenceDatabase(database_file_, clock).Select("select 1"); };
  ExpectFailure(Failure::Kind::kNotFound, database_file_.string() + "\" is missing", read);
  ExpectFailure(Failure::Kind::kNotFound, "restore it from a backup", read);
  fs::create_directories(database_file_.parent_path());
  for (const auto* const content : {"", "this is no database at all, whatever its name may say of it"}) {
    std::ofstream(database_file_) << content;
    ExpectFailure(Failure::Kind::kDamaged, "Run \"zemlo-letters init\"", read);
    EXPECT_TRUE(Build()) << "a damaged file is replaced: " << content;
    EXPECT_NO_THROW(read());
  }
}

TEST_F(ReferenceBuilder, AFullDiskIsNamedWithFileAndFolder) {
  fs::create_directories(database_file_.parent_path());
  reference::SqliteConnection connection(database_file_, reference::SqliteConnection::Mode::kReadWrite);
  connection.Execute("PRAGMA max_page_count = 2");  // the engine takes it for a disk without room
  const auto fill = [&] {
    for (const auto* table : {"a", "b", "c"})
      connection.Execute(std::string("CREATE TABLE ") + table + " (x)");
  };
  ExpectFailure(Failure::Kind::kUnavailable,
                "The file \"" + database_file_.filename().string() + "\" in the folder \"" +
                    database_file_.parent_path().string() + "\" could not be written: the disk is full",
                fill);
}

TEST_F(ReferenceBuilder, ATruncatedDatabaseNeverCrashes) {
  for (int i = 0; i < 200; ++i)
    GivenRow("officers.tsv", "O" + std::to_string(i) + "|Officer " + std::to_string(i));
  Build();
  const auto whole = fs::file_size(database_file_);
  for (auto size = whole; size > 512; size = size / 4 * 3) {
    fs::resize_file(database_file_, size);
    try {
      reference::ReferenceDatabase(database_file_, clock).Select("select * from FLS_OFFICER");
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.kind(), Failure::Kind::kDamaged) << size << ": " << failure.description();
    }
  }
}

}  // namespace
}  // namespace reference_tests
