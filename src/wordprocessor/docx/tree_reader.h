#pragma once

#include <string>
#include <string_view>

#include <pugixml.hpp>

#include "wordprocessor/docx/tree.h"

namespace wordprocessor {

/// The XML of a package's part as a pugixml document, checked as strictly as platform::XmlDocument checks it.
/// UTF-8 and UTF-16, as ECMA-376, part 2, 9.1.4 asks. Throws Failure kDamaged with reason and place.
pugi::xml_document LoadPartXml(std::string_view xml);

/// A document part made ready for any number of letters. Throws Failure kDamaged as LoadPartXml, and where
/// its root is no element of WordprocessingML.
DocxTree ReadDocxTree(std::string_view xml);

}  // namespace wordprocessor
