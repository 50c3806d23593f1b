#pragma once

#include <string>
#include <string_view>

#include "wordprocessor/docx/tree.h"

/// What the properties of texts, rows, drawings and styles say.
namespace wordprocessor {

/// A value that is on or off (ECMA-376, part 1, 22.9.2.7). `without` is for "": a property that is there
/// without a value is on, an attribute that is missing is off.
bool IsOn(std::string_view value, bool without);

/// The first child of that name, whatever its prefix; kNoNode without one. `properties` may be kNoNode.
NodeId PropertyOf(const DocxTree& tree, NodeId properties, std::string_view local_name);

/// The style that such a child (w:pStyle, w:rStyle, w:tblStyle) names; "" where there is none.
std::string StyleNamed(const DocxTree& tree, NodeId properties, std::string_view local_name);

/// How far a style is followed to those it is based on: a ring is damaged, and nobody stacks as many.
inline constexpr int kMostStylesBelow = 64;

}  // namespace wordprocessor
