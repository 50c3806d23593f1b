#pragma once

#include "wordprocessor/docx/tree.h"

namespace wordprocessor {

/// Brings bookmarks that word processors write in roundabout ways into the plain form, a start and an end
/// around what is meant.
///
/// - LibreOffice, for one, writes a bookmark across paragraphs or cells as a start in the first of them that
///   never ends, and a start of the same name with its end in the last. Names are unique in a document, so
///   that such a pair is one bookmark from the first start to the end.
/// - A bookmark of selected cells is written around the whole row, with the columns as attributes (ECMA-376,
///   part 1, 17.13.6.2). Its marks move into those cells; of several rows into the first, so that cells
///   beside them are never taken for its text.
void RepairBookmarks(DocxTree& tree);

}  // namespace wordprocessor
