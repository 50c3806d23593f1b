#include "wordprocessor/authoring/pictures.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/text.h"
#include "wordprocessor/docx/escape.h"
#include "wordprocessor/docx/property_values.h"

namespace wordprocessor {
namespace {

// What a drawing holds that has something to tell: pictures, charts, diagrams, and pictures of VML. Lines and
// boxes have not, and a text box has its text.
constexpr auto kPictures = std::to_array<std::string_view>({"pic", "chart", "relIds", "imagedata"});

bool IsPicture(const DocxNode& node) {
  return node.is_element() && std::ranges::find(kPictures, LocalNameOf(node.name())) != kPictures.end();
}

/// Whether `matches` holds for anything in `node` that is not the text of a box.
template <typename Matches>
bool HoldsAny(const DocxTree& tree, NodeId node, const Matches& matches) {
  for (auto child = tree[node].first_child; child != kNoNode; child = tree[child].next) {
    if (tree[child].kind == DocxKind::kTextBox) continue;
    if (matches(child) || HoldsAny(tree, child, matches)) return true;
  }
  return false;
}

bool IsTold(const DocxTree& tree, NodeId node, std::string_view attribute) {
  return !platform::IsBlank(Unescaped(tree.Attribute(node, attribute)));
}

bool IsMarked(const DocxTree& tree, NodeId node, std::string_view attribute) {
  return IsOn(tree.Attribute(node, attribute), /*without=*/false);
}

/// Whether a picture hangs on `node`, the identity of a drawing, and nothing tells what it shows.
bool IsUntoldDrawing(const DocxTree& tree, NodeId node) {
  if (tree[node].kind != DocxKind::kDrawingIdentity || IsMarked(tree, node, "hidden")) return false;
  if (IsTold(tree, node, "descr") || IsTold(tree, node, "title")) return false;
  const bool decorative = HoldsAny(tree, node, [&](NodeId inner) {
    return LocalNameOf(tree[inner].name()) == "decorative" && IsMarked(tree, inner, "val");
  });
  return !decorative &&
         HoldsAny(tree, tree[node].parent, [&](NodeId inner) { return IsPicture(tree[inner]); });
}

/// The same of a shape of the older kind of drawing (VML), which holds the picture itself.
bool IsUntoldShape(const DocxTree& tree, NodeId node) {
  if (LocalNameOf(tree[node].name()) != "imagedata") return false;
  const auto shape = tree[node].parent;
  return !IsTold(tree, shape, "alt") && !IsTold(tree, node, "title");
}

void CheckStory(const DocxStory& story, const DocxPlaces& places, std::vector<TemplateFinding>& findings) {
  const auto& tree = story.tree;
  for (NodeId node = 0; node < tree.size(); ++node) {
    if (!tree[node].is_element() || !tree.IsAttached(node)) continue;
    if (!IsUntoldDrawing(tree, node) && !IsUntoldShape(tree, node)) continue;
    // For programs that cannot show the first way of drawing it.
    if (tree.Ancestor(node, DocxKind::kFallback) != kNoNode) continue;
    findings.push_back({TemplateFinding::Grade::kWarning, "",
                        "The picture has no alternative text, so that nobody who has the letter read aloud "
                        "learns what it shows: write one, or mark the picture as decorative.",
                        "", places.Of(node)});
  }
}

}  // namespace

std::vector<TemplateFinding> CheckPictures(const DocxStories& letter) {
  std::vector<TemplateFinding> findings;
  for (const auto& story : letter.all()) CheckStory(story, letter.PlacesOf(story), findings);
  return findings;
}

}  // namespace wordprocessor
