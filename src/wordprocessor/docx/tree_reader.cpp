#include "wordprocessor/docx/tree_reader.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <unordered_map>
#include <utility>

#include "platform/failure.h"
#include "platform/xml/xml_strictness.h"
#include "wordprocessor/docx/escape.h"

namespace wordprocessor {
namespace {

using platform::Failure;

constexpr unsigned kParseOptions =
    pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_comments | pugi::parse_pi;

// An element in pugixml costs many times its three bytes of text.
constexpr std::ptrdiff_t kMostTags = 2'000'000;

// w:rsidR and the like: which of its author's saves a piece comes from. Nothing that a letter has.
constexpr std::string_view kSaveMark = "rsid";

constexpr auto kUniqueAttributes = std::to_array<std::string_view>({"paraId", "textId"});

struct Name {
  std::string_view prefix;
  std::string_view local;
};

Name SplitName(std::string_view name) {
  const auto colon = name.find(':');
  if (colon == std::string_view::npos) return {{}, name};
  return {name.substr(0, colon), name.substr(colon + 1)};
}

bool IsUtf16(std::string_view xml) {
  return xml.starts_with("\xFF\xFE") || xml.starts_with("\xFE\xFF") ||
         xml.starts_with(std::string_view("<\0", 2)) || xml.starts_with(std::string_view("\0<", 2));
}

std::string Utf8FromUtf16(std::string_view xml) {
  pugi::xml_document document;
  if (!document.load_buffer(xml.data(), xml.size(), kParseOptions, pugi::encoding_auto)) {
    throw Failure(Failure::Kind::kDamaged, "UTF-16 text that is no XML");
  }
  std::ostringstream out;
  document.save(out, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  return out.str();
}

void RequireStrict(std::string_view xml) {
  if (std::ranges::count(xml, '<') > kMostTags) {
    throw Failure(Failure::Kind::kRefused, "more than " + std::to_string(kMostTags) + " tags");
  }
  const auto fault = platform::FindXmlFault(xml);
  if (!fault) return;
  throw Failure(Failure::Kind::kDamaged, fault->reason + " (line " + std::to_string(fault->line) +
                                             ", column " + std::to_string(fault->column) + ")");
}

}  // namespace

pugi::xml_document LoadPartXml(std::string_view xml) {
  std::string converted;
  if (IsUtf16(xml)) xml = converted = Utf8FromUtf16(xml);
  if (xml.starts_with("\xEF\xBB\xBF")) xml.remove_prefix(3);
  RequireStrict(xml);
  pugi::xml_document document;
  const auto outcome = document.load_buffer(xml.data(), xml.size(), kParseOptions, pugi::encoding_utf8);
  if (!outcome) throw Failure(Failure::Kind::kDamaged, outcome.description());
  return document;
}

/// Walks the parsed part once and writes its text anew, so that all letters can point into it.
class DocxTreeReader {
 public:
  DocxTree Read(const pugi::xml_node& root) {
    Declare(root);
    const auto name = SplitName(root.name());
    if (SpaceOf(name.prefix) != DocxNamespace::kWord) {
      throw Failure(Failure::Kind::kDamaged, "its root element is none of WordprocessingML");
    }
    word_prefix_ = name.prefix;
    tree_.root_ = AddElement(root, kNoNode);
    return Finish();
  }

 private:
  struct Binding {
    std::string_view prefix;
    DocxNamespace space;
  };

  void Declare(const pugi::xml_node& element) {
    for (const auto& attribute : element.attributes()) {
      const std::string_view name = attribute.name();
      if (name == "xmlns") bindings_.push_back({{}, DocxNamespaceOf(attribute.value())});
      if (name.starts_with("xmlns:")) {
        bindings_.push_back({name.substr(6), DocxNamespaceOf(attribute.value())});
      }
    }
  }

  DocxNamespace SpaceOf(std::string_view prefix) const {
    const auto found = std::find_if(bindings_.rbegin(), bindings_.rend(),
                                    [&](const Binding& binding) { return binding.prefix == prefix; });
    return found == bindings_.rend() ? DocxNamespace::kOther : found->space;
  }

  void AddNode(const pugi::xml_node& node, NodeId parent) {
    if (node.type() == pugi::node_element) {
      const auto outer_bindings = bindings_.size();
      Declare(node);
      AddElement(node, parent);
      bindings_.resize(outer_bindings);
    } else {
      AddMarkup(node, parent);
    }
  }

