#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/wordprocessor/docx_builder.h"
#include "tests/wordprocessor/letter_markup.h"
#include "wordprocessor/authoring/check.h"

/// What the check tells an author of what the work on a template has left in it.
namespace markup {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using wordprocessor::TemplateField;
using wordprocessor::TemplateFinding;

const std::vector<TemplateField> kLetter = {{"NAME"}, {"LTR_DT"}, {"COL"}};

/// "grade: bookmark: place: sentence", one each.
std::vector<std::string> FindingsIn(const std::string& docx,
                                    const std::vector<TemplateField>& fields = kLetter) {
  std::vector<std::string> told;
  for (const auto& finding : CheckTemplate(wordprocessor::DocxDocument::FromBytes(docx, "t"), fields)) {
    const bool error = finding.grade == TemplateFinding::Grade::kError;
    told.push_back((error ? "error: " : "warning: ") + finding.bookmark +
                   (finding.bookmark.empty() ? "" : ": ") + finding.place + ": " + finding.text);
  }
  return told;
}

std::string Body(const std::string& blocks) {
  return LetterOf("<w:body>" + blocks + "</w:body>");
}

TEST(TemplateLeftovers, ChangesAreToldByPersonAndParagraph) {
  const auto by_roe = [](std::string change) { return change.replace(change.find("LEAK"), 4, "Jane Roe"); };
  EXPECT_THAT(
      FindingsIn(Body(Paragraph(Text("Dear ") + by_roe(Del("the old ")) + by_roe(Del("words")) +
                                by_roe(Ins("new")) + Text(" and ") + Ins("more")) +
                      EndIs("del", Text("First")) + Paragraph(Text("Bold", By("rPrChange", "<w:rPr/>"))))),
      ElementsAre("error: text, after \"Dear\": Tracked changes by Jane Roe: deleted \"the old words\", "
                  "inserted \"new\". Accept or reject them.",
                  "error: text, after \"Dear new and\": Tracked changes by LEAK: "
                  "inserted \"more\". Accept or reject them.",
                  "error: text, after \"First\": Tracked changes by LEAK: deleted the end of a paragraph. "
                  "Accept or reject them.",
                  "warning: text, after \"First\": Tracked changes by LEAK: "
                  "formatted \"Bold\". Accept or reject them."));
}

TEST(TemplateLeftovers, ManyChangesStayReadable) {
  std::string crowded;
  for (char letter = 'a'; letter < 'k'; ++letter) crowded += Text("x") + Ins(std::string(1, letter));
  EXPECT_THAT(
      FindingsIn(Body(Paragraph(crowded))),
      ElementsAre(HasSubstr(
          ": inserted \"a\", inserted \"b\", inserted \"c\", inserted \"d\", inserted \"e\", and 5 more.")));
  const std::string sentence = "a very long sentence ";
  EXPECT_THAT(
      FindingsIn(Body(Paragraph(Del(sentence + sentence + sentence + sentence)))),
      ElementsAre(HasSubstr("deleted \"a very long sentence a very long sentence a very long senten...\".")));
  const auto row = Row(Cell(EndIs("ins", Ins("one"))) + Cell(EndIs("ins", Ins("two"))), By("ins", ""));
  EXPECT_THAT(FindingsIn(Body(Table(row) + Paragraph(Text("x")))),
              ElementsAre(HasSubstr("inserted \"one two\"")));
}

TEST(TemplateLeftovers, HiddenAndDeletedTextNamesTheBookmarksItTakesAlong) {
  EXPECT_THAT(
      FindingsIn(Body(Paragraph(Text("See ") + Mark("NAME", Text("secret", "<w:vanish/>"))))),
      ElementsAre("error: NAME: text, after \"See\": The bookmark goes with text that is deleted or hidden, "
                  "so that the letter does not show its value: settle the text, or delete the bookmark.",
                  "warning: text, after \"See\": "
                  "The text \"secret\" is hidden, and no letter has it: delete it, or show it."));
  EXPECT_THAT(FindingsIn(Body(Paragraph(Del("old ") + Mark("NAME", Text("[name]"))))),
              ElementsAre(HasSubstr("deleted \"old \"")));
}

TEST(TemplateLeftovers, FieldsAreGradedByWhatTheyDoToLetters) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"DATE \\@ &quot;yyyy&quot;",
       "warning: text, after \"x\": The date field \"DATE \\@ \"yyyy\"\" shows the letter's date"},
      {"MERGEFIELD Name",
       "error: text, after \"x\": The mail merge's field \"MERGEFIELD Name\" is never filled"},
      {"IF 1 = 1 a b", "error: text, after \"x\": The field \"IF 1 = 1 a b\" decides nothing"},
      {"INCLUDETEXT &quot;C:\\a.docx&quot;",
       "error: text, after \"x\": The field \"INCLUDETEXT \"C:\\a.docx\"\" shows what stands outside"},
      {"DDEAUTO Excel a b",
       "error: text, after \"x\": The field \"DDEAUTO Excel a b\" shows what stands outside"},
      {"MACROBUTTON Run Click",
       "error: text, after \"x\": The field \"MACROBUTTON Run Click\" starts a program"},
      {"AUTHOR", "warning: text, after \"x\": The field \"AUTHOR\" tells about this file"},
  };
  for (const auto& [code, told] : cases) {
    EXPECT_THAT(FindingsIn(Body(Paragraph(Text("x") + Field(code, Text("y"))))),
                ElementsAre(HasSubstr(told)));
  }
  EXPECT_THAT(
      FindingsIn(Body(Paragraph(
          Text("x") + "<w:r><w:fldChar w:fldCharType=\"begin\"/><w:instrText>DATE</w:instrText></w:r>"))),
      ElementsAre(HasSubstr("lacks its beginning or its end")));
  // A letter without a date of its own would show the day of the template.
  EXPECT_THAT(FindingsIn(Body(Paragraph(Field("DATE", Text("1.1.")))), {{"NAME"}}),
              ElementsAre(HasSubstr(
                  "error: text: The date field \"DATE\" shows the letter's date, but this letter has none")));
}

