#pragma once

#include "wordprocessor/docx_tree.h"

namespace wordprocessor {

/// Makes one bookmark again of those that a word processor has written in pieces.
///
/// LibreOffice, for one, writes a bookmark across paragraphs or cells as a start in the first of them that
/// never ends, and a start of the same name with its end in the last. Names are unique in a document, so that
/// such a pair is one bookmark from the first start to the end.
void JoinSplitBookmarks(DocxTree& tree);

}  // namespace wordprocessor
