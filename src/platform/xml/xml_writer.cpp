#include "platform/xml/xml_writer.h"

#include <pugixml.hpp>

#include <string>
#include <string_view>

#include "platform/xml/xml_characters.h"
#include "platform/xml/xml_escape.h"

namespace platform {
namespace {

void WriteStartTag(const pugi::xml_node& element, std::string& out) {
  out += '<';
  out += element.name();
  for (const auto& attribute : element.attributes()) {
    out += ' ';
    out += attribute.name();
    out += "=\"";
    AppendXmlEscaped(out, attribute.value(), XmlPlace::kValue);
    out += '"';
  }
  out += element.first_child() ? ">" : "/>";
}

bool IsText(const pugi::xml_node& node) {
  return node.type() == pugi::node_pcdata;
}

/// Whether `text` starts a run of texts that a reader would take for lay-out: blanks beside an element or a
/// section.
bool LooksLikeLayout(const pugi::xml_node& text) {
  if (IsText(text.previous_sibling())) return false;
  auto after = text;
  for (; IsText(after); after = after.next_sibling()) {
    if (std::string_view(after.value()).find_first_not_of(kXmlSpace) != std::string_view::npos) return false;
  }
  return text.previous_sibling() || after;
}

void WriteText(const pugi::xml_node& node, std::string& out) {
  std::string_view text(node.value());
  if (!text.empty() && LooksLikeLayout(node)) {
    out.append("&#").append(std::to_string(text.front())).append(";");
    text.remove_prefix(1);
  }
  AppendXmlEscaped(out, text, XmlPlace::kText);
}

void WriteStart(const pugi::xml_node& node, std::string& out) {
  switch (node.type()) {
    case pugi::node_element:
      WriteStartTag(node, out);
      break;
    case pugi::node_pcdata:
      WriteText(node, out);
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
