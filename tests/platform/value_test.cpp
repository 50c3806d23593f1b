#include "platform/value.h"

#include <gmock/gmock.h>

#include <limits>

#include "platform/failure.h"

namespace platform {
namespace {

using namespace std::chrono;

constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
constexpr auto kLeast = std::numeric_limits<std::int64_t>::min();

TEST(Dates, AreReadOnlyWhereThereIsSuchADay) {
  for (const auto* day :
       {"2024-02-29", "2000-02-29", "2023-12-31", "1900-01-01", "9999-12-31", "0001-01-01"}) {
    SCOPED_TRACE(day);
    const auto date = ParseDate(day);
    ASSERT_TRUE(date);
    EXPECT_EQ(DateText(*date), day);
  }
  for (const auto* text :
       {"2023-02-29", "1900-02-29", "2024-13-01", "2024-00-10", "2024-04-31", "2024-4-30", "", "2024-04-30 ",
        " 2024-04-30", "24-04-30", "2024/04/30", "2024-04-3x", "0000-01-01", "-024-01-01", "2024-04"}) {
    EXPECT_FALSE(ParseDate(text)) << text;
  }
}

TEST(Timestamps, AreReadWithPointsOrColonsAndWrittenWithPoints) {
  const auto expected = local_days(2024y / February / 29) + 23h + 59min + 58s;
  for (const auto* text : {"2024-02-29 23.59.58", "2024-02-29T23:59:58", "2024-02-29 23:59:58"}) {
    EXPECT_EQ(ParseTimestamp(text), expected) << text;
  }
  EXPECT_EQ(TimestampText(expected), "2024-02-29 23.59.58");
  EXPECT_EQ(TimestampText(local_days(1900y / January / 1) + 1h + 1min + 1s), "1900-01-01 01.01.01");
  for (const auto* text : {"2024-02-29", "2024-02-29 24.00.00", "2024-02-29 23.60.00", "2024-02-29 23.59.60",
                           "2023-02-29 10.00.00", "2024-02-29 1.00.00", "2024-02-29 10.00.00.5", ""}) {
    EXPECT_FALSE(ParseTimestamp(text)) << text;
  }
}

TEST(Money, IsReadExactlyAndWrittenWithTwoDecimals) {
  struct {
    std::string_view text;
    std::int64_t cents;
    std::string_view written, grouped;
  } const cases[] = {
      {"1045.50", 1045'50, "1045.50", "1,045.50"},
      {"-1045.5", -1045'50, "-1045.50", "-1,045.50"},
      {"0.07", 7, "0.07", "0.07"},
      {"-0.07", -7, "-0.07", "-0.07"},
      {"999", 999'00, "999.00", "999.00"},
      {"1000000", 1'000'000'00, "1000000.00", "1,000,000.00"},
      {"92233720368547758.07", kMost, "92233720368547758.07", "92,233,720,368,547,758.07"},
      {"-92233720368547758.08", kLeast, "-92233720368547758.08", "-92,233,720,368,547,758.08"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const auto amount = Money::Parse(c.text);
    ASSERT_TRUE(amount);
    EXPECT_EQ(amount->cents(), c.cents);
    EXPECT_EQ(amount->AsText(), c.written);
    EXPECT_EQ(amount->AsGroupedText(), c.grouped);
  }
}

TEST(Money, IsNothingWhereTheTextIsNoAmount) {
  for (const auto* text : {"", "-", ".", ".5", "5.", "1,045.50", "1.005", "1e3", "+1", "--1", "1 ", "$1",
                           "1.-5", "92233720368547758.08", "-92233720368547758.09", "99999999999999999999"}) {
    EXPECT_FALSE(Money::Parse(text)) << text;
  }
}

TEST(Money, IsAddedUpToItsBoundsAndNotBeyond) {
  EXPECT_EQ(Money::FromCents(kMost - 1) + Money::FromCents(1), Money::FromCents(kMost));
  EXPECT_EQ(Money::FromCents(kLeast) + Money::FromCents(kMost), Money::FromCents(-1));
  EXPECT_THROW(Money::FromCents(kMost) + Money::FromCents(1), Failure);
  EXPECT_THROW(Money::FromCents(kLeast) + Money::FromCents(-1), Failure);
}

TEST(AValue, ReadsAsText) {
  EXPECT_EQ(Value().AsText(), "");
  EXPECT_EQ(Value("CTL").AsText(), "CTL");
  EXPECT_EQ(Value(std::int16_t{-12}).AsText(), "-12");
  EXPECT_EQ(Value(Money::FromCents(104'550)).AsText(), "1045.50");
  EXPECT_EQ(Value(2024y / March / 4).AsText(), "2024-03-04");
  EXPECT_EQ(Value(local_days(2024y / March / 4) + 5h).AsText(), "2024-03-04 05.00.00");
}

TEST(AValue, ReadsAsAnIntegerWhereItIsOne) {
  EXPECT_EQ(Value(kLeast).AsInteger(), kLeast);
  EXPECT_EQ(Value("  -42 ").AsInteger(), -42);
  EXPECT_EQ(Value("+7").AsInteger(), 7);
  for (const Value& value : {Value(), Value(""), Value("1.0"), Value("12a"), Value("+-1"), Value("1 2"),
                             Value("9223372036854775808"), Value(Money::FromCents(100))}) {
    EXPECT_THROW(value.AsInteger(), Failure) << value.AsText();
  }
}

TEST(Values, AreOrderedNullsFirstAndByWhatTheyHold) {
  const std::pair<Value, Value> pairs[] = {
      {Value(), Value("")},
      {Value(9), Value(10)},
      {Value("abc"), Value("ABD")},
      {Value(Money::FromCents(-1)), Value(Money::FromCents(0))},
      {Value(2023y / December / 31), Value(2024y / January / 1)},
      {Value(10), Value("9")},  // across kinds: by text
  };
  for (const auto& [smaller, larger] : pairs) {
    SCOPED_TRACE(smaller.AsText() + " / " + larger.AsText());
    EXPECT_TRUE(Value::Compare(smaller, larger) < 0);
    EXPECT_TRUE(Value::Compare(larger, smaller) > 0);
  }
  EXPECT_TRUE(Value::Compare("Straße", "STRASSE") == 0);
  EXPECT_TRUE(Value::Compare({}, {}) == 0);
  EXPECT_NE(Value("a"), Value("A"));
}

}  // namespace
}  // namespace platform
