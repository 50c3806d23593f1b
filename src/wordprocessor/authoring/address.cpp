#include "wordprocessor/authoring/address.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "platform/text.h"
#include "wordprocessor/authoring/read_template.h"
#include "wordprocessor/bookmarks/data_context.h"
#include "wordprocessor/docx/blocks.h"
#include "wordprocessor/docx/escape.h"

namespace wordprocessor {
namespace {

constexpr std::string_view kAddress = "CUSTOMER_ADDR";
constexpr std::string_view kOfficeAddress = "OFFICE_ADDR";

// Inches. A No. 10 envelope is 9 1/2 wide and 4 1/8 high, its window 4 1/2 wide and 1 1/8 high, 7/8 from the
// left and 1/2 from the lower edge, as envelopes with one window are sold. In it a Letter sheet folded in
// three slides by 1/3 up and by 7/8 to the right; the rest of the room is taken by seams and folds.
constexpr double kFoldedHeight = 11.0 / 3;
constexpr double kSlideUp = 1.0 / 3;
constexpr double kSlideRight = 7.0 / 8;
constexpr double kWindowTop = kFoldedHeight - 0.5 - 1.125 + kSlideUp;
constexpr double kWindowBottom = kFoldedHeight - 0.5;
constexpr double kWindowLeft = 0.875;
constexpr double kWindowRight = 0.875 + 4.5 - kSlideRight;
// Room for the longest line of an address.
constexpr double kLineWidth = 2.5;
constexpr double kTolerance = 0.02;

// How far the name may stand above the address and still belong to it.
constexpr double kMostAbove = 1.0;

bool IsAddress(std::string_view bookmark) {
  return bookmark.find("ADDR") != bookmark.npos && !bookmark.starts_with(kOfficeAddress);
}

bool CustomersAddressIsFirst(const DocxDocument& letter) {
  const auto places = letter.BookmarkPlaces();
  const auto first =
      std::ranges::find_if(places, [](const auto& place) { return IsAddress(place.bookmark.Name); });
  return first != places.end() && first->bookmark.Name == kAddress;
}

std::string Inches(double inches) {
  std::array<char, 16> text = {};
  std::snprintf(text.data(), text.size(), "%.1f", inches);
  return text.data();
}

std::string TextUnder(const DocxTree& tree, NodeId node) {
  if (tree[node].kind == DocxKind::kMarkup) {
    return tree[tree[node].parent].kind == DocxKind::kText ? wordprocessor::Unescaped(tree[node].markup)
                                                           : std::string();
  }
  std::string text;
  for (auto child = tree[node].first_child; child != kNoNode; child = tree[child].next) {
    text += TextUnder(tree, child);
  }
  return text;
}

/// Whether nothing else stands in the paragraph of the sample's address.
bool StandsAlone(const DocxDocument& sample) {
  const auto stories = StoriesOfLetters(sample);
  const auto& tree = stories.all().front().tree;
  for (NodeId node = 0; node < tree.size(); ++node) {
    if (tree[node].kind != DocxKind::kText || TextUnder(tree, node) != kSampleAddress[1]) continue;
    const auto paragraph = ParagraphOf(tree, node);
    if (paragraph == kNoNode) return false;
    auto text = TextUnder(tree, paragraph);
    for (const auto word : kSampleAddress) text = platform::ReplaceAll(text, word, "");
    return platform::IsBlank(text);
  }
  return false;
}

/// The sample's address on its page.
struct AddressPlace {
  int page = 0;
  double left = 0;
  double top = 0;
  double bottom = 0;
};

std::optional<AddressPlace> PlaceOfAddress(const std::vector<PlacedWord>& words) {
  const auto earlier = [](const PlacedWord& one, const PlacedWord& other) {
    return std::pair(one.page, one.top) < std::pair(other.page, other.top);
  };
  std::vector<PlacedWord> sorted = words;
  std::ranges::sort(sorted, earlier);
  const auto second = std::ranges::find(sorted, kSampleAddress[1], &PlacedWord::word);
  if (second == sorted.end()) return std::nullopt;
  AddressPlace place{second->page, second->left, second->top, second->bottom};
  for (const auto& word : sorted) {
    const bool name = word.word == kSampleAddress[0];
    if (word.page != place.page || (name && word.top > second->top)) continue;
    if (std::abs(word.top - second->top) > kMostAbove) continue;
    place.left = std::min(place.left, word.left);
    place.top = std::min(place.top, word.top);
    place.bottom = std::max(place.bottom, word.bottom);
  }
  return place;
}

std::vector<TemplateFinding> Misplaced(const std::string& what) {
  return {{TemplateFinding::Grade::kWarning, std::string(kAddress), what}};
}

std::string Shown(double from, double to) {
  return "the window of a No. 10 envelope shows what stands between " + Inches(from) + " and " + Inches(to) +
         " inches";
}

}  // namespace

std::optional<DocxDocument> SampleLetter(DocxDocument letter) {
  if (!CustomersAddressIsFirst(letter)) return std::nullopt;
  std::string xml = "<S><CUSTOMER_NAME>" + std::string(kSampleAddress[0]) + "</CUSTOMER_NAME><CUSTOMER_ADDR>";
  for (std::size_t i = 1; i < kSampleAddress.size(); ++i) {
    xml += (i > 1 ? "\n" : "") + std::string(kSampleAddress[i]);
  }
  xml += "</CUSTOMER_ADDR><OFFICE_ADDR>1\n2</OFFICE_ADDR></S>";
  letter.MergeBookmarks(DataContext::Parse(xml));
  if (!StandsAlone(letter)) return std::nullopt;
  return letter;
}

std::vector<TemplateFinding> CheckAddress(const std::vector<PlacedWord>& words) {
  const auto place = PlaceOfAddress(words);
  if (!place) {
    return Misplaced(
        "The address is not on the pages: it lies beyond a sheet's edge, or below a box's or row's. Set its "
        "bookmark where a whole line of it is shown.");
  }
  if (place->page > 0) {
    return Misplaced("The address stands on page " + std::to_string(place->page + 1) +
                     ", where no envelope shows it: set it on the first page.");
  }
  // First: at the right its lines break, and stand too deep for that reason.
  if (place->left < kWindowLeft - kTolerance || place->left > kWindowRight - kLineWidth + kTolerance) {
    return Misplaced("The address begins " + Inches(place->left) + " inches from the left edge; " +
                     Shown(kWindowLeft, kWindowRight) + ". Begin it one inch from the left.");
  }
  if (place->top < kWindowTop - kTolerance || place->bottom > kWindowBottom + kTolerance) {
    return Misplaced("Four lines of address stand between " + Inches(place->top) + " and " +
                     Inches(place->bottom) + " inches below the top edge; " +
                     Shown(kWindowTop, kWindowBottom) +
                     ". Change the page header, the paragraphs above the address, or its lines' spacing.");
  }
  return {};
}

}  // namespace wordprocessor
