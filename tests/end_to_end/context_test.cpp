#include <gmock/gmock.h>

#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// Letters of real customers, made with `merge` from what `context` writes.
class Contexts : public PreparedOffice {
 protected:
  Outcome Context(const std::vector<std::string>& letter) {
    auto words = letter;
    words.insert(words.end(), {"--out", context_.string()});
    return Letters("context", words);
  }
  Outcome Merge(const std::string& template_name) {
    return RunLetters({"merge", (data_ / ("server/templates/" + template_name)).string(), context_.string(),
                       merged_.string()});
  }
  std::string TextOfLetter(const std::vector<std::string>& letter) {
    auto words = letter;
    words.insert(words.end(), {"--save", (data_ / "letter.pdf").string()});
    const auto run = Letters("letter", words);
    EXPECT_EQ(run.status, 0) << run.err;
    return PdfText(data_ / "letter.pdf");
  }
  void ReplaceInContext(const std::string& from, const std::string& to) {
    auto text = ReadFile(context_);
    const auto place = text.find(from);
    ASSERT_NE(place, std::string::npos) << text;
    WriteFile(context_, text.replace(place, from.size(), to));
  }

  const std::filesystem::path context_ = data_ / "context.xml";
  const std::filesystem::path merged_ = data_ / "merged.pdf";
};

TEST_F(Contexts, MakeTheLetterThatTheOfficeMakes) {
  const std::pair<std::vector<std::string>, std::string> letters[] = {
      {{"--type", "101", "--customer", "100001"}, "REG101_2401.docx"},
      {{"--type", "110", "--form-type", "C", "--form", "3100004-9"}, "CTL110_2407.docx"},
  };
  for (const auto& [letter, template_name] : letters) {
    const auto context = Context(letter);
    ASSERT_EQ(context.status, 0) << context.err;
    EXPECT_EQ(context.out + context.err, "");
    const auto merge = Merge(template_name);
    ASSERT_EQ(merge.status, 0) << merge.err;
    EXPECT_EQ(PdfText(merged_), TextOfLetter(letter)) << template_name;
  }
  EXPECT_EQ(Letters("context", {"--type", "101", "--customer", "100001"}).out,
            (Context(letters[0].first), ReadFile(context_)));
  EXPECT_EQ(std::filesystem::status(context_).permissions(), std::filesystem::perms(0600));
  EXPECT_THAT(FilesIn(data_ / "printed"), IsEmpty());
}

TEST_F(Contexts, LeaveOutWhatOnlyTheUserKnows) {
  const auto context = Context({"--type", "103", "--customer", "100001"});
  EXPECT_EQ(context.status, 0);
  EXPECT_THAT(context.err, AllOf(HasSubstr("U_BOND_AMT (Amount of the bond)"), HasSubstr("U_BOND_DT")));
  const auto unfilled = Merge("BND103_2405.docx");
  EXPECT_EQ(unfilled.status, 1);
  EXPECT_THAT(unfilled.err, HasSubstr("U_BOND_AMT"));

  ReplaceInContext("</XML_CONTEXT>",
                   "<U_BOND_AMT>$5,000</U_BOND_AMT><U_BOND_DT>June 1</U_BOND_DT></XML_CONTEXT>");
  EXPECT_EQ(Merge("BND103_2405.docx").status, 0);
  EXPECT_EQ(PdfText(merged_), TextOfLetter({"--type", "103", "--customer", "100001", "--set",
                                            "U_BOND_AMT=$5,000", "--set", "U_BOND_DT=June 1"}));
}

TEST_F(Contexts, ShowTheOptionalParagraphsWhoseLineIsDeleted) {
  const std::vector<std::string> letter = {"--type", "105", "--form-type", "M", "--form", "3100009-3"};
  ASSERT_EQ(Context(letter).status, 0);
  ReplaceInContext("<PARA_LATE_CLAIM OneOf=\"REASON\" V_EnglishDesc=\"Claim filed too late\"/>", "");
  const auto merge = Merge("RFD105_2406.docx");
  EXPECT_EQ(merge.status, 0) << merge.err;
  auto ticked = letter;
  ticked.insert(ticked.end(), {"--paragraph", "PARA_LATE_CLAIM"});
  EXPECT_EQ(PdfText(merged_), TextOfLetter(ticked));
}

TEST_F(Contexts, AreRefusedWhereTheLetterWouldBe) {
  const auto address = Context({"--type", "101", "--customer", "100018"});
  EXPECT_EQ(address.status, 1);
  EXPECT_THAT(address.err, HasSubstr("address is incomplete"));
  EXPECT_EQ(Context({"--type", "110", "--customer", "100001"}).status, 1);
  EXPECT_EQ(Context({"--type", "101"}).status, 2);
  EXPECT_FALSE(std::filesystem::exists(context_));
}

}  // namespace
}  // namespace tests
