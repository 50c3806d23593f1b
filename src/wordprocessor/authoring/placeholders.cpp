#include "wordprocessor/authoring/placeholders.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_set>

#include "platform/agreed/field_names.h"
#include "platform/text.h"
#include "wordprocessor/bookmarks/index.h"
#include "wordprocessor/cleaning/places.h"
#include "wordprocessor/docx/blocks.h"
#include "wordprocessor/docx/runs.h"

namespace wordprocessor {
namespace {

// Longer ones are sentences in brackets.
constexpr std::size_t kLongestPlaceholder = 100;

struct Placeholder {
  std::string text;
  std::vector<NodeId> pieces;  ///< the text elements it stands in; it begins with the first
  std::size_t in_last = 0;     ///< how many bytes of the last one are its own
  std::uint32_t end_content = 0;
};

struct Miss {
  BookmarkRange range;
  Placeholder placeholder;
};

bool IsTable(std::string_view bookmark, const std::vector<TemplateField>& fields) {
  const auto repeated = platform::RepeatedName(bookmark);
  const auto field = std::ranges::find(fields, repeated.empty() ? bookmark : repeated, &TemplateField::name);
  return field != fields.end() && field->kind == TemplateField::Kind::kTable;
}

class MissSearch {
 public:
  MissSearch(const DocxTree& tree, const HiddenStyles& styles) : tree_(tree), index_(tree) {
    for (const auto run : FindHiddenRuns(tree, styles)) hidden_.insert(run);
  }

  std::vector<Miss> Run(const std::vector<TemplateField>& fields) const {
    std::vector<Miss> misses;
    for (const auto& range : index_.ranges) {
      if (!range.has_end() || IsTable(range.name, fields) || !MayHaveMissed(range)) continue;
      auto placeholder = After(range);
      if (placeholder && !BelongsToAnother(range, *placeholder))
        misses.push_back({range, *std::move(placeholder)});
    }
    return misses;
  }

 private:
  /// Whether the bookmark has no placeholder of its own. An optional paragraph holds its wording, and one
  /// around deleted text goes with it.
  bool MayHaveMissed(const BookmarkRange& range) const {
    std::string own;
    bool goes = !range.empty();
    for (auto i = range.first_content; i < range.end_content; ++i) {
      if (!AppendText(index_.contents[i], own, nullptr)) return false;
      goes = goes && IsGone(index_.contents[i].node);
    }
    if (goes) return false;
    return platform::IsBlank(own) || (own.find('[') == own.npos && !platform::IsParagraphField(range.name));
  }

  /// Whether no letter shows the content.
  bool IsGone(NodeId content) const {
    return hidden_.contains(content) || tree_.Ancestor(content, DocxKind::kDeleted) != kNoNode;
  }

  /// Returns false where the content is more than text.
  bool AppendText(const BookmarkIndex::Content& content, std::string& text,
                  std::vector<NodeId>* pieces) const {
    if (IsGone(content.node)) return true;
    if (content.field != kNoNode || tree_[content.node].kind != DocxKind::kRun) return false;
    for (auto piece = tree_[content.node].first_child; piece != kNoNode; piece = tree_[piece].next) {
      const auto kind = tree_[piece].kind;
      if (kind == DocxKind::kText) {
        text += TextOfElement(tree_, piece);
        if (pieces != nullptr) pieces->push_back(piece);
      } else if (HasContent(tree_, piece)) {
        return false;
      }
      if (pieces != nullptr && text.find(']') != text.npos) return true;
    }
    return true;
  }

  std::optional<Placeholder> After(const BookmarkRange& range) const {
    Placeholder found;
    NodeId paragraph = kNoNode;
    for (auto i = range.end_content; i < index_.contents.size(); ++i) {
      const auto own = ParagraphOf(tree_, index_.contents[i].node);
      if (paragraph == kNoNode && !Begins(range, own)) return std::nullopt;
      if (paragraph != kNoNode && own != paragraph) return std::nullopt;
      paragraph = own;
      if (!AppendText(index_.contents[i], found.text, &found.pieces)) return std::nullopt;
      if (!found.text.empty() && !found.text.starts_with('[')) return std::nullopt;
      const auto end = found.text.find(']');
      if (end == found.text.npos) continue;
      found.in_last = TextOfElement(tree_, found.pieces.back()).size() - (found.text.size() - (end + 1));
      found.text.resize(end + 1);
      found.end_content = i + 1;
      return IsPlaceholder(found.text) ? std::optional(found) : std::nullopt;
    }
    return std::nullopt;
  }

  /// Whether `paragraph` is the one the bookmark ends in; marks between paragraphs mean the next one.
  bool Begins(const BookmarkRange& range, NodeId paragraph) const {
    if (paragraph == kNoNode) return false;
    const auto own = ParagraphOf(tree_, range.end);
    if (own != kNoNode) return own == paragraph;
    auto next = tree_[range.end].next;
    while (next != kNoNode && IsBookmarkMark(tree_[next].kind)) next = tree_[next].next;
    return next == paragraph;
  }

