#pragma once

#include <vector>

#include <pugixml.hpp>

namespace wordprocessor {

/// The properties of a document's sections, in document order; what they were before a tracked change left
/// out. None where it does not say them.
std::vector<pugi::xml_node> SectionsOf(const pugi::xml_node& document);

/// In twentieths of a point; 0 where a section does not say it.
struct PageSize {
  long width = 0;
  long height = 0;

  bool IsAcross() const { return width > height; }
  PageSize Turned() const { return {height, width}; }

  bool operator==(const PageSize&) const = default;
};

/// A page that is said to lie across does, whichever side is written first.
PageSize PageSizeOf(const pugi::xml_node& section);

}  // namespace wordprocessor
