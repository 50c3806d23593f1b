#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Makes packages for tests, good ones and bad ones.
struct DocxPart {
  std::string name;
  std::string content;
};

/// A zip file of these entries, in this order.
std::string ZipOf(const std::vector<DocxPart>& parts);

/// The parts of a small document: content types, relations and "word/document.xml" with this text. `document`
/// may be a w:body alone; it is put into a w:document then.
std::vector<DocxPart> LetterParts(std::string document);

/// A header, a footer or notes added to such parts.
void AddRelatedPart(std::vector<DocxPart>& parts, const std::string& kind, const std::string& file,
                    const std::string& content);

/// Says that the document refers to `target`, a part in its folder.
void AddRelation(std::vector<DocxPart>& parts, const std::string& kind, const std::string& target);

std::string LetterOf(const std::string& document);

/// `content` between root tags of WordprocessingML: "w:hdr", "w:ftr", "w:footnotes".
std::string WordPart(const std::string& root, const std::string& content);

/// The unpacked text of an entry.
std::string PartOf(std::string_view package, const std::string& name);
/// Its bytes as they stand in the zip file, still packed.
std::string PackedPartOf(std::string_view package, const std::string& name);
std::vector<std::string> PartNamesOf(std::string_view package);
/// Whether a strict reader finds nothing to say against it.
bool IsConsistentZip(std::string_view package);

/// A bookmark around some text, in a paragraph of its own.
std::string Marked(const std::string& name, const std::string& text, int id);