TEST(TemplateLeftovers, WhatComesFromOutsideIsNamedWithItsPlace) {
  auto parts = LetterParts(WordPart(
      "w:document",
      "<w:body>" +
          Paragraph(Text("See ") +
                    "<w:r><w:object><o:OLEObject xmlns:o=\"urn:schemas-microsoft-com:office:office\" "
                    "r:id=\"rObject\"/></w:object></w:r>") +
          Paragraph(
              "<w:r><w:drawing><a:blip xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
              "r:link=\"rPicture\"/></w:drawing></w:r>"
              "<w:hyperlink r:id=\"rFile\">" +
              Text("here") + "</w:hyperlink>") +
          "<w:altChunk r:id=\"rChunk\"/></w:body>"));
  const auto relation = [&](const std::string& id, const std::string& kind, const std::string& target,
                            const std::string& mode) {
    auto& relations = parts[3].content;
    relations.insert(relations.rfind("</Relationships>"),
                     "<Relationship Id=\"" + id +
                         "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/" +
                         kind + "\" Target=\"" + target + "\"" + mode + "/>");
  };
  relation("rObject", "oleObject", "sheet.bin", "");
  relation("rPicture", "image", "file:///C:/logo.png", " TargetMode=\"External\"");
  relation("rFile", "hyperlink", "file:///C:/a.doc", " TargetMode=\"External\"");
  relation("rChunk", "aFChunk", "chunk.html", "");
  AddRelatedPart(parts, "vbaProject", "vbaProject.bin", "x");
  parts.insert(parts.end(), {{"word/sheet.bin", "x"}, {"word/chunk.html", "x"}});
  EXPECT_THAT(
      FindingsIn(ZipOf(parts)),
      ElementsAre(
          HasSubstr("error: text, after \"See\": The embedded object \"word/sheet.bin\" does not go out"),
          HasSubstr("error: text, after \"See\": "
                    "The picture is a link to \"file:///C:/logo.png\", which is never read"),
          HasSubstr("error: text, after \"See\": The link leads to \"file:///C:/a.doc\""),
          HasSubstr("error: text, after \"here\": The file \"word/chunk.html\" is to be inserted here"),
          HasSubstr("error: document: The macro \"word/vbaProject.bin\" never runs")));
}

TEST(TemplateLeftovers, WhatLettersShowAsItStandsIsQuiet) {
  const std::string control = "<w:sdt><w:sdtPr><w:dataBinding w:xpath=\"/a\"/></w:sdtPr><w:sdtContent>" +
                              Paragraph(Mark("NAME", Text("[n]"))) + "</w:sdtContent></w:sdt>";
  EXPECT_THAT(
      FindingsIn(Body(control + Paragraph(Field("PAGE", Text("1")) +
                                          Field("HYPERLINK &quot;https://example.org&quot;", Text("x"))))),
      IsEmpty());
}

}  // namespace
}  // namespace markup
