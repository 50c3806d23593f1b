#pragma once

#include <string>

namespace pugi {
class xml_node;
}

namespace platform {

/// The element as XML text that reads back as the same element: no declaration, no white space added, line
/// breaks of values and carriage returns of texts as references (a parser would change them otherwise).
std::string WriteXml(const pugi::xml_node& element);

}  // namespace platform
