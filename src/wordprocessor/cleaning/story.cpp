#include "wordprocessor/cleaning/story.h"

#include <algorithm>
#include <array>

#include "platform/failure.h"
#include "wordprocessor/bookmarks/repair.h"
#include "wordprocessor/cleaning/changes.h"
#include "wordprocessor/cleaning/comments.h"
#include "wordprocessor/cleaning/outside.h"
#include "wordprocessor/cleaning/removal.h"
#include "wordprocessor/docx/tree_reader.h"

namespace wordprocessor {
namespace {

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

/// The values of content controls stand in the letter; where they come from stays behind.
bool DropDataBindings(DocxTree& tree) {
  bool any = false;
  for (NodeId node = 0; node < tree.size(); ++node) {
    if (tree[node].kind != DocxKind::kDataBinding || tree[node].parent == kNoNode) continue;
    tree.Unlink(node);
    any = true;
  }
  return any;
}

bool IsPath(std::string_view text) {
  return text.find(":\\") != text.npos || text.starts_with("\\\\") || text.starts_with("file:") ||
         text.starts_with("/home/") || text.starts_with("/Users/");
}

/// Word processors have written the picture's file into its alternative text: no description, and a place of
/// the author's machine.
bool DropPicturePaths(DocxTree& tree) {
  bool any = false;
  for (NodeId node = 0; node < tree.size(); ++node) {
    const auto name = LocalNameOf(tree[node].name());
    if (name != "docPr" && name != "cNvPr" && name != "shape") continue;
    const std::string_view attribute = name == "shape" ? "alt" : "descr";
    if (!IsPath(tree.Attribute(node, attribute))) continue;
    tree.DropAttribute(node, attribute);
    any = true;
  }
  return any;
}

}  // namespace

std::vector<DocxStory> ReadStories(const DocxPackage& package, const std::string& main_part) {
  std::vector<DocxStory> stories;
  stories.push_back({main_part, DocxStory::Kind::kBody, ReadTree(package, main_part)});
  const auto relations = ReadRelations(package, main_part);
  for (const auto& story : kStoryRelations) {
    for (const auto& relation : relations) {
      if (relation.kind != story.relation || !LeadsToPart(relation, package)) continue;
      if (std::ranges::find(stories, relation.target, &DocxStory::part) != stories.end()) continue;
      stories.push_back({relation.target, story.kind, ReadTree(package, relation.target)});
    }
  }
  return stories;
}

bool CleanStory(DocxStory& story, const HiddenStyles& styles, const std::vector<DocxRelation>& relations) {
  auto& tree = story.tree;
  DocxRemoval removal(tree);
  bool changed = tree.lost_save_marks();
  changed = DropComments(tree) || changed;
  changed = AcceptChanges(tree, removal) || changed;
  for (const auto run : FindHiddenRuns(tree, styles)) removal.AddHidden(run);
  changed = removal.Run() || changed;
  changed = DropOutside(tree, relations) || changed;
  changed = DropDataBindings(tree) || changed;
  changed = DropPicturePaths(tree) || changed;
  story.dates = SettleFields(tree, changed);
  return changed;
}

}  // namespace wordprocessor
