#include "postal/address_matching.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>
#include <ranges>
#include <utility>
#include <vector>

#include "postal/spelling.h"

namespace postal {
namespace {

/// What is further away is another address.
constexpr int kFarthest = 3;
constexpr int kOtherZip = 3;
constexpr int kOtherCity = 3;
constexpr int kOtherState = 2;
constexpr int kOtherNumber = 2;
constexpr int kTooFar = kFarthest + 1;

/// Where a street is looked for.
struct Place {
  const Zip* zip;
  int distance;
};

std::string FiveDigits(std::uint32_t number) {
  std::array<char, 16> digits = {};
  std::snprintf(digits.data(), digits.size(), "%05u", number);
  return digits.data();
}

int NameDistance(std::string_view entered, std::string_view name, int limit) {
  if (entered == name) return 0;
  // Another number is another street, and a word of three letters has no two wrong ones.
  const auto is_digit = [](char character) { return character >= '0' && character <= '9'; };
  if (std::ranges::any_of(entered, is_digit) || std::ranges::any_of(name, is_digit)) return kTooFar;
  const auto longest = static_cast<int>(std::min(entered.size(), name.size()) / 3);
  const auto allowed = std::min(limit, longest);
  const auto distance = allowed < 1 ? kTooFar : SpellingDistance(entered, name, allowed);
  return distance > allowed ? kTooFar : distance;
}

/// Finds the places where an address may lie, by its zip and by its city.
class PlaceSearch {
 public:
  PlaceSearch(const StreetFile& file, const StandardAddress& address)
      : file_(file), address_(address), city_key_(CommonKey(address.city)) {}

  /// The zip as it was entered, where the city goes with it.
  std::optional<Place> Entered() const {
    const auto* zip = file_.FindZip(address_.zip);
    if (zip == nullptr || StateDistance(*zip) > 0) return std::nullopt;
    const auto distance = CityDistance(*zip);
    return distance > 1 ? std::nullopt : std::optional<Place>({zip, distance});
  }

  std::vector<Place> All() {
    if (const auto* zip = file_.FindZip(address_.zip)) Add(*zip);
    if (!address_.state.empty() && !file_.CoversState(address_.state)) return std::move(places_);
    auto digits = address_.zip;
    for (std::size_t at = 1; at < digits.size(); ++at) {
      std::swap(digits[at - 1], digits[at]);
      if (const auto* zip = file_.FindZip(digits)) Add(*zip);
      std::swap(digits[at - 1], digits[at]);
    }
    bool is_known = false;
    for (const auto& city : file_.Cities()) {
      if (city.key == city_key_) is_known = true;
    }
    for (const auto& city : file_.Cities()) {
      if (is_known ? city.key == city_key_ : NameDistance(city_key_, city.key, 2) < kTooFar) {
        for (const auto place : city.zips) Add(file_.Zips()[place]);
      }
    }
    return std::move(places_);
  }

 private:
  void Add(const Zip& zip) {
    if (std::ranges::find(places_, &zip, &Place::zip) != places_.end()) return;
    const auto distance = ZipDistance(zip) + StateDistance(zip);
    if (distance > kFarthest) return;
    const auto with_city = distance + CityDistance(zip);
    if (with_city <= kFarthest) places_.push_back({&zip, with_city});
  }

  int ZipDistance(const Zip& zip) const {
    if (address_.zip.empty()) return 1;
    const auto digits = FiveDigits(zip.number);
    if (digits == address_.zip) return 0;
    if (SpellingDistance(digits, address_.zip, 1) > 1) return kOtherZip;
    auto sorted = address_.zip;
    auto other = digits;
    std::ranges::sort(sorted);
    std::ranges::sort(other);
    return sorted == other ? 1 : 2;
  }

  int StateDistance(const Zip& zip) const {
    const auto& state = file_.Cities()[zip.city].state;
    if (address_.state == state) return 0;
    return address_.state.empty() ? 1 : kOtherState;
  }

  int CityDistance(const Zip& zip) const {
    const auto& preferred = file_.Cities()[zip.city].key;
    if (city_key_ == preferred) return 0;
    if (city_key_.empty()) return 1;
    auto nearest = NameDistance(city_key_, preferred, 2);
    for (const auto place : zip.accepted) {
      const auto& name = file_.Cities()[place].key;
      nearest = std::min(nearest, city_key_ == name ? 1 : NameDistance(city_key_, name, 2));
    }
    return std::min(nearest, kOtherCity);
  }

