#pragma once

#include <optional>

#include "platform/parties/address_verifier.h"
#include "postal/standard_address.h"
#include "postal/street_file.h"

namespace postal {

/// An address of the street file, and how far from the one that was looked for.
struct Match {
  const Zip* zip = nullptr;
  const Street* street = nullptr;
  const NumberRange* range = nullptr;
  std::uint32_t number = 0;
  /// 0 where nothing differs but the form; a letter, a suffix, a directional, a city's other name or two
  /// exchanged digits of a zip count 1 each.
  int distance = 0;
};

/// The nearest address, where it is near enough and no other one is as near.
std::optional<Match> FindMatch(const StreetFile& file, const StandardAddress& address);

/// What the street file says of an address.
platform::AddressVerdict Judge(const StreetFile& file, const platform::PostalAddress& address);

}  // namespace postal
