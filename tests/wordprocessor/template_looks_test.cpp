#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/wordprocessor/docx_builder.h"
#include "tests/wordprocessor/letter_markup.h"
#include "wordprocessor/authoring/check.h"
#include "wordprocessor/authoring/fonts.h"
#include "wordprocessor/authoring/paper.h"
#include "wordprocessor/authoring/pictures.h"
#include "wordprocessor/authoring/read_template.h"
#include "wordprocessor/authoring/tables.h"
#include "wordprocessor/authoring/used_typefaces.h"

/// What the check of a template says of the letter's looks. What comes out of the layout is tested with
/// templates of other programs.
namespace markup {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;
using wordprocessor::DocxDocument;
using wordprocessor::TemplateField;

std::string In(const std::string& fonts, const std::string& text = "Tax") {
  return Text(text, "<w:rFonts " + fonts + "/>");
}

std::string Style(const std::string& id, const std::string& content, const std::string& type = "paragraph") {
  return "<w:style w:type=\"" + type + "\" w:styleId=\"" + id + "\">" + content + "</w:style>";
}

std::string Fonts(const std::string& fonts) {
  return "<w:rPr><w:rFonts " + fonts + "/></w:rPr>";
}

wordprocessor::DocxStories LetterOfParts(const std::vector<DocxPart>& parts) {
  return StoriesOfLetters(DocxDocument::FromBytes(ZipOf(parts), "letter.docx"));
}

/// "name: place", one each; "*" after the name of one that the document brings along.
std::vector<std::string> TypefacesIn(const std::vector<DocxPart>& parts) {
  std::vector<std::string> told;
  for (const auto& typeface : FindTypefaces(LetterOfParts(parts))) {
    told.push_back(typeface.name + (typeface.embedded ? "*" : "") + ": " + typeface.place);
  }
  return told;
}

TEST(Typefaces, AreThoseThatTextIsSetIn) {
  auto parts = LetterParts(
      "<w:body>" +
      Paragraph(Text("one ") + In("w:ascii=\"Own;Second choice\" w:asciiTheme=\"none\"", "two ") +
                Text("three", "<w:rStyle w:val=\"Character\"/>")) +
      Paragraph(Text("four"), "<w:pStyle w:val=\"Derived\"/>") +
      Paragraph(In("w:ascii=\"Hidden by the theme\" w:asciiTheme=\"majorHAnsi\"", "five")) +
      Paragraph("", "<w:rPr><w:rFonts w:ascii=\"Of no text\"/></w:rPr>") + Paragraph(In("w:ascii=\"OWN\"")) +
      "<w:tbl><w:tblPr><w:tblStyle w:val=\"Table\"/></w:tblPr>" +
      Row(Cell(Paragraph(Text("six"), "<w:pStyle w:val=\"Plain\"/>"))) + "</w:tbl></w:body>");
  AddRelatedPart(
      parts, "styles", "styles.xml",
      WordPart("w:styles", "<w:docDefaults><w:rPrDefault>" + Fonts("w:asciiTheme=\"minorHAnsi\"") +
                               "</w:rPrDefault></w:docDefaults>"
                               "<w:style w:type=\"paragraph\" w:default=\"1\" w:styleId=\"Normal\">" +
                               Fonts("w:ascii=\"Default\"") + "</w:style>" +
                               Style("Derived", "<w:basedOn w:val=\"Base\"/>") +
                               Style("Base", Fonts("w:ascii=\"Based\"")) + Style("Plain", "") +
                               Style("Unused", Fonts("w:ascii=\"Unused\"")) +
                               Style("Character", Fonts("w:ascii=\"Of characters\""), "character") +
                               Style("Table", Fonts("w:ascii=\"Of tables\""), "table")));
  AddRelatedPart(
      parts, "theme", "theme1.xml",
      "<a:theme xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\"><a:themeElements>"
      "<a:fontScheme><a:majorFont><a:latin typeface=\"Major\"/></a:majorFont><a:minorFont><a:latin "
      "typeface=\"Minor\"/></a:minorFont></a:fontScheme></a:themeElements></a:theme>");
  AddRelatedPart(parts, "footer", "footer1.xml", WordPart("w:ftr", Paragraph(In("w:ascii=\"Of the foot\""))));
  EXPECT_THAT(
      TypefacesIn(parts),
      ElementsAre("Default: text", "Own: text, after \"one\"", "Of characters: text, after \"one two\"",
                  "Based: text, after \"one two three\"", "Major: text, after \"four\"",
                  "Of tables: text, in a table, after \"Tax\"", "Of the foot: page footer"));
}

TEST(Typefaces, OfOtherScriptsCountWhereSomethingIsWrittenInThem) {
  const std::string all = "w:ascii=\"Latin\" w:eastAsia=\"Eastern\" w:cs=\"Complex\"";
  const auto typefaces = [&](const std::string& text) {
    return TypefacesIn(LetterParts("<w:body>" + Paragraph(In(all, text)) + "</w:body>"));
  };
  EXPECT_THAT(typefaces("Ünïcode, Ωμέγα, Я …"), ElementsAre("Latin: text"));
  EXPECT_THAT(typefaces(" \xC2\xA0"), IsEmpty());
  EXPECT_THAT(typefaces("漢字 שלום"), ElementsAre("Eastern: text", "Complex: text"));
}

TEST(Typefaces, ThoseThatTheDocumentBringsAlongAreKnown) {
  auto parts = LetterParts("<w:body>" + Paragraph(In("w:ascii=\"Office Script\"") + In("w:ascii=\"Other\"")) +
                           "</w:body>");
  AddRelatedPart(parts, "fontTable", "fontTable.xml",
                 WordPart("w:fonts",
                          "<w:font w:name=\"office script\"><w:embedRegular r:id=\"r1\"/></w:font>"
                          "<w:font w:name=\"Other\"><w:embedRegular r:id=\"gone\"/></w:font>"));
  parts.push_back(
      {"word/_rels/fontTable.xml.rels",
       "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship "
       "Id=\"r1\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/font\" "
       "Target=\"font1.odttf\"/></Relationships>"});
  parts.push_back({"word/font1.odttf", "x"});
  EXPECT_THAT(TypefacesIn(parts), ElementsAre("Office Script*: text", "Other: text, after \"Tax\""));
}

TEST(Typefaces, StandInsAreToldWithWhetherTheirWidthsAreTheSame) {
  const auto stand_in = [](const std::string& family) {
    const auto laid_out = wordprocessor::LayoutTypeface(family);
    return laid_out.family + (laid_out.same_widths ? "" : ", other widths");
  };
  EXPECT_EQ(stand_in("Liberation Serif"), "Liberation Serif");
  EXPECT_EQ(stand_in("liberation sans"), "Liberation Sans");
  EXPECT_EQ(stand_in("Calibri"), "Carlito");
  EXPECT_EQ(stand_in("CAMBRIA"), "Caladea");
  EXPECT_EQ(stand_in("Times New Roman"), "Liberation Serif");
  EXPECT_THAT(stand_in("Office Script"), testing::EndsWith(", other widths"));
}

std::string Drawing(const std::string& identity, const std::string& graphic, const std::string& inside = "") {
  return "<w:r><w:drawing><wp:inline "
         "xmlns:wp=\"http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing\"><wp:docPr "
         "id=\"1\" name=\"Picture 1\" " +
         identity + ">" + inside + "</wp:docPr><a:graphic xmlns:a=\"a\"><a:graphicData>" + graphic +
         "</a:graphicData></a:graphic></wp:inline></w:drawing></w:r>";
}
const std::string kPicture = "<p:pic xmlns:p=\"p\"/>";

std::vector<std::string> UntoldPictures(const std::string& runs) {
  auto parts = LetterParts("<w:body>" + Paragraph(Text("Seal: ") + runs) + "</w:body>");
  AddRelatedPart(parts, "header", "header1.xml", WordPart("w:hdr", Paragraph(runs)));
  std::vector<std::string> places;
  for (const auto& finding : CheckPictures(LetterOfParts(parts))) {
    places.push_back(finding.place);
  }
  return places;
}

TEST(Pictures, WithoutAlternativeTextAreFoundOnce) {
  const auto untold = ElementsAre("text, after \"Seal:\"", "page header");
  const std::string vml = "<v:shape xmlns:v=\"urn:schemas-microsoft-com:vml\" ";
  const auto text_box = [](const std::string& runs) {
    return "<s:wsp xmlns:s=\"s\"><w:txbxContent>" + Paragraph(runs) + "</w:txbxContent></s:wsp>";
  };
  EXPECT_THAT(UntoldPictures(Drawing("", kPicture)), untold);
  EXPECT_THAT(UntoldPictures(Drawing("descr=\" \"", "<c:chart xmlns:c=\"c\"/>")), untold);
  EXPECT_THAT(UntoldPictures(Drawing("descr=\"C:\\LEAK\\seal.png\"", kPicture)), untold);
  EXPECT_THAT(UntoldPictures("<w:r><w:pict>" + vml + "><v:imagedata/></v:shape></w:pict></w:r>"), untold);
  EXPECT_THAT(UntoldPictures("<mc:AlternateContent "
                             "xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\">"
                             "<mc:Choice Requires=\"wps\">" +
                             Drawing("", kPicture) + "</mc:Choice><mc:Fallback><w:r><w:pict>" + vml +
                             "><v:imagedata/></v:shape></w:pict></w:r></mc:Fallback></mc:AlternateContent>"),
              untold);

  EXPECT_THAT(UntoldPictures(Drawing("descr=\"The seal\"", kPicture)), IsEmpty());
  EXPECT_THAT(UntoldPictures(Drawing("", kPicture, "<d:decorative xmlns:d=\"d\" val=\"1\"/>")), IsEmpty());
  EXPECT_THAT(UntoldPictures(Drawing("", text_box(Text("words")))), IsEmpty());
  EXPECT_THAT(UntoldPictures(Drawing("", text_box(Drawing("descr=\"The seal\"", kPicture)))), IsEmpty());
  EXPECT_THAT(
      UntoldPictures("<w:r><w:pict>" + vml + "alt=\"The seal\"><v:imagedata/></v:shape></w:pict></w:r>"),
      IsEmpty());
}

TEST(TableHeads, AreMissedWhereAFieldRepeatsRowsBelowThem) {
  const std::vector<TemplateField> fields = {{"PERIODS", TemplateField::Kind::kTable}};
  const auto found = [&](const std::string& rows) {
    const auto letter = LetterOfParts(LetterParts("<w:body>" + Table(rows) + "</w:body>"));
    return CheckTableHeads(letter, wordprocessor::BookmarkSpots(letter), fields).size();
  };
  const auto repeated = Row(Cell(Paragraph(Mark("PERIODS", Text("x")))));
  const auto first = Cell(Paragraph(Text("Period")));
  EXPECT_EQ(found(Row(first) + repeated), 1u);
  EXPECT_EQ(found(Row(first, "<w:tblHeader w:val=\"0\"/>") + repeated), 1u);
  EXPECT_EQ(found(Row(first, "<w:tblHeader/>") + repeated), 0u);
  EXPECT_EQ(found(repeated), 0u);
  EXPECT_EQ(found(Row(first) + Row(Cell(Paragraph(Mark("OTHER", Text("x")))))), 0u);
}

std::string PageOf(const std::string& size, const std::string& more = "") {
  return "<w:sectPr>" + more + "<w:pgSz " + size + "/></w:sectPr>";
}

std::vector<std::string> PaperToldOf(const std::vector<DocxPart>& parts) {
  auto common = LetterParts("<w:body><w:p/>" +
                            PageOf("w:w=\"12240\" w:h=\"15840\"",
                                   "<w:headerReference w:type=\"default\" "
                                   "r:id=\"rel_header1.xml\"/>") +
                            "</w:body>");
  AddRelatedPart(common, "header", "header1.xml", WordPart("w:hdr", "<w:p/>"));
  std::vector<std::string> told;
  for (const auto& finding : CheckPaper(DocxDocument::FromBytes(ZipOf(parts), "letter.docx"),
                                        DocxDocument::FromBytes(ZipOf(common), "common.docx"))) {
    told.push_back(finding.text);
  }
  return told;
}

TEST(Paper, OfAnotherSizeThanTheLetterheadsIsTold) {
  const std::string a4 = "w:w=\"11907\" w:h=\"16840\"";
  const auto letter = [](const std::string& sections) {
    return LetterParts("<w:body><w:p/>" + sections + "</w:body>");
  };
  EXPECT_THAT(PaperToldOf(letter(PageOf("w:w=\"15840\" w:h=\"12240\" w:orient=\"landscape\"") +
                                 PageOf("w:w=\"12242\" w:h=\"15842\""))),
              IsEmpty());
  EXPECT_THAT(PaperToldOf(letter("")), IsEmpty());
  EXPECT_THAT(
      PaperToldOf(letter(PageOf(a4) + PageOf(a4))),
      ElementsAre(StartsWith("The pages are A4, and the letter's become Letter, the letterhead's size")));
  EXPECT_THAT(
      PaperToldOf(letter(PageOf("w:w=\"16838\" w:h=\"11906\"") + PageOf("w:w=\"7200\" w:h=\"14400\""))),
      ElementsAre(StartsWith("Pages across are A4, but the letterhead"),
                  StartsWith("The pages are 5.0 by 10.0 inches, and the letter's become Letter")));
  auto own = letter(PageOf(a4, "<w:headerReference w:type=\"default\" r:id=\"rel_header1.xml\"/>"));
  AddRelatedPart(own, "header", "header1.xml", WordPart("w:hdr", "<w:p/>"));
  EXPECT_THAT(PaperToldOf(own), ElementsAre(StartsWith("The pages are A4 and stay so")));
}

}  // namespace
}  // namespace markup
