#include "apps/letters/entry_options.h"

#include <set>

#include "apps/letters/page_user.h"
#include "platform/text.h"

namespace apps {

void AddEntryOptions(CommandLine& line) {
  line.Option("set", "BOOKMARK=VALUE", "A value that only the user knows; once for each bookmark.",
              Takes::kManyValues)
      .Option("paragraph", "PARA_NAME", "An optional paragraph that the letter shows; once for each.",
              Takes::kManyValues)
      .Option("free-text", "TEXT", "The user's own paragraph, of one line or several.", Takes::kAnyText);
}

std::string EntryOptionFault(const CommandLine& line) {
  std::set<std::string> bookmarks;
  for (const auto& entry : line.Values("set")) {
    const auto place = entry.find('=');
    if (place == std::string::npos || place == 0)
      return "--set \"" + entry + "\" is not of the form BOOKMARK=VALUE.";
    const auto bookmark = entry.substr(0, place);
    if (!bookmarks.insert(platform::FoldCase(bookmark)).second)
      return "--set gives \"" + bookmark + "\" twice. Give it once.";
  }
  return "";
}

LetterEntries EntriesOf(const CommandLine& line) {
  LetterEntries entries;
  for (const auto& entry : line.Values("set")) {
    const auto place = entry.find('=');
    entries.values.emplace_back(entry.substr(0, place), entry.substr(place + 1));
  }
  entries.paragraphs = line.Values("paragraph");
  if (line.IsSet("free-text")) entries.free_text = line.Value("free-text");
  return entries;
}

void RefuseUnusedEntries(const HeadlessOffice& office) {
  if (office.asked_for_entries()) return;
  Refuse(
      "The letter asks for nothing that only the user knows. Leave out --set, --paragraph and --free-text.");
}

}  // namespace apps
