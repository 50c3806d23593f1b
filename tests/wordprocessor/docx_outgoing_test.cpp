#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/wordprocessor/docx_builder.h"
#include "tests/wordprocessor/letter_markup.h"
#include "wordprocessor/document/document.h"

/// What goes out with a letter beside its text.
namespace markup {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using wordprocessor::DataContext;
using wordprocessor::DocxDocument;

std::string Types(const std::string& part, const std::string& type) {
  return "<Override PartName=\"/" + part + "\" ContentType=\"application/vnd." + type + "+xml\"/>";
}

constexpr auto kRelations = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

std::string Relation(const std::string& id, const std::string& kind, const std::string& target,
                     bool external = false) {
  return "<Relationship Id=\"" + id + "\" Type=\"" + kRelations + kind + "\" Target=\"" + target + "\"" +
         (external ? " TargetMode=\"External\"" : "") + "/>";
}

std::string RelationsPart(const std::string& relations) {
  return "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" +
         relations + "</Relationships>";
}

void InsertInto(std::string& part, const std::string& end, const std::string& content) {
  part.insert(part.rfind(end), content);
}

/// A template with everything in it that people and programs leave; "LEAK" stands wherever a name, a path or
/// a value of theirs would.
std::vector<DocxPart> TemplateOfABusyAuthor() {
  const std::string drawing =
      "<w:p><w:permStart w:id=\"1\" w:ed=\"LEAK\"/><w:permEnd w:id=\"1\"/><w:r><w:drawing><pic:cNvPr "
      "xmlns:pic=\"pic\" id=\"1\" descr=\"C:\\Users\\LEAK\\logo.png\"/><a:blip "
      "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
      "r:embed=\"rPicture\" r:link=\"rLinked\"/></w:drawing></w:r></w:p>";
  const std::string object =
      "<w:p><w:r><w:object><v:shape xmlns:v=\"urn:schemas-microsoft-com:vml\"><v:imagedata "
      "r:id=\"rPicture\"/></v:shape><o:OLEObject xmlns:o=\"urn:schemas-microsoft-com:office:office\" "
      "ProgID=\"LEAK\" r:id=\"rObject\"/></w:object></w:r></w:p>";
  const std::string control =
      "<w:sdt><w:sdtPr><w:lock w:val=\"sdtContentLocked\"/><w:showingPlcHdr/><w:dataBinding "
      "w:xpath=\"/LEAK\"/></w:sdtPr><w:sdtContent><w:p>" +
      Mark("NAME", Text("[n]")) + "</w:p></w:sdtContent></w:sdt>";
  const std::string gone = Paragraph(
      By("del", "<w:r><w:delText>LEAK</w:delText></w:r><w:r><w:footnoteReference w:id=\"3\"/></w:r>") +
      "<w:r><w:rPr><w:vanish/></w:rPr><w:drawing><a:blip "
      "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
      "r:embed=\"rSecret\"/></w:drawing></w:r><w:r><w:footnoteReference w:id=\"2\"/></w:r>");
  auto parts =
      LetterParts(WordPart("w:document",
                           "<w:body><w:p w:rsidR=\"00LEAK\"><w:commentRangeStart w:id=\"0\"/><w:r "
                           "w:rsidRPr=\"00LEAK\"><w:t>Text</w:t></w:r>"
                           "<w:commentRangeEnd w:id=\"0\"/><w:r><w:commentReference "
                           "w:id=\"0\"/></w:r><w:hyperlink r:id=\"rFile\">" +
                               Text("file") + "</w:hyperlink><w:hyperlink r:id=\"rPage\">" + Text("page") +
                               "</w:hyperlink></w:p>" + drawing + object + control + gone +
                               "<w:altChunk r:id=\"rChunk\"/><w:sectPr w:rsidR=\"00LEAK\"><w:printerSettings "
                               "r:id=\"rPrinter\"/></w:sectPr></w:body>"));
  AddRelatedPart(parts, "comments", "comments.xml",
                 WordPart("w:comments", By("comment", Paragraph(Text("LEAK")))));
  AddRelatedPart(parts, "people", "people.xml", WordPart("w:people", "LEAK"));
  AddRelatedPart(parts, "glossaryDocument", "glossary/document.xml", WordPart("w:glossaryDocument", "LEAK"));
  AddRelatedPart(parts, "vbaProject", "vbaProject.bin", "LEAK");
  AddRelatedPart(parts, "webSettings", "webSettings.xml", WordPart("w:webSettings", "LEAK"));
  AddRelatedPart(parts, "footnotes", "footnotes.xml",
                 WordPart("w:footnotes", "<w:footnote w:id=\"2\">" + Paragraph(Text("shown note")) +
                                             "</w:footnote><w:footnote w:id=\"3\">" +
                                             Paragraph(Text("LEAK")) + "</w:footnote>"));
  AddRelatedPart(
      parts, "styles", "styles.xml",
      WordPart("w:styles",
               "<w:docDefaults><w:rPrDefault><w:rPr><w:lang w:val=\"es-MX\"/></w:rPr></w:rPrDefault>"
               "</w:docDefaults><w:style w:styleId=\"a\"><w:rsid w:val=\"00LEAK\"/></w:style>"));
  AddRelatedPart(
      parts, "settings", "settings.xml",
      WordPart(
          "w:settings",
          "<w:writeProtection w:hash=\"LEAK\"/><w:attachedTemplate r:id=\"rTemplate\"/>"
          "<w:trackRevisions/><w:documentProtection w:hash=\"LEAK\"/><w:defaultTabStop w:val=\"720\"/>"
          "<w:rsids><w:rsid w:val=\"00LEAK\"/></w:rsids><w:mailMerge><w:query w:val=\"LEAK\"/></w:mailMerge>"
          "<w:docVars><w:docVar w:name=\"LEAK\" w:val=\"LEAK\"/></w:docVars>"));
  parts.push_back({"word/_rels/settings.xml.rels",
                   RelationsPart(Relation("rTemplate", "attachedTemplate", "file:///C:/LEAK.dotx", true))});
  InsertInto(parts[3].content, "</Relationships>",
             Relation("rPicture", "image", "media/logo.png") +
                 Relation("rSecret", "image", "media/secret.png") +
                 Relation("rLinked", "image", "file:///C:/LEAK.png", true) +
                 Relation("rObject", "oleObject", "embeddings/o.bin") +
                 Relation("rFile", "hyperlink", "file:///C:/LEAK.doc", true) +
                 Relation("rPage", "hyperlink", "https://example.org/", true) +
                 Relation("rChunk", "aFChunk", "chunk.docx") +
                 Relation("rPrinter", "printerSettings", "printer.bin") +
                 Relation("rData", "customXml", "../customXml/item1.xml"));
  InsertInto(
      parts[1].content, "</Relationships>",
      Relation("rExtended", "extended-properties", "docProps/app.xml") +
          Relation("rCustom", "custom-properties", "docProps/custom.xml") +
          "<Relationship Id=\"rCore\" Type=\"http://schemas.openxmlformats.org/package/2006/relationships/"
          "metadata/core-properties\" Target=\"docProps/core.xml\"/>");
  InsertInto(parts[0].content, "</Types>",
             Types("docProps/core.xml", "openxmlformats-package.core-properties") +
                 Types("docProps/custom.xml", "LEAK.custom"));
  const std::string core = "http://schemas.openxmlformats.org/package/2006/metadata/core-properties";
  parts.insert(parts.end(),
               {{"word/media/logo.png", "logo"},
                {"word/media/secret.png", "LEAK"},
                {"word/embeddings/o.bin", "LEAK"},
                {"word/chunk.docx", "LEAK"},
                {"word/printer.bin", "LEAK"},
                {"customXml/item1.xml", "<a>LEAK</a>"},
                {"docProps/app.xml", "<Properties><Company>LEAK</Company></Properties>"},
                {"docProps/custom.xml", "<Properties>LEAK</Properties>"},
                {"docProps/core.xml",
                 "<cp:coreProperties xmlns:cp=\"" + core +
                     "\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\"><dc:title>Tax &amp; Fuel</dc:title>"
                     "<dc:creator>LEAK</dc:creator><cp:lastModifiedBy>LEAK</cp:lastModifiedBy>"
                     "<cp:keywords>LEAK</cp:keywords></cp:coreProperties>"}});
  return parts;
}

TEST(OutgoingLetter, NamesNobodyAndCarriesNothingOfItsAuthors) {
  const auto letter = LetterFrom(ZipOf(TemplateOfABusyAuthor()));
  for (const auto& name : PartNamesOf(letter)) {
    EXPECT_THAT(PartOf(letter, name), Not(HasSubstr("LEAK"))) << name;
  }
  EXPECT_THAT(
      PartNamesOf(letter),
      testing::UnorderedElementsAre("[Content_Types].xml", "_rels/.rels", "word/document.xml",
                                    "word/_rels/document.xml.rels", "word/footnotes.xml", "word/styles.xml",
                                    "word/settings.xml", "word/media/logo.png", "docProps/core.xml"));
  EXPECT_THAT(PartOf(letter, "docProps/core.xml"), AllOf(HasSubstr("<dc:title>Tax &amp; Fuel</dc:title>"),
                                                         HasSubstr("<dc:creator>Office K1</dc:creator>"),
                                                         HasSubstr("<dc:language>es-MX</dc:language>")));
  EXPECT_EQ(ShownIn(letter), "Textfilepage///Ada//");
  EXPECT_THAT(ShownIn(letter, "word/footnotes.xml"), "shown note/");
}

TEST(OutgoingLetter, KeepsThePictureOfAnObjectAndTheLinksOfItsReaders) {
  const auto document = PartOf(LetterFrom(ZipOf(TemplateOfABusyAuthor())), "word/document.xml");
  EXPECT_THAT(document, HasSubstr("<w:pict><v:shape xmlns:v=\"urn:schemas-microsoft-com:vml\"><v:imagedata "
                                  "r:id=\"rPicture\"/></v:shape></w:pict>"));
  EXPECT_THAT(document, AllOf(HasSubstr("r:embed=\"rPicture\"/>"), HasSubstr("<w:hyperlink r:id=\"rPage\">"),
                              HasSubstr("<w:hyperlink><w:r>"), HasSubstr("<w:sdtPr/>")));
}

TEST(OutgoingLetter, IsADocumentWhateverItsTemplateWas) {
  for (const auto* type :
       {"application/vnd.ms-word.document.macroEnabled.main+xml",
        "application/vnd.ms-word.template.macroEnabledTemplate.main+xml",
        "application/vnd.openxmlformats-officedocument.wordprocessingml.template.main+xml"}) {
    auto parts = LetterParts("<w:body>" + Paragraph(Mark("NAME", "")) + "</w:body>");
    const std::string usual =
        "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml";
    parts[0].content.replace(parts[0].content.find(usual), usual.size(), type);
    EXPECT_THAT(PartOf(LetterFrom(ZipOf(parts)), "[Content_Types].xml"), HasSubstr(usual)) << type;
  }
}

TEST(OutgoingLetter, HasATitleOfItsOwnItsHeadingsOrItsFile) {
  const auto title = [](const std::string& body) {
    const auto core = PartOf(LetterFrom(LetterOf("<w:body>" + body + "</w:body>")), "docProps/core.xml");
    const auto begin = core.find("<dc:title>") + 10;
    return core.substr(begin, core.find("</dc:title>") - begin);
  };
  const std::string outlined = "<w:outlineLvl w:val=\"0\"/>";
  EXPECT_EQ(title(Paragraph(Text("text")) + Paragraph(Text("To ") + Mark("NAME", ""), outlined) +
                  Paragraph(Text("Notice of ") + Text("Hearing"), outlined)),
            "Notice of Hearing");
  EXPECT_EQ(title(Paragraph(Text("text"))), "letter");
}

TEST(OutgoingLetter, HidesWhatItsStylesHide) {
  auto parts = LetterParts("<w:body>" + Paragraph(Text("a") + Text("LEAK", "<w:rStyle w:val=\"Inner\"/>")) +
                           Paragraph(Text("LEAK") + Text("b", "<w:vanish w:val=\"0\"/>") +
                                         Text("c", "<w:rStyle w:val=\"Hidden\"/>"),
                                     "<w:pStyle w:val=\"Note\"/>") +
                           "</w:body>");
  const std::string hides = "<w:rPr><w:vanish/></w:rPr></w:style>";
  AddRelatedPart(
      parts, "styles", "styles.xml",
      WordPart("w:styles",
               "<w:style w:type=\"character\" w:styleId=\"Hidden\">" + hides +
                   "<w:style w:type=\"character\" w:styleId=\"Inner\"><w:basedOn w:val=\"Hidden\"/>"
                   "</w:style><w:style w:type=\"paragraph\" w:styleId=\"Note\">" +
                   hides));
  EXPECT_EQ(ShownIn(LetterFrom(ZipOf(parts))), "a/bc/");
}

TEST(OutgoingLetter, MergesCellsAsTheChangeSays) {
  const auto cell = [](const std::string& how) {
    return Cell(Paragraph(""),
                "<w:tcW w:w=\"1\"/><w:vMerge/><w:cellMerge w:id=\"1\" w:author=\"LEAK\" w:vMerge=\"" + how +
                    "\"/><w:shd/>");
  };
  const auto document = PartOf(LetterFrom(LetterOf("<w:body>" + Table(Row(cell("rest")) + Row(cell("cont"))) +
                                                   Paragraph("") + "</w:body>")),
                               "word/document.xml");
  EXPECT_THAT(document, AllOf(HasSubstr("<w:tcW w:w=\"1\"/><w:vMerge w:val=\"restart\"/><w:shd/>"),
                              HasSubstr("<w:tcW w:w=\"1\"/><w:vMerge w:val=\"continue\"/><w:shd/>"),
                              Not(HasSubstr("cellMerge"))));
}

// A date that is not there would be today's, or the template's, and nobody would know.
TEST(OutgoingLetter, SaysThatADateIsNotFilled) {
  auto document = DocxDocument::FromBytes(
      LetterOf("<w:body>" + Paragraph(Field("DATE", Text("May 5, 1999"))) + "</w:body>"), "letter");
  EXPECT_THAT(document.MergeBookmarks(DataContext::Parse("<X/>")), testing::ElementsAre("LTR_DT"));
  EXPECT_EQ(ShownIn(document.Bytes()), "May 5, 1999/");
}

}  // namespace
}  // namespace markup
