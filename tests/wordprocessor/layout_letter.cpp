#include "tests/wordprocessor/layout_letter.h"

#include <zip.h>

#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace {

constexpr std::string_view kTypes =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
    R"(<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
    R"(<Default Extension="xml" ContentType="application/xml"/>)"
    R"(<Override PartName="/word/document.xml" ContentType=)"
    R"("application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml"/>)"
    R"(<Override PartName="/word/settings.xml" ContentType=)"
    R"("application/vnd.openxmlformats-officedocument.wordprocessingml.settings+xml"/></Types>)";

constexpr std::string_view kRelationships =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)";

constexpr std::string_view kDocument =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<w:document xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main")"
    R"( xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships")"
    R"( xmlns:wp="http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing")"
    R"( xmlns:a="http://schemas.openxmlformats.org/drawingml/2006/main")"
    R"( xmlns:pic="http://schemas.openxmlformats.org/drawingml/2006/picture")"
    R"( xmlns:v="urn:schemas-microsoft-com:vml" xmlns:o="urn:schemas-microsoft-com:office:office"><w:body>)";

}  // namespace

std::string Zip(const Parts& parts) {
  zip_error_t error;
  zip_source_t* source = zip_source_buffer_create(nullptr, 0, 0, &error);
  zip_t* archive = zip_open_from_source(source, ZIP_TRUNCATE, &error);
  if (archive == nullptr) throw std::runtime_error("no zip file");
  zip_source_keep(source);
  for (const auto& [name, content] : parts) {
    zip_file_add(archive, name.c_str(), zip_source_buffer(archive, content.data(), content.size(), 0), 0);
  }
  zip_close(archive);
  zip_stat_t known;
  zip_source_stat(source, &known);
  std::string bytes(known.size, '\0');
  zip_source_open(source);
  zip_source_read(source, bytes.data(), bytes.size());
  zip_source_close(source);
  zip_source_free(source);
  return bytes;
}

std::string Letter(std::string_view body, std::string_view relationships, const Parts& more) {
  Parts parts = {
      {"[Content_Types].xml", std::string(kTypes)},
      {"_rels/.rels",
       std::string(kRelationships) +
           R"(<Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/)"
           R"(relationships/officeDocument" Target="word/document.xml"/></Relationships>)"},
      {"word/document.xml", std::string(kDocument) + std::string(body) + "</w:body></w:document>"},
      {"word/_rels/document.xml.rels",
       std::string(kRelationships) + std::string(relationships) + "</Relationships>"},
  };
  parts.insert(parts.end(), more.begin(), more.end());
  return Zip(parts);
}

std::string Paragraph(std::string_view text) {
  return "<w:p><w:r><w:t>" + std::string(text) + "</w:t></w:r></w:p>";
}

std::string PdfText(const std::filesystem::path& pdf) {
  return OutputOf("pdftotext -layout '" + pdf.string() + "' -");
}

std::string OutputOf(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), pclose);
  std::string text;
  std::array<char, 4096> piece;
  while (const auto count = fread(piece.data(), 1, piece.size(), output.get()))
    text.append(piece.data(), count);
  return text;
}
