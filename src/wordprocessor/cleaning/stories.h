#pragma once

#include <map>
#include <string>
#include <vector>

#include "wordprocessor/cleaning/places.h"
#include "wordprocessor/cleaning/story.h"
#include "wordprocessor/docx/relations.h"
#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// A document as its package has it, read once for all who tell its author something.
class DocxStories {
 public:
  /// Throws Failure kDamaged where a part cannot be read.
  DocxStories(DocxPackage package, std::string main_part);

  const DocxPackage& package() const { return package_; }
  const std::string& main_part() const { return main_part_; }
  /// The main part's.
  const std::vector<DocxRelation>& relations() const { return relations_; }

  /// In the order of ReadStories, never empty.
  const std::vector<DocxStory>& all() const { return stories_; }
  std::vector<DocxStory>& all() { return stories_; }

  /// Of one of all(), which outlives it.
  DocxPlaces PlacesOf(const DocxStory& story) const;

 private:
  DocxPackage package_;
  std::string main_part_;
  std::vector<DocxRelation> relations_;
  std::vector<DocxStory> stories_;
  std::map<std::string, std::string> pages_;  // as DocxPlaces is told them, by part
};

}  // namespace wordprocessor
