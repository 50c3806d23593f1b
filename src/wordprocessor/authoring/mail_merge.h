#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wordprocessor/authoring/check.h"
#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// A merge field that has become a bookmark.
struct MergeFieldBookmark {
  std::string field;     ///< the column it showed
  std::string bookmark;  ///< NAME, and NAME__1, NAME__2, ... where the field occurs again
  std::string place;     ///< as DocxPlaces says it
  std::string note;      ///< what the author should know of it, whole sentences; "" for nothing
};

struct MergeFieldsMade {
  std::string bytes;                     ///< of the .docx file, without the mail merge's settings and data
  std::vector<MergeFieldBookmark> made;  ///< by parts, in document order; a text box told twice counts once
};

/// Why a field of a mail merge cannot become a bookmark, and what to do: a whole sentence; "" where it can.
/// `code` as ShownCode returns it.
std::string_view ReasonAgainstBookmark(std::string_view code);

/// Makes a template of a mail merge's document: each MERGEFIELD becomes a bookmark around «NAME», formatted
/// as what the field showed. A name that a field of `fields` has but for its case is written as there. Fields
/// that no bookmark can stand for, and those inside of other fields, stay. Throws Failure kDamaged where a
/// part cannot be read.
MergeFieldsMade BookmarksOfMergeFields(const DocxPackage& package, const std::vector<TemplateField>& fields);

}  // namespace wordprocessor
