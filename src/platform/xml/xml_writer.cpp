#include "platform/xml/xml_writer.h"

#include <pugixml.hpp>

#include <string_view>

#include "platform/xml/xml_characters.h"

namespace platform {
namespace {

constexpr ByteSet kTextSpecials("&<>\r");
constexpr ByteSet kValueSpecials("&<>\"\r\n\t");

std::string_view Reference(char byte) {
  switch (byte) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\r':
      return "&#13;";
    case '\n':
      return "&#10;";
    default:
      return "&#9;";
  }
}

void WriteEscaped(std::string_view text, const ByteSet& specials, std::string& out) {
  for (std::size_t start = 0;;) {
    const auto special = specials.FindIn(text, start);
    out += text.substr(start, special - start);
    if (special == text.size()) return;
    out += Reference(text[special]);
    start = special + 1;
  }
}

void WriteStartTag(const pugi::xml_node& element, std::string& out) {
  out += '<';
  out += element.name();
  for (const auto& attribute : element.attributes()) {
    out += ' ';
    out += attribute.name();
    out += "=\"";
    WriteEscaped(attribute.value(), kValueSpecials, out);
    out += '"';
  }
  out += element.first_child() ? ">" : "/>";
}

void WriteStart(const pugi::xml_node& node, std::string& out) {
  switch (node.type()) {
    case pugi::node_element:
      WriteStartTag(node, out);
      break;
    case pugi::node_pcdata:
      WriteEscaped(node.value(), kTextSpecials, out);
      break;
    case pugi::node_cdata:
      out.append("<![CDATA[").append(node.value()).append("]]>");
      break;
    default:
      break;  // nothing else is kept when a document is parsed
  }
}

}  // namespace

std::string WriteXml(const pugi::xml_node& element) {
  std::string out;
  for (auto node = element;;) {
    WriteStart(node, out);
    if (node.first_child()) {
      node = node.first_child();
      continue;
    }
    while (node != element && !node.next_sibling()) {
      node = node.parent();
      out.append("</").append(node.name()).append(">");
    }
    if (node == element) return out;
    node = node.next_sibling();
  }
}

}  // namespace platform
