#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "wordprocessor/cleaning/changes.h"
#include "wordprocessor/cleaning/stories.h"

namespace wordprocessor {

/// Something that its author's work has left in a template, and that its letters do not show as it stands.
struct DocxLeftover {
  enum class Kind : std::uint8_t {
    kComment,
    kInserted,  ///< tracked changes
    kDeleted,
    kMovedHere,
    kMovedAway,
    kFormatted,
    kCellsMerged,
    kHiddenText,
    kDateField,
    kMergeField,
    kConditionField,
    kOutsideField,
    kMacroField,
    kInformationField,
    kCutField,
    kLinkedPicture,
    kLinkedObject,
    kLinkedFile,
    kInsertedFile,
    kEmbeddedObject,
    kControl,
    kMacro,
    kBoundControl,  ///< a content control whose text comes from data
    kLostBookmark,  ///< goes with deleted or hidden text
  };

  Kind kind;
  std::string what;   ///< the words, the field's code, the address, the name; "" where there are none
  std::string who;    ///< who commented or changed; "" where it is not said
  std::string place;  ///< where an author finds it: `page header of the first page, after "Dear"`
  TrackedChange::About about = TrackedChange::About::kText;  ///< of a tracked change without words
  std::size_t paragraph = 0;  ///< the same for what stands in one paragraph, and for nothing else
};

/// All of them by parts, in document order within one: what cleaning does away with, found by the same rules.
/// Words that belong together stand together, and a text box told twice counts once. `written`: as its author
/// left the document. Throws Failure kDamaged where a part cannot be read.
std::vector<DocxLeftover> FindLeftovers(const DocxStories& written);

}  // namespace wordprocessor
