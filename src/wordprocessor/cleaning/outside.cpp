#include "wordprocessor/cleaning/outside.h"

#include <algorithm>
#include <array>

#include "platform/text.h"
#include "wordprocessor/docx/escape.h"

namespace wordprocessor {
namespace {

using Use = RelationUse;

struct NamedUse {
  std::string_view kind;
  Use use;
};

// By the last word of a relation's type, for what lies inside of the document; all others are data.
constexpr auto kUses = std::to_array<NamedUse>({
    {"officeDocument", Use::kPart},
    {"styles", Use::kPart},
    {"numbering", Use::kPart},
    {"settings", Use::kPart},
    {"fontTable", Use::kPart},
    {"font", Use::kPart},
    {"theme", Use::kPart},
    {"themeOverride", Use::kPart},
    {"header", Use::kPart},
    {"footer", Use::kPart},
    {"footnotes", Use::kPart},
    {"endnotes", Use::kPart},
    {"image", Use::kPart},
    {"hdphoto", Use::kPart},
    {"chart", Use::kPart},
    {"chartEx", Use::kPart},
    {"chartStyle", Use::kPart},
    {"chartColorStyle", Use::kPart},
    {"chartUserShapes", Use::kPart},
    {"diagramData", Use::kPart},
    {"diagramLayout", Use::kPart},
    {"diagramQuickStyle", Use::kPart},
    {"diagramColors", Use::kPart},
    {"diagramDrawing", Use::kPart},
    {"core-properties", Use::kPart},
    {"hyperlink", Use::kLink},
    {"comments", Use::kComments},
    {"commentsExtended", Use::kComments},
    {"commentsExtensible", Use::kComments},
    {"commentsIds", Use::kComments},
    {"people", Use::kComments},
    {"aFChunk", Use::kInsertedFile},
    {"subDocument", Use::kInsertedFile},
    {"oleObject", Use::kEmbeddedObject},
    {"package", Use::kEmbeddedObject},
    {"control", Use::kControl},
    {"vbaProject", Use::kMacro},
    {"wordVbaData", Use::kMacro},
    {"keyMapCustomizations", Use::kMacro},
    {"attachedToolbars", Use::kMacro},
});

Use UseOfExternal(const DocxRelation& relation) {
  if (relation.kind == "hyperlink") {
    return IsAddressForReaders(relation.target) ? Use::kLink : Use::kLinkedFile;
  }
  if (relation.kind == "image") return Use::kLinkedPicture;
  if (relation.kind == "aFChunk" || relation.kind == "subDocument") return Use::kInsertedFile;
  // The author's template, a mail merge's data.
  const bool of_settings = relation.kind == "attachedTemplate" || relation.kind.starts_with("mailMerge") ||
                           relation.kind == "transform" || relation.kind == "recipientData";
  return of_settings ? Use::kData : Use::kLinkedObject;
}

constexpr auto kReadersSchemes =
    std::to_array<std::string_view>({"http:", "https:", "mailto:", "tel:", "ftp:", "#"});

// Elements that are nothing without what they refer to. Of all others the attribute goes alone.
constexpr auto kNothingWithout = std::to_array<std::string_view>({
    "altChunk",
    "subDoc",
    "OLEObject",
    "objectEmbed",
    "objectLink",
    "control",
    "printerSettings",
    "headerReference",
    "footerReference",
    "contentPart",
    "movie",
    "hlinkClick",
    "hlinkHover",
    "hlinkMouseOver",
    "audioFile",
    "videoFile",
    "externalData",
});

constexpr auto kFormMacros = std::to_array<std::string_view>({"entryMacro", "exitMacro"});

class OutsideSearch {
 public:
  OutsideSearch(const DocxTree& tree, const std::vector<DocxRelation>& relations)
      : tree_(tree), relations_(relations) {
    Visit(tree.root());
  }

  std::vector<OutsideReference> Found() && { return std::move(found_); }

 private:
  void Visit(NodeId node) {
    if (!tree_[node].is_element()) return;
    for (const auto& reference : tree_.References(node)) Check(node, reference);
    if (std::ranges::find(kFormMacros, LocalNameOf(tree_[node].name())) != kFormMacros.end()) {
      found_.push_back({Use::kMacro, node, "", Unescaped(tree_.Attribute(node, "val"))});
    }
    for (auto child = tree_[node].first_child; child != kNoNode; child = tree_[child].next) Visit(child);
  }

  void Check(NodeId node, const RelationReference& reference) {
    const auto relation = std::ranges::find(relations_, Unescaped(reference.id), &DocxRelation::id);
    if (relation == relations_.end()) return;
    const auto use = UseOf(*relation);
    if (!IsKept(use)) found_.push_back({use, node, std::string(reference.attribute), relation->target});
  }

  const DocxTree& tree_;
  const std::vector<DocxRelation>& relations_;
  std::vector<OutsideReference> found_;
};

/// The picture of an object, or of a control, is a picture like others without it.
void MakePicture(DocxTree& tree, NodeId object) {
  const auto picture = tree.AddElement(DocxKind::kOther, "pict", object);
  tree.InsertBefore(picture, object);
  while (tree[object].first_child != kNoNode) {
    const auto child = tree[object].first_child;
    tree.MoveTo(child, picture);
  }
  tree.Unlink(object);
}

void Drop(DocxTree& tree, const OutsideReference& reference) {
  const auto local_name = LocalNameOf(tree[reference.node].name());
  const bool whole =
      reference.attribute.empty() || std::ranges::find(kNothingWithout, local_name) != kNothingWithout.end();
  if (!whole) return tree.DropReference(reference.node, reference.attribute);
  const auto around = tree[reference.node].parent;
  tree.Unlink(reference.node);
  if (around != kNoNode && LocalNameOf(tree[around].name()) == "object" &&
      tree[around].first_child != kNoNode) {
    MakePicture(tree, around);
  }
}

}  // namespace

bool IsAddressForReaders(std::string_view address) {
  const auto lower = platform::LowerCase(address);
  return std::ranges::any_of(kReadersSchemes,
                             [&](std::string_view scheme) { return lower.starts_with(scheme); });
}

RelationUse UseOf(const DocxRelation& relation) {
  if (relation.external) return UseOfExternal(relation);
  const auto found = std::ranges::find(kUses, relation.kind, &NamedUse::kind);
  return found == kUses.end() ? Use::kData : found->use;
}

bool IsKept(RelationUse use) {
  return use == Use::kPart || use == Use::kLink;
}

std::vector<OutsideReference> FindOutside(const DocxTree& tree, const std::vector<DocxRelation>& relations) {
  return OutsideSearch(tree, relations).Found();
}

bool DropOutside(DocxTree& tree, const std::vector<DocxRelation>& relations) {
  const auto found = FindOutside(tree, relations);
  for (const auto& reference : found) Drop(tree, reference);
  return !found.empty();
}

}  // namespace wordprocessor
