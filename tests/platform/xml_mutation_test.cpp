#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "platform/xml/xml.h"
#include "tests/support/temporary_folder.h"

namespace platform {
namespace {

constexpr std::chrono::milliseconds kBudget{1500};
constexpr unsigned kSeed = 20240229;
constexpr auto kPieces = std::to_array<std::string_view>({"<",
                                                          ">",
                                                          "/>",
                                                          "</",
                                                          "<a>",
                                                          "</a>",
                                                          "&",
                                                          "&#",
                                                          "&#x0;",
                                                          ";",
                                                          "\"",
                                                          "'",
                                                          "=",
                                                          "<!--",
                                                          "-->",
                                                          "<![CDATA[",
                                                          "]]>",
                                                          "<?xml ",
                                                          "?>",
                                                          "<!DOCTYPE a [",
                                                          "\xEF\xBB\xBF",
                                                          "\xC0",
                                                          "\xED\xA0\x80",
                                                          "\r",
                                                          " ",
                                                          std::string_view("\0", 1)});

std::vector<std::string> Corpus() {
  std::vector<std::string> texts;
  for (const auto& entry : std::filesystem::directory_iterator(ZEMLO_SOURCE_DIR "/tests/platform/corpus")) {
    texts.push_back(tests::ReadFile(entry.path()));
  }
  return texts;
}

class Mutations {
 public:
  std::string Of(std::string text) {
    for (auto changes = Below(4) + 1; changes > 0; --changes) ChangeOnce(text);
    return text;
  }
  std::size_t Below(std::size_t count) { return random_() % count; }

 private:
  void ChangeOnce(std::string& text) {
    const auto at = Below(text.size() + 1);
    const auto length = Below(std::min<std::size_t>(text.size() - at, 20) + 1);
    switch (Below(5)) {
      case 0:
        text.erase(at, length);
        break;
      case 1:
        text.insert(at, text.substr(Below(text.size() + 1), 30));
        break;
      case 2:
        text.insert(at, kPieces[Below(kPieces.size())]);
        break;
      case 3:
        text.replace(at, length, kPieces[Below(kPieces.size())]);
        break;
      default:
        if (at < text.size()) text[at] = static_cast<char>(Below(256));
    }
  }
  std::mt19937 random_{kSeed};
};

TEST(MutatedXml, IsRefusedOrReadsAgainAsItWasWritten) {
  const auto corpus = Corpus();
  ASSERT_FALSE(corpus.empty());
  for (const auto& text : corpus) ASSERT_TRUE(XmlDocument::Parse(text).document) << text;

  Mutations mutations;
  const auto end = std::chrono::steady_clock::now() + kBudget;
  std::size_t taken = 0;
  while (std::chrono::steady_clock::now() < end) {
    const auto text = mutations.Of(corpus[mutations.Below(corpus.size())]);
    const auto first = XmlDocument::Parse(text);
    if (!first.document) continue;
    ++taken;
    const auto written = first.document->Root().Xml();
    const auto second = XmlDocument::Parse(written);
    ASSERT_TRUE(second.document) << text << "\nwritten as\n" << written << "\n" << second.error.reason;
    ASSERT_EQ(second.document->Root().Xml(), written) << text;
    ASSERT_EQ(second.document->Root().Text(), first.document->Root().Text()) << text;
  }
  EXPECT_GT(taken, 0U);
}

}  // namespace
}  // namespace platform
