#include "workspace/letters/proposed_file_name.h"

#include <gmock/gmock.h>

namespace workspace {
namespace {

using namespace std::chrono_literals;

constexpr platform::Date kToday = 2026y / 7 / 14;

std::string Proposed(const std::string& letter_name, const std::string& customer) {
  return ProposedFileName(
      {.letter_name = letter_name, .context = "<C><CUSTOMER_NAME>" + customer + "</CUSTOMER_NAME></C>"},
      kToday);
}

TEST(AProposedFileName, SaysLetterCustomerAndDayInCharactersOfAnyFileSystem) {
  EXPECT_EQ(Proposed("Refund Claim Denial", "Merriweather, Hattie"),
            "Refund Claim Denial - Merriweather, Hattie - 2026-07-14");
  EXPECT_EQ(Proposed("A/B\\C:*?\"<>|", " O'Neil\nSons "), "A-B-C------- - O'Neil Sons - 2026-07-14");
  EXPECT_EQ(Proposed("Letter", "&lt;x&gt;\u00A0"), "Letter - -x- - 2026-07-14");
  EXPECT_EQ(Proposed("Letter", ""), "Letter - 2026-07-14");
  EXPECT_EQ(ProposedFileName({.letter_name = "Letter", .context = "<broken"}, kToday), "Letter - 2026-07-14");
  EXPECT_EQ(Proposed(" ", "Ann"), "") << "the print component knows the template's name";
}

TEST(AProposedFileName, IsShortEnoughForAnyFileSystemAndKeepsItsDay) {
  std::string customer;
  for (int i = 0; i < 200; ++i) customer += "\u00E9";
  const auto name = Proposed("Letter", customer);
  EXPECT_LE(name.size(), 200u);
  EXPECT_THAT(name, testing::EndsWith("\u00E9 - 2026-07-14"));
  EXPECT_THAT(name, testing::StartsWith("Letter - \u00E9"));
}

}  // namespace
}  // namespace workspace
