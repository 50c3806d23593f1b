#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// What one part of a package says about another (ECMA-376, part 2, 6.5).
struct DocxRelation {
  std::string id;
  std::string kind;    ///< the last word of its type: "officeDocument", "header", "image", ...
  std::string type;    ///< as written
  std::string target;  ///< the part's name; of an external one its address as written
  bool external = false;
};

/// The relations of `part` in the order they are written; of the package itself for "". None where it has no
/// such part. Throws Failure kDamaged.
std::vector<DocxRelation> ReadRelations(const DocxPackage& package, std::string_view part);

/// Whether it leads to a part that `package` has.
bool LeadsToPart(const DocxRelation& relation, const DocxPackage& package);

/// The first of that kind, where it leads to a part that `package` has; else nullptr. Into `relations`.
const DocxRelation* FindRelated(const std::vector<DocxRelation>& relations, const DocxPackage& package,
                                std::string_view kind);

/// "word/_rels/document.xml.rels" for "word/document.xml".
std::string RelationsPartOf(std::string_view part);

/// The part that `target` means where `part` says it: "word/media/a.png" for "media/a.png" in
/// "word/header1.xml".
std::string ResolveTarget(std::string_view part, std::string_view target);

/// "[Content_Types].xml": what each part is (ECMA-376, part 2, 6.2.3).
class ContentTypes {
 public:
  /// Throws Failure kDamaged where the package has none or it cannot be read.
  explicit ContentTypes(const DocxPackage& package);

  /// "" where nothing is said.
  std::string Of(std::string_view part) const;

 private:
  std::map<std::string, std::string> by_part_;
  std::map<std::string, std::string> by_ending_;
};

/// The content type of a document's main part, as a letter has it.
inline constexpr std::string_view kDocumentType =
    "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml";

/// The name of a package's list of content types.
inline constexpr std::string_view kContentTypesPart = "[Content_Types].xml";

/// What an element or attribute is called without its prefix.
std::string_view LocalNameOf(std::string_view name);

}  // namespace wordprocessor
