#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "wordprocessor/docx/kind.h"

namespace wordprocessor {

/// A node's place in its DocxTree; good as long as the tree.
using NodeId = std::uint32_t;
inline constexpr NodeId kNoNode = ~NodeId{0};

/// One node of a document part: an element, or a piece of text or other markup.
struct DocxNode {
  /// Of an element its start tag without the closing ">"; else the markup as it is written, escaped.
  std::string_view markup;
  NodeId parent = kNoNode;
  NodeId first_child = kNoNode;
  NodeId last_child = kNoNode;
  NodeId next = kNoNode;
  NodeId previous = kNoNode;
  std::uint32_t bookmark = kNoNode;  ///< of a bookmark's start or end: index into DocxTree::bookmarks()
  std::uint32_t name_size = 0;       ///< 0 where the node is no element
  DocxKind kind = DocxKind::kOther;
  bool unique = false;  ///< carries an identity that must not occur twice in a document
  bool refers = false;  ///< has an attribute that names a relation of the part

  bool is_element() const { return name_size != 0; }
  std::string_view name() const { return is_element() ? markup.substr(1, name_size) : std::string_view(); }
};

/// What a bookmark's start or end says of itself.
struct BookmarkMark {
  std::string_view name;  ///< "" of an end
  std::uint32_t id = 0;   ///< the w:id, numbered from 0 within the part
};

/// An attribute that names a relation of the part: r:id, r:embed, r:link, ...
struct RelationReference {
  std::string_view attribute;  ///< as written, with its prefix
  std::string_view id;
};

/// A document part in memory: nodes that point into text shared by all copies.
///
/// Made once for a template (ReadDocxTree); every letter works on a copy, which costs one block of memory and
/// no parsing. Nodes are never freed while the tree lives: what is unlinked is only not written any more.
/// Decision [template-as-nodes].
class DocxTree {
 public:
  NodeId root() const { return root_; }
  const DocxNode& operator[](NodeId node) const { return nodes_[node]; }
  std::size_t size() const { return nodes_.size(); }
  const std::vector<BookmarkMark>& bookmarks() const { return bookmarks_; }
  const BookmarkMark& BookmarkOf(NodeId node) const { return bookmarks_[nodes_[node].bookmark]; }
  /// Whether the part named the saves its pieces come from (w:rsidR and the like), which are not read.
  bool lost_save_marks() const { return lost_save_marks_; }
  /// How many different bookmark ids the part uses.
  std::uint32_t id_count() const { return id_count_; }

  /// Elements of WordprocessingML and text, not linked yet. An element gets the prefix of `like`, an element
  /// of the same namespace near its place; text is escaped here. Throw Failure kRefused where the part grows
  /// beyond what an office can lay out.
  NodeId AddElement(DocxKind kind, std::string_view local_name, NodeId like,
                    std::string_view attributes = {});
  NodeId AddText(std::string_view text);
  NodeId AddEmptyMarkup();

  void Unlink(NodeId node);
  void InsertBefore(NodeId node, NodeId place);
  void InsertAfter(NodeId node, NodeId place);
  void Append(NodeId node, NodeId parent);
  /// Before all children but properties.
  void PrependContent(NodeId node, NodeId parent);
  void MoveTo(NodeId node, NodeId new_parent) { Unlink(node), Append(node, new_parent); }

  /// A copy of `node` and of what it holds, not linked. `keep` is asked for every node with its copy and may
  /// change the copy; false leaves the node out, with all it holds.
  using Keep = std::function<bool(NodeId original, NodeId copy)>;
  NodeId CopySubtree(NodeId node, const Keep& keep);

  /// Rewrites a start tag: without the attributes of these local names, or with another value for them.
  std::string_view Attribute(NodeId node, std::string_view local_name) const;  ///< escaped; "" without it
  void DropAttribute(NodeId node, std::string_view local_name);
  void SetAttribute(NodeId node, std::string_view local_name, std::string_view value);
  std::vector<RelationReference> References(NodeId node) const;
  void DropReference(NodeId node, std::string_view attribute);
  /// Other text in place of a piece of text.
  void SetText(NodeId markup, std::string_view text);
  /// A mark of its own for a copied start or end of a bookmark.
  void RenewBookmark(NodeId node);
  /// Makes `end` the end of the bookmark that begins with `start`, whatever ids they had.
  void JoinBookmark(NodeId start, NodeId end);

  NodeId Ancestor(NodeId node, DocxKind kind) const;  ///< the innermost one, or kNoNode
  bool Contains(NodeId ancestor, NodeId node) const;  ///< true for the node itself too
  bool IsAttached(NodeId node) const { return Contains(root_, node); }
  NodeId ChildOfKind(NodeId parent, DocxKind kind) const;

  /// The part as it goes into the file, with its XML declaration.
  std::string Serialize() const;

 private:
  friend class DocxTreeReader;
  struct Source {
    std::string text;
    std::deque<std::string> names;
    std::vector<std::string> relation_prefixes;
  };

  std::string_view KeepText(std::string text);
  NodeId Add(DocxNode node);
  void RewriteAttribute(NodeId node, std::string_view local_name, const std::string_view* value);

  // Shared by all copies.
  std::shared_ptr<const Source> source_;
  NodeId root_ = kNoNode;
  std::uint32_t id_count_ = 0;
  bool lost_save_marks_ = false;

  // A copy's own.
  std::vector<DocxNode> nodes_;
  std::vector<BookmarkMark> bookmarks_;
  std::vector<std::shared_ptr<const std::string>> added_texts_;
};

}  // namespace wordprocessor
