#include <gmock/gmock.h>

#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST(WrongUsage, EveryCommandSaysWhatIsWrongAndHasAHelp) {
  for (const std::string command : {"init", "customers", "customer", "types", "letter", "trial", "history",
                                    "unrecorded", "bookmarks", "context", "merge"}) {
    EXPECT_EQ(RunLetters({command, "--no-such-option"}).status, 2) << command;
    const auto help = RunLetters({command, "--help"});
    EXPECT_EQ(help.status, 0) << command;
    EXPECT_THAT(help.out, HasSubstr(command));
  }
  for (const std::vector<std::string>& words :
       std::vector<std::vector<std::string>>{{},
                                             {"nonsense"},
                                             {"letter"},
                                             {"letter", "--type", "101"},
                                             {"bookmarks"},
                                             {"merge", "a"},
                                             {"init", "--demo", "--customers", "none"}}) {
    EXPECT_EQ(RunLetters(words).status, 2) << testing::PrintToString(words);
  }
}

TEST(TemplateCheck, EveryTemplateOfTheProductIsSound) {
  for (const auto& file : FilesIn(std::filesystem::path(ZEMLO_SOURCE_DIR) / "data" / "templates")) {
    if (file.extension() != ".docx") continue;
    const auto run = RunLetters({"bookmarks", "--quick", file.string()});
    EXPECT_EQ(run.status, 0) << file;
    EXPECT_THAT(run.err, IsEmpty()) << file;
  }
}

// It was told which paragraphs of all letters it does not have.
TEST(TemplateCheck, ATemplateThatNoLetterUsesYetNeedsNoParagraphOfAnyLetter) {
  const tests::TemporaryFolder folder;
  const auto file = folder / "new letter.docx";
  std::filesystem::copy_file(std::string(ZEMLO_SOURCE_DIR) + "/data/templates/REG101_2401.docx", file);
  const auto run = RunLetters({"bookmarks", file.string()});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.err, IsEmpty());
}

TEST(TemplateCheck, ATemplateCheckedAgainstAnotherLetterEndsWithStatusOne) {
  const auto file = std::string(ZEMLO_SOURCE_DIR) + "/data/templates/RFD105_2406.docx";
  const auto run = RunLetters({"bookmarks", "--json", "--type", "101", file});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.out, HasSubstr("\"bookmark\": \"PARA_FREE_TEXT\""));
  EXPECT_THAT(RunLetters({"bookmarks", "--type", "999", file}).err,
              HasSubstr("There is no letter type \"999\""));
}

TEST(TemplateCheck, WritesANewTemplateAndNeverOverTheOneItReads) {
  const tests::TemporaryFolder folder;
  const auto old = (folder / "old.docx").string();
  const auto made = (folder / "new.docx").string();
  const auto source = std::string(ZEMLO_SOURCE_DIR);
  RunShell("pandoc -f html -o " + Quoted(old) + " " +
           Quoted(source + "/tests/wordprocessor/documents/web_page.html"));
  const auto bytes = ReadFile(old);
  EXPECT_THAT(RunLetters({"bookmarks", old, "--repair", old}).err,
              HasSubstr("is the file it would be made of"));
  const auto repaired = RunLetters({"bookmarks", old, "--repair", made, "--json"});
  EXPECT_THAT(repaired.out, HasSubstr("\"placeholder\": \"[Customer name]\""));
  EXPECT_THAT(repaired.err, IsEmpty());
  EXPECT_EQ(ReadFile(old), bytes);
  EXPECT_THAT(RunLetters({"bookmarks", made}).out, HasSubstr("[Amount due]"));
  std::filesystem::remove(made);
  const auto template_file = source + "/data/templates/REG101_2401.docx";
  EXPECT_THAT(RunLetters({"bookmarks", template_file, "--repair", made}).err,
              HasSubstr("there is nothing to repair"));
  const auto refused = RunLetters({"bookmarks", "--from-merge-fields", template_file, made});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err,
              HasSubstr("has no merge field that a bookmark could stand for. Nothing was written."));
  EXPECT_FALSE(std::filesystem::exists(made));
  EXPECT_EQ(RunLetters({"bookmarks", "--from-merge-fields", old}).status, 2);
  EXPECT_EQ(RunLetters({"bookmarks", old, made}).status, 2);
}

