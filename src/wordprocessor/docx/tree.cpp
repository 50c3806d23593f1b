#include "wordprocessor/docx/tree.h"

#include <algorithm>
#include <utility>

#include "platform/failure.h"
#include "wordprocessor/docx/escape.h"

namespace wordprocessor {
namespace {

// Far more than an office lays out; beyond it a data context multiplies rows without end.
constexpr std::size_t kMostNodes = 4'000'000;

std::string_view LocalName(std::string_view name) {
  const auto colon = name.find(':');
  return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

struct WrittenAttribute {
  std::string_view markup;  // with the blank before it
  std::string_view name;
  std::string_view value;
};

/// Start tags are written by the reader: one blank before an attribute, double quotes, none of them inside.
std::vector<WrittenAttribute> AttributesOf(const DocxNode& node) {
  std::vector<WrittenAttribute> attributes;
  for (std::size_t at = 1u + node.name_size; at < node.markup.size();) {
    const auto equals = node.markup.find('=', at);
    const auto close = node.markup.find('"', equals + 2);
    attributes.push_back({node.markup.substr(at, close + 1 - at), node.markup.substr(at + 1, equals - at - 1),
                          node.markup.substr(equals + 2, close - equals - 2)});
    at = close + 1;
  }
  return attributes;
}

}  // namespace

std::string_view DocxTree::KeepText(std::string text) {
  return *added_texts_.emplace_back(std::make_shared<const std::string>(std::move(text)));
}

NodeId DocxTree::Add(DocxNode node) {
  if (nodes_.size() >= kMostNodes) {
    throw platform::Failure(
        platform::Failure::Kind::kRefused,
        "The letter grows beyond what can be laid out. Check the table rows of its data context.");
  }
  nodes_.push_back(node);
  return static_cast<NodeId>(nodes_.size() - 1);
}

NodeId DocxTree::AddElement(DocxKind kind, std::string_view local_name, NodeId like,
                            std::string_view attributes) {
  DocxNode node;
  const auto name = nodes_[like].name();
  auto tag = "<" + std::string(name.substr(0, name.find(':') + 1)).append(local_name);
  node.name_size = static_cast<std::uint32_t>(tag.size() - 1);
  node.kind = kind;
  node.markup = KeepText(tag.append(attributes));
  return Add(node);
}

NodeId DocxTree::AddText(std::string_view text) {
  std::string markup;
  AppendEscaped(markup, text);
  DocxNode node;
  node.kind = DocxKind::kMarkup;
  node.markup = KeepText(std::move(markup));
  return Add(node);
}

NodeId DocxTree::AddEmptyMarkup() {
  DocxNode node;
  node.kind = DocxKind::kMarkup;
  return Add(node);
}

void DocxTree::Unlink(NodeId node) {
  auto& gone = nodes_[node];
  if (gone.parent == kNoNode) return;
  auto& parent = nodes_[gone.parent];
  (gone.previous == kNoNode ? parent.first_child : nodes_[gone.previous].next) = gone.next;
  (gone.next == kNoNode ? parent.last_child : nodes_[gone.next].previous) = gone.previous;
  gone.parent = gone.next = gone.previous = kNoNode;
}

void DocxTree::InsertBefore(NodeId node, NodeId place) {
  const auto previous = nodes_[place].previous;
  nodes_[node].parent = nodes_[place].parent;
  nodes_[node].next = place;
  nodes_[node].previous = previous;
  nodes_[place].previous = node;
  (previous == kNoNode ? nodes_[nodes_[place].parent].first_child : nodes_[previous].next) = node;
}

void DocxTree::InsertAfter(NodeId node, NodeId place) {
  const auto next = nodes_[place].next;
  next == kNoNode ? Append(node, nodes_[place].parent) : InsertBefore(node, next);
}

void DocxTree::Append(NodeId node, NodeId parent) {
  const auto last = nodes_[parent].last_child;
  nodes_[node].parent = parent;
  nodes_[node].previous = last;
  nodes_[node].next = kNoNode;
  nodes_[parent].last_child = node;
  (last == kNoNode ? nodes_[parent].first_child : nodes_[last].next) = node;
}

void DocxTree::PrependContent(NodeId node, NodeId parent) {
  auto place = nodes_[parent].first_child;
  while (place != kNoNode && IsProperties(nodes_[place].kind)) place = nodes_[place].next;
  place == kNoNode ? Append(node, parent) : InsertBefore(node, place);
}

NodeId DocxTree::CopySubtree(NodeId node, const Keep& keep) {
  DocxNode bare = nodes_[node];
  bare.parent = bare.first_child = bare.last_child = bare.next = bare.previous = kNoNode;
  const auto copy = Add(bare);
  if (!keep(node, copy)) return kNoNode;
  for (auto child = nodes_[node].first_child; child != kNoNode; child = nodes_[child].next) {
    const auto child_copy = CopySubtree(child, keep);
    if (child_copy != kNoNode) Append(child_copy, copy);
  }
  return copy;
}

void DocxTree::RewriteAttribute(NodeId node, std::string_view local_name, const std::string_view* value) {
  auto tag = std::string(nodes_[node].markup.substr(0, 1u + nodes_[node].name_size));
  for (const auto& attribute : AttributesOf(nodes_[node])) {
    if (LocalName(attribute.name) != local_name) {
      tag += attribute.markup;
    } else if (value != nullptr) {
      tag.append(" ").append(attribute.name).append("=\"").append(*value).append("\"");
    }
  }
  nodes_[node].markup = KeepText(std::move(tag));
}

std::string_view DocxTree::Attribute(NodeId node, std::string_view local_name) const {
  for (const auto& attribute : AttributesOf(nodes_[node])) {
    if (LocalName(attribute.name) == local_name) return attribute.value;
  }
  return {};
}

void DocxTree::DropAttribute(NodeId node, std::string_view local_name) {
  RewriteAttribute(node, local_name, nullptr);
}

void DocxTree::SetAttribute(NodeId node, std::string_view local_name, std::string_view value) {
  RewriteAttribute(node, local_name, &value);
}

std::vector<RelationReference> DocxTree::References(NodeId node) const {
  std::vector<RelationReference> references;
  if (!nodes_[node].refers) return references;
  for (const auto& attribute : AttributesOf(nodes_[node])) {
    const auto prefix = attribute.name.substr(0, attribute.name.find(':'));
    const auto& known = source_->relation_prefixes;
    if (prefix.size() < attribute.name.size() && std::ranges::find(known, prefix) != known.end()) {
      references.push_back({attribute.name, attribute.value});
    }
  }
  return references;
}

void DocxTree::DropReference(NodeId node, std::string_view attribute) {
  auto tag = std::string(nodes_[node].markup.substr(0, 1u + nodes_[node].name_size));
  for (const auto& kept : AttributesOf(nodes_[node])) {
    if (kept.name != attribute) tag += kept.markup;
  }
  nodes_[node].markup = KeepText(std::move(tag));
}

void DocxTree::SetText(NodeId markup, std::string_view text) {
  std::string escaped;
  AppendEscaped(escaped, text);
  nodes_[markup].markup = KeepText(std::move(escaped));
}

void DocxTree::RenewBookmark(NodeId node) {
  bookmarks_.push_back(BookmarkMark(bookmarks_[nodes_[node].bookmark]));
  nodes_[node].bookmark = static_cast<std::uint32_t>(bookmarks_.size() - 1);
}

void DocxTree::JoinBookmark(NodeId start, NodeId end) {
  const auto id = std::string(Attribute(start, "id"));
  SetAttribute(end, "id", id);
  bookmarks_[nodes_[start].bookmark].id = id_count_;
  bookmarks_[nodes_[end].bookmark].id = id_count_++;
}

NodeId DocxTree::Ancestor(NodeId node, DocxKind kind) const {
  do {
    node = nodes_[node].parent;
  } while (node != kNoNode && nodes_[node].kind != kind);
  return node;
}

bool DocxTree::Contains(NodeId ancestor, NodeId node) const {
  while (node != kNoNode && node != ancestor) node = nodes_[node].parent;
  return node == ancestor;
}

NodeId DocxTree::ChildOfKind(NodeId parent, DocxKind kind) const {
  auto child = nodes_[parent].first_child;
  while (child != kNoNode && nodes_[child].kind != kind) child = nodes_[child].next;
  return child;
}

std::string DocxTree::Serialize() const {
  std::string out;
  out.reserve(source_->text.size() + source_->text.size() / 8 + 1024);
  out += "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
  const auto close = [&](const DocxNode& node) { out.append("</").append(node.name()) += '>'; };
  auto at = root_;
  while (true) {
    const auto& node = nodes_[at];
    out += node.markup;
    if (node.first_child != kNoNode) {
      out += '>';
      at = node.first_child;
      continue;
    }
    if (node.is_element()) out += "/>";
    while (at != root_ && nodes_[at].next == kNoNode) {
      at = nodes_[at].parent;
      close(nodes_[at]);
    }
    if (at == root_) return out;
    at = nodes_[at].next;
  }
}

}  // namespace wordprocessor