  const StreetFile& file_;
  const StandardAddress& address_;
  const std::string city_key_;
  std::vector<Place> places_;
};

/// A street as it was entered, in the words that are compared.
struct Reading {
  std::string pre;
  std::string name;
  std::string name_key;
  std::string suffix;
  std::string post;
  int distance;  ///< what it takes to read it so
};

std::vector<Reading> ReadingsOf(const StreetName& street) {
  std::vector<Reading> readings;
  for (const auto& reading : StreetReadings(street))
    readings.push_back({reading.pre, reading.name, CommonKey(reading.name), reading.suffix, reading.post, 0});
  // The last word may be a suffix that is misspelled beyond recognition.
  if (street.suffix.empty()) {
    const auto blank = street.name.rfind(' ');
    if (blank != std::string::npos)
      readings.push_back({street.pre, street.name.substr(0, blank), CommonKey(street.name.substr(0, blank)),
                          "?", street.post, 1});
  }
  return readings;
}

int PartDistance(const std::string& entered, const std::string& part) {
  return entered == part ? 0 : 1;
}

int DirectionalDistance(const Reading& entered, const StreetName& street) {
  if (entered.pre == street.post && entered.post == street.pre && entered.pre != entered.post) return 1;
  return PartDistance(entered.pre, street.pre) + PartDistance(entered.post, street.post);
}

class MatchSearch {
 public:
  MatchSearch(const StreetFile& file, const StandardAddress& address)
      : file_(file),
        address_(address),
        line_(address.delivery),
        key_(line_.kind == DeliveryKind::kStreet ? StreetKey(line_.street) : CommonKey(line_.street.name)) {}

  std::optional<Match> Run() {
    PlaceSearch places(file_, address_);
    if (const auto entered = places.Entered()) {
      LookUp(*entered);
      if (best_) return is_tie_ ? std::nullopt : best_;
    }
    if (line_.kind == DeliveryKind::kStreet) readings_ = ReadingsOf(line_.street);
    for (const auto& place : places.All()) Look(place);
    return is_tie_ || !best_ || best_->distance > kFarthest ? std::nullopt : best_;
  }

 private:
  /// Under the very key: most addresses are right. Of several streets that have it, the one that is spelled
  /// as it was entered is meant.
  void LookUp(const Place& place) {
    const auto key_of = [&](const Street& street) {
      return std::pair(street.kind, std::string_view(file_.Text(street.key)));
    };
    const auto streets = std::ranges::equal_range(file_.StreetsOf(*place.zip),
                                                  std::pair(line_.kind, std::string_view(key_)), {}, key_of);
    if (streets.size() == 1) return static_cast<void>(OfferExact(place, streets.front(), place.distance));
    auto nearest = std::numeric_limits<std::size_t>::max();
    for (const auto& street : streets) nearest = std::min(nearest, WordsThatDiffer(street));
    for (const auto& street : streets)
      OfferExact(place, street, place.distance + (WordsThatDiffer(street) > nearest ? 1 : 0));
  }

  std::size_t WordsThatDiffer(const Street& street) const {
    auto entered = std::views::split(line_.street_words, ' ');
    std::size_t count = 0;
    auto word = entered.begin();
    for (const auto& other : std::views::split(file_.Text(street.text), ' ')) {
      if (word == entered.end() || !std::ranges::equal(*word, other)) ++count;
      if (word != entered.end()) ++word;
    }
    return count;
  }

  void Look(const Place& place) {
    for (const auto& street : file_.StreetsOf(*place.zip)) {
      if (street.kind != line_.kind) continue;
      const auto distance = place.distance + StreetDistance(street, kFarthest - place.distance);
      if (distance > kFarthest) continue;
      if (OfferExact(place, street, distance) || line_.kind != DeliveryKind::kStreet) continue;
      if (distance + kOtherNumber <= kFarthest) OfferNeighbour(place, street, distance + kOtherNumber);
    }
  }

