#include <gmock/gmock.h>

#include "tests/end_to_end/changed_template.h"
#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// Letters that an author makes of a template of their own, in an office that is at work.
class Trial : public PreparedOffice {
 protected:
  Outcome Try(const std::filesystem::path& file, std::vector<std::string> words) {
    words.insert(words.begin(), file.string());
    words.insert(words.end(), {"--save", pdf_.string()});
    return Letters("trial", words);
  }
  static std::filesystem::path OfProduct(const std::string& name) {
    return std::filesystem::path(ZEMLO_SOURCE_DIR) / "data/templates" / name;
  }
  /// All that the office keeps, as one text.
  std::string Kept() {
    const auto database = Quoted((data_ / "server/server.db").string());
    return RunShell("sqlite3 " + database + " .dump").out +
           RunShell(
               "cd " + Quoted(data_.path().string()) +
               " && find . -type f ! -path '*/server.db*' ! -name error.log ! -path './templates/*' | sort")
               .out;
  }

  const TemporaryFolder author_;
  const std::filesystem::path pdf_ = author_ / "trial.pdf";
};

TEST_F(Trial, ShowsARealCustomersLetterAndLeavesTheOfficeAsItIs) {
  const auto file = author_ / "My letter (new).docx";
  WriteChangedTemplate("REG101_2401.docx", file, "is confirmed", "is hereby confirmed");
  PrintLetterFor("100002");
  const auto before = Kept();
  const auto trial = Try(file, {"--type", "101", "--customer", "100001"});
  ASSERT_EQ(trial.status, 0) << trial.err;
  EXPECT_EQ(trial.out, "Saved: " + pdf_.string() + "\n");
  const auto text = PdfText(pdf_);
  EXPECT_THAT(text, AllOf(HasSubstr("is hereby confirmed"), HasSubstr("Prairie Lantern Fuel Supply LLC")));
  EXPECT_EQ(Kept(), before);

  const auto letter = (author_ / "letter.pdf").string();
  ASSERT_EQ(Letters("letter", {"--type", "101", "--customer", "100001", "--save", letter}).status, 0);
  auto as_it_is = PdfText(letter);
  as_it_is.replace(as_it_is.find("is confirmed"), 12, "is hereby confirmed");
  EXPECT_EQ(text, as_it_is) << "the same data, the same letterhead";
}

TEST_F(Trial, TakesEntriesAndLettersOfTheNightlyBatch) {
  const auto refund = OfProduct("RFD105_2406.docx");
  const std::vector<std::string> about = {"--type", "105", "--form-type", "M", "--form", "3100009-3"};
  const auto missing = Try(refund, about);
  EXPECT_EQ(missing.status, 1);
  EXPECT_THAT(missing.err, HasSubstr("--paragraph takes at least one of PARA_LATE_CLAIM"));
  auto words = about;
  words.insert(words.end(), {"--paragraph", "PARA_LATE_CLAIM", "--free-text", "Our own words"});
  EXPECT_EQ(Try(refund, words).status, 0);
  EXPECT_THAT(PdfText(pdf_), AllOf(HasSubstr("The claim came too late."), HasSubstr("Our own words")));

  const auto overdue =
      Try(OfProduct("OVD104_2402.docx"), {"--type", "104", "--form-type", "M", "--form", "3100009-3"});
  EXPECT_EQ(overdue.status, 0) << overdue.err;
  EXPECT_EQ(History("SEQ_NBR"), "");
}

TEST_F(Trial, TakesLettersThatOnlyTheSystemMakesAndNoneThatAreMadeElsewhere) {
  const auto cover = OfProduct("RTM118_2401.docx");
  const auto trial = Try(cover, {"--type", "118", "--customer", "100001"});
  EXPECT_EQ(trial.status, 0) << trial.err;
  EXPECT_THAT(PdfText(pdf_), HasSubstr("Prairie Lantern Fuel Supply LLC"));
  EXPECT_THAT(Try(cover, {"--type", "115", "--customer", "100001"}).err,
              HasSubstr("Letter type \"115\" has no template: it is made elsewhere."));
  const auto asked_for = [&](const char* command, const char* type) {
    return Letters(command, {"--type", type, "--customer", "100001"}).err;
  };
  EXPECT_THAT(
      asked_for("letter", "118"),
      HasSubstr("\"118\" is made by the system and is in no list to choose from. \"zemlo-letters trial"));
  EXPECT_THAT(asked_for("history", "118"), HasSubstr("\"118\" is made by the system"));
  EXPECT_THAT(asked_for("letter", "115"), HasSubstr("\"115\" has no template: it is made elsewhere."));
}

TEST_F(Trial, SaysWhatTheCheckSaysAndIsMadeAllTheSame) {
  const auto file = author_ / "NEW.docx";
  WriteTemplateWithError(file);
  const auto trial = Try(file, {"--type", "101", "--customer", "100001"});
  EXPECT_EQ(trial.status, 0) << trial.err;
  EXPECT_THAT(trial.err,
              AllOf(HasSubstr("error: CUSTOMR_NAME, text, "), HasSubstr("The template has an error.")));
  EXPECT_THAT(PdfText(pdf_), HasSubstr("[Customer"));
  const auto json = Try(file, {"--type", "101", "--customer", "100001", "--json"});
  EXPECT_THAT(json.out, AllOf(HasSubstr("\"bookmark\": \"CUSTOMR_NAME\""), HasSubstr("\"saved\": \"")));
  EXPECT_THAT(json.err, Not(HasSubstr("CUSTOMR_NAME, ")));
}

TEST_F(Trial, RefusesWhatIsNoTemplateAndNeverWritesOverIt) {
  const auto whole = ReadFile(OfProduct("REG101_2401.docx"));
  const auto file = author_ / "NEW.docx";
  WriteFile(file, whole.substr(0, 4000));
  const std::vector<std::string> words = {"--type", "101", "--customer", "100001"};
  EXPECT_THAT(Try(file, words).err, HasSubstr("NEW.docx\" is damaged"));
  EXPECT_THAT(Try(author_ / "none.docx", words).err, HasSubstr("There is no file \""));
  EXPECT_THAT(Try(author_ / "", words).status, 1);
  WriteFile(file, whole);
  EXPECT_THAT(Try(file, {"--type", "999", "--customer", "100001"}).err,
              HasSubstr("There is no letter type \"999\""));
  EXPECT_FALSE(std::filesystem::exists(pdf_));
  const auto over = Letters("trial", {file.string(), "--type", "101", "--customer", "100001", "--save",
                                      (author_ / "../" / author_.path().filename() / "NEW.docx").string()});
  EXPECT_EQ(over.status, 2);
  EXPECT_THAT(over.err, HasSubstr("is the template itself"));
  EXPECT_EQ(ReadFile(file), whole);
}

}  // namespace
}  // namespace tests
