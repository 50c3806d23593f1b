#include "reference/reference_builder.h"

#include <functional>

#include <gmock/gmock.h>

#include "platform/failure.h"
#include "reference/sqlite_connection.h"
#include "tests/reference/reference_world.h"

namespace reference_tests {
namespace {

using platform::Failure;
using testing::HasSubstr;

class ReferenceBuilder : public ReferenceWorld {
 protected:
  void ExpectFailure(Failure::Kind kind, const std::string& named, const std::function<void()>& work) {
    try {
      work();
      ADD_FAILURE() << "no failure naming " << named;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.kind(), kind) << named;
      EXPECT_THAT(failure.description(), HasSubstr(named));
    }
  }
  std::size_t FilesBesideTheDatabase() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(database_file_.parent_path()), {}));
  }
};

TEST_F(ReferenceBuilder, NamesFileLineAndColumnOfABadRow) {
  struct Case {
    const char* file;
    const char* row;
    const char* named;
  };
  const Case cases[] = {
      {"letters.tsv", "K1|110|Certificate", "letters.tsv, line 2: There are 3 cells for 4 columns"},
      {"letters.tsv", "K1|110||O", "letters.tsv, line 2: LTR_NM \"\" must not be empty"},
      {"letters.tsv", "K1|110|Certificat\xE9|O", "letters.tsv, line 2: The line is not written in UTF-8"},
      {"templates.tsv", "K1|110|a.docx|2024-01-01|2024-01-01|",
       "line 2: TMPLT_TS \"2024-01-01\" is no time stamp"},
      {"templates.tsv", "K1|110|a.docx|2024-01-01 08.00.00|2024-13-99|",
       "EFCTV_DT \"2024-13-99\" is no date"},
      {"templates.tsv", "K1|999|a.docx|2024-01-01 08.00.00|2024-01-01|",
       "templates.tsv, line 2: The row does not"},
  };
  for (const auto& [file, row, named] : cases) {
    const auto header_only = fs::file_size(Source(file));
    GivenRow(file, row);
    ExpectFailure(Failure::Kind::kDamaged, named, [this] { Build(); });
    fs::resize_file(Source(file), header_only);
  }
  GivenRow("letters.tsv", "K1|110|Certificate|O");
  GivenRow("letters.tsv", "k1|110|The Same Again|O");
  ExpectFailure(Failure::Kind::kDamaged, "letters.tsv, line 3: The row does not fit", [this] { Build(); });
  EXPECT_EQ(FilesBesideTheDatabase(), 0U);
}

TEST_F(ReferenceBuilder, RefusesAHeaderThatIsNotTheTables) {
  Write("officers.tsv", "OFCR_ID\tNAME\n");
  ExpectFailure(Failure::Kind::kDamaged,
                "officers.tsv, line 1: The header names \"NAME\" where OFCR_NM belongs", [this] { Build(); });
  Write("officers.tsv", "");
  ExpectFailure(Failure::Kind::kDamaged, "officers.tsv", [this] { Build(); });
  fs::remove(Source("officers.tsv"));
  ExpectFailure(Failure::Kind::kNotFound, "officers.tsv\" is missing", [this] { Build(); });
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
