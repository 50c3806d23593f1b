#include "wordprocessor/authoring/tables.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "wordprocessor/docx/property_values.h"

namespace wordprocessor {
namespace {

bool IsTableField(const std::vector<TemplateField>& fields, std::string_view name) {
  const auto field = std::ranges::find(fields, name, &TemplateField::name);
  return field != fields.end() && field->kind == TemplateField::Kind::kTable;
}

NodeId FirstRowOf(const DocxTree& tree, NodeId table) {
  return tree.ChildOfKind(table, DocxKind::kRow);
}

/// w:tblHeader (ECMA-376, part 1, 17.4.79)
bool IsHeading(const DocxTree& tree, NodeId row) {
  const auto mark = PropertyOf(tree, tree.ChildOfKind(row, DocxKind::kOtherProperties), "tblHeader");
  return mark != kNoNode && IsOn(tree.Attribute(mark, "val"), /*without=*/true);
}

bool LacksHeading(const DocxTree& tree, NodeId bookmark) {
  const auto row = tree.Ancestor(bookmark, DocxKind::kRow);
  if (row == kNoNode) return false;
  const auto first = FirstRowOf(tree, tree.Ancestor(row, DocxKind::kTable));
  return first != kNoNode && first != row && !IsHeading(tree, first);
}

}  // namespace

std::vector<TemplateFinding> CheckTableHeads(const DocxStories& letter, const BookmarkSpots& spots,
                                             const std::vector<TemplateField>& fields) {
  std::vector<TemplateFinding> findings;
  for (const auto& story : letter.all()) {
    const auto& tree = story.tree;
    for (NodeId node = 0; node < tree.size(); ++node) {
      if (tree[node].kind != DocxKind::kBookmarkStart || !tree.IsAttached(node)) continue;
      const std::string name(tree.BookmarkOf(node).name);
      if (!IsTableField(fields, name) || !LacksHeading(tree, node)) continue;
      findings.push_back({TemplateFinding::Grade::kWarning, name,
                          "The table's first row is not marked as its heading, so that it is not repeated on "
                          "the next page, nor read aloud with the columns: mark it \"repeat as header row\".",
                          "", spots.Of(name)});
    }
  }
  return findings;
}

}  // namespace wordprocessor
