#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/parties/address_verifier.h"

/// Addresses by the published rules of postal addressing.
namespace postal {

/// A street as its parts: "N", "SAINT CLAIR", "AVE", "". Directionals and suffix as the post abbreviates
/// them.
struct StreetName {
  std::string pre = {};
  std::string name = {};
  std::string suffix = {};
  std::string post = {};
};

enum class DeliveryKind : std::uint8_t {
  kNone,  ///< not understood
  kStreet,
  kBox,           ///< "PO BOX 118"
  kRuralRoute,    ///< "RR 2 BOX 18"
  kHighwayRoute,  ///< "HC 68 BOX 23A"
  kGeneralDelivery,
};

/// The line that the carrier delivers by.
struct DeliveryLine {
  DeliveryKind kind = DeliveryKind::kNone;
  std::uint32_t number = 0;       ///< of the house or box
  std::string number_rest = {};   ///< what follows it: "A", " 1/2"
  StreetName street = {};         ///< of a route: its number as the name
  std::string street_words = {};  ///< the street in the words that were entered
  std::string unit = {};          ///< "APT 4"; "" for none
};

struct StandardAddress {
  DeliveryLine delivery = {};
  std::string other = {};        ///< what is neither delivery nor unit: "ATTN MAIL ROOM", "DOCK 3"
  bool lines_exchanged = false;  ///< the delivery line stood below the other one
  bool is_ambiguous = false;     ///< a second line that the carrier could deliver by, or a second unit
  std::string city = {};
  std::string state = {};
  std::string zip = {};  ///< the first five digits, or fewer
  std::string plus_four = {};
  bool is_zip_whole = true;  ///< nothing, five digits or nine
};

StandardAddress ReadAddress(const platform::PostalAddress& address);

/// Two lines of the delivery, "1200 N DEPOT ST" and "STE 4", into `address`. What is neither stands on line
/// 2, and the unit then behind the street.
void WriteDelivery(const DeliveryLine& delivery, const std::string& other, platform::PostalAddress& address);

/// `address` as the post writes it, whether there is such an address or not; the lines only in capitals where
/// they are not understood.
platform::PostalAddress Standardised(const platform::PostalAddress& address);

/// Whether the two are the same but for the form: capitals, punctuation, accents, blanks, abbreviations, the
/// place of a unit, the county, and a plus-four that `entered` has not.
bool IsSameButForForm(const platform::PostalAddress& entered, const platform::PostalAddress& found);

/// Whether the two are one place: the same but for the form, and for a plus-four.
bool IsSamePlace(const platform::PostalAddress& one, const platform::PostalAddress& other);

/// In capitals, without accents and punctuation, one blank between words.
std::string StandardWords(std::string_view text);
/// What every spelling of the same name has in common.
std::string CommonKey(std::string_view text);
/// What every spelling of the same street has in common. A name that is nothing but a directional, a suffix
/// or both keeps its words: N ST is not NORTH ST, and AVENUE E is not AVENUE EAST.
std::string StreetKey(const StreetName& street);
/// The parts of a street without house number, as ReadAddress reads them.
StreetName ReadStreetName(std::string_view text);
std::string StreetText(const StreetName& street);
/// The parts of a street without house number; more than one where a word may be part of the name as well,
/// the likeliest first.
std::vector<StreetName> StreetReadings(const StreetName& street);

}  // namespace postal
