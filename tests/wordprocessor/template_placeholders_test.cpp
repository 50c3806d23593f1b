#include "wordprocessor/authoring/placeholders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/wordprocessor/docx_builder.h"
#include "tests/wordprocessor/letter_markup.h"
#include "wordprocessor/authoring/read_template.h"

/// Bookmarks beside the placeholders they were meant for.
namespace markup {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using wordprocessor::DocxDocument;
using wordprocessor::TemplateField;

const std::vector<TemplateField> kPlaceholderFields = {
    {"NAME"}, {"LTR_DT"}, {"ROWS", TemplateField::Kind::kTable}, {"COL"}};

std::string TemplateOf(const std::string& blocks) {
  return LetterOf("<w:body>" + blocks + "</w:body>");
}

/// "BOOKMARK placeholder", one each.
std::vector<std::string> Repaired(const std::string& docx, std::string* bytes = nullptr) {
  const auto made = RepairPlaceholders(DocxDocument::FromBytes(docx, "t"), kPlaceholderFields);
  std::vector<std::string> told;
  for (const auto& miss : made.repaired) told.push_back(miss.bookmark + " " + miss.placeholder);
  if (bytes != nullptr) *bytes = made.bytes;
  return told;
}

std::vector<wordprocessor::TemplateFinding> MissesIn(const std::string& docx) {
  return FindingsOfPlaceholders(StoriesAsWritten(DocxDocument::FromBytes(docx, "t")), kPlaceholderFields);
}

struct RepairCase {
  std::string paragraph;
  std::string told;
  std::string letter;
};

TEST(TemplatePlaceholders, ABookmarkBeforeItsPlaceholderIsSetAroundIt) {
  const auto empty = Mark("NAME", "");
  const std::vector<RepairCase> cases = {
      {Text("Dear ") + empty + Text("[name]") + Text("!"), "NAME [name]", "Dear Ada!/"},
      // One run holds more, or several hold the placeholder.
      {empty + Text("[name], you"), "NAME [name]", "Ada, you/"},
      {empty + Text("[cust", "<w:b/>") + Text("") + Text("omer] of", "<w:i/>"), "NAME [customer]", "Ada of/"},
      {empty + "<w:hyperlink w:anchor=\"x\">" + Text("[name]") + "</w:hyperlink>" + Text("."), "NAME [name]",
       "Ada./"},
      // What the bookmark holds is no placeholder.
      {Text("Dear") + Mark("NAME", Text(" ")) + Text("[name]"), "NAME [name]", "Dear Ada/"},
      {Mark("NAME", Text("Dear ")) + Text("[name]"), "NAME [name]", "Dear Ada/"},
      {Mark("PARA_X", empty + Text("[name] pays."), 2), "NAME [name]", "Ada pays./"},
      // A blank between, a line break inside, an end inside, and a bookmark of some program around it all.
      {Text("Dear") + empty + Text(" ") + Text(" \u00A0[name] x"), "NAME [name]", "Dear  \u00A0Ada x/"},
      {empty + "<w:r><w:t>[street</w:t><w:br/><w:t>city]</w:t></w:r>", "NAME [street city]", "Ada/"},
      {Text("Dear ") + Mark("NAME", Text("[cust")) + Text("omer] x"), "NAME [customer]", "Dear Ada x/"},
      {Mark("section", Text("Dear ") + empty + Text("[name]!"), 2), "NAME [name]", "Dear Ada!/"},
      // Deleted words and comments in between are no letters.
      {empty + Del("old") + "<w:commentRangeStart w:id=\"0\"/>" + Text("[name]"), "NAME [name]", "Ada/"},
  };
  for (const auto& [paragraph, told, letter] : cases) {
    std::string bytes;
    const auto docx = TemplateOf(Paragraph(paragraph));
    EXPECT_THAT(Repaired(docx, &bytes), ElementsAre(told)) << paragraph;
    EXPECT_EQ(ShownIn(LetterFrom(bytes)), letter) << paragraph;
    const auto findings = MissesIn(docx);
    ASSERT_EQ(findings.size(), 1u) << paragraph;
    EXPECT_EQ(findings[0].bookmark, "NAME");
    EXPECT_THAT(MissesIn(bytes), IsEmpty()) << paragraph;
  }
}

TEST(TemplatePlaceholders, OfWordsInBracketsBehindABlankTheCheckIsNotSure) {
  const auto findings = MissesIn(TemplateOf(Paragraph(Mark("NAME", "") + Text(" [name]")) +
                                            Paragraph(Mark("LTR_DT", Text("[da"), 2) + Text("te]"))));
  ASSERT_EQ(findings.size(), 2u);
  EXPECT_EQ(findings[0].grade, wordprocessor::TemplateFinding::Grade::kWarning);
  EXPECT_THAT(findings[0].text,
              HasSubstr("ends before the placeholder \"[name]\", so that the letter shows both:"));
  EXPECT_EQ(findings[1].grade, wordprocessor::TemplateFinding::Grade::kError);
  EXPECT_THAT(
      findings[1].text,
      HasSubstr("ends inside of its placeholder \"[date]\", so that the letter shows the rest of it:"));
}

TEST(TemplatePlaceholders, TheValueLooksLikeThePlaceholder) {
  std::string bytes;
  Repaired(TemplateOf(Paragraph(Text("Dear ") + Mark("NAME", "") + Text("[name] of", "<w:b/>"))), &bytes);
  EXPECT_THAT(PartOf(LetterFrom(bytes), "word/document.xml"),
              HasSubstr("<w:rPr><w:b/></w:rPr><w:t>Ada</w:t>"));
}

TEST(TemplatePlaceholders, OfTwoBookmarksBeforeOneTheFirstGetsIt) {
  std::string bytes;
  EXPECT_THAT(
      Repaired(TemplateOf(Paragraph(Mark("NAME", "") + Mark("LTR_DT", "", 2) + Text("[x] ") + Text("y"))),
               &bytes),
      ElementsAre("NAME [x]"));
  EXPECT_THAT(Repaired(bytes), IsEmpty());
  EXPECT_EQ(ShownIn(LetterFrom(bytes)), "October 1, 2024Ada y/");
}

TEST(TemplatePlaceholders, BothTellingsOfATextBoxAreRepairedAndToldOnce) {
  std::string bytes;
  EXPECT_THAT(
      Repaired(TemplateOf(Paragraph(BoxAndTwin(Paragraph(Mark("NAME", "") + Text("[name]"))))), &bytes),
      ElementsAre("NAME [name]"));
  EXPECT_EQ(ShownIn(LetterFrom(bytes)), "Ada/Ada//");
}

TEST(TemplatePlaceholders, OtherBookmarksStayWhereTheyAre) {
  const auto empty = Mark("NAME", "");
  const std::vector<std::string> sound = {
      Paragraph(Mark("NAME", Text("[name]")) + Text("[sic]")),
      Paragraph(empty + Mark("LTR_DT", Text("[date]"), 2)),
      Paragraph(empty + Text("name]")),
      Paragraph(Mark("NAME", Text("Ada")) + Text(" [sic]")),
      Paragraph(empty + Text("[1, 2]")),
      Paragraph(empty + Text("[]")),
      Paragraph(empty + Text("[na")) + Paragraph(Text("me]")),
      Paragraph(Text("x") + empty) + Paragraph(Text("[name]")),
      Paragraph(empty + Text("[a ") + Field("PAGE", Text("1")) + Text("]")),
      Paragraph(Mark("PARA_X", Text("Please call ")) + Text("[phone]")),
      Table(Row(Cell(Paragraph(Mark("ROWS", "") + Text("[col]"))))) + Paragraph(""),
      Paragraph(Mark("LTR_DT", empty + Text("[name] x"), 2)),
  };
  for (const auto& blocks : sound) EXPECT_THAT(Repaired(TemplateOf(blocks)), IsEmpty()) << blocks;
}

}  // namespace
}  // namespace markup
