#include <gmock/gmock.h>

#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class OfficeFaults : public PreparedOffice {
 protected:
  void Change(const std::string& file, const std::string& statement) {
    const auto run = RunShell("sqlite3 " + Quoted((data_ / file).string()) + " " + Quoted(statement));
    ASSERT_EQ(run.status, 0) << run.err;
  }
  static std::size_t Times(const std::string& text, const std::string& word) {
    std::size_t times = 0;
    for (auto place = text.find(word); place != std::string::npos; place = text.find(word, place + 1))
      ++times;
    return times;
  }
};

// One line of the catalogue, of another letter, stopped every letter.
TEST_F(OfficeFaults, ACatalogueLineWithoutItsFileStopsOnlyTheLetterThatNeedsIt) {
  const std::string future = "CTL110_2701.docx";  // in force from 2027 on
  std::filesystem::remove(data_ / "server/templates" / future);
  const auto other = PrintLetterFor("100001");
  EXPECT_EQ(other.status, 0) << other.err;
  EXPECT_THAT(other.err, AllOf(HasSubstr("templates.tsv\", line "), HasSubstr("\"" + future + "\""),
                               HasSubstr("letter type \"110\" from 2027-01-01 on")));

  Change("reference.db", "UPDATE FLS_LTR_TEMPLATE SET DCMT_NM = 'NOFILE.docx' WHERE LTR_TYP_ID = '101'");
  EXPECT_THAT(Letters("init", {}).err, HasSubstr("\"NOFILE.docx\" for letter type \"101\""));
  const auto refused = PrintLetterFor("100001");
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, AllOf(HasSubstr("NOFILE.docx"), HasSubstr("No template is available for print.")));

  Change("reference.db", "UPDATE FLS_LTR_TEMPLATE SET DCMT_NM = '../NOFILE.docx' WHERE LTR_TYP_ID = '101'");
  const auto unlike =
      Letters("letter", {"--type", "110", "--form-type", "C", "--form", "3100004-9", "--print"});
  EXPECT_EQ(unlike.status, 0) << unlike.err;
  EXPECT_THAT(unlike.err, HasSubstr("no plain file name"));
}

// It was said to be missing, though letters were made with it.
TEST_F(OfficeFaults, ATemplateMayBeNamedInOtherCapitals) {
  std::filesystem::rename(data_ / "server/templates/REG101_2401.docx",
                          data_ / "server/templates/reg101_2401.DOCX");
  const auto letter = PrintLetterFor("100001");
  EXPECT_EQ(letter.status, 0);
  EXPECT_EQ(letter.err, "");
}

TEST_F(OfficeFaults, AFolderOfTheSettingsGetsTheLetterheadToo) {
  WriteFile(data_ / "settings.ini",
            "[User]\nId=DEMO01\nRegion=K1\n[Folders]\nTemplates=" + (data_ / "own/letters").string() + "\n");
  EXPECT_EQ(Letters("init", {}).status, 0);
  EXPECT_TRUE(std::filesystem::exists(data_ / "own/letters/kvcorr.dot"));
}

TEST_F(OfficeFaults, WrongSettingsAreNamedInsteadOfAnEmptyList) {
  const auto settings = data_ / "settings.ini";
  WriteFile(settings, "[User]\nId=DEMO01\nRegion=K9\n[Preview]\nLayoutSeconds=abc\n");
  for (const auto& run : {Letters("types", {}), Letters("init", {})}) {
    EXPECT_THAT(run.err, AllOf(HasSubstr(settings.string() + "\": [User] Region \"K9\""), HasSubstr("\"K1\""),
                               HasSubstr("line 5"), HasSubstr("\"abc\"")));
  }
  WriteFile(settings, "[User]\nRegoin=K1\n");
  EXPECT_THAT(Letters("types", {}).err,
              AllOf(HasSubstr("[User] Regoin is no setting"), HasSubstr("is not set")));
  WriteFile(settings, std::string("\xFF\xFE[\0U\0", 6));
  const auto unread = Letters("types", {});
  EXPECT_EQ(unread.status, 1);
  EXPECT_THAT(unread.err, HasSubstr("is written in UTF-16"));
}

TEST_F(OfficeFaults, WhereNoLetterCanGoIsNamedBeforeOneIsPrinted) {
  WriteFile(data_ / "settings.ini",
            "[User]\nId=DEMO01\nRegion=K1\n[Folders]\nPrinted=office.txt\n[Printing]\nPrinter=NoSuchQueue\n");
  for (const auto& run : {Letters("types", {}), Letters("init", {})}) {
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(run.err, AllOf(HasSubstr("[Folders] Printed \"" + (data_ / "office.txt").string() + "\""),
                               HasSubstr("[Printing] Printer \"NoSuchQueue\"")));
  }
}

TEST_F(OfficeFaults, LettersWithoutTheirTypefacesAreNotMadeSilently) {
  const auto no_fonts = data_ / "fonts.conf";
  WriteFile(no_fonts, "<?xml version=\"1.0\"?><fontconfig><cachedir>" + (data_ / "cache").string() +
                          "</cachedir></fontconfig>");
  const auto without = "FONTCONFIG_FILE=" + Quoted(no_fonts.string());
  for (const auto& run : {Letters("init", {}, without), Letters("types", {}, without)}) {
    EXPECT_THAT(run.err, AllOf(HasSubstr("The typeface \"Liberation Sans\" of \""),
                               HasSubstr("The typeface \"Liberation Serif\" of \"")));
  }
  EXPECT_THAT(Letters("init", {}).err, IsEmpty());
}

TEST_F(OfficeFaults, AMissingReferenceDatabaseIsNamedOnce) {
  std::filesystem::remove(data_ / "reference.db");
  for (const auto& run : {Letters("types", {}), PrintLetterFor("100001")}) {
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(Times(run.err, "reference.db\" is missing"), 1u) << run.err;
    EXPECT_THAT(run.err, Not(HasSubstr("init")));
  }
}

}  // namespace
}  // namespace tests
