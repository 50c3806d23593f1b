#pragma once

#include <any>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls/control.h"

namespace platform {

/// A colour as 0xBBGGRR.
using Colour = std::uint32_t;
inline constexpr Colour kBlack = 0;
inline constexpr Colour kRed = 0xFF;

/// Nodes below one another, each with a text and a picture, of which the user selects one.
class Tree : public Control {
 public:
  /// An entry of the image list: what the picture says, in words, for who does not see it.
  struct Image {
    std::string key;
    std::string meaning;
  };
  struct Node {
    std::string text = {};
    std::string image = {};  ///< key of the image list; "" for no picture
    Colour colour = kBlack;
    bool expanded = false;
    std::any tag = {};  ///< whatever the owner of the tree wants to find again

    // Set by the tree.
    Node* parent = nullptr;  ///< null at the top level
    std::vector<Node*> children = {};
  };
  /// Many changes: one ContentChanged, after the last.
  class Edit;

  std::vector<Image> images;
  /// Width in twips (1440 an inch); nothing leaves it to the view.
  std::optional<int> width;

  /// What the image says; "" for a key that is not in the list.
  std::string_view MeaningOf(std::string_view key) const {
    for (const auto& image : images) {
      if (image.key == key) return image.meaning;
    }
    return {};
  }

  /// The nodes of the top level, in order. Nodes stay where they are until Clear.
  const std::vector<Node*>& top_level() const { return top_level_; }
  bool IsEmpty() const { return nodes_.empty(); }
  std::size_t count() const { return nodes_.size(); }
  /// The node the user selected last; null while there is none.
  const Node* selected() const { return selected_; }

  /// Adds `node` as the last child of `parent`, a node of this tree, or of the top level where it is null.
  Node& Add(Node* parent, Node node) {
    auto& added = nodes_.emplace_back(std::move(node));
    added.parent = parent;
    (parent == nullptr ? top_level_ : parent->children).push_back(&added);
    TellChange();
    return added;
  }
  void Clear() {
    selected_ = nullptr;
    top_level_.clear();
    nodes_.clear();
    TellChange();
  }

  /// The user selects a node, by mouse or keyboard: one NodeClick, also on the node that is selected already.
  /// Nothing happens while the tree is disabled or hidden.
  void UserClicks(Node& node) {
    if (!enabled() || !visible()) return;
    selected_ = &node;
    NodeClick(node);
  }
  void UserExpands(Node& node, bool expanded) { node.expanded = expanded; }

  Event<const Node&> NodeClick;
  /// Nodes have been added or taken away, for the view.
  Event<> ContentChanged;

 private:
  void TellChange() {
    if (edits_ == 0) {
      ContentChanged();
    } else {
      changed_ = true;
    }
  }

  std::deque<Node> nodes_;  // a deque: nodes keep their place
  std::vector<Node*> top_level_;
  const Node* selected_ = nullptr;
  int edits_ = 0;
  bool changed_ = false;  // since the edit began
};

class Tree::Edit {
 public:
  explicit Edit(Tree& tree) : tree_(tree) { ++tree_.edits_; }
  Edit(const Edit&) = delete;
  Edit& operator=(const Edit&) = delete;
  ~Edit() {
    if (--tree_.edits_ > 0 || !tree_.changed_) return;
    tree_.changed_ = false;
    tree_.ContentChanged();
  }

 private:
  Tree& tree_;
};

}  // namespace platform
