#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "wordprocessor/cleaning/removal.h"
#include "wordprocessor/docx/tree.h"

namespace wordprocessor {

/// A change that a word processor has recorded and nobody has accepted yet (ECMA-376, part 1, 17.13.5).
/// Decision [final-text].
struct TrackedChange {
  enum class Kind : std::uint8_t { kInserted, kDeleted, kMovedHere, kMovedAway, kFormatted, kCellsMerged };
  /// What it is about: text, the end of a paragraph, a table's row or cell, or the looks of something.
  enum class About : std::uint8_t { kText, kParagraphMark, kRow, kCell, kLooks };

  Kind kind;
  About about;
  NodeId node;    ///< the element that says so
  NodeId target;  ///< the paragraph, row or cell; else `node`

  bool deletes() const { return kind == Kind::kDeleted || kind == Kind::kMovedAway; }
};

/// All changes of a document part, in document order; those inside of deleted text are left out.
std::vector<TrackedChange> FindChanges(const DocxTree& tree);

/// Who made the change; "" where it is not said.
std::string AuthorOf(const DocxTree& tree, const TrackedChange& change);

/// Makes the part what it is once all changes are accepted, but for what is deleted: that is handed to
/// `removal`, to go with what else goes. Returns whether there was anything to do.
bool AcceptChanges(DocxTree& tree, DocxRemoval& removal);

}  // namespace wordprocessor