TEST_F(PreparedOffice, RefusesWithTheSystemsOwnMessages) {
  struct Case {
    std::vector<std::string> words;
    std::string message;
  };
  const std::vector<Case> cases = {
      {{"--type", "999", "--customer", "100001"}, "There is no letter type \"999\"."},
      {{"--type", "101", "--customer", "1"}, "There is no customer \"1\"."},
      {{"--type", "114", "--customer", "100001"}, "Batch letter is not available to view"},
      {{"--type", "110", "--customer", "100001"}, "Form number is required"},
      {{"--type", "110", "--form-type", "C", "--form", "1234567-1"}, "Form number is invalid"},
      {{"--type", "110", "--form-type", "C", "--form", "12345671"}, "needs a dash before its check digit"},
      {{"--type", "116", "--customer", "100001"}, "Letter type \"116\" has no template in the catalogue."},
      {{"--type", "116", "--customer", "100001"},
       "This request can not be processed at this time. Please create a template to complete this request."},
  };
  for (const auto& [words, message] : cases) {
    auto all = words;
    all.emplace_back("--print");
    const auto run = Letters("letter", all);
    EXPECT_EQ(run.status, 1) << message;
    EXPECT_THAT(run.err, HasSubstr(message));
  }
  EXPECT_THAT(Printed(), IsEmpty());
  EXPECT_EQ(History("SEQ_NBR"), "");
}

// Templates that a full disk had cut off stopped their letters for ever.
TEST_F(PreparedOffice, TemplatesThatAreMissingOrBrokenAreFetchedAgain) {
  const auto local = data_ / "templates";
  const auto letter = ReadFile(data_ / "server/templates/REG101_2401.docx");
  const auto letterhead = ReadFile(data_ / "server/templates/kvcorr.dot");
  WriteFile(local / "REG101_2401.docx", letter.substr(0, 4096));
  WriteFile(local / "kvcorr.dot", "");
  EXPECT_EQ(PrintLetterFor("100001").status, 0);
  EXPECT_EQ(ReadFile(local / "REG101_2401.docx"), letter);
  EXPECT_EQ(ReadFile(local / "kvcorr.dot"), letterhead);

  const std::string others = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 by hand";
  WriteFile(local / "REG101_2401.docx", others);
  std::filesystem::remove(local / "kvcorr.dot");
  EXPECT_EQ(PrintLetterFor("100001").status, 0);
  EXPECT_EQ(ReadFile(local / "REG101_2401.docx.damaged"), others);
  EXPECT_THAT(Printed(), SizeIs(2));
  EXPECT_THAT(ReadFile(data_ / "error.log"), HasSubstr("REG101_2401.docx.damaged"));
}

TEST_F(PreparedOffice, ATemplateThatIsDamagedOnTheServerIsNamedAndNotSpread) {
  WriteFile(data_ / "server/templates/REG101_2401.docx", "");
  std::filesystem::remove(data_ / "templates/REG101_2401.docx");
  const auto letter = PrintLetterFor("100001");
  EXPECT_EQ(letter.status, 1);
  EXPECT_THAT(letter.err, HasSubstr("server/templates/REG101_2401.docx"));
  EXPECT_FALSE(std::filesystem::exists(data_ / "templates/REG101_2401.docx"));
  EXPECT_THAT(Printed(), IsEmpty());
}

TEST_F(PreparedOffice, AFullOrClosedPrintFolderLosesNothingAndRecordsNothing) {
  WriteFile(data_ / "settings.ini", "[User]\nId=DEMO01\nRegion=K1\n[Folders]\nPrinted=/proc/no-such-place\n");
  const auto letter = PrintLetterFor("100001");
  EXPECT_EQ(letter.status, 1);
  EXPECT_THAT(letter.err, HasSubstr("no-such-place"));
  EXPECT_EQ(History("SEQ_NBR"), "");
}

TEST_F(PreparedOffice, ASaveThatFailsLeavesTheFileThatWasThere) {
  const auto target = data_ / "kept.odt";
  WriteFile(target, "kept");
  const auto letter = Letters("letter", {"--type", "101", "--customer", "100001", "--save", target.string()});
  EXPECT_EQ(letter.status, 1);
  EXPECT_EQ(ReadFile(target), "kept");
  EXPECT_EQ(History("SEQ_NBR"), "");
}

TEST(Merge, NamesWhatIsWrongWithAContext) {
  const TemporaryFolder folder;
  const auto letter = std::string(ZEMLO_SOURCE_DIR) + "/data/templates/REG101_2401.docx";
  const auto context = folder / "context.xml";
  for (const std::string text : {"", "<a>", "<a/><b/>", "<!DOCTYPE a><a/>", "<a x='1' x='2'/>", "<a>\xFF</a>",
                                 "<a>\x01</a>", "<a>&unknown;</a>"}) {
    WriteFile(context, text);
    const auto run = RunLetters({"merge", letter, context.string(), (folder / "out.docx").string()});
    EXPECT_EQ(run.status, 1) << text;
    EXPECT_THAT(run.err, HasSubstr("context.xml")) << text;
    EXPECT_FALSE(std::filesystem::exists(folder / "out.docx")) << text;
  }
}

}  // namespace
}  // namespace tests
