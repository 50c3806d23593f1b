#include "wordprocessor/document/blueprint.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "wordprocessor/docx/relations.h"

namespace wordprocessor {
namespace {

// ECMA-376, part 1, 11.3.10, and the types of documents that carry macros.
constexpr auto kMainTypes = std::to_array<std::string_view>({
    kDocumentType,
    "application/vnd.openxmlformats-officedocument.wordprocessingml.template.main+xml",
    "application/vnd.ms-word.document.macroEnabled.main+xml",
    "application/vnd.ms-word.template.macroEnabledTemplate.main+xml",
});

}  // namespace

std::string FindMainPart(const DocxPackage& package) {
  const ContentTypes types(package);
  for (const auto& relation : ReadRelations(package, "")) {
    if (relation.kind != "officeDocument" || relation.external) continue;
    if (std::ranges::find(kMainTypes, types.Of(relation.target)) == kMainTypes.end()) {
      package.Damaged("is another kind of document than a letter. Save the letter as .docx.");
    }
    return relation.target;
  }
  package.Damaged("is a zip file but no document. Open it in the word processor and save it as .docx.");
}

std::shared_ptr<const DocxBlueprint> DocxBlueprint::Read(DocxPackage package) {
  auto main_part = FindMainPart(package);
  auto cleaned = CleanDocument(package, main_part);
  std::erase_if(cleaned.stories, [&](const DocxStory& story) {
    return story.part != main_part && story.tree.bookmarks().empty() && story.dates.empty();
  });
  return std::make_shared<const DocxBlueprint>(std::move(package), std::move(main_part),
                                               std::move(cleaned.outgoing), std::move(cleaned.stories));
}

}  // namespace wordprocessor
