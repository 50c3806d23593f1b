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
      {"Łukasz SØRBY, Ægir Đorđe", "lukasz sorby aegir dorde"},
      {"日本 𐐀", "日本 𐐨"},
      {" - % _ ", ""},
      {"", ""},
  };
  for (const auto& [text, folded] : cases) EXPECT_EQ(FoldForSearch(text), folded) << text;
}

std::string Marked(std::string_view text, const std::vector<TextRange>& ranges) {
  std::string marked(text);
  for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
    marked.insert(range->start + range->length, "]").insert(range->start, "[");
  return marked;
}

TEST(SearchText, TellsWhereTheWordsOfATextBeginAsItsSearch) {
  struct Case {
    std::string_view text;
    std::string_view typed;
    std::string_view marked;
  };
  const Case cases[] = {
      {"Hattie Merriweather", "merr HAT", "[Hat]tie [Merr]iweather"},
      {"Merr & Merritt", "merr merri", "[Merr] & [Merri]tt"},
      {"Caf\u00e9 \u00c9lan, L.L.C.", "cafe el l", "[Caf\u00e9] [\u00c9l]an, [L].[L].C."},
      {"CAFE\xCC\x81 ELAN", "cafe", "[CAFE\xCC\x81] ELAN"},
      {"O'Marchbanks", "omarch", "[O'March]banks"},
      {"Stra\u00dfe", "strass", "[Stra\u00df]e"},
      {"S\u00f8rby \u00c6gir", "sor aeg", "[S\u00f8r]by [\u00c6g]ir"},
      {"Oakhaven", "haven", "Oakhaven"},
      {"Oakhaven", "", "Oakhaven"},
      {"", "oak", ""},
  };
  for (const auto& [text, typed, marked] : cases)
    EXPECT_EQ(Marked(text, RangesOfWords(text, SearchWords(typed))), marked) << typed;
}

TEST(SearchText, TellsWhereANumberStandsHoweverItIsPunctuated) {
  struct Case {
    std::string_view text;
    std::string_view typed;
    std::string_view marked;
  };
  const Case cases[] = {
      {"(405) 521-2485", "405 521", "([405) 521]-2485"},
      {"(405) 521-2485", "(405)521.2485", "([405) 521-2485]"},
      {"62-000100001-01", "620001", "[62-0001]00001-01"},
      {"62-000100001-01", "merr 0001", "62-[0001]00001-01"},
      {"(405) 521-2485", "merr", "(405) 521-2485"},
      {"(405) 521-2485", "d405", "(405) 521-2485"},
      {"(405) 521-2485", "406", "(405) 521-2485"},
      {"", "405", ""},
  };
  for (const auto& [text, typed, marked] : cases)
    EXPECT_EQ(Marked(text, RangesOfNumber(text, typed)), marked) << typed;
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
