#include "server/context/field_functions.h"

#include <gmock/gmock.h>

#include "platform/failure.h"

namespace {

constexpr auto kDayOfCalls = std::chrono::year(2026) / 11 / 22;

/// A call of `function`, with fields A and B that hold these values.
server::FieldValue ValueOf(const std::string& function, const std::vector<std::string>& values) {
  const auto call = server::ReadFunctionCall(function + (values.size() == 1 ? "(A)" : "(A, B)")).value();
  std::vector<server::FunctionArgument> arguments;
  for (std::size_t i = 0; i < values.size(); ++i) arguments.push_back({call.fields[i], values[i]});
  return call.function->Call(arguments, kDayOfCalls);
}

TEST(FieldFunctions, ComputeFromWhatTheFieldsHold) {
  struct Case {
    const char* function;
    std::vector<std::string> values;
    const char* text;
    const char* raw;
  };
  const Case cases[] = {
      {"add", {"1000.10", "45.40"}, "$1,045.50", "1045.50"},
      {"add", {"0.10", "-0.20"}, "$-0.10", "-0.10"},
      {"subtract", {"10", "0.01"}, "$9.99", "9.99"},
      {"divide", {"10.00", "4"}, "$2.50", "2.50"},
      {"divide", {"1.00", "3"}, "$0.33", "0.33"},
      {"divide", {"0.05", "2"}, "$0.03", "0.03"},  // halves go away from zero
      {"divide", {"-0.05", "2"}, "$-0.03", "-0.03"},
      {"divide", {"2.00", "-3"}, "$-0.67", "-0.67"},
      {"divide", {"1", "0.5"}, "$2.00", "2.00"},
      {"percent", {"10", "100"}, "10 percent", "10.00"},
      {"percent", {"1", "3"}, "33.33 percent", "33.33"},
      {"percent", {"2", "3"}, "66.67 percent", "66.67"},
      {"percent", {"3", "2"}, "150 percent", "150.00"},
      {"days_since", {"2026-11-22"}, "0", "0"},
      {"days_since", {"2025-11-22"}, "365", "365"},
      {"days_since", {"2024-02-28"}, "998", "998"},  // over a leap day
      {"days_since", {"2026-11-23"}, "-1", "-1"},
      {"join", {"Ann", "Troy"}, "Ann Troy", "Ann Troy"},
  };
  for (const auto& [function, values, text, raw] : cases) {
    SCOPED_TRACE(function + testing::PrintToString(values));
    const auto value = ValueOf(function, values);
    EXPECT_EQ(value.text, text);
    EXPECT_EQ(value.raw, raw);
  }
}

TEST(FieldFunctions, SayOfAResultThatItIsZero) {
  EXPECT_TRUE(ValueOf("subtract", {"1.00", "1"}).is_zero);
  EXPECT_TRUE(ValueOf("percent", {"0", "3"}).is_zero);
  EXPECT_TRUE(ValueOf("days_since", {"2026-11-22"}).is_zero);
  EXPECT_FALSE(ValueOf("divide", {"0.01", "1"}).is_zero);
}

TEST(FieldFunctions, SayWhyThereIsNoResult) {
  struct Case {
    const char* function;
    std::vector<std::string> values;
    const char* reason;
  };
  const Case cases[] = {
      {"divide", {"1", "0.00"}, "\"B\" is zero, and nothing can be divided by zero"},
      {"percent", {"0", "0"}, "\"B\" is zero, and nothing can be divided by zero"},
      {"add", {"1", "Ann"}, "\"Ann\" of \"B\" is no number"},
      {"subtract", {"2026-11-22", "1"}, "\"2026-11-22\" of \"A\" is no number"},
      {"days_since", {"Ann"}, "\"Ann\" of \"A\" is no day"},
      {"days_since", {"2026-02-29"}, "\"2026-02-29\" of \"A\" is no day"},
      {"add", {"92233720368547758.07", "0.01"}, "the result is too large"},
      {"percent", {"92233720368547758", "1"}, "the result is too large"},
  };
  for (const auto& [function, values, reason] : cases) {
    SCOPED_TRACE(function + testing::PrintToString(values));
    try {
      ADD_FAILURE() << "came to " << ValueOf(function, values).text;
    } catch (const platform::Failure& failure) {
      EXPECT_EQ(failure.kind(), platform::Failure::Kind::kRefused);
      EXPECT_EQ(failure.description(), reason);
    }
  }
}

TEST(FieldFunctions, AreReadWithAsManyFieldsAsTheyTake) {
  const auto call = server::ReadFunctionCall("divide( AMOUNT_DUE ,PERIOD_COUNT)");
  ASSERT_TRUE(call);
  EXPECT_EQ(call->function->name, "divide");
  EXPECT_THAT(call->fields, testing::ElementsAre("AMOUNT_DUE", "PERIOD_COUNT"));
  for (const auto* text : {"", "add", "add(A, B", "add(A)", "add(A, B, C)", "days_since(A, B)", "ADD(A, B)",
                           "multiply(A, B)", "(A, B)"}) {
    EXPECT_FALSE(server::ReadFunctionCall(text)) << text;
  }
}

}  // namespace
