#pragma once

#include <string>
#include <vector>

namespace composition {

/// Something that a letter needs and the user has not entered: a value, or a paragraph of a group of which at
/// least one is needed.
struct MissingEntry {
  std::string description;         ///< as the user is asked for it
  std::vector<std::string> names;  ///< element names: the value's, or those of the group's paragraphs
  bool is_paragraph = false;
};

}  // namespace composition
