#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "wordprocessor/docx/tree.h"

namespace wordprocessor {

/// A bookmark of a document part: where it starts and ends.
///
/// Places are counted in document order; contents are what a reader sees (runs and formulas). All counts are
/// those of the moment the index was made, whatever is edited since.
struct BookmarkRange {
  std::string_view name;
  NodeId start = kNoNode;
  NodeId end = kNoNode;           ///< kNoNode where the document lacks it
  std::uint32_t start_place = 0;  ///< of the marks themselves
  std::uint32_t end_place = 0;
  std::uint32_t first_content = 0;  ///< the contents inside: [first_content, end_content)
  std::uint32_t end_content = 0;
  std::uint32_t first_paragraph = 0;  ///< the paragraphs that begin inside, likewise
  std::uint32_t end_paragraph = 0;
  std::uint32_t first_table = 0;
  std::uint32_t end_table = 0;
  std::uint32_t story = 0;
  bool in_fallback = false;  ///< the second telling of a text box, for readers that know no newer one

  bool has_end() const { return end != kNoNode; }
  bool empty() const { return first_content == end_content; }
  bool SameContents(const BookmarkRange& other) const {
    return first_content == other.first_content && end_content == other.end_content;
  }
  /// Whether `inner` lies inside. Two bookmarks around the same contents lie in each other.
  bool Holds(const BookmarkRange& inner) const;
};

/// What a document part holds, in document order, found in one walk.
struct BookmarkIndex {
  struct Content {
    NodeId node;
    std::uint32_t field;  ///< the field whose code or mark it carries, or kNoNode
  };
  struct Field {
    std::uint32_t first_content;
    std::uint32_t last_content;
  };
  struct Extent {
    NodeId node;
    std::uint32_t place;
    std::uint32_t end_place;
    std::uint32_t first_content;
    std::uint32_t story;
  };
  struct Story {
    bool text_box = false;
    bool note = false;
  };

  explicit BookmarkIndex(const DocxTree& tree);

  /// By their starts. Without those whose name begins with "_", which word processors keep for themselves.
  std::vector<BookmarkRange> ranges;
  std::vector<Content> contents;
  std::vector<Field> fields;
  std::vector<Extent> paragraphs;
  std::vector<Extent> tables;
  std::vector<Story> stories;
};

}  // namespace wordprocessor
