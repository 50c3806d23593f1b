#pragma once

#include <string>
#include <vector>

#include "wordprocessor/bookmarks/data_context.h"
#include "wordprocessor/docx/tree.h"

namespace wordprocessor {

/// Fills the bookmarks of one document part; DocxDocument::MergeBookmarks says by which rules.
/// Appends the names it could not fill to `unfilled`, in document order.
void MergeBookmarksOf(DocxTree& tree, const DataContext& context, std::vector<std::string>& unfilled);

}  // namespace wordprocessor
