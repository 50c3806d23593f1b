#pragma once

#include <memory>
#include <string>
#include <vector>

#include "wordprocessor/cleaning/cleaning.h"
#include "wordprocessor/cleaning/story.h"
#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// The name of the part that is the document, by content types and relations. Throws Failure kDamaged naming
/// the file where there is none.
std::string FindMainPart(const DocxPackage& package);

/// A document read and cleaned once, for any number of letters.
///
/// Immutable and shared across threads; a DocxDocument works on copies of its trees.
struct DocxBlueprint {
  DocxPackage source;  ///< as the author left it
  std::string main_part;
  OutgoingPackage outgoing;  ///< what letters go out in
  /// The body first, then headers, footers and notes in the order of the main part's relations, cleaned.
  /// Without those that have nothing to fill.
  std::vector<DocxStory> stories;

  /// Finds the main part by content types and relations, never by name. Throws as DocxPackage::FromBytes, and
  /// kDamaged where there is no main part or a part is no XML.
  static std::shared_ptr<const DocxBlueprint> Read(DocxPackage package);
};

}  // namespace wordprocessor
