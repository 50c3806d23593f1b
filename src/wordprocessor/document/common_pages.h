#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "wordprocessor/docx/part_copier.h"
#include "wordprocessor/docx/relations.h"
#include "wordprocessor/docx/word_xml.h"
#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// What common_template.h says of pages: gives a letter's sections the headers, footers, page size and
/// margins of the common template's last one.
class CommonPages {
 public:
  /// A document with its main part. All of it outlives this.
  struct Side {
    const DocxPackage& package;
    const std::vector<DocxRelation>& relations;  ///< the main part's
    pugi::xml_document& document;
  };

  /// Changes `letter.document` only; what its headers refer to goes through `copier`.
  CommonPages(Side letter, Side common, DocxPartCopier& copier);

  /// Once. Returns whether the letter's document has changed. Throws Failure kDamaged where a part of either
  /// cannot be read.
  bool Attach();

  /// The header and footer parts that were taken, by the common template's names.
  const std::set<std::string>& letterhead() const { return letterhead_; }

 private:
  void AttachHeaders(const pugi::xml_node& common);
  bool AttachReferences(const pugi::xml_node& common, std::string_view kind, bool first_page);
  bool AttachReference(const pugi::xml_node& common, std::string_view kind, const char* type,
                       std::string_view common_type);
  void AttachPageSize(pugi::xml_node section, const pugi::xml_node& common);
  void AttachPageSetup(const pugi::xml_node& section, const pugi::xml_node& common);
  void AttachMargins(const pugi::xml_node& section, const pugi::xml_node& common);

  const Side letter_;
  const Side common_;
  const PartNames names_;
  DocxPartCopier& copier_;
  std::vector<pugi::xml_node> sections_;  // of the letter
  bool changed_ = false;
  bool heads_ = false;  // the letter has taken the common template's headers
  bool feet_ = false;
  std::set<std::string> letterhead_;
};

}  // namespace wordprocessor
