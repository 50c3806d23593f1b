#include "platform/xml/xml_escape.h"

#include <array>
#include <utility>

#include "platform/text.h"

namespace platform {
namespace {

using XmlReference = std::pair<std::string_view, std::string_view>;

// In this order: with "&amp;" first, "&amp;lt;" would lose two levels.
constexpr auto kXmlReferences = std::to_array<XmlReference>({
    {"&lt;", "<"},
    {"&gt;", ">"},
    {"&apos;", "'"},
    {"&quot;", "\""},
    {"&amp;", "&"},
});

}  // namespace

std::string XmlEscaped(std::string_view text) {
  auto escaped = ReplaceAll(text, "&", "&amp;");
  escaped = ReplaceAll(escaped, "<", "&lt;");
  return ReplaceAll(escaped, ">", "&gt;");
}

std::string XmlUnescaped(std::string_view text) {
  std::string plain(text);
  if (plain.find('&') == std::string::npos) return plain;
  for (const auto& [reference, character] : kXmlReferences) plain = ReplaceAll(plain, reference, character);
  return plain;
}

}  // namespace platform
