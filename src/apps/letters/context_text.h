#pragma once

#include <string>
#include <vector>

namespace apps {

/// A letter's data as a file for `merge`, for people to read and change: one line a field, without the marks
/// and explanations that only the screen needs. Decision [context-command].
struct ContextText {
  std::string xml;
  /// The values that only the user knows, "NAME (description)": their fields are left out, so that a letter
  /// made without them is one that is not filled.
  std::vector<std::string> missing;

  /// Throws Failure kDamaged for a context that is no XML.
  static ContextText Of(const std::string& context);
};

}  // namespace apps
