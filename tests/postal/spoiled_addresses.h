#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "platform/parties/address_verifier.h"

namespace postal {

/// What people do to an address.
enum class Spoiling : std::uint8_t {
  kMisspelledStreet,
  kMissingSuffix,
  kWrongSuffix,
  kMissingDirectional,
  kWrongDirectional,
  kTransposedZip,
  kOtherCityName,
  kNumberAcrossTheStreet,
};
inline constexpr std::array<std::string_view, 8> kSpoilings = {
    "misspelled street", "missing suffix", "wrong suffix",    "missing directional",
    "wrong directional", "transposed zip", "other city name", "number across the street"};

struct SpoiledAddress {
  platform::PostalAddress right;  ///< in capitals, as the file has it
  platform::PostalAddress spoiled;
};

/// Draws addresses of a street file and spoils them, and knows nothing of how they are verified: it reads the
/// tables by itself and types as people do. The same addresses for the same seed.
class AddressSpoiler {
 public:
  AddressSpoiler(const std::filesystem::path& street_folder, std::uint32_t seed);

  /// An address that can be spoiled so.
  SpoiledAddress Draw(Spoiling spoiling);
  /// An address that the file has nothing near to.
  platform::PostalAddress DrawFarAway();

 private:
  struct Row {
    std::string zip, pre, name, suffix, post;
    unsigned low, high;
    bool both_sides;
  };
  struct Names {
    std::string preferred, state;
    std::vector<std::string> accepted;
  };

  unsigned Below(std::size_t limit) { return static_cast<unsigned>(draw_() % limit); }
  std::string Misspelled(const std::string& name);
  std::optional<SpoiledAddress> Spoil(const Row& row, Spoiling spoiling);

  std::mt19937 draw_;
  std::vector<Row> rows_;
  std::vector<std::pair<std::string, Names>> zips_;  // by zip
};

}  // namespace postal
