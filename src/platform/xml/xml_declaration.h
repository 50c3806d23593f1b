#pragma once

#include "platform/xml/xml_cursor.h"

namespace platform {

/// Reads the XML declaration (XML 1.0, 2.8) at the start of a document, where there is one. It may declare no
/// encoding, or UTF-8.
bool ReadXmlDeclaration(XmlCursor& cursor);

}  // namespace platform
