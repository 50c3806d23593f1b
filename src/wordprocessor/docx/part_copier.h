#pragma once

#include <deque>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <pugixml.hpp>

#include "wordprocessor/docx/relations.h"
#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// Copies parts of the common template into a letter, with all they refer to, and keeps the letter's lists of
/// parts and relations right. Both packages have to outlive it.
class DocxPartCopier {
 public:
  /// Throws Failure kDamaged where one of those lists cannot be read.
  DocxPartCopier(const DocxPackage& letter, const DocxPackage& common, std::string main_part);

  /// Copies what the common template's main part refers to there.
  /// Returns the id of the letter's own relation to the copy.
  std::string Relate(const DocxRelation& relation);

  /// Another text for the copy of `part`, which there is.
  void Rewrite(const std::string& part, std::string text);

  /// What was copied and what keeps account of it. Good while this object lives.
  void AppendTo(std::vector<PackagePart>& parts);

 private:
  std::string Copy(const std::string& part);
  void CopyRelations(const std::string& part, const std::string& copy);
  std::string FreeName(const std::string& part);

  const DocxPackage& letter_;
  const DocxPackage& common_;
  const std::string main_part_;
  const ContentTypes common_types_;
  pugi::xml_document types_;
  pugi::xml_document relations_;
  std::set<std::string> ids_;
  std::map<std::string, std::string> copies_;                // new name by the common template's
  std::deque<std::pair<std::string, std::string>> written_;  // name and content
  int last_id_ = 0;
  int last_name_ = 0;
};

}  // namespace wordprocessor
