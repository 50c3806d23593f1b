#include "tests/wordprocessor/letter_markup.h"

#include <string_view>

#include "tests/wordprocessor/docx_builder.h"
#include "wordprocessor/document/document.h"

namespace markup {
namespace {

const std::string kContext =
    "<XML_CONTEXT><NAME>Ada</NAME><OFFICE_NAME>Office K1</OFFICE_NAME><LTR_DT>October 1, 2024</LTR_DT>"
    "<ROWS State=\"1\"><R><COL>1</COL></R><R><COL>2</COL></R></ROWS></XML_CONTEXT>";

}  // namespace

std::string Text(const std::string& text, const std::string& properties) {
  return "<w:r>" + (properties.empty() ? "" : "<w:rPr>" + properties + "</w:rPr>") +
         "<w:t xml:space=\"preserve\">" + text + "</w:t></w:r>";
}

std::string By(const std::string& element, const std::string& content) {
  return "<w:" + element + " w:id=\"9\" w:author=\"LEAK\" w:date=\"2024-01-01T00:00:00Z\">" + content +
         "</w:" + element + ">";
}

std::string Ins(const std::string& text) {
  return By("ins", Text(text));
}

std::string Del(const std::string& text) {
  return By("del", "<w:r><w:delText xml:space=\"preserve\">" + text + "</w:delText></w:r>");
}

std::string Paragraph(const std::string& runs, const std::string& properties) {
  return "<w:p>" + (properties.empty() ? "" : "<w:pPr>" + properties + "</w:pPr>") + runs + "</w:p>";
}

std::string EndIs(const std::string& how, const std::string& runs, const std::string& properties) {
  return Paragraph(runs, properties + "<w:rPr>" + By(how, "") + "</w:rPr>");
}

std::string Mark(const std::string& name, const std::string& content, int id) {
  const auto number = std::to_string(id);
  return "<w:bookmarkStart w:id=\"" + number + "\" w:name=\"" + name + "\"/>" + content +
         "<w:bookmarkEnd w:id=\"" + number + "\"/>";
}

std::string Cell(const std::string& blocks, const std::string& properties) {
  return "<w:tc><w:tcPr>" + properties + "</w:tcPr>" + blocks + "</w:tc>";
}

std::string Row(const std::string& cells, const std::string& properties) {
  return "<w:tr><w:trPr>" + properties + "</w:trPr>" + cells + "</w:tr>";
}

std::string Table(const std::string& rows) {
  return "<w:tbl><w:tblPr/><w:tblGrid/>" + rows + "</w:tbl>";
}

std::string BoxAndTwin(const std::string& blocks) {
  const auto box = "<w:pict><w:txbxContent>" + blocks + "</w:txbxContent></w:pict>";
  return "<w:r><mc:AlternateContent xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\">"
         "<mc:Choice>" +
         box + "</mc:Choice><mc:Fallback>" + box + "</mc:Fallback></mc:AlternateContent></w:r>";
}

std::string Field(const std::string& code, const std::string& result) {
  const auto mark = [](const std::string& type) {
    return "<w:r><w:fldChar w:fldCharType=\"" + type + "\"/></w:r>";
  };
  return mark("begin") + "<w:r><w:instrText xml:space=\"preserve\">" + code + "</w:instrText></w:r>" +
         mark("separate") + result + mark("end");
}

std::string SimpleField(const std::string& code, const std::string& result) {
  return "<w:fldSimple w:instr=\"" + code + "\">" + result + "</w:fldSimple>";
}

std::string Shown(const pugi::xml_node& node) {
  std::string text;
  for (const auto& child : node.children()) {
    const std::string_view name = child.name();
    if (name == "w:t" || name == "w:delText") text += child.text().get();
    if (name == "w:instrText") text += "{" + std::string(child.text().get()) + "}";
    if (name == "w:fldSimple") text += "{" + std::string(child.attribute("w:instr").value()) + "}";
    if (name != "w:t" && name != "w:instrText" && !name.ends_with("Pr")) text += Shown(child);
    if (name == "w:p") text += "/";
    if (name == "w:tc") text += ";";
  }
  return text;
}

std::string ShownIn(const std::string& bytes, const std::string& part) {
  pugi::xml_document document;
  const auto text = PartOf(bytes, part);
  document.load_buffer(text.data(), text.size(), pugi::parse_default | pugi::parse_ws_pcdata);
  return Shown(document);
}

std::string LetterFrom(const std::string& docx) {
  auto document = wordprocessor::DocxDocument::FromBytes(docx, "letter.docx");
  document.MergeBookmarks(wordprocessor::DataContext::Parse(kContext));
  return document.Bytes();
}

}  // namespace markup
