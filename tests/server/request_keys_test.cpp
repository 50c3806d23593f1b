#include "server/wire/request_keys.h"

#include <array>
#include <functional>

#include <gmock/gmock.h>

#include "platform/failure.h"

namespace {

using platform::KeyItem;
using server::RequestKeys;
using std::chrono::year;
using testing::HasSubstr;

constexpr auto kKnownKeys = std::to_array<server::KnownKey>(
    {{"CUST_ID"}, {"THIN"}, {"BATCH_NBR"}, {"CUST_FIND", "like"}, {"START_DT", "=", "between"}});

KeyItem KeyOf(const std::string& key, const std::string& value, const std::string& comparison = "=") {
  return {"KORVADSK", key, comparison, value};
}
RequestKeys ReadKeys(const std::vector<KeyItem>& keys) {
  return RequestKeys(keys, kKnownKeys);
}
std::string WhyRefused(const std::function<void()>& read) {
  try {
    read();
  } catch (const platform::Failure& failure) {
    EXPECT_EQ(failure.kind(), platform::Failure::Kind::kRefused) << failure.description();
    return failure.description();
  }
  return "(taken)";
}

TEST(RequestKeys, AreKnownByTheirNamesWithoutRegardToBlanksAndCase) {
  for (const auto* name : {"CUST_ID", "key:CUST_ID", "key: CUST_ID", "Key:cust_id", " KEY : Cust_Id "})
    EXPECT_EQ(ReadKeys({KeyOf(name, " 100001 ")}).Text("CUST_ID"), "100001") << name;
  const auto none = ReadKeys({});
  EXPECT_FALSE(none.Has("CUST_ID"));
  EXPECT_EQ(none.Text("CUST_ID"), "");
  EXPECT_EQ(none.Number("CUST_ID"), std::nullopt);
  EXPECT_FALSE(none.Days("START_DT"));
  EXPECT_FALSE(none.IsYes("THIN"));
}

TEST(RequestKeys, OfAnotherNameOrOperatorAreRefusedAndTwiceTheSame) {
  const std::pair<std::vector<KeyItem>, const char*> cases[] = {
      {{KeyOf("key:COLOUR", "red")}, "The server does not know the key \"key:COLOUR\" in this request."},
      {{KeyOf("key:CUST_ID", "1"), KeyOf("cust_id", "2")}, "The key \"cust_id\" came twice."},
      {{KeyOf("CUST_ID", "1 and 2", "between")},
       "The key \"CUST_ID\" came with the operator \"between\"; send \"=\"."},
      {{KeyOf("CUST_FIND", "a")}, "The key \"CUST_FIND\" came with the operator \"=\"; send \"like\"."},
      {{KeyOf("START_DT", "a", ">")},
       "The key \"START_DT\" came with the operator \">\"; send \"=\" or \"between\"."},
  };
  for (const auto& [keys, reason] : cases) EXPECT_EQ(WhyRefused([&] { ReadKeys(keys); }), reason);
  EXPECT_TRUE(ReadKeys({KeyOf("CUST_FIND", "a", " like ")}).Has("CUST_FIND"));
}

TEST(RequestKeys, HoldYesOrNo) {
  EXPECT_TRUE(ReadKeys({KeyOf("THIN", "y")}).IsYes("THIN"));
  EXPECT_FALSE(ReadKeys({KeyOf("THIN", "N ")}).IsYes("THIN"));
  for (const auto* value : {"", "YES", "maybe"})
    EXPECT_THAT(WhyRefused([&] { ReadKeys({KeyOf("THIN", value)}).IsYes("THIN"); }),
                HasSubstr("\"Y\" or \"N\""))
        << value;
}

TEST(RequestKeys, HoldWholeNumbers) {
  EXPECT_EQ(ReadKeys({KeyOf("BATCH_NBR", " 70 ")}).Number("BATCH_NBR"), 70);
  for (const auto* value : {"7a", "7.5", "99999999999999999999"})
    EXPECT_THAT(WhyRefused([&] { ReadKeys({KeyOf("BATCH_NBR", value)}).Number("BATCH_NBR"); }),
                HasSubstr("while reading the key \"BATCH_NBR\""))
        << value;
}

TEST(RequestKeys, HoldADayOrAllFromOneToAnother) {
  const auto days = [](const char* value, const char* comparison) {
    return ReadKeys({KeyOf("START_DT", value, comparison)}).Days("START_DT").value();
  };
  const auto one = days(" 2024-02-29 ", "=");
  EXPECT_EQ(one.first, year(2024) / 2 / 29);
  EXPECT_EQ(one.last, one.first);
  const auto range = days("2026-03-01 and 2026-03-02", "between");
  EXPECT_EQ(range.first, year(2026) / 3 / 1);
  EXPECT_EQ(range.last, year(2026) / 3 / 2);
  EXPECT_EQ(days("2026-03-03 and 2026-03-03", "between").first, year(2026) / 3 / 3);

  struct Case {
    const char* value;
    const char* comparison;
    const char* reason;
  };
  const Case cases[] = {
      {"2026-02-29", "=", "\"2026-02-29\", which is no day; send it as \"yyyy-mm-dd\"."},
      {"2026-02-01 and 2026-02-02", "=", "which is no day"},
      {"", "=", "which is no day"},
      {"2026-02-01", "between", "which is no range"},
      {"2026-02-01 to 2026-02-02", "between", "which is no range"},
      {"2026-02-01 and 2026-02-30", "between", "\"2026-02-30\", which is no day"},
      {"2026-03-02 and 2026-03-01", "between", "whose first day comes after its last"},
  };
  for (const auto& [value, comparison, reason] : cases)
    EXPECT_THAT(WhyRefused([&] { days(value, comparison); }), HasSubstr(reason)) << value << comparison;
}

}  // namespace
