#include "platform/xml/xml_escape.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/text.h"
#include "platform/xml/xml_characters.h"

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

constexpr ByteSet kTextSpecials("&<>\r");
constexpr ByteSet kValueSpecials("&<>\"\r\n\t");

struct WrittenReference {
  char character;
  std::string_view reference;
};
constexpr auto kWritten = std::to_array<WrittenReference>({
    {'&', "&amp;"},
    {'<', "&lt;"},
    {'>', "&gt;"},
    {'\r', "&#13;"},
    {'"', "&quot;"},
    {'\n', "&#10;"},
    {'\t', "&#9;"},
});

}  // namespace

void AppendXmlEscaped(std::string& out, std::string_view text, XmlPlace place) {
  const auto& specials = place == XmlPlace::kText ? kTextSpecials : kValueSpecials;
  for (std::size_t start = 0;;) {
    const auto special = specials.FindIn(text, start);
    out += text.substr(start, special - start);
    if (special == text.size()) return;
    out += std::ranges::find(kWritten, text[special], &WrittenReference::character)->reference;
    start = special + 1;
  }
}

std::string WithoutXmlEscapes(std::string_view markup) {
  std::string text;
  text.reserve(markup.size());
  while (!markup.empty()) {
    const auto plain = std::min(markup.find('&'), markup.size());
    text += markup.substr(0, plain);
    markup.remove_prefix(plain);
    if (markup.empty()) break;
    const auto* const written = std::ranges::find_if(
        kWritten, [&](const WrittenReference& one) { return markup.starts_with(one.reference); });
    const bool found = written != kWritten.end();
    text += found ? written->character : '&';
    markup.remove_prefix(found ? written->reference.size() : 1);
  }
  return text;
}

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
