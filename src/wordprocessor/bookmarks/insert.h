#pragma once

#include <string_view>

#include "wordprocessor/docx/tree.h"

namespace wordprocessor {

/// Puts a field's text before `anchor`, a node inside a paragraph, formatted by the run properties
/// `formatting` (or kNoNode). A paragraph mark in the text ends the paragraph there: what stands before
/// becomes a paragraph with the same properties. A mark at the very end is the paragraph's own where nothing
/// follows the anchor.
void InsertFieldText(DocxTree& tree, NodeId anchor, NodeId formatting, std::string_view text);

}  // namespace wordprocessor
