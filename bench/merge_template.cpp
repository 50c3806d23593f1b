#include "bench/merge_template.h"

#include <zip.h>

#include <random>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

constexpr int kBookmarksInTwoPages = 40;
constexpr int kTableRows = 8;

const std::string kType = "application/vnd.openxmlformats-officedocument.wordprocessingml.";
const std::string kRelations = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
const std::string kRoot =
    " xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\""
    " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\""
    " xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\""
    " xmlns:w14=\"http://schemas.microsoft.com/office/word/2010/wordml\" mc:Ignorable=\"w14\">";
const std::string kFonts =
    "<w:rPr><w:rFonts w:ascii=\"Times New Roman\" w:hAnsi=\"Times New Roman\" w:cs=\"Times New Roman\"/>"
    "<w:sz w:val=\"24\"/><w:szCs w:val=\"24\"/></w:rPr>";
const std::string kWords =
    "our records show that the return for the period named below has not been received "
    "and that the amount shown is due to the administration within thirty days of the date of this letter ";

/// Writes document parts and gives every bookmark the next name.
class Writer {
 public:
  std::string Paragraph(const std::string& content) {
    return "<w:p w14:paraId=\"" + Hex() + "\" w:rsidR=\"" + Hex() + "\" w:rsidRDefault=\"" + Hex() +
           "\"><w:pPr><w:spacing w:after=\"120\" w:line=\"276\" w:lineRule=\"auto\"/><w:jc w:val=\"both\"/>" +
           kFonts + "</w:pPr>" + content + "</w:p>";
  }

  std::string Run(const std::string& text) {
    return "<w:r w:rsidRPr=\"" + Hex() + "\">" + kFonts + "<w:t xml:space=\"preserve\">" + text +
           "</w:t></w:r>";
  }

  std::string Words(std::size_t count) {
    std::string words;
    while (words.size() < count * 6) words += kWords.substr(random_() % 60, 60 + random_() % 60);
    return words;
  }

  std::string Bookmark(const std::string& prefix, const std::string& value, const std::string& wording = {}) {
    const auto id = std::to_string(next_++);
    const auto name = prefix + id;
    context_ += "<" + name + " State=\"8\" V_EnglishDesc=\"Field " + id + "\">" + value + "</" + name + ">";
    return "<w:bookmarkStart w:id=\"" + id + "\" w:name=\"" + name + "\"/>" +
           Run(wording.empty() ? "[field " + id + "]" : wording) + "<w:bookmarkEnd w:id=\"" + id + "\"/>";
  }

  /// 38 bookmarks; header and footer make it forty.
  std::string TwoPages() {
    std::string body;
    for (int i = 0; i < 19; ++i) {
      body += Paragraph(Run(Words(25)) + Bookmark("FIELD_", "a value of field " + std::to_string(i)) +
                        Run(Words(30)));
    }
    body +=
        "<w:tbl><w:tblPr><w:tblW w:w=\"0\" "
        "w:type=\"auto\"/></w:tblPr><w:tblGrid><w:gridCol/><w:gridCol/></w:tblGrid>";
    for (int i = 0; i < kTableRows; ++i) {
      body += "<w:tr><w:tc><w:tcPr><w:tcW w:w=\"4500\" w:type=\"dxa\"/></w:tcPr>" +
              Paragraph(Bookmark("CELL_", "Motor fuel tax")) +
              "</w:tc><w:tc><w:tcPr><w:tcW w:w=\"4500\" "
              "w:type=\"dxa\"/></w:tcPr>" +
              Paragraph(Bookmark("CELL_", "1,045.50")) + "</w:tc></w:tr>";
    }
    body += "</w:tbl>";
    body += Paragraph(Bookmark("PARA_", "", Words(40)));
    body += Paragraph(Bookmark("PARA_", "A text written by the user||\r\n||", Words(40)));
    body += Paragraph(Bookmark("PARA_", "Another one", Words(40)));
    return body;
  }

