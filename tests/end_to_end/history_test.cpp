#include <gmock/gmock.h>

#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class HistoryCommand : public PreparedOffice {
 protected:
  Outcome Search(const std::vector<std::string>& criteria) { return Letters("history", criteria); }
  /// One cell of the letter that was recorded last.
  std::string LastLetter(const std::string& column) {
    const auto cells = History(column);
    return cells.substr(cells.rfind('\n', cells.size() - 2) + 1, std::string::npos);
  }
  /// The letter that was recorded last, as --json tells it.
  std::string LastLetterAsJson() {
    const auto number = LastLetter("SEQ_NBR");
    return "\"SEQ_NBR\": \"" + number.substr(0, number.size() - 1) + "\"";
  }
  static std::string Day(const std::string& name) {
    return RunShell("date +%F --date=" + Quoted(name)).out.substr(0, 10);
  }
  static std::string Today() { return Day("today"); }
};

TEST_F(HistoryCommand, FindsALetterByEachCriterion) {
  ASSERT_EQ(PrintLetterFor("100001").status, 0);
  const auto letter = LastLetterAsJson();
  const std::vector<std::string> found_by[] = {
      {"--from", Today()},
      {"--customer", "100001", "--status", "successful"},
      {"--customer", "100001", "--type", "101", "--from", Day("30 days ago"), "--to", Today()},
  };
  for (const auto& criteria : found_by) {
    auto words = criteria;
    words.emplace_back("--json");
    const auto search = Search(words);
    EXPECT_EQ(search.status, 0) << search.err;
    EXPECT_THAT(search.out, HasSubstr(letter)) << criteria[0];
  }
  const std::vector<std::string> missed_by[] = {
      {"--customer", "100002"},
      {"--type", "102"},
      {"--batch", "1"},
      {"--customer", "100001", "--status", "failure"},
  };
  for (const auto& criteria : missed_by) {
    auto words = criteria;
    words.emplace_back("--json");
    EXPECT_THAT(Search(words).out, AllOf(StartsWith("["), Not(HasSubstr(letter)))) << criteria[0];
  }
  const auto table = Search({"--customer", "100001", "--from", Today()});
  EXPECT_THAT(table.out, StartsWith("Template File Name  "));
  EXPECT_THAT(table.out, HasSubstr("REG101_2401.DOCX"));
  EXPECT_THAT(table.out, HasSubstr("Online"));
}

TEST_F(HistoryCommand, FindsADocumentsLetterByItsNumber) {
  const std::string number = "3100004-9";
  ASSERT_EQ(Letters("letter", {"--type", "110", "--form-type", "C", "--form", number, "--print"}).status, 0);
  for (const auto& typed : {number, number.substr(0, number.find('-'))}) {
    const auto search = Search({"--form-type", "C", "--form", typed, "--json"});
    EXPECT_THAT(search.out, HasSubstr(LastLetterAsJson())) << typed << search.err;
    EXPECT_THAT(search.out, HasSubstr("\"FORM_NBR_WITH_DGT\": \"" + number + "\""));
    EXPECT_THAT(search.out, HasSubstr("\"Form_Type\": \"Tax Liability Assessment\""));
  }
}

TEST_F(HistoryCommand, TellsWhyASearchIsRefused) {
  struct Case {
    std::vector<std::string> criteria;
    int status;
    const char* reason;
  };
  const Case cases[] = {
      {{}, 1, "Please select criteria"},
      {{"--troop-district", "A1"}, 1, "Please select criteria"},
      {{"--type", "101", "--form-type", "C"}, 1, "does not go with \"Registration Confirmation\""},
      {{"--type", "999"}, 1, "There is no letter type \"999\""},
      {{"--customer", "nobody"}, 1, "There is no customer \"nobody\""},
      {{"--batch", "7x"}, 1, "--batch does not take \"x\""},
      {{"--from", "1980-01-01"}, 1, "The earliest day to search from is 1993-01-01"},
      {{"--from", "yesterday"}, 2, "--from takes a day as yyyy-mm-dd"},
      {{"--customer", "100001", "--status", "good"}, 2, "--status takes all, successful or failure"},
  };
  for (const auto& [criteria, status, reason] : cases) {
    const auto search = Search(criteria);
    EXPECT_EQ(search.status, status) << reason;
    EXPECT_THAT(search.err, HasSubstr(reason));
    EXPECT_THAT(search.out, IsEmpty()) << reason;
  }
}

}  // namespace
}  // namespace tests
