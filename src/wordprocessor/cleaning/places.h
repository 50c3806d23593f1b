#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "wordprocessor/cleaning/story.h"

namespace wordprocessor {

/// Where things stand in a story, as its author finds them: `page header of the first page, after "Dear"`.
///
/// Of the story as it is when this is made, which outlives it.
class DocxPlaces {
 public:
  /// `page`: of a page header or footer that not all pages have, " of the first page" or " of even pages".
  DocxPlaces(const DocxStory& story, std::string page);

  std::string Of(NodeId node) const { return Place(node, TextBefore(node)); }
  std::string OfEnd(NodeId node) const { return Place(node, TextAfter(node)); }

  /// How much visible text stands before the node, or up to its end, in bytes. What a text box tells a second
  /// time does not count.
  std::size_t TextBefore(NodeId node) const { return begins_.at(node); }
  std::size_t TextAfter(NodeId node) const { return ends_.at(node); }
  /// Whether a reader sees nothing between two such offsets but blanks and ends of paragraphs.
  bool NothingBetween(std::size_t from, std::size_t to) const;

 private:
  void Visit(NodeId node, bool again);
  std::string Place(NodeId node, std::size_t offset) const;
  std::string WordsBefore(std::size_t offset) const;

  const DocxStory& story_;
  const std::string page_;
  std::string text_;
  std::unordered_map<NodeId, std::size_t> begins_;  ///< into text_, of every node
  std::unordered_map<NodeId, std::size_t> ends_;
};

}  // namespace wordprocessor
