#include <string>
#include <utility>
#include <vector>

#include "platform/whole_file.h"
#include "tests/fuzz/fuzz_input.h"
#include "wordprocessor/bookmarks/merge.h"
#include "wordprocessor/bookmarks/repair.h"
#include "wordprocessor/cleaning/story.h"
#include "wordprocessor/docx/tree_reader.h"

namespace {

constexpr auto kContext =
    "<XML_CONTEXT><CUSTOMER_NAME>Prairie Lantern</CUSTOMER_NAME><EMPTY/>"
    "<ADDRESS>10 Main St\r\nSuite 4||Tulsa</ADDRESS>"
    "<TAX_PERIODS><ROW><PERIOD_NAME>1</PERIOD_NAME></ROW><ROW><PERIOD_NAME>2</PERIOD_NAME></ROW></"
    "TAX_PERIODS>"
    "</XML_CONTEXT>";

/// A real letter's styles.
wordprocessor::HiddenStyles Styles() {
  constexpr auto kLetter = ZEMLO_SOURCE_DIR "/data/templates/CTL110_2407.docx";
  return {wordprocessor::DocxPackage::FromBytes(platform::ReadWholeFile(kLetter), kLetter),
          "word/document.xml"};
}

}  // namespace

// The body of a template: cleaned, repaired and merged. What is written is read, and stays the same from then
// on.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace wordprocessor;
  static const auto context = DataContext::Parse(kContext);
  static const auto styles = Styles();
  fuzz::Answered([&] {
    DocxStory story{.part = "word/document.xml", .tree = ReadDocxTree(fuzz::TextOf(data, size))};
    CleanStory(story, styles, {});
    RepairBookmarks(story.tree);
    std::vector<std::string> unfilled;
    MergeBookmarksOf(story.tree, context, unfilled);
    std::string first;
    std::string second;
    fuzz::Answered([&] {
      // Once for what may be written in two ways, such as an element without content.
      first = ReadDocxTree(story.tree.Serialize()).Serialize();
      second = ReadDocxTree(first).Serialize();
    });
    fuzz::Require(!first.empty() && first == second, "a part that was written reads the same");
  });
  return 0;
}
