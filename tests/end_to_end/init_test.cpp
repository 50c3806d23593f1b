#include <gmock/gmock.h>

#include "tests/end_to_end/own_product.h"
#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

Outcome Init(const std::filesystem::path& folder, const std::vector<std::string>& words) {
  auto all = words;
  all.insert(all.begin(), {"init", "--data", folder.string()});
  return RunLetters(all);
}

TEST(Init, ANewFolderIsMadeOnlyInSoManyWords) {
  const TemporaryFolder folder;
  const auto fresh = folder / "new";
  for (const std::vector<std::string>& words :
       std::vector<std::vector<std::string>>{{}, {"--demo", "--empty"}, {"--empty", "--customers", "3"}}) {
    const auto run = Init(fresh, words);
    EXPECT_EQ(run.status, 2) << testing::PrintToString(words);
    EXPECT_THAT(run.err, AllOf(HasSubstr("--demo"), HasSubstr("--empty")));
    EXPECT_FALSE(std::filesystem::exists(fresh));
  }
  for (const std::string command : {"types", "customers"}) {
    const auto run = RunLetters({command, "--data", fresh.string()});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err,
                AllOf(HasSubstr(fresh.string()), HasSubstr("init --demo"), HasSubstr("init --empty")));
  }
  EXPECT_FALSE(std::filesystem::exists(fresh));
}

TEST(Init, AnEmptyOfficeHasLettersToMakeAndNobodyToWriteTo) {
  const TemporaryFolder folder;
  ASSERT_EQ(Init(folder / "office", {"--empty"}).status, 0);
  const auto data = (folder / "office").string();
  EXPECT_THAT(RunLetters({"customers", "--data", data, "--json"}).out, Not(HasSubstr("100001")));
  EXPECT_THAT(RunLetters({"types", "--data", data}).out, HasSubstr("Certificate of Tax Liability"));
  EXPECT_THAT(ReadFile(folder / "office/settings.ini"), Not(HasSubstr("DEMO01")));
  EXPECT_EQ(Init(folder / "office", {}).status, 0);

  const auto demo = Init(folder / "office", {"--demo"});
  EXPECT_EQ(demo.status, 1);
  EXPECT_THAT(demo.err, HasSubstr("an office's own data"));
  EXPECT_THAT(RunLetters({"customers", "--data", data, "--json"}).out, Not(HasSubstr("100001")));
}

TEST(Init, GoesOnWhereItWasInterrupted) {
  const TemporaryFolder folder;
  WriteFile(folder / "office.txt", "# an explanation\ndemo, unfinished\n");
  std::filesystem::create_directories(folder / "server");
  WriteFile(folder / "server/server.db.new", "half a database");
  EXPECT_THAT(RunLetters({"types", "--data", folder.path().string()}).err, HasSubstr("not ready yet"));
  EXPECT_EQ(Init(folder.path(), {"--letters", "0"}).status, 0);
  EXPECT_THAT(RunLetters({"customers", "--data", folder.path().string()}).out, HasSubstr("100001"));
  EXPECT_THAT(ReadFile(folder / "office.txt"), testing::EndsWith("\ndemo\n"));
}

TEST(Init, AFolderFullOfSomethingElseIsLeftAlone) {
  const TemporaryFolder folder;
  WriteFile(folder / "thesis.odt", "");
  const auto run = Init(folder.path(), {"--demo"});
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("is no office's"));
  EXPECT_EQ(FilesIn(folder.path()).size(), 1u);
}

// A disk that was not mounted led to 300 invented customers in an office's folder.
TEST_F(PreparedOffice, ALostDatabaseIsNamedAndNeverMadeAnew) {
  const auto database = data_ / "server/server.db";
  std::filesystem::rename(data_ / "server", data_ / "elsewhere");
  std::filesystem::create_directories(data_ / "server");
  for (const std::vector<std::string>& words :
       std::vector<std::vector<std::string>>{{}, {"--demo"}, {"--empty"}}) {
    const auto run = Init(data_.path(), words);
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, AllOf(HasSubstr(database.string()), HasSubstr("has held an office's data")));
    EXPECT_FALSE(std::filesystem::exists(database));
  }
  for (const auto& run : {Letters("types", {}), Letters("customers", {}), PrintLetterFor("100001")}) {
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, AllOf(HasSubstr(database.string()), Not(HasSubstr("init"))));
  }
  // The mark alone tells as much.
  for (const auto& file : FilesIn(data_.path()))
    if (file.filename() != "office.txt") std::filesystem::remove_all(file);
  EXPECT_THAT(Init(data_.path(), {"--demo"}).err, HasSubstr(database.string()));
  EXPECT_THAT(Letters("types", {}).err, AllOf(HasSubstr("settings.ini"), Not(HasSubstr("init"))));
}

