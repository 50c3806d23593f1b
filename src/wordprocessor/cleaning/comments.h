#pragma once

#include <string>
#include <vector>

#include "wordprocessor/docx/tree.h"

namespace wordprocessor {

/// Where a comment hangs on a document part.
struct DocxComment {
  NodeId node;     ///< its mark in the text
  std::string id;  ///< of the w:comment in the part of the comments
};

/// Each comment once, in document order.
std::vector<DocxComment> FindComments(const DocxTree& tree);

/// Takes out the marks of all comments. Returns whether there were any.
bool DropComments(DocxTree& tree);

}  // namespace wordprocessor
