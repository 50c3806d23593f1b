#include <gmock/gmock.h>

#include "tests/end_to_end/changed_template.h"
#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// New versions of the letter that confirms a registration, as an office brings them.
class TemplateVersions : public PreparedOffice {
 protected:
  /// Enters a version in the catalogue that is in force from today on.
  void GivenVersion(const std::string& document) {
    const auto run = RunShell(
        "sqlite3 " + Quoted((data_ / "reference.db").string()) +
        " \"INSERT INTO FLS_LTR_TEMPLATE SELECT REGION, LTR_TYP_ID, '" + document +
        "', '2024-12-01 10.00.00', '2024-12-01', NULL FROM FLS_LTR_TEMPLATE WHERE LTR_TYP_ID = '101'\"");
    ASSERT_EQ(run.status, 0) << run.err;
  }
  static std::size_t Times(const std::string& text, const std::string& word) {
    std::size_t times = 0;
    for (auto place = text.find(word); place != std::string::npos; place = text.find(word, place + 1))
      ++times;
    return times;
  }
};

TEST_F(TemplateVersions, WithErrorsMakeNoNewLetterAndTheLetterTypeSaysWhy) {
  WriteTemplateWithError(data_ / "server/templates/REG101_2412.docx");
  GivenVersion("REG101_2412.docx");
  const auto why = AllOf(HasSubstr("\"REG101_2412.docx\" has an error, of the bookmark \"CUSTOMR_NAME\""),
                         HasSubstr("did you mean \"CUSTOMER_NAME\"?"), HasSubstr("--type 101\""));
  const auto types = Letters("types", {});
  EXPECT_THAT(types.out, why);
  EXPECT_EQ(Times(types.err, "\"REG101_2412.docx\" has an error"), 1u) << "when it came: " << types.err;

  const auto letter = PrintLetterFor("100001");
  EXPECT_EQ(letter.status, 1);
  EXPECT_THAT(letter.err, AllOf(HasSubstr("No letter was made. The template"), why,
                                HasSubstr("No template is available for print.")));
  EXPECT_EQ(Times(letter.err, "\"REG101_2412.docx\" has an error"), 1u)
      << "it was here already: " << letter.err;
  EXPECT_EQ(History("SEQ_NBR"), "");
  EXPECT_EQ(Letters("context", {"--type", "101", "--customer", "100001"}).status, 0) << "to mend it with";
  EXPECT_EQ(Letters("letter", {"--type", "102", "--customer", "100001", "--print"}).status, 0);

  EXPECT_THAT(Letters("init", {}).err, AllOf(HasSubstr("No letter of type \"101\" is made with"), why));

  // The fields may be what is wrong: no new file is needed then.
  ServerSql(
      "CREATE TABLE one AS SELECT * FROM letter_field WHERE FLD_NM = 'CUSTOMER_NAME' AND LTR_TYP_ID = "
      "'101'; UPDATE one SET FLD_NM = 'CUSTOMR_NAME', FLD_ORD = 1000; INSERT INTO letter_field SELECT * "
      "FROM one");
  EXPECT_EQ(PrintLetterFor("100001").status, 0);
}

// The old text went out without a word, however often "init" was called.
TEST_F(TemplateVersions, UnderTheirOldNameAreToldOfUntilTheyHaveOneOfTheirOwn) {
  ASSERT_EQ(PrintLetterFor("100001").status, 0);
  const auto corrected = [](const std::filesystem::path& to) {
    WriteChangedTemplate("REG101_2401.docx", to, "is confirmed", "is affirmed.");
  };
  const auto told = [](const std::filesystem::path& from, const std::filesystem::path& to) {
    return HasSubstr("\"REG101_2401.docx\" in \"" + from.string() + "\" is another one than the one in \"" +
                     to.string() + "\"");
  };
  const auto server = data_ / "server/templates";
  const auto local = data_ / "templates/";
  EXPECT_THAT(Letters("types", {}).err, Not(HasSubstr("is another one")));
  corrected(server / "REG101_2401.docx");
  for (const auto& run : {Letters("types", {}), Letters("init", {}), PrintLetterFor("100001")}) {
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.err, AllOf(told(server, local), HasSubstr("save the correction under a new one")));
  }
  for (const auto& letter : Printed()) EXPECT_THAT(PdfText(letter), HasSubstr("is confirmed"));

  // The size alone does not tell them apart.
  auto same_size = ReadFile(local / "REG101_2401.docx");
  same_size[same_size.size() / 2] ^= 1;
  WriteFile(server / "REG101_2401.docx", same_size);
  EXPECT_THAT(Letters("types", {}).err, told(server, local));
}

/// A copy of the product's tables and templates, as an office keeps its own.
class OwnTables : public TemplateVersions {
 protected:
  OwnTables() {
    const auto copy =
        RunShell("cp -r " + Quoted(std::string(ZEMLO_SOURCE_DIR) + "/data") + " " + Quoted(tables_.string()));
    EXPECT_EQ(copy.status, 0) << copy.err;
  }
  Outcome Init() { return Letters("init", {}, Named()); }
  std::string Named() const { return "ZEMLO_TABLES=" + Quoted(tables_.string()); }

  const TemporaryFolder office_;
  const std::filesystem::path tables_ = office_ / "tables";
};

