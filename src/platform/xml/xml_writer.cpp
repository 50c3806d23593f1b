#include "platform/xml/xml_writer.h"

#include <pugixml.hpp>

#include <string_view>

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

void WriteStart(const pugi::xml_node& node, std::string& out) {
  switch (node.type()) {
    case pugi::node_element:
      WriteStartTag(node, out);
      break;
    case pugi::node_pcdata:
      AppendXmlEscaped(out, node.value(), XmlPlace::kText);
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
