#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "wordprocessor/docx_package.h"
#include "wordprocessor/docx_tree.h"

namespace wordprocessor {

/// A part of a document that holds running text.
struct DocxStory {
  enum class Kind : std::uint8_t { kBody, kHeader, kFooter, kNotes };

  std::string part;
  Kind kind = Kind::kBody;
  DocxTree tree;
};

/// The name of the part that is the document, by content types and relations. Throws Failure kDamaged naming
/// the file where there is none.
std::string FindMainPart(const DocxPackage& package);

/// A document read once, for any number of letters.
///
/// Immutable and shared across threads; a DocxDocument works on copies of its trees.
struct DocxBlueprint {
  DocxPackage package;
  std::string main_part;
  /// The body first, then headers, footers and notes in the order of the main part's relations. Without those
  /// that have no bookmark.
  std::vector<DocxStory> stories;

  /// Finds the main part by content types and relations, never by name. Throws as DocxPackage::FromBytes, and
  /// kDamaged where there is no main part or a part is no XML.
  static std::shared_ptr<const DocxBlueprint> Read(DocxPackage package);
};

}  // namespace wordprocessor
