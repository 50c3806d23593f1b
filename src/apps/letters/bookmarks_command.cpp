#include <array>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/listing.h"
#include "platform/text.h"
#include "wordprocessor/docx_document.h"

namespace apps {
namespace {

std::string OneLine(std::string text) {
  text = platform::ReplaceAll(text, "\r", " ");
  return platform::ReplaceAll(text, "\n", " ");
}

}  // namespace

int RunBookmarks(const QStringList& words) {
  CommandLine line("bookmarks", "Lists the bookmarks of a template in document order", "TEMPLATE.docx");
  line.JsonOption();
  if (const auto status = line.Parse(words, 1, 1)) return *status;

  static constexpr std::array<Listing::Column, 4> kColumns{
      {{"name", "Bookmark"}, {"place", "Place"}, {"inner", "Holds"}, {"text", "Text"}}};
  Listing listing{kColumns, {}};
  const bool as_json = line.IsSet("json");
  for (const auto& place : wordprocessor::DocxDocument::Open(line.Argument(0)).BookmarkPlaces()) {
    std::string inner;
    for (const auto& name : place.bookmark.Inner) {
      if (name != place.bookmark.Name) inner += (inner.empty() ? "" : " ") + name;
    }
    listing.rows.push_back({place.bookmark.Name, std::string(PlaceName(place.where)), inner,
                            as_json ? place.bookmark.Text : OneLine(place.bookmark.Text)});
  }
  Print(listing, as_json);
  return kDone;
}

}  // namespace apps
