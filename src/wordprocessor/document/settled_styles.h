#pragma once

#include <map>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "wordprocessor/docx/relations.h"
#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// A document's styles as they look: typefaces by their names, none by the theme's.
struct SettledStyles {
  /// Empty where the document has no styles. Throws Failure kDamaged where a part cannot be read.
  SettledStyles(const DocxPackage& package, const std::vector<DocxRelation>& relations);

  pugi::xml_document document;
  std::map<std::string, pugi::xml_node> by_id;
  std::map<std::string, std::string> defaults;  ///< identifier by type: "paragraph", "table", ...
};

/// Gives typefaces and colours of a part their own names and numbers, where they are called by `package`'s
/// theme. Returns whether there were any.
bool SettleTheme(pugi::xml_node part, const DocxPackage& package, const std::vector<DocxRelation>& relations);

}  // namespace wordprocessor
