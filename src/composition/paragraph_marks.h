#pragma once

#include <string>

#include "platform/parties/services.h"
#include "platform/xml/xml.h"

namespace composition {

/// The text that is merged into a letter: `bookmark_xml` without the optional paragraphs (child elements of
/// the root with "PARA_" in their name) that are not marked as left out by the user.
///
/// What is marked stays, so that the merge acts on it; where no mark stands, the template's own wording does.
/// A text that does not parse, or a flag word that cannot be read, is reported; the answer is "" then.
///
/// MergeText is the same where a failure is the caller's: it throws kDamaged.
std::string MergeText(const std::string& bookmark_xml);
std::string GetBKforPrint(const platform::Services& services, const std::string& bookmark_xml);

/// Says in a paragraph's element whether the merge is to act on it. A marked one is emptied as well: without
/// a text the merge takes the paragraph out, with one (written afterwards) it puts the text in its place.
/// Throws Failure where there is no such element, or its flag words cannot be read.
void MarkParagraph(platform::XmlElement paragraph, bool mark);

}  // namespace composition
