#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "wordprocessor/docx/tree.h"

/// Runs of text cut to size, for whoever changes a template rather than a letter.
namespace wordprocessor {

/// Makes a run of its own of `piece`, a child of a run, and of what follows it there, formatted alike.
/// Returns that run; the one it stands in where it is the first.
NodeId SplitRunAt(DocxTree& tree, NodeId piece);

/// Cuts a text element after `length` bytes. Returns the second half.
NodeId SplitText(DocxTree& tree, NodeId text, std::size_t length);

/// A new run with a copy of these properties (kNoNode for none), not linked. `like` is as for AddElement.
NodeId AddRun(DocxTree& tree, std::string_view text, NodeId properties, NodeId like);

/// Takes `piece` out of its run, and the run with it that holds nothing more.
void TakeOutOfRun(DocxTree& tree, NodeId piece);

/// What a text element says.
std::string TextOfElement(const DocxTree& tree, NodeId text);

}  // namespace wordprocessor