  /// Numbers in brackets are references.
  static bool IsPlaceholder(std::string_view text) {
    const auto inside = text.substr(1, text.size() - 2);
    return text.size() <= kLongestPlaceholder && inside.find('[') == inside.npos &&
           inside.find_first_not_of("0123456789 ,;.-") != inside.npos && !platform::IsBlank(inside);
  }

  bool BelongsToAnother(const BookmarkRange& range, const Placeholder& placeholder) const {
    return std::ranges::any_of(index_.ranges, [&](const BookmarkRange& other) {
      if (!other.has_end() || other.start == range.start) return false;
      if (platform::IsParagraphField(other.name) && other.Holds(range)) return false;
      const auto end = std::min(other.end_content, placeholder.end_content);
      for (auto i = std::max(other.first_content, range.end_content); i < end; ++i) {
        if (!IsGone(index_.contents[i].node)) return true;
      }
      return false;
    });
  }

  const DocxTree& tree_;
  const BookmarkIndex index_;
  std::unordered_set<NodeId> hidden_;
};

void SetAround(DocxTree& tree, const Miss& miss) {
  const auto& placeholder = miss.placeholder;
  auto last = placeholder.pieces.back();
  const bool one_piece = placeholder.pieces.size() == 1;
  NodeId first = placeholder.pieces.front();
  if (placeholder.in_last < TextOfElement(tree, last).size()) {
    const auto tail = SplitText(tree, last, placeholder.in_last);
    last = tree[tail].previous;
    if (one_piece) first = last;
  }
  if (tree[last].next != kNoNode) SplitRunAt(tree, tree[last].next);
  const auto first_run = SplitRunAt(tree, first);
  tree.Unlink(miss.range.start);
  tree.InsertBefore(miss.range.start, first_run);
  tree.Unlink(miss.range.end);
  tree.InsertAfter(miss.range.end, tree[last].parent);
}

MissedPlaceholder Told(const Miss& miss, const DocxPlaces& places) {
  return {std::string(miss.range.name), miss.placeholder.text, places.Of(miss.range.end)};
}

class TemplateStories {
 public:
  explicit TemplateStories(const DocxPackage& package)
      : main_part_(FindMainPart(package)),
        stories_(ReadStories(package, main_part_)),
        pages_(PagesOfParts(stories_.front().tree, ReadRelations(package, main_part_))),
        styles_(package, main_part_) {}

  std::vector<Miss> MissesIn(const DocxStory& story, const std::vector<TemplateField>& fields) const {
    return MissSearch(story.tree, styles_).Run(fields);
  }
  std::vector<DocxStory>& all() { return stories_; }
  DocxPlaces PlacesOf(const DocxStory& story) const {
    const auto page = pages_.find(story.part);
    return {story, page == pages_.end() ? std::string() : page->second};
  }

 private:
  std::string main_part_;
  std::vector<DocxStory> stories_;
  std::map<std::string, std::string> pages_;
  HiddenStyles styles_;
};

}  // namespace

std::vector<TemplateFinding> FindingsOfPlaceholders(const DocxDocument& document,
                                                    const std::vector<TemplateField>& fields) {
  std::vector<TemplateFinding> findings;
  TemplateStories stories(document.Source());
  for (const auto& story : stories.all()) {
    const auto misses = stories.MissesIn(story, fields);
    if (misses.empty()) continue;
    const auto places = stories.PlacesOf(story);
    for (const auto& miss : misses) {
      if (miss.range.in_fallback) continue;
      const auto told = Told(miss, places);
      findings.push_back(
          {TemplateFinding::Grade::kError,
           told.bookmark,
           "The bookmark ends right before its placeholder " + platform::Quoted(told.placeholder) +
               ", so that the letter shows both: set it around the placeholder, or let \"zemlo-letters "
               "bookmarks OLD.docx --repair NEW.docx\" do it.",
           {},
           told.place});
    }
  }
  return findings;
}

RepairedTemplate RepairPlaceholders(const DocxDocument& document, const std::vector<TemplateField>& fields) {
  RepairedTemplate made;
  TemplateStories stories(document.Source());
  std::vector<std::string> contents;
  std::vector<std::string> names;
  for (auto& story : stories.all()) {
    const auto misses = stories.MissesIn(story, fields);
    if (misses.empty()) continue;
    const auto places = stories.PlacesOf(story);
    // Of several before the same placeholder the first one gets it.
    const auto begins = [](const Miss& miss) { return miss.placeholder.pieces.front(); };
    for (auto miss = misses.begin(); miss != misses.end(); ++miss) {
      if (miss != misses.begin() && begins(*miss) == begins(*(miss - 1))) continue;
      if (!miss->range.in_fallback) made.repaired.push_back(Told(*miss, places));
      SetAround(story.tree, *miss);
    }
    contents.push_back(story.tree.Serialize());
    names.push_back(story.part);
  }
  std::vector<PackagePart> parts;
  for (std::size_t i = 0; i < names.size(); ++i) parts.push_back({names[i], contents[i]});
  made.bytes = document.Source().With(parts);
  return made;
}

}  // namespace wordprocessor