  int StreetDistance(const Street& street, int limit) const {
    if (file_.Text(street.key) == key_) return 0;
    if (line_.kind != DeliveryKind::kStreet) return kTooFar;
    int nearest = kTooFar;
    for (const auto& reading : readings_) {
      // "VALELY" is near "VALLEY", not near "VLY".
      const auto name =
          reading.distance + std::min(NameDistance(reading.name, file_.Text(street.name), limit),
                                      NameDistance(reading.name_key, file_.Text(street.name_key), limit));
      if (name > limit || name >= nearest) continue;
      const auto parts = file_.NameOf(street);
      nearest = std::min(
          nearest, name + PartDistance(reading.suffix, parts.suffix) + DirectionalDistance(reading, parts));
    }
    // What differs has another key: it is never nothing.
    return std::max(nearest, 1);
  }

  bool OfferExact(const Place& place, const Street& street, int distance) {
    const NumberRange* narrowest = nullptr;
    for (const auto& range : file_.RangesOf(street)) {
      if (!range.Holds(line_.number) && line_.kind != DeliveryKind::kGeneralDelivery) continue;
      if (narrowest == nullptr || range.high - range.low < narrowest->high - narrowest->low)
        narrowest = &range;
    }
    if (narrowest == nullptr) return false;
    Offer({place.zip, &street, narrowest, line_.number, distance});
    return true;
  }

  /// The number beside the one that was entered, on the other side of the street, where there is one only.
  void OfferNeighbour(const Place& place, const Street& street, int distance) {
    const NumberRange* below = nullptr;
    const NumberRange* above = nullptr;
    for (const auto& range : file_.RangesOf(street)) {
      if (line_.number > 0 && range.Holds(line_.number - 1)) below = &range;
      if (range.Holds(line_.number + 1)) above = &range;
    }
    if ((below == nullptr) == (above == nullptr)) return;
    if (below != nullptr) return Offer({place.zip, &street, below, line_.number - 1, distance});
    Offer({place.zip, &street, above, line_.number + 1, distance});
  }

  void Offer(const Match& match) {
    if (best_ && match.distance > best_->distance) return;
    is_tie_ = best_ && match.distance == best_->distance;
    best_ = match;
  }

  const StreetFile& file_;
  const StandardAddress& address_;
  const DeliveryLine& line_;
  const std::string key_;
  std::vector<Reading> readings_;
  std::optional<Match> best_;
  bool is_tie_ = false;
};

std::string PlusFour(const NumberRange& range, std::uint32_t number) {
  if (range.plus_four == kNoPlusFour) return "";
  return FiveDigits(range.plus_four == kBoxIsPlusFour ? number % 10000 : range.plus_four).substr(1);
}

/// Whether an address that lies where it was looked for is what was entered.
bool IsAsEntered(const StandardAddress& address, const Match& match, const std::string& plus_four) {
  return match.distance == 0 && !address.lines_exchanged && address.is_zip_whole &&
         (address.plus_four.empty() || plus_four.empty() || address.plus_four == plus_four);
}

}  // namespace

std::optional<Match> FindMatch(const StreetFile& file, const StandardAddress& address) {
  if (address.delivery.kind == DeliveryKind::kNone || address.is_ambiguous) return std::nullopt;
  return MatchSearch(file, address).Run();
}

platform::AddressVerdict Judge(const StreetFile& file, const platform::PostalAddress& entered) {
  using Kind = platform::AddressVerdict::Kind;
  const auto address = ReadAddress(entered);
  const auto match = FindMatch(file, address);
  if (!match) return {};
  auto delivery = address.delivery;
  delivery.number = match->number;
  delivery.street = file.NameOf(*match->street);
  const auto plus_four = PlusFour(*match->range, match->number);
  const auto& city = file.Cities()[match->zip->city];
  const auto& county = file.Counties()[match->zip->county];
  platform::PostalAddress found = {.city = city.name,
                                   .state = city.state,
                                   .zip = FiveDigits(match->zip->number),
                                   .county_code = county.code,
                                   .county = county.name};
  WriteDelivery(delivery, address.other, found);
  const bool is_as_entered = IsAsEntered(address, *match, plus_four);
  found.zip += plus_four.empty() && is_as_entered ? address.plus_four : plus_four;
  return {is_as_entered ? Kind::kPassed : Kind::kSuggested, found};
}

}  // namespace postal
