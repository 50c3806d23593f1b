#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "wordprocessor/cleaning/properties.h"
#include "wordprocessor/cleaning/story.h"
#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// The package that the letters of a template go out in. Any number of threads. Decision [cleaned-template].
class OutgoingPackage {
 public:
  OutgoingPackage(DocxPackage package, DocumentProperties properties);

  /// With `office` as the creator; "" names none. Made once for as long as the office stays the same.
  std::shared_ptr<const DocxPackage> OfOffice(const std::string& office) const;

 private:
  struct Latest {
    std::mutex mutex;
    std::string office;
    std::shared_ptr<const DocxPackage> package;
  };

  std::shared_ptr<const DocxPackage> package_;
  DocumentProperties properties_;
  std::unique_ptr<Latest> latest_;
};

struct CleanedDocument {
  OutgoingPackage outgoing;
  std::vector<DocxStory> stories;
};

/// A document without what its author's work has left in it and no letter has (CleanStory says what of the
/// text). Of the package's parts those stay that the letter needs; comments, people, programs, embedded
/// objects, data and all properties but title and language go, with who or what they name. Links get the
/// style that makes links of a PDF of them.
///
/// Parts without a change are copied as they are. Throws Failure kDamaged where a part cannot be read.
CleanedDocument CleanDocument(const DocxPackage& package, const std::string& main_part);

}  // namespace wordprocessor
