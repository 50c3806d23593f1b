#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/wordprocessor/docx_builder.h"
#include "tests/wordprocessor/letter_markup.h"

/// What an author's work leaves in the text of a template, and what a letter shows of it.
namespace markup {
namespace {

using testing::HasSubstr;
using testing::Not;

struct TextCase {
  std::string what;
  std::string body;
  std::string shown;
};

void PrintTo(const TextCase& test_case, std::ostream* out) {
  *out << test_case.body;
}

class WhatALetterShows : public testing::TestWithParam<TextCase> {};

/// The same in the body, in a header, in a note and in a text box with its twin for older readers.
TEST_P(WhatALetterShows, IsTheFinalText) {
  const auto body = GetParam().body + "<w:p/>";
  const auto shown = GetParam().shown + "/";
  auto parts =
      LetterParts(WordPart("w:document", "<w:body>" + body + "<w:p>" + BoxAndTwin(body) + "</w:p></w:body>"));
  AddRelatedPart(parts, "header", "header1.xml", WordPart("w:hdr", body));
  AddRelatedPart(parts, "footnotes", "footnotes.xml",
                 WordPart("w:footnotes", "<w:footnote w:id=\"2\">" + body + "</w:footnote>"));
  const auto letter = LetterFrom(ZipOf(parts));
  EXPECT_EQ(ShownIn(letter), shown + shown + shown + "/");
  EXPECT_EQ(ShownIn(letter, "word/header1.xml"), shown);
  EXPECT_EQ(ShownIn(letter, "word/footnotes.xml"), shown);
  for (const auto& name : PartNamesOf(letter))
    EXPECT_THAT(PartOf(letter, name), Not(HasSubstr("LEAK"))) << name;
}

const std::vector<TextCase> kChanges = {
    {"MovedWords",
     Paragraph("<w:moveFromRangeStart w:id=\"1\" w:name=\"m\" w:author=\"LEAK\"/>" +
               By("moveFrom", Text("away ")) + "<w:moveFromRangeEnd w:id=\"1\"/>" + Text("stays ") +
               "<w:moveToRangeStart w:id=\"2\" w:name=\"m\" w:author=\"LEAK\"/>" +
               By("moveTo", Text("here")) + "<w:moveToRangeEnd w:id=\"2\"/>"),
     "stays here/"},
    {"DeletedTextThatNothingSaysIsDeleted", Paragraph(Text("a") + "<w:r><w:delText>b</w:delText></w:r>"),
     "a/"},
    {"AnEmptiedParagraphWhoseEndStays", Paragraph(Text("a")) + Paragraph(Del("gone")) + Paragraph(Text("b")),
     "a//b/"},
    {"ADeletedEndBeforeATable",
     EndIs("del", Text("a")) + Table(Row(Cell(Paragraph(Text("c"))))) + EndIs("del", Del("x")) +
         Paragraph(""),
     "a/c/;/"},
    {"AWholeTable",
     EndIs("del", Del("a")) + Table(Row(Cell(EndIs("del", Del("b"))), By("del", ""))) + Paragraph(Text("c")),
     "c/"},
    {"ATableInACellThatEndsWithIt", Table(Row(Cell(Table(Row(Cell(Paragraph(Del("x"))), By("del", "")))))),
     "/;"},
    {"ACellThatKeepsItsParagraph", Table(Row(Cell(EndIs("del", Del("x"))))), "/;"},
    {"Formatting",
     Paragraph(
         "<w:r><w:rPr><w:b/>" + By("rPrChange", "<w:rPr><w:i/></w:rPr>") + "</w:rPr><w:t>bold</w:t></w:r>",
         "<w:numPr>" + By("numberingChange", "") + By("ins", "") + "</w:numPr>" +
             By("pPrChange", "<w:pPr/>")),
     "bold/"},
    {"BookmarkAroundAndAcross",
     Paragraph(Text("To ") + Mark("NAME", Del("[old]") + Ins("[new]")) + Text("!")) +
         Paragraph("<w:bookmarkStart w:id=\"5\" w:name=\"NAME__1\"/>" +
                   By("ins", Text("[a]") + "<w:bookmarkEnd w:id=\"5\"/>")) +
         Paragraph(By("del",
                      "<w:r><w:delText>x</w:delText></w:r><w:bookmarkStart w:id=\"6\" w:name=\"NAME__2\"/>") +
                   Text("[b]") + "<w:bookmarkEnd w:id=\"6\"/>"),
     "To Ada!/Ada/Ada/"},
    {"BookmarkDeletedWithItsText",
     Paragraph(Text("a") + Del(" pay ") + Mark("NAME", Del("[x]")) + Del(" now") + Mark("NAME__1", "", 2) +
               Del(" or later") + Text(".")),
     "a./"},
    {"AnEmptyBookmarkNextToADeletion", Paragraph(Del("x") + Mark("NAME", "") + Text(".")), "Ada./"},
    {"BookmarkOverDeletedParagraphs",
     EndIs("del", "<w:bookmarkStart w:id=\"1\" w:name=\"NAME\"/>" + Del("gone")) +
         Paragraph(Text("stays") + "<w:bookmarkEnd w:id=\"1\"/>"),
     "Ada/"},
    {"ARowForEachRowWithChanges",
     Table(Row(Cell(Paragraph("<w:bookmarkStart w:id=\"1\" w:name=\"ROWS\"/>" + Del("old") +
                              Mark("COL", Ins("[c]"), 2))) +
               Cell(Paragraph(Text("x") + "<w:bookmarkEnd w:id=\"1\"/>")) +
               Cell(Paragraph(Del("y")), By("cellDel", "")))),
     "1/;x/;2/;x/;"},
};

const std::vector<TextCase> kOthers = {
    {"HiddenWords",
     Paragraph(Text("a ") + Text("LEAK", "<w:vanish/>") + Text("b", "<w:vanish w:val=\"0\"/>") +
               Mark("NAME", Text("LEAK", "<w:vanish/>"))) +
         Paragraph(Text("LEAK", "<w:vanish/>"), "<w:rPr><w:vanish/></w:rPr>") + Paragraph(Text("c")),
     "a b/c/"},
    {"DateFields",
     Paragraph(Field(" DATE \\@ &quot;dd.MM.yyyy&quot; ", Text("1.1.") + Text("1999")) + Text(";") +
               Field("TIME", Text("12:00")) + Text(";") +
               SimpleField(" SAVEDATE \\@ &quot;dddd, d. MMM yy&quot; \\* MERGEFORMAT ", Text("old")) +
               Text(";") + Field("PRINTDATE \\@ &quot;h:mm&quot;", "")),
     "01.10.2024;October 1, 2024;Tuesday, 1. Oct 24;October 1, 2024/"},
    {"ADateInARowThatIsRepeated",
     Table(Row(Cell(Paragraph(
         Mark("ROWS", Mark("COL", Text("[c]"), 2) + Text(" ") + Field("DATE \\@ yyyy", Text("1999")), 1))))),
     "1 2024/;2 2024/;"},
    {"FieldsThatStay",
     Paragraph(Field(" PAGE ", Text("1")) + Field("REF _Ref \\h", Text("2")) +
               SimpleField("NUMPAGES", Text("3"))),
     "{ PAGE }1{REF _Ref \\h}2{NUMPAGES}3/"},
    {"FieldsThatShowWhatTheyShowed",
     Paragraph(Field(" IF \"a\" = \"" + Field("MERGEFIELD LEAK", Text("LEAK")) + "\" x y", Text("y")) +
               Text(";") + Field("INCLUDETEXT LEAK.docx", Text("in") + Field("AUTHOR", Text("cluded"))) +
               Text(";") + SimpleField("FILENAME \\p", Text("f")) + Text(";") +
               Field("= " + Field("DATE \\@ d", Text("1")) + " + 30", Text("31")) + Text(";") +
               Field("HYPERLINK &quot;file:///C:/LEAK&quot;", Text("link")) + Text(";") +
               Field("MACROBUTTON LEAK Click here", "")),
     "y;included;f;31;link;Click here/"},
    {"AFieldOverParagraphs",
     Paragraph(
         "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText>IF 1 = 1</w:instrText></w:r>") +
         Paragraph(
             "<w:r><w:instrText>more</w:instrText></w:r><w:r><w:fldChar w:fldCharType=\"separate\"/></w:r>" +
             Text("one")) +
         Paragraph(Text("two") + "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>" + Text(" three")),
     "one/two three/"},
    {"AFieldCutInTwo",
     Paragraph(
         By("del",
            "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:delInstrText>IF</w:delInstrText></w:r>") +
         "<w:r><w:fldChar w:fldCharType=\"separate\"/></w:r>" + Text("a") +
         "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>"),
     "a/"},
    {"AFieldInOneRun",
     Paragraph(
         "<w:r><w:fldChar w:fldCharType=\"begin\"/><w:instrText>DATE \\@ yyyy</w:instrText><w:fldChar "
         "w:fldCharType=\"separate\"/><w:t>1999</w:t><w:fldChar w:fldCharType=\"end\"/><w:t>.</w:t></w:r>"),
     "2024./"},
};

std::string NameOf(const testing::TestParamInfo<TextCase>& info) {
  return info.param.what;
}

INSTANTIATE_TEST_SUITE_P(Changes, WhatALetterShows, testing::ValuesIn(kChanges), NameOf);
INSTANTIATE_TEST_SUITE_P(Others, WhatALetterShows, testing::ValuesIn(kOthers), NameOf);

}  // namespace
}  // namespace markup
