#include "tests/wordprocessor/docx_builder.h"

#include <zip.h>

#include <memory>
#include <stdexcept>

namespace {

constexpr auto kWord = "http://schemas.openxmlformats.org/wordprocessingml/2006/main";
constexpr auto kRelations = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
constexpr auto kType = "application/vnd.openxmlformats-officedocument.wordprocessingml.";

std::string Relation(const std::string& id, const std::string& kind, const std::string& target) {
  return "<Relationship Id=\"" + id + "\" Type=\"" + kRelations + "/" + kind + "\" Target=\"" + target +
         "\"/>";
}

std::string Override(const std::string& part, const std::string& type) {
  return "<Override PartName=\"/" + part + "\" ContentType=\"" + kType + type + "+xml\"/>";
}

std::string Relations(const std::string& relations) {
  return "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" +
         relations + "</Relationships>";
}

void InsertBefore(std::string& text, const std::string& end, const std::string& addition) {
  text.insert(text.rfind(end), addition);
}

using OpenZip = std::unique_ptr<zip_t, decltype(&zip_discard)>;

/// Empty where libzip, or with ZIP_CHECKCONS its strict side, does not take it.
OpenZip OpenZipBytes(std::string_view bytes, int flags) {
  zip_source_t* const source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr);
  zip_t* const archive = zip_open_from_source(source, flags, nullptr);
  if (archive == nullptr) zip_source_free(source);
  return {archive, &zip_discard};
}

std::string ReadEntry(std::string_view package, const std::string& name, zip_flags_t flags) {
  const auto zip = OpenZipBytes(package, ZIP_RDONLY);
  zip_stat_t entry;
  if (zip == nullptr || zip_stat(zip.get(), name.c_str(), 0, &entry) != 0) {
    throw std::runtime_error("no part " + name);
  }
  std::string content((flags & ZIP_FL_COMPRESSED) != 0 ? entry.comp_size : entry.size, '\0');
  const std::unique_ptr<zip_file_t, decltype(&zip_fclose)> file(zip_fopen(zip.get(), name.c_str(), flags),
                                                                &zip_fclose);
  const auto read = zip_fread(file.get(), content.data(), content.size());
  if (read != static_cast<zip_int64_t>(content.size())) throw std::runtime_error("cannot read " + name);
  return content;
}

}  // namespace

std::string ZipOf(const std::vector<DocxPart>& parts) {
  zip_source_t* target = zip_source_buffer_create(nullptr, 0, 0, nullptr);
  zip_source_keep(target);
  zip_t* archive = zip_open_from_source(target, ZIP_TRUNCATE, nullptr);
  for (const auto& part : parts) {
    zip_source_t* content = zip_source_buffer(archive, part.content.data(), part.content.size(), 0);
    if (zip_file_add(archive, part.name.c_str(), content, ZIP_FL_ENC_UTF_8) < 0) {
      throw std::runtime_error(zip_strerror(archive));
    }
  }
  if (zip_close(archive) != 0) throw std::runtime_error(zip_strerror(archive));
  zip_stat_t result;
  zip_source_open(target);
  zip_source_stat(target, &result);
  std::string bytes(result.size, '\0');
  zip_source_read(target, bytes.data(), bytes.size());
  zip_source_close(target);
  zip_source_free(target);
  return bytes;
}

std::vector<DocxPart> LetterParts(std::string document) {
  if (document.starts_with("<w:body")) document = WordPart("w:document", document);
  return {{"[Content_Types].xml",
           "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default "
           "Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
           "<Default Extension=\"png\" ContentType=\"image/png\"/>" +
               Override("word/document.xml", "document.main") + "</Types>"},
          {"_rels/.rels", Relations(Relation("rId1", "officeDocument", "word/document.xml"))},
          {"word/document.xml", document},
          {"word/_rels/document.xml.rels", Relations("")}};
}

void AddRelatedPart(std::vector<DocxPart>& parts, const std::string& kind, const std::string& file,
                    const std::string& content) {
  InsertBefore(parts[0].content, "</Types>", Override("word/" + file, kind));
  AddRelation(parts, kind, file);
  parts.push_back({"word/" + file, content});
}

void AddRelation(std::vector<DocxPart>& parts, const std::string& kind, const std::string& target) {
  InsertBefore(parts[3].content, "</Relationships>", Relation("rel_" + target, kind, target));
}

std::string LetterOf(const std::string& document) {
  return ZipOf(LetterParts(document));
}

std::string WordPart(const std::string& root, const std::string& content) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" + root + " xmlns:w=\"" + kWord + "\" xmlns:r=\"" +
         kRelations + "\">" + content + "</" + root + ">";
}

std::string PartOf(std::string_view package, const std::string& name) {
  return ReadEntry(package, name, 0);
}

std::string PackedPartOf(std::string_view package, const std::string& name) {
  return ReadEntry(package, name, ZIP_FL_COMPRESSED);
}

std::vector<std::string> PartNamesOf(std::string_view package) {
  const auto zip = OpenZipBytes(package, ZIP_RDONLY);
  std::vector<std::string> names;
  for (zip_int64_t i = 0; i < zip_get_num_entries(zip.get(), 0); ++i) {
    names.emplace_back(zip_get_name(zip.get(), static_cast<zip_uint64_t>(i), 0));
  }
  return names;
}

bool IsConsistentZip(std::string_view package) {
  return OpenZipBytes(package, ZIP_RDONLY | ZIP_CHECKCONS) != nullptr;
}

std::string Marked(const std::string& name, const std::string& text, int id) {
  const auto number = std::to_string(id);
  return "<w:p><w:bookmarkStart w:id=\"" + number + "\" w:name=\"" + name + "\"/><w:r><w:t>" + text +
         "</w:t></w:r><w:bookmarkEnd w:id=\"" + number + "\"/></w:p>";
}