TEST_F(OwnTables, AreNamedByInitAndByVersion) {
  EXPECT_THAT(Letters("init", {}).out, HasSubstr("come from: " + std::string(ZEMLO_SOURCE_DIR) + "/data\n"));
  EXPECT_THAT(Init().out, HasSubstr("come from: " + tables_.string() + "\n"));
  const auto version = RunLetters({"--version"}, Named());
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out, "zemlo-letters 1.0\nTables and templates: " + tables_.string() + "\n");
  const auto wrong = Letters("init", {}, "ZEMLO_TABLES=/nowhere");
  EXPECT_EQ(wrong.status, 1);
  EXPECT_THAT(wrong.err, HasSubstr("ZEMLO_TABLES names the folder \"/nowhere\""));
}

TEST_F(OwnTables, BringNewVersionsByInitAndTellOfCorrectionsUnderOldNames) {
  WriteChangedTemplate("REG101_2401.docx", tables_ / "templates/REG101_2412.docx", "is confirmed",
                       "is affirmed.");
  auto catalogue = ReadFile(tables_ / "reference/templates.tsv");
  catalogue += "K1\t101\tREG101_2412.docx\t2024-12-01 10.00.00\t2024-12-01\t\n";
  WriteFile(tables_ / "reference/templates.tsv", catalogue);
  const auto init = Init();
  EXPECT_EQ(init.status, 0);
  EXPECT_EQ(init.err, "");
  ASSERT_EQ(PrintLetterFor("100001").status, 0);
  EXPECT_THAT(PdfText(Printed().front()), HasSubstr("is affirmed."));

  WriteChangedTemplate("REG101_2401.docx", tables_ / "templates/REG101_2412.docx", "is confirmed",
                       "is agreed");
  EXPECT_THAT(Init().err, HasSubstr("\"REG101_2412.docx\" in \"" + (tables_ / "templates").string() +
                                    "\" is another one than the one in \""));
}

// A new office could make no letter of the type, and was told to start again for ever.
TEST_F(OwnTables, WithAVersionThatNoMachineFetchesAreNamedWithTheRemedy) {
  const auto catalogue = ReadFile(tables_ / "reference/templates.tsv");
  const auto init_with = [&](const std::string& present_end, const std::string& newer_end) {
    auto rows = catalogue;
    const std::string present = "2024-01-08 08.15.00\t2024-01-15\t";
    rows.insert(rows.find(present) + present.size(), present_end);
    rows += "K1\t101\tREG101_9901.docx\t2024-12-01 10.00.00\t2099-01-01\t" + newer_end + "\n";
    WriteFile(tables_ / "reference/templates.tsv", rows);
    return Init();
  };
  std::filesystem::copy_file(tables_ / "templates/REG101_2401.docx", tables_ / "templates/REG101_9901.docx");
  const auto init = init_with("", "");
  EXPECT_EQ(init.status, 0);
  EXPECT_THAT(init.err,
              AllOf(HasSubstr("The template \"REG101_2401.docx\" for letter type \"101\" is used on "),
                    HasSubstr("Give \"REG101_2401.docx\" the expiration date 2098-12-31, the day "
                              "before \"REG101_9901.docx\" takes effect.")));
  const auto letter = PrintLetterFor("100001");
  EXPECT_EQ(letter.status, 1);
  EXPECT_THAT(letter.err, AllOf(HasSubstr("is missing, and no start fetches it"),
                                Not(HasSubstr("Start the program again"))));
  EXPECT_THAT(Letters("types", {}).out, HasSubstr("no start fetches it"));

  EXPECT_THAT(init_with("2098-12-31", "2099-12-31").err,
              HasSubstr("Enter \"REG101_9901.docx\" without an expiration date"));
  EXPECT_EQ(init_with("", "2099-12-31").err, "");
  EXPECT_EQ(init_with("2098-12-31", "").err, "");
  EXPECT_EQ(PrintLetterFor("100001").status, 0);
}

// It has one name for good, so that a new one takes the place of the old.
TEST_F(OwnTables, BringANewLetterheadWhereTheOldOneWasRemoved) {
  ASSERT_EQ(PrintLetterFor("100001").status, 0);
  const auto letterhead = data_ / "server/templates/kvcorr.dot";
  WriteChangedTemplate("kvcorr.dot", letterhead, "STATE OF KORVADA", "STATE OF ELSEWHERE");
  EXPECT_THAT(PrintLetterFor("100001").err,
              AllOf(HasSubstr("The letterhead \"kvcorr.dot\" in"), HasSubstr("the next start fetches it")));
  for (const auto& bringing : {std::string("types"), std::string("init")}) {
    std::filesystem::remove(data_ / "templates/kvcorr.dot");
    Letters(bringing, {});
    EXPECT_EQ(ReadFile(data_ / "templates/kvcorr.dot"), ReadFile(letterhead)) << bringing;
  }
  ASSERT_EQ(
      Letters("letter", {"--type", "101", "--customer", "100001", "--save", (office_ / "l.pdf").string()})
          .status,
      0);
  EXPECT_THAT(PdfText(office_ / "l.pdf"), HasSubstr("STATE OF ELSEWHERE"));
}

}  // namespace
}  // namespace tests
