#include <gmock/gmock.h>

#include "tests/end_to_end/changed_template.h"
#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// Letters that ask for what only the user knows, as the demo customers get them.
class CompletedLetters : public PreparedOffice {
 protected:
  static std::vector<std::string> Hearing(std::vector<std::string> more) {
    more.insert(more.begin(),
                {"--type", "107", "--form-type", "C", "--form", "3100004-9", "--set", "U_HEARING_DT=Monday",
                 "--set", "U_HEARING_TM=10 a.m.", "--set", "U_HEARING_PLACE=Room 7"});
    return more;
  }
  static std::vector<std::string> Refund(std::vector<std::string> more) {
    more.insert(more.begin(), {"--type", "105", "--form-type", "M", "--form", "3100009-3", "--print"});
    return more;
  }
  /// The words of the only printed page, with one blank between them.
  std::string PrintedWords() {
    const auto files = Printed();
    if (files.size() != 1) return "(" + std::to_string(files.size()) + " letters printed)";
    std::string words;
    for (const char c : PdfText(files.front())) {
      const bool is_blank = c == ' ' || c == '\n' || c == '\f';
      if (!is_blank || (!words.empty() && words.back() != ' ')) words += is_blank ? ' ' : c;
    }
    return words;
  }
};

TEST_F(CompletedLetters, ShowTheTickedParagraphsTheFreeTextAndNoOthers) {
  const auto letter =
      Letters("letter", Refund({"--paragraph", "PARA_LATE_CLAIM", "--free-text", "First line\nSecond line"}));
  ASSERT_EQ(letter.status, 0) << letter.err;
  EXPECT_THAT(PrintedWords(),
              AllOf(HasSubstr("The claim came too late."), HasSubstr("First line Second line"),
                    Not(HasSubstr("||")), Not(HasSubstr("The invoices are missing")),
                    Not(HasSubstr("is not exempt")), Not(HasSubstr("[The officer may"))));
  const auto page = PdfText(Printed().front());
  EXPECT_THAT(page, testing::ContainsRegex("First line\n *Second line\n")) << "its lines stay apart";
  EXPECT_EQ(History("LTR_TYP_ID || SYS_RFRNC_CD"), "105O\n") << "recorded once";
}

TEST_F(CompletedLetters, ShowAValueOnOneLineAndTakeNoneThatOnlyLooksFilled) {
  const auto bond = [this](const char* amount) {
    return Letters("letter", {"--type", "103", "--customer", "100001", "--print", "--set",
                              "U_BOND_DT=June 1\r\n", "--set", std::string("U_BOND_AMT=") + amount});
  };
  for (const auto* nothing : {"\u00A0\u200B", "\u2060", "\u3164", "\u00AD"}) {
    const auto blank = bond(nothing);
    EXPECT_EQ(blank.status, 1) << nothing;
    EXPECT_THAT(blank.err,
                HasSubstr("Enter following bookmark value(s):\nAmount of the bond\n--set takes U_BOND_AMT."));
  }
  const auto letter = bond("\u00A0$5,000\n and costs\n");
  ASSERT_EQ(letter.status, 0) << letter.err;
  EXPECT_THAT(PdfText(Printed().front()), HasSubstr("$5,000 and costs"));
  EXPECT_THAT(PrintedWords(), HasSubstr("on file by June 1,"));
}

