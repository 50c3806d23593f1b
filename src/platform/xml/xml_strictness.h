#pragma once

#include <optional>
#include <string_view>

#include "platform/xml/xml.h"

namespace platform {

/// The kinds of fault, as XmlParseError::code gives them.
enum class XmlFault : int {
  kCharacter = 1,       ///< invalid UTF-8, or a character that XML does not allow
  kDeclaration,         ///< the XML declaration is wrong or not at the start
  kEncoding,            ///< another encoding than UTF-8 is declared
  kDoctype,             ///< a document type declaration
  kMarkup,              ///< a tag, comment, section or instruction that is not as it should be
  kUnfinished,          ///< the text ends before its markup does
  kName,                ///< no name where one has to stand
  kAttribute,           ///< an attribute without a value in quotes, or "<" in it
  kDuplicateAttribute,  ///< an attribute given twice
  kReference,           ///< a stray "&", an undeclared entity, a character that must not be referred to
  kTagMismatch,         ///< an end tag that closes another element than the one open
  kTooDeep,             ///< elements nested deeper than kDeepestElement
  kOutsideRoot,         ///< several roots, or text outside the root
  kNoRoot,              ///< no element at all
  kParser,              ///< refused by the parser itself
};

inline constexpr std::size_t kDeepestElement = 256;

/// Why `text` is no XML 1.0 document as XmlDocument::Parse takes it, and where; nothing where it is one.
///
/// Reads the text from its start to its end without recursion. A document that passes is well formed without
/// a document type declaration, so that any parser reads it in the same way. Decision [strict-xml].
std::optional<XmlParseError> FindXmlFault(std::string_view text);

}  // namespace platform
