#include "platform/parties/print_choice.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

TEST(PageRangesTest, AreTakenAsPeopleTypeThemAndWrittenAsSpoolersTakeThem) {
  const std::pair<const char*, std::optional<std::string>> cases[] = {
      {"", ""},
      {"  ", ""},
      {"2", "2"},
      {"1 - 3,5", "1-3,5"},
      {"5,1-3", "1-3,5"},
      {"1,2,2-4,9", "1-4,9"},
      {"3-3", "3"},
      {"0", std::nullopt},
      {"3-1", std::nullopt},
      {"1,", std::nullopt},
      {"-2", std::nullopt},
      {"two", std::nullopt},
      {"1;2", std::nullopt},
      {"10000", std::nullopt},
      {"1-2-3", std::nullopt},
  };
  for (const auto& [typed, ranges] : cases) EXPECT_EQ(PageRanges(typed), ranges) << typed;
}

}  // namespace
}  // namespace platform