// "...in writing by [Answer or payment due by]." went to a customer.
TEST_F(CompletedLetters, GoOutWithPlaceholdersOnlyWhenThatIsAllowed) {
  // The bookmark before it reaches over it, so that it goes with what that one spans.
  const auto local = data_ / "templates/ADR102_2403.docx";
  WriteChangedTemplate("ADR102_2403.docx", local, "<w:bookmarkEnd w:id=\"10\"/>", "");
  WriteChangedTemplate(local, local, "<w:bookmarkEnd w:id=\"11\"/>",
                       "<w:bookmarkEnd w:id=\"11\"/><w:r><w:t>.</w:t></w:r><w:bookmarkEnd w:id=\"10\"/>");
  const auto notice = [this](const std::vector<std::string>& more) {
    std::vector<std::string> words = {"--type", "102", "--customer", "100001"};
    words.insert(words.end(), more.begin(), more.end());
    return Letters("letter", words);
  };
  const auto file = (data_ / "notice.pdf").string();
  for (const auto& way : {std::vector<std::string>{"--print", "--yes"}, {"--save", file}}) {
    const auto letter = notice(way);
    EXPECT_EQ(letter.status, 1) << letter.err;
    EXPECT_THAT(letter.err, AllOf(HasSubstr("placeholder:\nDUE_DT\n"), HasSubstr("--allow-unfilled")));
  }
  EXPECT_THAT(Printed(), IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_EQ(History("SEQ_NBR"), "");
  EXPECT_EQ(notice({}).status, 0) << "it may be looked at";

  const auto letter = notice({"--print", "--allow-unfilled"});
  EXPECT_EQ(letter.status, 0) << letter.err;
  EXPECT_EQ(Printed().size(), 1u);
}

TEST_F(CompletedLetters, LeaveOutAValueWithTheParagraphItStandsIn) {
  const auto missing = Letters("letter", Hearing({"--paragraph", "PARA_INTERPRETER", "--print"}));
  EXPECT_EQ(missing.status, 1);
  EXPECT_THAT(missing.err, HasSubstr("Enter following bookmark value(s):\nLanguage of the interpreter\n"));
  EXPECT_THAT(Printed(), IsEmpty());
  EXPECT_EQ(History("SEQ_NBR"), "");

  const auto letter = Letters("letter", Hearing({"--paragraph", "PARA_DEFAULT", "--print"}));
  ASSERT_EQ(letter.status, 0) << letter.err;
  EXPECT_THAT(PrintedWords(), AllOf(HasSubstr("Room 7"), HasSubstr("If you do not appear"),
                                    Not(HasSubstr("interpreter")), Not(HasSubstr("bills of lading"))));
}

TEST_F(CompletedLetters, FillAValueInATickedParagraphWithinItsWording) {
  const auto letter = Letters(
      "letter", Hearing({"--paragraph", "PARA_INTERPRETER", "--set", "U_INTERPRETER_LANG=Welsh", "--print"}));
  ASSERT_EQ(letter.status, 0) << letter.err;
  EXPECT_THAT(PrintedWords(), HasSubstr("An interpreter for Welsh will be present."));
}

TEST_F(CompletedLetters, RefuseEntriesThatTheyHaveNoPlaceFor) {
  struct Case {
    std::vector<std::string> words;
    int status;
    const char* says;
  };
  const std::vector<std::string> bond = {"--type", "103", "--customer", "100001", "--print"};
  const auto with = [](std::vector<std::string> words, std::vector<std::string> more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
  };
  const Case cases[] = {
      {with(bond, {}), 1, "Enter following bookmark value(s):\nAmount of the bond\nBond to be filed by\n"},
      {with(bond, {"--set", "U_BOND=1"}), 1,
       "The letter has no bookmark \"U_BOND\" to fill in. It has:\n  U_BOND_AMT  Amount of the bond\n"},
      {with(bond, {"--free-text", "x"}), 1, "The letter has no optional paragraphs."},
      {with(bond, {"--set", "U_BOND_AMT"}), 2, "--set \"U_BOND_AMT\" is not of the form BOOKMARK=VALUE."},
      {Refund({"--paragraph", "PARA_X"}), 1, "It has:\n  PARA_LATE_CLAIM  Claim filed too late\n"},
      {{"--type", "101", "--customer", "100001", "--print", "--set", "A=1"},
       1,
       "The letter asks for nothing that only the user knows."},
  };
  for (const auto& [words, status, says] : cases) {
    const auto letter = Letters("letter", words);
    EXPECT_EQ(letter.status, status) << says;
    EXPECT_THAT(letter.err, HasSubstr(says));
  }
  EXPECT_THAT(Printed(), IsEmpty());
  EXPECT_EQ(History("SEQ_NBR"), "");
}

}  // namespace
}  // namespace tests
