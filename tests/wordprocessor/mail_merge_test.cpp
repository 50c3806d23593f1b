#include "wordprocessor/authoring/mail_merge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/wordprocessor/docx_builder.h"
#include "tests/wordprocessor/letter_markup.h"
#include "wordprocessor/document/document.h"

/// Templates made of a mail merge's documents.
namespace markup {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using wordprocessor::DocxPackage;
using wordprocessor::MergeFieldsMade;

MergeFieldsMade TemplateFrom(const std::string& docx) {
  return BookmarksOfMergeFields(DocxPackage::FromBytes(docx, "t"), {{"NAME"}, {"LTR_DT"}});
}

MergeFieldsMade TemplateOfBody(const std::string& blocks) {
  return TemplateFrom(LetterOf("<w:body>" + blocks + "</w:body>"));
}

/// "field BOOKMARK", one each.
std::vector<std::string> Made(const MergeFieldsMade& made) {
  std::vector<std::string> told;
  for (const auto& bookmark : made.made) told.push_back(bookmark.field + " " + bookmark.bookmark);
  return told;
}

std::string Merge(const std::string& code) {
  return Field(" MERGEFIELD " + code + " ", Text("\u00ABx\u00BB"));
}

TEST(MailMerge, EachFieldBecomesABookmarkThatLettersFill) {
  struct Case {
    std::string runs;
    std::string told;
    std::string letter;
  };
  const std::vector<Case> cases = {
      {Text("Dear ") + Merge("NAME") + Text("!"), "NAME NAME", "Dear Ada!/"},
      {SimpleField(" MERGEFIELD NAME \\* MERGEFORMAT ", Text("x")), "NAME NAME", "Ada/"},
      {Merge("&quot;Name&quot;  \\* MERGEFORMAT"), "Name NAME", "Ada/"},
      {Merge("Name \\b &quot;Mr. &quot; \\f &quot;,&quot; \\m"), "Name NAME", "Mr. Ada,/"},
      {Field("mergefield name", ""), "name NAME", "Ada/"},
      // All in one run, with words around it.
      {"<w:r><w:t>To </w:t><w:fldChar w:fldCharType=\"begin\"/>"
       "<w:instrText>MERGEFIELD NAME</w:instrText><w:fldChar w:fldCharType=\"end\"/><w:t>:</w:t></w:r>",
       "NAME NAME", "To Ada:/"},
      {Text("To ") + Field("HYPERLINK &quot;https://example.org&quot;", Merge("NAME")), "NAME NAME",
       "To {HYPERLINK \"https://example.org\"}Ada/"},
  };
  for (const auto& [runs, told, letter] : cases) {
    const auto made = TemplateOfBody(Paragraph(runs));
    EXPECT_THAT(Made(made), ElementsAre(told)) << runs;
    EXPECT_EQ(ShownIn(LetterFrom(made.bytes)), letter) << runs;
    EXPECT_THAT(ShownIn(made.bytes), HasSubstr("\u00ABNAME\u00BB"));
  }
}

TEST(MailMerge, TheBookmarkLooksLikeWhatTheFieldShowed) {
  const auto field = [](const std::string& looks) {
    return "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r>"
           "<w:r><w:rPr><w:u/></w:rPr><w:instrText>MERGEFIELD NAME " +
           looks + "</w:instrText></w:r><w:r><w:fldChar w:fldCharType=\"separate\"/></w:r>" +
           Text("x", "<w:b/>") + "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>";
  };
  const auto letter_of = [&](const std::string& looks) {
    return PartOf(LetterFrom(TemplateOfBody(Paragraph(field(looks))).bytes), "word/document.xml");
  };
  EXPECT_THAT(letter_of("\\* MERGEFORMAT"), HasSubstr("<w:rPr><w:b/></w:rPr><w:t>Ada</w:t>"));
  EXPECT_THAT(letter_of("\\* CHARFORMAT"), HasSubstr("<w:rPr><w:u/></w:rPr><w:t>Ada</w:t>"));
}

TEST(MailMerge, NamesAreThoseThatBookmarksMayHave) {
  const std::string long_name(45, 'x');
  const auto made = TemplateOfBody(Paragraph(Mark("TAKEN", Text("x"), 7) + Merge("TAKEN") + Merge("NAME") +
                                             Merge("name") + Merge("&quot;Kunden-Nr.&quot;") +
                                             Merge("&quot;Kunden Nr_&quot;") + Merge("2nd") + Merge("_x") +
                                             Merge("A__1") + Merge(long_name) + Merge("Stra\u00DFe")));
  EXPECT_THAT(Made(made), ElementsAre("TAKEN TAKEN__1", "NAME NAME", "name NAME__1", "Kunden-Nr. Kunden_Nr_",
                                      "Kunden Nr_ Kunden_Nr__2", "2nd FIELD_2nd", "_x x", "A__1 A_1",
                                      long_name + " " + std::string(36, 'x'), "Stra\u00DFe Stra\u00DFe"));
  EXPECT_EQ(made.made[0].note, "");
  EXPECT_EQ(made.made[3].note, "The field \"Kunden-Nr.\" is called \"Kunden_Nr_\" now.");
  EXPECT_THAT(PartOf(made.bytes, "word/document.xml"),
              HasSubstr("<w:bookmarkStart w:id=\"8\" w:name=\"TAKEN__1\"/>"));
}

TEST(MailMerge, WhatIsLostOfAFieldIsSaid) {
  const auto made =
      TemplateOfBody(Paragraph(Merge("LTR_DT \\@ &quot;d MMM&quot; \\* Upper \\b &quot;of &quot;")));
  ASSERT_EQ(made.made.size(), 1u);
  EXPECT_EQ(made.made[0].note,
            "The words \"of \" stand beside it as plain text, with or without a value. The format \"\\@ d "
            "MMM \\* Upper\" is gone: values come formatted.");
}

TEST(MailMerge, FieldsThatNoBookmarkStandsForStayAndTheCheckSaysWhy) {
  const auto made =
      TemplateOfBody(Paragraph(Field("IF " + std::string("</w:instrText></w:r>") + Merge("STATE") +
                                         "<w:r><w:instrText> = &quot;K&quot; &quot;a&quot; &quot;b&quot;",
                                     Text("a"))) +
                     Paragraph(Field("NEXT", Text("")) + Field("ADDRESSBLOCK \\f x", Text("x")) + Merge("")));
  EXPECT_THAT(made.made, IsEmpty());
  std::vector<std::string> told;
  for (const auto& finding :
       CheckTemplate(wordprocessor::DocxDocument::FromBytes(made.bytes, "t"), {{"NAME"}}))
    told.push_back(finding.text);
  EXPECT_THAT(
      told,
      ElementsAre(HasSubstr("The field \"IF { MERGEFIELD STATE } = \"K\" \"a\" \"b\"\" decides nothing here"),
                  HasSubstr("\"NEXT\" is never filled. It counts or passes over the records"),
                  HasSubstr("\"ADDRESSBLOCK \\f x\" is never filled. It stands for a whole address"),
                  HasSubstr("\"MERGEFIELD\" is never filled. It names no column")));
}

TEST(MailMerge, HeadersNotesAndTextBoxesAreMadeLikeTheBody) {
  auto parts = LetterParts(
      "<w:body>" +
      Paragraph(Merge("NAME") + BoxAndTwin(Paragraph(Merge("NAME"))) +
                "<w:r><w:footnoteReference w:id=\"2\"/></w:r>") +
      "<w:sectPr><w:headerReference w:type=\"first\" r:id=\"rel_header1.xml\"/></w:sectPr></w:body>");
  AddRelatedPart(parts, "header", "header1.xml", WordPart("w:hdr", Paragraph(Merge("NAME"))));
  AddRelatedPart(parts, "footnotes", "footnotes.xml",
                 WordPart("w:footnotes", "<w:footnote w:id=\"2\">" + Paragraph(Text("See ") + Merge("NAME")) +
                                             "</w:footnote>"));
  const auto made = TemplateFrom(ZipOf(parts));
  EXPECT_THAT(Made(made), ElementsAre("NAME NAME", "NAME NAME__1", "NAME NAME__2", "NAME NAME__3"));
  EXPECT_EQ(made.made[1].place, "text, in a text box, after \"\u00ABx\u00BB\"");
  EXPECT_EQ(made.made[2].place, "page header of the first page");
  EXPECT_EQ(made.made[3].place, "notes, after \"See\"");
  const auto letter = LetterFrom(made.bytes);
  EXPECT_EQ(ShownIn(letter), "AdaAda/Ada//");
  EXPECT_EQ(ShownIn(letter, "word/header1.xml"), "Ada/");
  EXPECT_EQ(ShownIn(letter, "word/footnotes.xml"), "See Ada/");
}

TEST(MailMerge, TheMergesOwnSettingsAndDataAreAway) {
  const std::string office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
  auto parts = LetterParts("<w:body>" + Paragraph(Merge("NAME")) + "</w:body>");
  AddRelatedPart(parts, "settings", "settings.xml",
                 WordPart("w:settings",
                          "<w:mailMerge><w:dataSource r:id=\"rSource\"/><w:odso><w:recipientData "
                          "r:id=\"rRecipients\"/></w:odso></w:mailMerge><w:defaultTabStop w:val=\"720\"/>"));
  parts.push_back(
      {"word/_rels/settings.xml.rels",
       "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
       "<Relationship Id=\"rSource\" Type=\"" +
           office +
           "mailMergeSource\" Target=\"file:///C:/SECRET.xlsx\" TargetMode=\"External\"/>"
           "<Relationship Id=\"rRecipients\" Type=\"" +
           office +
           "recipientData\" Target=\"recipients.xml\"/>"
           "<Relationship Id=\"rLooks\" Type=\"" +
           office +
           "attachedTemplate\" Target=\"file:///C:/a.dotx\" TargetMode=\"External\"/></Relationships>"});
  parts.push_back({"word/recipients.xml", "<w:recipients xmlns:w=\"x\">SECRET</w:recipients>"});
  parts[0].content.insert(parts[0].content.rfind("</Types>"),
                          "<Override PartName=\"/word/recipients.xml\" ContentType=\"application/xml\"/>");
  const auto made = TemplateFrom(ZipOf(parts)).bytes;
  EXPECT_THAT(PartNamesOf(made), Not(testing::Contains("word/recipients.xml")));
  EXPECT_THAT(PartOf(made, "[Content_Types].xml"), Not(HasSubstr("recipients")));
  EXPECT_THAT(PartOf(made, "word/settings.xml"),
              AllOf(HasSubstr("defaultTabStop"), Not(HasSubstr("mailMerge"))));
  EXPECT_THAT(PartOf(made, "word/_rels/settings.xml.rels"),
              AllOf(HasSubstr("a.dotx"), Not(HasSubstr("SECRET")), Not(HasSubstr("recipients"))));
}

}  // namespace
}  // namespace markup
