#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/parties/print_component.h"
#include "wordprocessor/document/blueprint.h"

namespace wordprocessor {

/// A bookmark of a template and where it stands, for whoever writes templates.
struct BookmarkPlace {
  enum class Where : std::uint8_t { kBody, kTable, kHeader, kFooter, kNote, kTextBox };

  platform::DocumentBookmark bookmark;
  Where where = Where::kBody;
  bool crosses_cells = false;  ///< begins in one cell of a table and ends in another, or outside
};

/// "body", "table", "header", "footer", "note", "text box".
std::string_view PlaceName(BookmarkPlace::Where where);

/// The bookmarks of one document part in document order; a text box told twice counts once. Bookmarks that
/// lack an end are left out, they hold nothing.
std::vector<BookmarkPlace> BookmarkPlacesOf(const DocxTree& tree, DocxStory::Kind kind);

/// The bookmarks in the table rows that the bookmark `table` repeats, in document order; none where it stands
/// in no table.
std::vector<std::string> BookmarksInRowsOf(const DocxTree& tree, std::string_view table);

/// The names of the bookmarks that begin and never end.
std::vector<std::string> BookmarksWithoutEnd(const DocxTree& tree);

}  // namespace wordprocessor
