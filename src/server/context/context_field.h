#pragma once

#include <string>
#include <vector>

#include "platform/xml/xml.h"
#include "server/wire/field_flags.h"

namespace server {

/// An element of a data context on its way into XML: flags, text, what there is to explain.
struct ContextField {
  std::string name;
  std::string description;
  FlagWord state = 0;
  FlagWord error = 0;
  FlagWord address = 0;
  std::string text;
  std::string raw_value;
  std::string group = {};              ///< of paragraphs of which the letter needs at least one
  std::vector<ContextField> children;  ///< a field has children or a text
  std::string error_place = {};  ///< a sentence: where the error lies and why, beyond what the flags say

  /// Whether the field or one below it is in error, once that is summarised.
  bool IsErroneous() const { return (state & (state::kHasError | state::kErrorInChild)) != 0; }

  /// Marks fields that are in error, and everything above them: the summary bits of "State".
  void SummariseErrors();
};

/// Which explanation attributes the elements carry.
struct Explanations {
  bool descriptors = false;  ///< description, type, attributes, raw value
  bool states = false;       ///< states, errors, addresses
};

/// The field with all below it as a document of its own. Throws Failure kRefused for a text XML cannot carry.
std::string ContextXml(const ContextField& root, const Explanations& explanations);

}  // namespace server
