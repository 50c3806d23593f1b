#include "platform/search_text.h"

#include <gmock/gmock.h>

namespace platform {
namespace {

TEST(SearchText, IsWordsWithoutCaseAccentsAndMarks) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"Café Élan, L.L.C.", "cafe elan l l c"},
      {"CAFE\xCC\x81 ELAN", "cafe elan"},  // the accent as a character of its own
      {"  Merriweather,\tHattie ", "merriweather hattie"},
      {"O'Marchbanks", "omarchbanks"},
      {"O’Marchbanks", "omarchbanks"},
      {"Straße İzmir", "strasse izmir"},
      {"ﬁrst\u00A0choice", "first choice"},
      {"62-000100001-01", "62 000100001 01"},
      {"日本 𐐀", "日本 𐐨"},
      {" - % _ ", ""},
      {"", ""},
  };
  for (const auto& [text, folded] : cases) EXPECT_EQ(FoldForSearch(text), folded) << text;
}

TEST(SearchText, HoldsWordsInAnyOrder) {
  const auto folded = FoldForSearch("Surety Bond Demand");
  EXPECT_TRUE(HoldsWords(folded, SearchWords("demand BOND")));
  EXPECT_TRUE(HoldsWords(folded, SearchWords("ond")));
  EXPECT_FALSE(HoldsWords(folded, SearchWords("bond denied")));
  EXPECT_TRUE(HoldsWords(folded, {}));
}

}  // namespace
}  // namespace platform
