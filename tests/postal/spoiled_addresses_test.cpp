#include "tests/postal/spoiled_addresses.h"

#include <iomanip>
#include <iostream>

#include "postal/standard_address.h"
#include "postal/street_file_verifier.h"
#include "server/setup/demo_streets.h"
#include "tests/postal/street_world.h"

namespace postal {
namespace {

using Kind = platform::AddressVerdict::Kind;

struct Outcome {
  int right = 0;
  int wrong = 0;
  int none = 0;
  int passed = 0;  ///< it has become another address, or an abbreviation that the post takes
};

class SpoiledAddressesTest : public StreetWorld {
 protected:
  std::filesystem::path MadeStreets() const {
    server::CreateDemoStreetFile(ZEMLO_SOURCE_DIR "/data", Folder() / "demo");
    return Folder() / "demo";
  }

  const std::filesystem::path streets_ = MadeStreets();
  AddressSpoiler spoiler_{streets_, 20'000'101};
  StreetFileVerifier verifier_{streets_};
};

TEST_F(SpoiledAddressesTest, WhatIsSuggestedIsTheAddressTheyWereMadeFrom) {
  constexpr int kOfEach = 250;
  Outcome all;
  std::cout << "fault                     right wrong  none  passed\n";
  for (std::size_t kind = 0; kind < kSpoilings.size(); ++kind) {
    Outcome outcome;
    for (int count = 0; count < kOfEach; ++count) {
      const auto address = spoiler_.Draw(static_cast<Spoiling>(kind));
      const auto verdict = verifier_.Verify(address.spoiled);
      if (verdict.kind == Kind::kUnknown) {
        ++outcome.none;
      } else if (verdict.kind == Kind::kPassed) {
        ++outcome.passed;
      } else if (auto found = verdict.address; found.line1 == address.right.line1 &&
                                               found.city == address.right.city &&
                                               found.zip.substr(0, 5) == address.right.zip) {
        ++outcome.right;
      } else {
        ++outcome.wrong;
      }
    }
    std::cout << std::left << std::setw(26) << kSpoilings[kind] << std::right << std::setw(5) << outcome.right
              << std::setw(6) << outcome.wrong << std::setw(6) << outcome.none << std::setw(6)
              << outcome.passed << '\n';
    EXPECT_GE(outcome.right * 100, (outcome.right + outcome.wrong) * 95) << kSpoilings[kind];
    all.right += outcome.right;
    all.wrong += outcome.wrong;
    all.passed += outcome.passed;
  }
  EXPECT_GE(all.right * 100, (all.right + all.wrong) * 95);
  // And most get a suggestion at all.
  EXPECT_GE(all.right, kOfEach * 8 * 3 / 4);
}

TEST_F(SpoiledAddressesTest, NothingThatIsNowhereNearPasses) {
  int suggested = 0;
  for (int count = 0; count < 2000; ++count) {
    const auto address = spoiler_.DrawFarAway();
    const auto verdict = verifier_.Verify(address);
    EXPECT_NE(verdict.kind, Kind::kPassed) << address.line1;
    suggested += verdict.kind == Kind::kSuggested ? 1 : 0;
  }
  EXPECT_EQ(suggested, 0);
}

}  // namespace
}  // namespace postal
