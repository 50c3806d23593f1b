#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/wordprocessor/docx_builder.h"
#include "tests/wordprocessor/letter_markup.h"
#include "wordprocessor/authoring/read_template.h"
#include "wordprocessor/cleaning/survey.h"

/// What a check of templates is told of a template's leftovers.
namespace markup {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using wordprocessor::DocxLeftover;

/// "kind number: what (who): place", one each.
std::vector<std::string> LeftoversOf(const std::string& docx) {
  const auto written = StoriesAsWritten(wordprocessor::DocxDocument::FromBytes(docx, "letter.docx"));
  std::vector<std::string> told;
  for (const auto& leftover : FindLeftovers(written)) {
    told.push_back(std::to_string(static_cast<int>(leftover.kind)) + ": " + leftover.what +
                   (leftover.who.empty() ? "" : " (" + leftover.who + ")") + ": " + leftover.place);
  }
  return told;
}

std::string Numbered(DocxLeftover::Kind kind) {
  return std::to_string(static_cast<int>(kind)) + ": ";
}

TEST(Leftovers, AreFoundWithTheirPlaceAndWhoLeftThem) {
  using Kind = DocxLeftover::Kind;
  auto parts = LetterParts(
      "<w:body>" +
      Paragraph(Text("Dear ") + "<w:commentRangeStart w:id=\"0\"/>" + Text("you") +
                "<w:commentRangeEnd w:id=\"0\"/><w:r><w:commentReference w:id=\"0\"/></w:r>" + Del("old") +
                Ins("new")) +
      Table(Row(Cell(Paragraph(Text("secret", "<w:vanish/>"))))) +
      Paragraph(Text("a longer sentence that ends before the date ") + Field("DATE", Text("1.1."))) +
      "<w:sectPr><w:headerReference w:type=\"first\" r:id=\"rel_header1.xml\"/></w:sectPr></w:body>");
  AddRelatedPart(parts, "header", "header1.xml",
                 WordPart("w:hdr", Paragraph(Text("From ") + Field(" MERGEFIELD Name ", Text("x")) +
                                             Field("PAGE", Text("1")))));
  AddRelatedPart(parts, "comments", "comments.xml",
                 WordPart("w:comments", "<w:comment w:id=\"0\" w:author=\"Eve\">" + Paragraph(Text("Who?")) +
                                            "</w:comment>"));
  AddRelatedPart(parts, "vbaProject", "vbaProject.bin", "x");
  EXPECT_THAT(LeftoversOf(ZipOf(parts)),
              ElementsAre(Numbered(Kind::kComment) + "Who? (Eve): text, after \"Dear\"",
                          Numbered(Kind::kDeleted) + "old (LEAK): text, after \"Dear you\"",
                          Numbered(Kind::kInserted) + "new (LEAK): text, after \"Dear you\"",
                          Numbered(Kind::kHiddenText) + "secret: text, in a table, after \"Dear younew\"",
                          Numbered(Kind::kDateField) + "DATE: text, after \"that ends before the date\"",
                          Numbered(Kind::kMergeField) +
                              "MERGEFIELD Name: page header of the first page, after \"From\"",
                          Numbered(Kind::kMacro) + "word/vbaProject.bin: document"));
}

TEST(Leftovers, WordsOfOneKindThatBelongTogetherStandTogether) {
  using Kind = DocxLeftover::Kind;
  const auto body = Paragraph(Text("Keep ") + Del("the old ") + Del("words") + Ins("new") + Del(" here")) +
                    Paragraph(Ins("One")) + Paragraph(Ins("two") + Mark("GONE", Del("x"))) +
                    Paragraph(Text("Bold", By("rPrChange", "<w:rPr/>")));
  EXPECT_THAT(LeftoversOf(LetterOf("<w:body>" + body + "</w:body>")),
              ElementsAre(Numbered(Kind::kDeleted) + "the old words (LEAK): text, after \"Keep\"",
                          Numbered(Kind::kInserted) + "new (LEAK): text, after \"Keep\"",
                          Numbered(Kind::kDeleted) + " here (LEAK): text, after \"Keep new\"",
                          Numbered(Kind::kInserted) + "One two (LEAK): text, after \"Keep new\"",
                          Numbered(Kind::kLostBookmark) + "GONE: text, after \"two\"",
                          Numbered(Kind::kDeleted) + "x (LEAK): text, after \"two\"",
                          Numbered(Kind::kFormatted) + "Bold (LEAK): text, after \"two\""));
}

TEST(Leftovers, OfATextBoxToldTwiceAreToldOnce) {
  const auto box = [](const std::string& around) {
    return "<mc:" + around + "><w:pict><w:txbxContent>" +
           Paragraph(Text("Box ") + Field("DATE", Text("1.1."))) + "</w:txbxContent></w:pict></mc:" + around +
           ">";
  };
  const auto twice =
      "<w:r><mc:AlternateContent "
      "xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\">" +
      box("Choice") + box("Fallback") + "</mc:AlternateContent></w:r>" + Field("TIME", Text("1"));
  EXPECT_THAT(
      LeftoversOf(LetterOf("<w:body>" + Paragraph(Text("Dear ") + twice) + "</w:body>")),
      ElementsAre(Numbered(DocxLeftover::Kind::kDateField) + "DATE: text, in a text box, after \"Box\"",
                  Numbered(DocxLeftover::Kind::kDateField) + "TIME: text, after \"Box 1.1.\""));
}

TEST(Leftovers, AreNoneInWhatGoesOut) {
  EXPECT_THAT(
      LeftoversOf(LetterOf("<w:body>" + Paragraph(Mark("NAME", Field("PAGE", Text("1")))) + "</w:body>")),
      IsEmpty());
  EXPECT_THAT(LeftoversOf(LetterFrom(
                  LetterOf("<w:body>" + Paragraph(Del("x") + Field("DATE", Text("1"))) + "</w:body>"))),
              IsEmpty());
}

}  // namespace
}  // namespace markup
