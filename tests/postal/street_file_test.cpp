#include "postal/street_file.h"

#include "platform/failure.h"
#include "tests/postal/street_world.h"

namespace postal {
namespace {

class StreetFileTest : public StreetWorld {
 protected:
  std::string Faults() {
    try {
      StreetFile::Read(Folder());
      return "";
    } catch (const platform::Failure& failure) {
      return failure.description();
    }
  }
};

TEST_F(StreetFileTest, HoldsEachStreetOnceAZipWithItsRangesInOrder) {
  const auto file = StreetFile::Read(Folder());
  EXPECT_EQ(file.RangeCount(), 29U);
  const auto* zip = file.FindZip("88312");
  ASSERT_NE(zip, nullptr);
  EXPECT_EQ(file.StreetsOf(*zip).size(), 12U);
  for (const auto& street : file.StreetsOf(*zip)) {
    if (file.Text(street.name) != "DEPOT") continue;
    ASSERT_EQ(file.RangesOf(street).size(), 2U);
    EXPECT_EQ(file.RangesOf(street)[0].low, 1000U);
  }
  EXPECT_EQ(file.FindZip("88313"), nullptr);
  EXPECT_EQ(file.FindZip("8831x"), nullptr);
}

TEST_F(StreetFileTest, NamesWhatIsWrongWithLineColumnAndRemedy) {
  struct FaultCase {
    const char* row;
    const char* said;
  };
  for (const auto& [row, said] : {
           FaultCase{"88399 S - Depot St - 1 99 O 0430",
                     "line 2, column ZIP_CD: \"88399\" is not in cities.tsv."},
           {"88312 X - Depot St - 1 99 O 0430", "column KIND: \"X\" is unknown. Write S (street)"},
           {"88312 S UP Depot St - 1 99 O 0430", "column PRE_DIR: \"UP\" is no directional."},
           {"88312 S - Depot Stt - 1 99 O 0430", "column SUFFIX: \"Stt\" is no suffix of the post's."},
           {"88312 S - - St - 1 99 O 0430", "column STREET_NM: \"\" is no name."},
           {"88312 P - Depot - - 1 99 B BOX", "column STREET_NM: \"Depot\" belongs to no such line."},
           {"88312 S - Depot St - one 99 O 0430", "column LOW_NBR: \"one\" is no number."},
           {"88312 S - Depot St - 101 99 O 0430", "column HIGH_NBR: \"99\" lies below LOW_NBR."},
           {"88312 S - Depot St - 2 99 O 0430", "column LOW_NBR: \"2\" is not of this PARITY."},
           {"88312 S - Depot St - 1 99 odd 0430", "column PARITY: \"odd\" is unknown."},
           {"88312 S - Depot St - 1 99 O 43", "column PLUS4: \"43\" is no plus-four."},
           {"88312 S - Depot St - 1 99 O BOX", "column PLUS4: \"BOX\" is no plus-four."},
           {"88312 S - Depot St - 1 99 O", "There are 9 cells for 10 columns."},
       }) {
    SCOPED_TRACE(row);
    WriteRanges(std::string(row) + "\n");
    EXPECT_NE(Faults().find(said), std::string::npos) << Faults();
    EXPECT_NE(Faults().find("ranges.tsv\", line 2"), std::string::npos) << Faults();
  }
}

TEST_F(StreetFileTest, SaysWhereAMissingTableComesFrom) {
  std::filesystem::remove(Folder() / "ranges.tsv");
  EXPECT_NE(Faults().find("ranges.tsv\" is missing. Put the office's own there, or call"), std::string::npos);
}

TEST_F(StreetFileTest, WantsOnePreferredCityForEachZip) {
  WriteRanges("");
  WriteCities("88312 Hartsfield P KV 13 Hartsfield\n88312 Moss_Creek P KV 13 Hartsfield\n");
  EXPECT_NE(Faults().find("line 3, column CITY_USE: \"P\" comes twice for zip 88312, first in line 2."),
            std::string::npos);
  WriteCities("88312 Hartsfield A KV 13 Hartsfield\n");
  EXPECT_NE(Faults().find("line 2, column ZIP_CD: \"88312\" has no line with CITY_USE P."),
            std::string::npos);
  WriteCities("8831 - X Korvada 13 Hartsfield\n");
  for (const auto* column : {"ZIP_CD", "CITY_NM", "CITY_USE", "ST"})
    EXPECT_NE(Faults().find(std::string("column ") + column + ":"), std::string::npos) << column;
}

}  // namespace
}  // namespace postal
