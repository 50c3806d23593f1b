#include "wordprocessor/document/sections.h"

#include <cstdlib>
#include <string_view>

#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {
namespace {

void AddSections(const pugi::xml_node& node, std::vector<pugi::xml_node>& sections) {
  for (const auto& child : node.children()) {
    if (IsWordElement(child, "sectPrChange")) continue;
    if (IsWordElement(child, "sectPr")) sections.push_back(child);
    AddSections(child, sections);
  }
}

}  // namespace

std::vector<pugi::xml_node> SectionsOf(const pugi::xml_node& document) {
  std::vector<pugi::xml_node> sections;
  AddSections(document, sections);
  return sections;
}

PageSize PageSizeOf(const pugi::xml_node& section) {
  const auto written = WordChild(section, "pgSz");
  const auto side = [&](std::string_view name) {
    return std::strtol(WordAttribute(written, name).c_str(), nullptr, 10);
  };
  const PageSize size{side("w"), side("h")};
  const bool said = WordAttribute(written, "orient") == "landscape";
  return said && !size.IsAcross() ? size.Turned() : size;
}

}  // namespace wordprocessor
