#include "wordprocessor/authoring/check.h"

#include <gmock/gmock.h>

#include "tests/wordprocessor/docx_builder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using wordprocessor::TemplateField;
using wordprocessor::TemplateFinding;
using Kind = TemplateField::Kind;

const std::vector<TemplateField> kCheckedFields = {{"CUSTOMER_NAME", Kind::kValue},
                                                   {"LTR_DT", Kind::kValue},
                                                   {"PARA_LATE", Kind::kParagraph},
                                                   {"PERIODS", Kind::kTable},
                                                   {"PERIOD_TAX", Kind::kColumn, "PERIODS"}};

std::string Start(const std::string& name, int id) {
  return "<w:bookmarkStart w:id=\"" + std::to_string(id) + "\" w:name=\"" + name + "\"/>";
}
std::string End(int id) {
  return "<w:bookmarkEnd w:id=\"" + std::to_string(id) + "\"/>";
}
std::string Text(const std::string& inside) {
  return "<w:p>" + inside + "</w:p>";
}
const std::string kRun = "<w:r><w:t>x</w:t></w:r>";

std::string Row(const std::string& first, const std::string& second) {
  return "<w:tbl><w:tr><w:tc>" + Text(first) + "</w:tc><w:tc>" + Text(second) + "</w:tc></w:tr></w:tbl>";
}

/// "grade BOOKMARK suggestion: first words".
std::vector<std::string> Findings(const std::string& body,
                                  const std::vector<TemplateField>& fields = kCheckedFields) {
  const auto document =
      wordprocessor::DocxDocument::FromBytes(LetterOf("<w:body>" + body + "</w:body>"), "t");
  std::vector<std::string> described;
  for (const auto& finding : CheckTemplate(document, fields)) {
    const bool error = finding.grade == TemplateFinding::Grade::kError;
    described.push_back((error ? "error " : "warning ") + finding.bookmark + " " + finding.suggestion);
  }
  return described;
}

const std::string kParagraph = Marked("PARA_LATE", "Too late.", 90);
const std::string kTable =
    Row(Start("PERIODS", 80) + Start("PERIOD_TAX", 81) + kRun + End(81), kRun + End(80));

TEST(TemplateCheck, ASoundTemplateHasNoFindings) {
  EXPECT_THAT(
      Findings(Marked("CUSTOMER_NAME", "n", 1) + Marked("CUSTOMER_NAME__1", "n", 2) + kParagraph + kTable),
      IsEmpty());
}

TEST(TemplateCheck, ATablesBookmarkMayStandAnywhereInItsRow) {
  const auto column = Start("PERIOD_TAX", 1) + kRun + End(1);
  EXPECT_THAT(Findings(Row(column, Start("PERIODS", 2) + End(2)) + kParagraph), IsEmpty());
  EXPECT_THAT(Findings(Row(kRun, Start("PERIODS", 2) + End(2)) + Row(column, kRun) + kParagraph),
              ElementsAre("error PERIOD_TAX "));
}

TEST(TemplateCheck, NamesThatNoFieldHasGetTheLikeliestName) {
  EXPECT_THAT(
      Findings(Marked("CUSTOMER_NMAE", "n", 1) + Marked("Ltr_Dt__2", "d", 2) + Marked("WEATHER", "w", 3) +
               kParagraph),
      ElementsAre("error CUSTOMER_NMAE CUSTOMER_NAME", "error Ltr_Dt__2 LTR_DT__2", "error WEATHER "));
  EXPECT_THAT(Findings(Marked("LTR_DT", "d", 1), {}), ElementsAre("error LTR_DT "));
  EXPECT_THAT(Findings(Marked("Name", "n", 1) + Marked("TAX", "n", 2),
                       {{"OFFICE_NAME"}, {"OFFICE_NAME"}, {"TAX_A"}, {"TAX_B"}}),
              ElementsAre("error Name OFFICE_NAME", "error TAX "));
}

TEST(TemplateCheck, WhatWouldMakeAWrongLetterIsAnError) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {Marked("LTR_DT", "d", 1) + Marked("LTR_DT", "d", 2), "error LTR_DT "},
      {Row(Start("LTR_DT", 1) + kRun, kRun + End(1)), "error LTR_DT "},
      {Text(Start("LTR_DT", 1) + kRun), "error LTR_DT "},
      {Marked("PERIODS", "t", 1), "error PERIODS "},
      {Row(Start("PERIOD_TAX", 1) + kRun + End(1), kRun), "error PERIOD_TAX "}};
  for (const auto& [body, finding] : cases) {
    EXPECT_THAT(Findings(body + kParagraph), ElementsAre(finding)) << body;
  }
  EXPECT_THAT(Findings(Text(Start("PARA_LATE", 1) + End(1))), ElementsAre("error PARA_LATE "));
}

// Authors were told of a bookmark, but not where to look for it.
TEST(TemplateCheck, SaysWhereEachBookmarkStands) {
  auto parts = LetterParts(
      "<w:body>" + Text("<w:r><w:t>Dear </w:t></w:r>" + Start("WEATHER", 1) + kRun + End(1)) +
      Text("<w:r><w:t>First</w:t></w:r>") + Marked("LTR_DT", "d", 2) + Text("<w:r><w:t>Second</w:t></w:r>") +
      Marked("LTR_DT", "d", 3) +
      Text("<w:r><w:t>Then</w:t></w:r>" + Start("LTR_DT", 4) + Start("PARA_LATE", 5) + End(5)) +
      "<w:tbl><w:tr><w:tc>" + Text("<w:r><w:t>Period</w:t></w:r>") + "</w:tc></w:tr><w:tr><w:tc>" +
      Text(Start("PERIODS", 6) + kRun + End(6)) + "</w:tc></w:tr></w:tbl></w:body>");
  AddRelatedPart(
      parts, "header", "header1.xml",
      WordPart("w:hdr", Text("<w:r><w:t>Tax</w:t></w:r>" + Start("PERIOD_TAX", 7) + kRun + End(7))));
  std::vector<std::string> told;
  for (const auto& finding :
       CheckTemplate(wordprocessor::DocxDocument::FromBytes(ZipOf(parts), "t"), kCheckedFields)) {
    told.push_back(finding.bookmark + ": " + finding.place);
  }
  EXPECT_THAT(told,
              ElementsAre("WEATHER: text, after \"Dear\"", "LTR_DT: text, after \"Second\"",
                          "PARA_LATE: text, after \"Then\"", "PERIOD_TAX: page header, after \"Tax\"",
                          "LTR_DT: text, after \"Then\"", "PERIODS: text, in a table, after \"Period\""));
}

TEST(TemplateCheck, WhatTheOfficerGivesInVainIsAWarning) {
  EXPECT_THAT(
      Findings(Marked("LTR_DT", "d", 1), {{"LTR_DT"}, {"U_BOND", Kind::kUser}, {"PARA_A", Kind::kParagraph}}),
      ElementsAre("warning U_BOND ", "warning PARA_A "));
  // Nobody is asked for anything by a letter that is not known.
  EXPECT_THAT(
      Findings(Marked("LTR_DT", "d", 1),
               {{"LTR_DT"}, {"U_BOND", Kind::kUser, "", false}, {"PARA_A", Kind::kParagraph, "", false}}),
      IsEmpty());
}

}  // namespace