  std::string Context() const { return "<XML_CONTEXT>" + context_ + "</XML_CONTEXT>"; }

  std::string Noise(std::size_t size) {
    std::string noise;
    while (noise.size() < size) noise += static_cast<char>(random_());
    return noise;
  }

 private:
  std::string Hex() {
    std::string digits;
    for (int i = 0; i < 8; ++i) digits += "0123456789ABCDEF"[random_() % 16];
    return digits;
  }

  std::mt19937 random_{7};
  std::string context_;
  int next_ = 0;
};

std::string Zip(const std::vector<std::pair<std::string, std::string>>& parts) {
  zip_source_t* target = zip_source_buffer_create(nullptr, 0, 0, nullptr);
  zip_source_keep(target);
  zip_t* archive = zip_open_from_source(target, ZIP_TRUNCATE, nullptr);
  for (const auto& [name, content] : parts) {
    zip_file_add(archive, name.c_str(), zip_source_buffer(archive, content.data(), content.size(), 0), 0);
  }
  if (zip_close(archive) != 0) throw std::runtime_error(zip_strerror(archive));
  zip_stat_t result;
  zip_source_open(target);
  zip_source_stat(target, &result);
  std::string bytes(result.size, '\0');
  zip_source_read(target, bytes.data(), bytes.size());
  zip_source_free(target);
  return bytes;
}

std::string Relation(const std::string& id, const std::string& kind, const std::string& target) {
  return "<Relationship Id=\"" + id + "\" Type=\"" + kRelations + "/" + kind + "\" Target=\"" + target +
         "\"/>";
}

std::string Relations(const std::string& relations) {
  return "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" +
         relations + "</Relationships>";
}

std::string Override(const std::string& part, const std::string& type) {
  return "<Override PartName=\"/word/" + part + ".xml\" ContentType=\"" + kType + type + "+xml\"/>";
}

}  // namespace

MergeTemplate MakeMergeTemplate(int bookmarks) {
  Writer writer;
  std::string body;
  for (int i = 0; i < bookmarks; i += kBookmarksInTwoPages) body += writer.TwoPages();
  const auto header = writer.Paragraph(writer.Bookmark("HEAD_", "Office of Motor Fuel Tax"));
  const auto footer = writer.Paragraph(writer.Bookmark("FOOT_", "R-2024-000117"));
  std::string styles;
  for (int i = 0; i < 60; ++i) {
    styles +=
        "<w:style w:type=\"paragraph\" w:styleId=\"S" + std::to_string(i) + "\">" + kFonts + "</w:style>";
  }
  const std::string first = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
  MergeTemplate made;
  made.context = writer.Context();
  made.docx = Zip({{"[Content_Types].xml",
                    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
                    "<Default Extension=\"rels\" "
                    "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
                    "<Default Extension=\"png\" ContentType=\"image/png\"/>" +
                        Override("document", "document.main") + Override("header1", "header") +
                        Override("footer1", "footer") + Override("styles", "styles") + "</Types>"},
                   {"_rels/.rels", Relations(Relation("rId1", "officeDocument", "word/document.xml"))},
                   {"word/document.xml",
                    first + "<w:document" + kRoot + "<w:body>" + body + "<w:sectPr/></w:body></w:document>"},
                   {"word/_rels/document.xml.rels", Relations(Relation("rId1", "header", "header1.xml") +
                                                              Relation("rId2", "footer", "footer1.xml") +
                                                              Relation("rId3", "styles", "styles.xml"))},
                   {"word/header1.xml", first + "<w:hdr" + kRoot + header + "</w:hdr>"},
                   {"word/footer1.xml", first + "<w:ftr" + kRoot + footer + "</w:ftr>"},
                   {"word/styles.xml", first + "<w:styles" + kRoot + styles + "</w:styles>"},
                   {"word/media/seal.png", writer.Noise(20'000)}});
  return made;
}
