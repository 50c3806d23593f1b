#pragma once

#include <map>
#include <set>
#include <string>

namespace composition {

/// What a user has entered in the letter form, by the element names of the fields. Decision [kept-entries].
struct KeptEntries {
  std::map<std::string, std::string> values;  ///< without blank ones
  std::set<std::string> ticked;               ///< optional paragraphs
  std::string free_text;

  bool IsEmpty() const { return values.empty() && ticked.empty() && free_text.empty(); }
};

}  // namespace composition
