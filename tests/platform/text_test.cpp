#include "platform/text.h"

#include <gmock/gmock.h>

#include <array>

namespace platform {
namespace {

TEST(Case, IsMappedByCharactersInTheSameWayInEveryLocale) {
  struct {
    std::string_view text, upper, lower;
  } const cases[] = {
      {"CTL110.docx", "CTL110.DOCX", "ctl110.docx"},
      {"Müller Straße", "MÜLLER STRASSE", "müller straße"},
      {"istanbul", "ISTANBUL", "istanbul"},  // no dot on the capital, whatever the machine's language
      {"İ", "İ", "i̇"},
      {"ΟΔΟΣ", "ΟΔΟΣ", "οδος"},  // a final sigma
      {"éclair œuvre", "ÉCLAIR ŒUVRE", "éclair œuvre"},
      {"", "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(UpperCase(c.text), c.upper);
    EXPECT_EQ(LowerCase(c.text), c.lower);
  }
}

TEST(Comparing, TakesTextsThatDifferInCaseOnlyAsEqual) {
  struct {
    std::string_view left, right;
    bool equal;
  } const cases[] = {
      {"XML_Context", "XML_CONTEXT", true},
      {"Straße", "STRASSE", true},
      {"ÅNGSTRÖM", "ångström", true},
      {"\xE2\x84\xAA", "k", true},  // the Kelvin sign
      {"İ", "i", false},            // a dotted capital is no plain i
      {"form", "forms", false},
      {"", "a", false},
      {"mü", "mu", false},
      {"ab", "a\xC3\xA9", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.left) + " / " + std::string(c.right));
    EXPECT_EQ(EqualsIgnoringCase(c.left, c.right), c.equal);
    EXPECT_EQ(EqualsIgnoringCase(c.right, c.left), c.equal);
  }
}

TEST(Comparing, OrdersTextsByTheirFoldedCharacters) {
  const auto ordered = std::to_array<std::string_view>({"", "A", "a1", "AB", "b", "ba", "É", "日本"});
  for (std::size_t i = 0; i + 1 < ordered.size(); ++i) {
    SCOPED_TRACE(ordered[i]);
    EXPECT_TRUE(CompareIgnoringCase(ordered[i], ordered[i + 1]) < 0);
    EXPECT_TRUE(CompareIgnoringCase(ordered[i + 1], ordered[i]) > 0);
  }
}

TEST(Characters, AreCountedAndCutWhole) {
  EXPECT_EQ(CharacterCount("Größe €5 😀"), 10U);
  EXPECT_EQ(FirstCharacters("Größe", 3), "Grö");
  EXPECT_EQ(FirstCharacters("😀😀", 1), "😀");
  EXPECT_EQ(FirstCharacters("abc", 0), "");
  EXPECT_EQ(FirstCharacters("abc", 9), "abc");
}

TEST(Trimming, TakesBlanksAtTheEndsOnly) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Trim(" \ta\r\n "), "\ta\r\n");
}

// A no-break space with a zero-width space passed as a value, and a pasted cell's line break was printed.
TEST(Blanks, AreWhatUnicodeTakesForThem) {
  for (const auto* blank : {"", " \t\r\n", "\u00A0\u200B", "\uFEFF", "\u2000\u2005\u200A\u202F\u205F\u3000",
                            "\u1680\u180E\u2060", "\u2028\u2029\u0085", "\u200C\u200D\u00AD\u3164"}) {
    EXPECT_TRUE(IsBlank(blank)) << blank;
    EXPECT_EQ(TrimBlanks(blank), "") << blank;
  }
  for (const auto* seen : {"x", "\u00A0.", "\u3000\u00E9", "\xFF", " \xC2"})
    EXPECT_FALSE(IsBlank(seen)) << seen;
}

TEST(Blanks, GoFromBothEndsOfATextAndStayInside) {
  struct {
    std::string_view text, trimmed, line;
  } const cases[] = {
      {"$5,000\r\n", "$5,000", "$5,000 "},
      {"\uFEFF\u00A0 June\u00A01 \u200B\t", "June\u00A01", "\uFEFF\u00A0 June\u00A01 \u200B\t"},
      {"12 Main St\r\n  Troy\nNY", "12 Main St\r\n  Troy\nNY", "12 Main St Troy NY"},
      {"a \v\n\n b\u2028c\u0085d", "a \v\n\n b\u2028c\u0085d", "a b c d"},
      {"\u2060\u00AD5\u00AD0\u3164\u2064", "5\u00AD0", "\u2060\u00AD5\u00AD0\u3164\u2064"},
      {"\u115F\u1160\uFFA0 \u2061x\u2062\u2063\u180E", "x", "\u115F\u1160\uFFA0 \u2061x\u2062\u2063\u180E"},
      {"\u2764\uFE0F ", "\u2764\uFE0F", "\u2764\uFE0F "},  // how the sign is drawn belongs to it
      {"a\xC2\xFF ", "a\xC2\xFF", "a\xC2\xFF "},
      {"one", "one", "one"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(TrimBlanks(c.text), c.trimmed);
    EXPECT_EQ(OnOneLine(c.text), c.line);
  }
}

TEST(Replacing, GoesOverTheTextOnce) {
  EXPECT_EQ(ReplaceAll("a||b||", "||", "|"), "a|b|");
  EXPECT_EQ(ReplaceAll("O'Hara's", "'", "''"), "O''Hara''s");
  EXPECT_EQ(ReplaceAll("aaa", "aa", "a"), "aa");
  EXPECT_EQ(ReplaceAll("", "x", "y"), "");
}

TEST(Utf8, IsValidOnlyWhereEveryCharacterIs) {
  using namespace std::string_view_literals;
  struct {
    std::string_view text;
    std::size_t valid;
  } const cases[] = {
      {"plain", 5},
      {"é€😀", 9},
      {"\xF4\x8F\xBF\xBF", 4},  // the last character there is
      {"a\xC0\xAF", 1},         // "/" in two bytes
      {"\xE0\x80\xAF", 0},      // and in three
      {"\xF0\x80\x80\xAF", 0},
      {"ab\xED\xA0\x80", 2},    // a surrogate
      {"\xF4\x90\x80\x80", 0},  // beyond the last one
      {"\xC3", 0},
      {"\xE2\x82", 0},
      {"\xF0\x9F\x98", 0},
      {"\x80", 0},
      {"\xFF\xFE<\0"sv, 0},
      {"x\xE2\x28\xA1", 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.text));
    EXPECT_EQ(ValidUtf8Length(c.text), c.valid);
    EXPECT_EQ(IsValidUtf8(c.text), c.valid == c.text.size());
  }
}

}  // namespace
}  // namespace platform
