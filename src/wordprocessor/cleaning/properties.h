#pragma once

#include <string>
#include <string_view>

#include "wordprocessor/docx/tree.h"
#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// What a document says of itself, and a letter may pass on.
struct DocumentProperties {
  std::string part;  ///< where they stand, or shall stand
  std::string title;
  std::string language;  ///< "en-US"
};

/// The title is the document's own, else its first heading that is wholly of the author's words, else the
/// name of the file. The language is that of its styles. Throws Failure kDamaged where a part cannot be read.
DocumentProperties ReadProperties(const DocxPackage& package, const std::string& main_part,
                                  const DocxTree& body);

/// The part's text: title, language, and `office` as the creator (none where it is empty).
std::string PropertiesText(const DocumentProperties& properties, std::string_view office);

inline constexpr std::string_view kPropertiesRelation =
    "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";
inline constexpr std::string_view kPropertiesType =
    "application/vnd.openxmlformats-package.core-properties+xml";

}  // namespace wordprocessor
