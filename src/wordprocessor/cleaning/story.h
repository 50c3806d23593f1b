#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "wordprocessor/cleaning/fields.h"
#include "wordprocessor/cleaning/hidden.h"
#include "wordprocessor/docx/relations.h"
#include "wordprocessor/docx/tree.h"
#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// A part of a document that holds running text.
struct DocxStory {
  enum class Kind : std::uint8_t { kBody, kHeader, kFooter, kNotes };

  std::string part;
  Kind kind = Kind::kBody;
  DocxTree tree;
  std::vector<LetterDatePlace> dates = {};  ///< where the letter's own date goes
};

/// The body first, then headers, footers and notes in the order of the main part's relations, as they stand
/// in the package. Throws Failure kDamaged where one is no XML.
std::vector<DocxStory> ReadStories(const DocxPackage& package, const std::string& main_part);

/// Makes of a story what a letter shows of it: no comments, all changes accepted, nothing hidden, nothing
/// from outside, and fields that show the same in every letter. Returns whether there was anything to do.
bool CleanStory(DocxStory& story, const HiddenStyles& styles, const std::vector<DocxRelation>& relations);

}  // namespace wordprocessor