TEST_F(PreparedOffice, AFolderOfAnEarlierProgramIsADemoWhileItsUserIs) {
  std::filesystem::remove(data_ / "office.txt");
  EXPECT_EQ(Letters("init", {"--demo"}).status, 0);
  EXPECT_TRUE(std::filesystem::exists(data_ / "office.txt"));

  std::filesystem::remove(data_ / "office.txt");
  WriteFile(data_ / "settings.ini", "[User]\nId=OFFICER7\nRegion=K1\n");
  EXPECT_EQ(Letters("init", {"--demo"}).status, 1);
  EXPECT_EQ(Letters("init", {}).status, 0);
  EXPECT_THAT(ReadFile(data_ / "office.txt"), testing::EndsWith("\noffice\n"));
}

// A bad line in one table left the changes of the others in force.
TEST(Init, TakesInTheTablesOfAllDatabasesOrNone) {
  const OwnProduct product;
  const TemporaryFolder folder;
  const auto office = folder / "office";
  const auto init = [&](std::vector<std::string> words) {
    words.insert(words.begin(), {"init", "--data", office.string()});
    return product.Letters(words);
  };
  const auto templates = product.Table("reference/templates.tsv");
  const auto fields = product.Table("server/letter_fields.tsv");
  const std::string bad_template = "K1\t101\tREG101_2401.docx\t2026-1-1 8.00.00\t2026-01-01\t\n";
  const std::string bad_query = "115\tA\t\tA\tQUERY\tSELECT SHOE_SIZE FROM customer\tN\t\t\n";

  product.Write("reference/templates.tsv", templates + bad_template);
  const auto fresh = init({"--empty"});
  EXPECT_EQ(fresh.status, 1);
  EXPECT_THAT(fresh.err, AllOf(HasSubstr("templates.tsv\", line 26, column TMPLT_TS"),
                               HasSubstr("Nothing was taken in")));
  EXPECT_FALSE(std::filesystem::exists(office));

  product.Write("reference/templates.tsv", "\xEF\xBB\xBF" + templates);
  ASSERT_EQ(init({"--empty"}).status, 0);
  const auto reference = ReadFile(office / "reference.db");
  const auto stored = [&] {
    return RunShell("sqlite3 " + Quoted((office / "server/server.db").string()) +
                    " \"SELECT FLD_NM FROM letter_field WHERE LTR_TYP_ID = '115'\"")
        .out;
  };
  product.Write("reference/officers.tsv", product.Table("reference/officers.tsv") + "NEW01\tSomebody New\n");
  product.Write("server/letter_fields.tsv", fields + bad_query);
  const auto refused = init({});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, AllOf(HasSubstr("letter_fields.tsv\", line 348, column FLD_SRC"),
                                 HasSubstr("field \"A\" of letter type \"115\""), HasSubstr("SHOE_SIZE")));
  EXPECT_TRUE(ReadFile(office / "reference.db") == reference);

  product.Write("server/letter_fields.tsv", fields + "115\tA\t\tA\tLOCAL\t7\tN\t\t\n");
  product.Write("reference/templates.tsv", templates + bad_template);
  EXPECT_EQ(init({}).status, 1);
  EXPECT_EQ(stored(), "");

  product.Write("reference/templates.tsv", templates);
  EXPECT_EQ(init({}).status, 0);
  EXPECT_EQ(stored(), "A\n");
  EXPECT_FALSE(ReadFile(office / "reference.db") == reference);
}

}  // namespace
}  // namespace tests