  NodeId AddElement(const pugi::xml_node& element, NodeId parent) {
    const auto name = SplitName(element.name());
    const auto space = SpaceOf(name.prefix);
    DocxNode node;
    node.kind = DocxKindOf(space, name.local);
    const auto begin = source_.text.size();
    source_.text += '<';
    AppendName(name, space, element.name());
    node.name_size = static_cast<std::uint32_t>(source_.text.size() - begin - 1);
    AppendAttributes(element, node);
    const auto id = Link(node, begin, parent);
    for (const auto& child : element.children()) AddNode(child, id);
    return id;
  }

  /// Elements of WordprocessingML get the root's prefix wherever it means the same, so that what is copied
  /// from one place to another keeps its meaning.
  void AppendName(const Name& name, DocxNamespace space, std::string_view as_written) {
    if (space == DocxNamespace::kWord && name.prefix != word_prefix_ && SpaceOf(word_prefix_) == space) {
      source_.text.append(word_prefix_).append(word_prefix_.empty() ? "" : ":").append(name.local);
    } else {
      source_.text += as_written;
    }
  }

  void AppendAttributes(const pugi::xml_node& element, DocxNode& node) {
    if (node.kind == DocxKind::kBookmarkStart || node.kind == DocxKind::kBookmarkEnd) AddBookmark(node);
    node.unique = node.kind == DocxKind::kDrawingIdentity;
    for (const auto& attribute : element.attributes()) {
      const auto name = SplitName(attribute.name());
      const auto space = SpaceOf(name.prefix);
      if (space == DocxNamespace::kWord && name.local.starts_with(kSaveMark)) {
        tree_.lost_save_marks_ = true;
        continue;
      }
      source_.text.append(" ").append(attribute.name()).append("=\"");
      AppendEscaped(source_.text, attribute.value(), /*quotes=*/true);
      source_.text += '"';
      if (std::ranges::find(kUniqueAttributes, name.local) != kUniqueAttributes.end()) node.unique = true;
      if (space == DocxNamespace::kWord) ReadAttribute(name.local, attribute.value(), node);
      if (space == DocxNamespace::kRelations) AddReference(name.prefix, node);
    }
  }

  void AddReference(std::string_view prefix, DocxNode& node) {
    node.refers = true;
    auto& prefixes = source_.relation_prefixes;
    if (std::ranges::find(prefixes, prefix) == prefixes.end()) prefixes.emplace_back(prefix);
  }

  void AddBookmark(DocxNode& node) {
    node.bookmark = static_cast<std::uint32_t>(tree_.bookmarks_.size());
    tree_.bookmarks_.emplace_back();
  }

  void ReadAttribute(std::string_view local_name, std::string_view value, DocxNode& node) {
    if (node.bookmark == kNoNode) return;
    auto& bookmark = tree_.bookmarks_[node.bookmark];
    if (local_name == "name") bookmark.name = source_.names.emplace_back(value);
    if (local_name == "id") bookmark.id = Number(value);
  }

  std::uint32_t Number(std::string_view id) {
    return ids_.try_emplace(std::string(id), static_cast<std::uint32_t>(ids_.size() + 1)).first->second;
  }

  void AddMarkup(const pugi::xml_node& source, NodeId parent) {
    DocxNode node;
    node.kind = DocxKind::kMarkup;
    const auto begin = source_.text.size();
    if (source.type() == pugi::node_comment) {
      source_.text.append("<!--").append(source.value()).append("-->");
    } else if (source.type() == pugi::node_pi) {
      source_.text.append("<?").append(source.name()).append(" ").append(source.value()).append("?>");
    } else {
      AppendEscaped(source_.text, source.value());
    }
    Link(node, begin, parent);
  }

  NodeId Link(const DocxNode& node, std::size_t begin, NodeId parent) {
    extents_.push_back({begin, source_.text.size() - begin});
    const auto id = tree_.Add(node);
    if (parent != kNoNode) tree_.Append(id, parent);
    return id;
  }

  DocxTree Finish() {
    source_.text.shrink_to_fit();
    const auto source = std::make_shared<const DocxTree::Source>(std::move(source_));
    for (std::size_t i = 0; i < extents_.size(); ++i) {
      tree_.nodes_[i].markup = std::string_view(source->text).substr(extents_[i].begin, extents_[i].size);
    }
    tree_.source_ = source;
    tree_.id_count_ = static_cast<std::uint32_t>(ids_.size() + 1);
    return std::move(tree_);
  }

  struct Extent {
    std::size_t begin;
    std::size_t size;
  };

  DocxTree tree_;
  DocxTree::Source source_;
  std::vector<Extent> extents_;
  std::vector<Binding> bindings_;
  std::unordered_map<std::string, std::uint32_t> ids_;  // 0 stands for a mark without an id
  std::string_view word_prefix_;
};

DocxTree ReadDocxTree(std::string_view xml) {
  const auto document = LoadPartXml(xml);
  return DocxTreeReader().Read(document.document_element());
}

}  // namespace wordprocessor
