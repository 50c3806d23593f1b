#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/wordprocessor/docx_builder.h"
#include "wordprocessor/document/document.h"

namespace {

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using wordprocessor::DataContext;
using wordprocessor::DocxDocument;

constexpr auto kImage = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/image";

const std::string kPageSetup =
    "<w:pgSz w:w=\"12240\" w:h=\"15840\"/><w:pgMar w:top=\"1440\" w:bottom=\"720\"/><w:titlePg/>";

std::string Style(const std::string& id, const std::string& content = "") {
  return "<w:style w:type=\"paragraph\" w:styleId=\"" + id + "\">" + content + "</w:style>";
}

std::string Reference(const std::string& kind, const std::string& file) {
  return "<w:" + kind + "Reference w:type=\"default\" r:id=\"rel_" + file + "\"/>";
}

DocxDocument Open(const std::vector<DocxPart>& parts) {
  return DocxDocument::FromBytes(ZipOf(parts), "letter.docx");
}

/// Letterhead with a picture, footer, page setup and two styles.
DocxDocument Common() {
  auto parts = LetterParts("<w:body><w:p/><w:sectPr>" + Reference("header", "header1.xml") +
                           Reference("footer", "footer1.xml") + kPageSetup + "</w:sectPr></w:body>");
  AddRelatedPart(parts, "header", "header1.xml", WordPart("w:hdr", Marked("OFFICE_NAME", "office", 1)));
  AddRelatedPart(parts, "footer", "footer1.xml",
                 WordPart("w:ftr", "<w:p><w:r><w:t>common foot</w:t></w:r></w:p>"));
  AddRelatedPart(parts, "styles", "styles.xml",
                 WordPart("w:styles", Style("Letterhead", "<w:pPr><w:numPr/><w:keepNext/></w:pPr>") +
                                          Style("Text", "<w:name w:val=\"common text\"/>")));
  parts.push_back({"word/media/seal.png", "seal"});
  parts.push_back({"word/_rels/header1.xml.rels",
                   std::string("<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/"
                               "relationships\"><Relationship Id=\"rId7\" Type=\"") +
                       kImage + "\" Target=\"media/seal.png\"/></Relationships>"});
  return Open(parts);
}

std::string DocumentOf(const DocxDocument& letter) {
  return PartOf(letter.Bytes(), "word/document.xml");
}

TEST(CommonTemplate, GivesALetterOfItsOwnWordsHeadFootAndPage) {
  auto letter = Open(LetterParts("<w:body><w:p/></w:body>"));
  letter.AttachTemplate(Common());
  EXPECT_THAT(DocumentOf(letter),
              AllOf(HasSubstr("<w:headerReference w:type=\"default\" r:id="), HasSubstr("<w:footerReference"),
                    HasSubstr(kPageSetup + "</w:sectPr>")));
  EXPECT_TRUE(
      letter.MergeBookmarks(DataContext::Parse("<X><OFFICE_NAME>Head Office</OFFICE_NAME></X>")).empty());
  const auto bytes = letter.Bytes();
  EXPECT_THAT(PartOf(bytes, "word/common1_header1.xml"), HasSubstr("Head Office"));
  EXPECT_THAT(
      PartOf(bytes, "word/_rels/common1_header1.xml.rels"),
      HasSubstr("Id=\"rId7\" Type=\"" + std::string(kImage) + "\" Target=\"/word/common2_seal.png\""));
  EXPECT_EQ(PartOf(bytes, "word/common2_seal.png"), "seal");
  EXPECT_THAT(PartOf(bytes, "[Content_Types].xml"),
              HasSubstr("PartName=\"/word/common2_seal.png\" ContentType=\"image/png\""));
  EXPECT_THAT(PartNamesOf(bytes), Contains("word/common4_styles.xml"));
}

TEST(CommonTemplate, LeavesALetterItsOwnHeadPageAndStyles) {
  auto parts = LetterParts("<w:body><w:p/><w:sectPr>" + Reference("header", "header1.xml") +
                           "<w:pgSz w:w=\"1\" w:h=\"2\"/><w:cols/></w:sectPr></w:body>");
  AddRelatedPart(parts, "header", "header1.xml", WordPart("w:hdr", Marked("OWN", "own", 1)));
  AddRelatedPart(parts, "styles", "styles.xml",
                 WordPart("w:styles", Style("Text", "<w:name w:val=\"own\"/>")));
  auto letter = Open(parts);
  letter.AttachTemplate(Common());
  const auto document = DocumentOf(letter);
  // A first page of its own would show the common foot but hide the letter's head.
  EXPECT_THAT(document, Not(HasSubstr("titlePg")));
  EXPECT_THAT(document, AllOf(HasSubstr("rel_header1.xml\"/><w:footerReference"),
                              HasSubstr("<w:pgSz w:w=\"1\" w:h=\"2\"/><w:pgMar "
                                        "w:top=\"1440\" w:bottom=\"720\"/><w:cols/>")));
  const auto styles = PartOf(letter.Bytes(), "word/styles.xml");
  EXPECT_THAT(styles, AllOf(HasSubstr("\"own\""), HasSubstr("Letterhead"), HasSubstr("keepNext")));
  EXPECT_THAT(styles, AllOf(Not(HasSubstr("common text")), Not(HasSubstr("numPr"))));
  EXPECT_THAT(PartNamesOf(letter.Bytes()), Not(Contains("word/common2_header1.xml")));
}

TEST(CommonTemplate, GivesItsHeadToTheFirstOfSeveralSections) {
  auto letter = Open(LetterParts("<w:body><w:p><w:pPr><w:sectPr/></w:pPr></w:p><w:p/><w:sectPr/></w:body>"));
  letter.AttachTemplate(Common());
  const auto document = DocumentOf(letter);
  EXPECT_EQ(document.find("headerReference"), document.rfind("headerReference"));
  EXPECT_LT(document.find("headerReference"), document.find("</w:pPr>"));
  EXPECT_NE(document.find("pgMar"), document.rfind("pgMar"));
}

// A letter written under the product's letterhead, which sets its first page apart, had none at all under a
// letterhead that does not.
TEST(CommonTemplate, IsOnPagesThatOnlyTheLetterSetsApart) {
  auto common =
      LetterParts("<w:body><w:p/><w:sectPr>" + Reference("header", "header1.xml") + "</w:sectPr></w:body>");
  AddRelatedPart(common, "header", "header1.xml", WordPart("w:hdr", "<w:p/>"));
  const auto document_of = [&](const std::string& own) {
    auto parts = LetterParts("<w:body><w:p/><w:sectPr>" + own + "<w:titlePg/></w:sectPr></w:body>");
    AddRelatedPart(parts, "footer", "footer1.xml", WordPart("w:ftr", "<w:p/>"));
    AddRelatedPart(parts, "settings", "settings.xml", WordPart("w:settings", "<w:evenAndOddHeaders/>"));
    auto letter = Open(parts);
    letter.AttachTemplate(Open(common));
    return DocumentOf(letter);
  };
  EXPECT_THAT(
      document_of(Reference("footer", "footer1.xml")),
      AllOf(HasSubstr("headerReference w:type=\"default\""), HasSubstr("headerReference w:type=\"first\""),
            HasSubstr("headerReference w:type=\"even\""), HasSubstr("titlePg")));
  EXPECT_THAT(document_of(""),
              AllOf(HasSubstr("headerReference w:type=\"default\""), Not(HasSubstr("titlePg"))));
}

// A letter written for A4 cut the letterhead's footer off.
TEST(CommonTemplate, BringsItsPageSizeWithItsHead) {
  const std::string body =
      "<w:body><w:p><w:pPr><w:sectPr><w:pgSz w:w=\"16838\" w:h=\"11906\" w:orient=\"landscape\"/>"
      "</w:sectPr></w:pPr></w:p><w:p/><w:sectPr>"
      "<w:pgSz w:w=\"11906\" w:h=\"16838\" w:code=\"9\"/><w:cols/></w:sectPr></w:body>";
  auto letter = Open(LetterParts(body));
  letter.AttachTemplate(Common());
  EXPECT_THAT(DocumentOf(letter),
              AllOf(HasSubstr("<w:pgSz w:w=\"16838\" w:h=\"11906\" w:orient="),
                    HasSubstr("<w:pgSz w:w=\"12240\" w:h=\"15840\"/>"), Not(HasSubstr("w:code"))));
}

// LibreOffice writes distances of 0 for a letter without a header: the letterhead stood at the sheet's edge
// and the address above the envelope's window.
TEST(CommonTemplate, PutsItsHeadWhereItBelongs) {
  const std::string own =
      "<w:pgMar w:left=\"7\" w:right=\"7\" w:header=\"0\" w:top=\"9\" w:footer=\"0\" w:bottom=\"9\"/>";
  const auto section = [&](const std::string& more) {
    return "<w:p><w:pPr><w:sectPr><w:pgSz w:h=\"15840\"" + more + "/>" + own + "</w:sectPr></w:pPr></w:p>";
  };
  auto common = LetterParts(
      "<w:body><w:p/><w:sectPr>" + Reference("header", "header1.xml") +
      "<w:pgMar w:top=\"1300\" w:right=\"1440\" w:bottom=\"1200\" w:left=\"1440\" w:header=\"640\" "
      "w:footer=\"520\"/></w:sectPr></w:body>");
  AddRelatedPart(common, "header", "header1.xml", WordPart("w:hdr", "<w:p/>"));
  auto letter =
      Open(LetterParts("<w:body>" + section("") + section(" w:orient=\"landscape\"") + "</w:body>"));
  letter.AttachTemplate(Open(common));
  EXPECT_THAT(
      DocumentOf(letter),
      AllOf(HasSubstr(
                "<w:pgMar w:left=\"1440\" w:right=\"1440\" w:header=\"640\" w:top=\"1300\" w:footer=\"0\" "
                "w:bottom=\"9\"/>"),
            HasSubstr("<w:pgMar w:left=\"7\" w:right=\"7\" w:header=\"640\" w:top=\"1300\" w:footer=\"0\" "
                      "w:bottom=\"9\"/>")));
}

TEST(CommonTemplate, SpeaksTheLettersOwnPrefixes) {
  const std::string word = "http://purl.oclc.org/ooxml/wordprocessingml/main";
  auto letter = Open(LetterParts("<document xmlns=\"" + word + "\"><body><p/></body></document>"));
  letter.AttachTemplate(Common());
  EXPECT_THAT(DocumentOf(letter),
              AllOf(HasSubstr("<headerReference w:type=\"default\" r:id=\"rIdCommon1\"/>"),
                    HasSubstr("<pgSz w:w=\"12240\" w:h=\"15840\"/>"), HasSubstr("xmlns:w=\"" + word + "\""),
                    HasSubstr("xmlns:r=\"http://purl.oclc.org/ooxml/officeDocument/relationships\"")));
  EXPECT_FALSE(letter.Bookmarks().empty());
}

TEST(CommonTemplate, WithNothingToGiveLeavesTheLetterAsItIs) {
  auto letter = Open(LetterParts("<w:body><w:p/></w:body>"));
  const auto before = letter.Bytes();
  letter.AttachTemplate(Open(LetterParts("<w:body><w:p/></w:body>")));
  EXPECT_EQ(letter.Bytes(), before);
}

}  // namespace
