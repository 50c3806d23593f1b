#include "wordprocessor/docx_blueprint.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "platform/failure.h"
#include "wordprocessor/bookmark_repair.h"
#include "wordprocessor/docx_relations.h"
#include "wordprocessor/docx_tree_reader.h"

namespace wordprocessor {
namespace {

constexpr std::string_view kDocumentType =
    "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml";

constexpr std::string_view kTemplateType =
    "application/vnd.openxmlformats-officedocument.wordprocessingml.template.main+xml";

// ECMA-376, part 1, 11.3.10, and the types of documents that carry macros.
constexpr auto kMainTypes = std::to_array<std::string_view>({
    kDocumentType,
    kTemplateType,
    "application/vnd.ms-word.document.macroEnabled.main+xml",
    "application/vnd.ms-word.template.macroEnabledTemplate.main+xml",
});

struct StoryRelation {
  std::string_view relation;
  DocxStory::Kind kind;
};

constexpr auto kStoryRelations = std::to_array<StoryRelation>({
    {"header", DocxStory::Kind::kHeader},
    {"footer", DocxStory::Kind::kFooter},
    {"footnotes", DocxStory::Kind::kNotes},
    {"endnotes", DocxStory::Kind::kNotes},
});

DocxTree ReadTree(const DocxPackage& package, const std::string& part) {
  return platform::While("reading " + part + " of \"" + package.file_name() + "\"", [&] {
    auto tree = ReadDocxTree(package.Read(part));
    RepairBookmarks(tree);
    return tree;
  });
}

bool IsRead(const std::vector<DocxStory>& stories, const std::string& part) {
  return std::ranges::any_of(stories, [&](const DocxStory& story) { return story.part == part; });
}

/// A letter made of a template file is a document; under ".docx" no word processor opens it as a template.
DocxPackage AsDocument(const DocxPackage& package) {
  auto types = package.Read(kContentTypesPart);
  const auto at = types.find(kTemplateType);
  if (at == types.npos) return package;
  types.replace(at, kTemplateType.size(), kDocumentType);
  return DocxPackage::FromBytes(package.With({{kContentTypesPart, types}}), package.file_name());
}

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
  if (ContentTypes(package).Of(main_part) == kTemplateType) package = AsDocument(package);
  auto blueprint =
      std::make_shared<DocxBlueprint>(DocxBlueprint{std::move(package), std::move(main_part), {}});
  auto& stories = blueprint->stories;
  stories.push_back(
      {blueprint->main_part, DocxStory::Kind::kBody, ReadTree(blueprint->package, blueprint->main_part)});
  const auto relations = ReadRelations(blueprint->package, blueprint->main_part);
  for (const auto& story : kStoryRelations) {
    for (const auto& relation : relations) {
      if (relation.kind != story.relation || relation.external) continue;
      if (!blueprint->package.Has(relation.target) || IsRead(stories, relation.target)) continue;
      auto tree = ReadTree(blueprint->package, relation.target);
      if (!tree.bookmarks().empty()) stories.push_back({relation.target, story.kind, std::move(tree)});
    }
  }
  return blueprint;
}

}  // namespace wordprocessor
