#include "postal/street_file.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <tuple>

#include "platform/failure.h"
#include "platform/file_access.h"
#include "platform/text.h"
#include "postal/address_words.h"

namespace postal {
namespace {

using platform::Quoted;
using platform::TableFaults;
using platform::TabTable;

constexpr auto kCityColumns =
    std::to_array<std::string_view>({"ZIP_CD", "CITY_NM", "CITY_USE", "ST", "CNTY_CD", "CNTY_NM"});
constexpr auto kRangeColumns =
    std::to_array<std::string_view>({"ZIP_CD", "KIND", "PRE_DIR", "STREET_NM", "SUFFIX", "POST_DIR",
                                     "LOW_NBR", "HIGH_NBR", "PARITY", "PLUS4"});

struct KindLetter {
  std::string_view letter;
  DeliveryKind kind;
};
constexpr auto kKinds = std::to_array<KindLetter>({
    {"S", DeliveryKind::kStreet},
    {"P", DeliveryKind::kBox},
    {"R", DeliveryKind::kRuralRoute},
    {"H", DeliveryKind::kHighwayRoute},
    {"G", DeliveryKind::kGeneralDelivery},
});

bool AreDigits(std::string_view text, std::size_t least, std::size_t most) {
  return text.size() >= least && text.size() <= most &&
         text.find_first_not_of("0123456789") == std::string_view::npos;
}

template <typename Number>
Number NumberOf(std::string_view digits) {
  Number number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

bool HasName(DeliveryKind kind) {
  return kind == DeliveryKind::kStreet || kind == DeliveryKind::kRuralRoute ||
         kind == DeliveryKind::kHighwayRoute;
}

/// Adds the fault and answers false where `is_right` does not hold.
bool Require(bool is_right, const TabTable& table, std::size_t row, std::string_view column,
             std::string_view what, TableFaults& faults) {
  if (!is_right)
    faults.Add(table.Place(row, column), Quoted(table.Text(row, column)) + " " + std::string(what));
  return is_right;
}

}  // namespace

struct StreetFile::Row {
  std::uint32_t zip = 0;  // its place
  Street street = {};
  NumberRange range = {};
};

StreetFile StreetFile::Read(const std::filesystem::path& folder) {
  for (const auto& file : {CitiesFile(folder), RangesFile(folder)}) {
    if (platform::IsThere(file)) continue;
    throw platform::Failure(platform::Failure::Kind::kNotFound,
                            "The street file \"" + file.string() +
                                "\" is missing. Put the office's own there, or call \"zemlo-letters init\".");
  }
  TableFaults faults;
  StreetFile file;
  file.TakeText("");
  file.TakeCities(TabTable::Read(CitiesFile(folder), kCityColumns, faults), faults);
  file.TakeRanges(TabTable::Read(RangesFile(folder), kRangeColumns, faults), faults);
  faults.OrFail("No address is verified until the street file is corrected.");
  file.text_numbers_.clear();
  return file;
}

void StreetFile::TakeCities(const TabTable& table, TableFaults& faults) {
  std::map<std::uint32_t, std::size_t> preferred;  // by zip: the row
  std::map<std::string, std::uint16_t> county_places;
  struct Accepted {
    std::size_t row;
    std::uint32_t zip;
  };
  std::vector<Accepted> accepted;
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    const auto& zip = table.Text(row, "ZIP_CD");
    const auto& use = table.Text(row, "CITY_USE");
    const auto state = platform::UpperCase(table.Text(row, "ST"));
    const auto name = StandardWords(table.Text(row, "CITY_NM"));
    const auto before = faults.Count();
    Require(AreDigits(zip, 5, 5), table, row, "ZIP_CD", "is no zip code. Write five digits.", faults);
    Require(!name.empty(), table, row, "CITY_NM", "is no name of a city. Write one.", faults);
    Require(use == "P" || use == "A", table, row, "CITY_USE",
            "is unknown. Write P for the name that the post prefers, A for another one it accepts.", faults);
    Require(state.size() == 2, table, row, "ST", "is no state. Write its two letters.", faults);
    if (faults.Count() != before) continue;
    const auto number = NumberOf<std::uint32_t>(zip);
    if (use == "A") {
      accepted.push_back({row, number});
      continue;
    }
    const auto [first, is_new] = preferred.try_emplace(number, row);
    if (!Require(is_new, table, row, "CITY_USE",
                 "comes twice for zip " + zip + ", first in line " +
                     std::to_string(table.Line(first->second)) +
                     ". Write A for the names that the post does not prefer.",
                 faults)) {
      continue;
    }
    states_.insert(state);
    const auto& county = table.Text(row, "CNTY_CD");
    const auto [place, is_new_county] = county_places.try_emplace(
        county + "\t" + table.Text(row, "CNTY_NM"), static_cast<std::uint16_t>(counties_.size()));
    if (is_new_county) counties_.push_back({county, table.Text(row, "CNTY_NM")});
    zips_.push_back(
        {.number = number, .city = TakeCity(name, state), .accepted = {}, .county = place->second});
  }
  std::ranges::sort(zips_, {}, &Zip::number);
  for (std::uint32_t place = 0; place < zips_.size(); ++place)
    cities_[zips_[place].city].zips.push_back(place);
  for (const auto& [row, number] : accepted) {
    const auto zip = std::ranges::lower_bound(zips_, number, {}, &Zip::number);
    if (!Require(zip != zips_.end() && zip->number == number, table, row, "ZIP_CD",
                 "has no line with CITY_USE P. Name the city that the post prefers for it.", faults)) {
      continue;
    }
    const auto city = TakeCity(StandardWords(table.Text(row, "CITY_NM")), cities_[zip->city].state);
    if (city == zip->city || std::ranges::find(zip->accepted, city) != zip->accepted.end()) continue;
    zip->accepted.push_back(city);
    cities_[city].zips.push_back(static_cast<std::uint32_t>(zip - zips_.begin()));
  }
}

std::uint32_t StreetFile::TakeCity(const std::string& name, const std::string& state) {
  const auto key = CommonKey(name);
  const auto [place, is_new] =
      city_places_.try_emplace({state, key}, static_cast<std::uint32_t>(cities_.size()));
  if (is_new) cities_.push_back({name, key, state, {}});
  return place->second;
}

std::uint32_t StreetFile::TakeText(const std::string& text) {
  const auto [place, is_new] = text_numbers_.try_emplace(text, static_cast<std::uint32_t>(texts_.size()));
  if (is_new) texts_.push_back(text);
  return place->second;
}

void StreetFile::TakeRanges(const TabTable& table, TableFaults& faults) {
  std::vector<Row> rows;
  rows.reserve(table.RowCount());
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    const auto before = faults.Count();
    auto taken = ReadRow(table, row, faults);
    if (faults.Count() == before) rows.push_back(taken);
  }
  if (faults.IsEmpty()) Arrange(std::move(rows));
}

/// The rows of a street follow one another: its words are looked at once.
Street StreetFile::ReadStreet(const TabTable& table, std::size_t row, DeliveryKind kind,
                              TableFaults& faults) {
  const std::array<std::string, 4> cells = {table.Text(row, "PRE_DIR"), table.Text(row, "STREET_NM"),
                                            table.Text(row, "SUFFIX"), table.Text(row, "POST_DIR")};
  if (cells == last_cells_ && kind == last_street_.kind) return last_street_;
  const auto before = faults.Count();
  Street street;
  street.kind = kind;
  StreetName name = {"", StandardWords(table.Text(row, "STREET_NM")), "", ""};
  Require(name.name.empty() != HasName(kind), table, row, "STREET_NM",
          HasName(kind) ? "is no name. Write the street's, or the route's number."
                        : "belongs to no such line. Leave it empty.",
          faults);
  const auto part = [&](std::string_view column, std::string_view (*read)(std::string_view),
                        std::string_view what) {
    const auto& text = table.Text(row, column);
    const auto standard = read(platform::UpperCase(text));
    Require(text.empty() || !standard.empty(), table, row, column, what, faults);
    return std::string(standard);
  };
  name.pre = part("PRE_DIR", Directional, "is no directional. Write N, NE and so on, or nothing.");
  name.suffix = part("SUFFIX", Suffix, "is no suffix of the post's. Write ST, AVE and so on, or nothing.");
  name.post = part("POST_DIR", Directional, "is no directional. Write N, NE and so on, or nothing.");
  const auto text = StreetText(name);
  street.text = TakeText(text);
  // A line of the file is read as the same line of an address is, whatever column a word stands in.
  street.key = TakeText(kind == DeliveryKind::kStreet ? StreetKey(ReadStreetName(text)) : CommonKey(text));
  street.name = TakeText(name.name);
  street.name_key = TakeText(CommonKey(name.name));
  street.pre = TakeText(name.pre);
  street.suffix = TakeText(name.suffix);
  street.post = TakeText(name.post);
  if (faults.Count() == before) {
    last_cells_ = cells;
    last_street_ = street;
  }
  return street;
}

StreetFile::Row StreetFile::ReadRow(const TabTable& table, std::size_t row, TableFaults& faults) {
  const auto& zip = table.Text(row, "ZIP_CD");
  const auto& kind = table.Text(row, "KIND");
  const auto& low = table.Text(row, "LOW_NBR");
  const auto& high = table.Text(row, "HIGH_NBR");
  const auto& parity = table.Text(row, "PARITY");
  const auto& plus_four = table.Text(row, "PLUS4");
  Row taken;
  const auto* const found = FindZip(zip);
  Require(found != nullptr, table, row, "ZIP_CD", "is not in cities.tsv. Enter it there, or correct it here.",
          faults);
  if (found != nullptr) taken.zip = static_cast<std::uint32_t>(found - zips_.data());
  const auto letter = std::ranges::find(kKinds, kind, &KindLetter::letter);
  if (!Require(letter != kKinds.end(), table, row, "KIND",
               "is unknown. Write S (street), P (post office boxes), R (rural route), H (highway contract "
               "route) or "
               "G (general delivery).",
               faults)) {
    return taken;
  }
  taken.street = ReadStreet(table, row, letter->kind, faults);
  const bool has_numbers = letter->kind != DeliveryKind::kGeneralDelivery;
  const bool are_numbers =
      !has_numbers ||
      (Require(AreDigits(low, 1, 8), table, row, "LOW_NBR", "is no number. Write digits.", faults) &&
       Require(AreDigits(high, 1, 8), table, row, "HIGH_NBR", "is no number. Write digits.", faults));
  Require(!has_numbers || parity == "O" || parity == "E" || parity == "B", table, row, "PARITY",
          "is unknown. Write O (odd numbers), E (even numbers) or B (both).", faults);
  taken.range.parity = parity == "O" ? Parity::kOdd : parity == "E" ? Parity::kEven : Parity::kBoth;
  if (are_numbers && has_numbers) {
    taken.range.low = NumberOf<std::uint32_t>(low);
    taken.range.high = NumberOf<std::uint32_t>(high);
    Require(taken.range.low <= taken.range.high, table, row, "HIGH_NBR",
            "lies below LOW_NBR. Exchange the two.", faults);
    Require(taken.range.Holds(taken.range.low) || taken.range.low > taken.range.high, table, row, "LOW_NBR",
            "is not of this PARITY. Correct one of them.", faults);
  }
  Require(plus_four.empty() || AreDigits(plus_four, 4, 4) ||
              (plus_four == "BOX" && letter->kind != DeliveryKind::kStreet),
          table, row, "PLUS4",
          "is no plus-four. Write four digits, BOX for boxes that have their own, or nothing.", faults);
  taken.range.plus_four = plus_four.empty()    ? kNoPlusFour
                          : plus_four == "BOX" ? kBoxIsPlusFour
                                               : NumberOf<std::uint16_t>(plus_four);
  return taken;
}

void StreetFile::Arrange(std::vector<Row> rows) {
  const auto street_of = [this](const Row& row) {
    const auto& street = row.street;
    return std::tuple(row.zip, street.kind, std::string_view(texts_[street.key]), street.text);
  };
  std::ranges::sort(rows, [&](const Row& left, const Row& right) {
    const auto left_street = street_of(left);
    const auto right_street = street_of(right);
    if (left_street != right_street) return left_street < right_street;
    return std::tuple(left.range.low, left.range.high) < std::tuple(right.range.low, right.range.high);
  });
  ranges_.reserve(rows.size());
  for (std::size_t place = 0; place < rows.size(); ++place) {
    const auto& row = rows[place];
    if (place == 0 || street_of(rows[place - 1]) != street_of(row)) {
      auto& zip = zips_[row.zip];
      if (zip.street_count++ == 0) zip.first_street = static_cast<std::uint32_t>(streets_.size());
      streets_.push_back(row.street);
      streets_.back().first_range = static_cast<std::uint32_t>(ranges_.size());
    }
    ++streets_.back().range_count;
    ranges_.push_back(row.range);
  }
  streets_.shrink_to_fit();
}

const Zip* StreetFile::FindZip(std::string_view digits) const {
  if (!AreDigits(digits, 5, 5)) return nullptr;
  const auto number = NumberOf<std::uint32_t>(digits);
  const auto found = std::ranges::lower_bound(zips_, number, {}, &Zip::number);
  return found != zips_.end() && found->number == number ? &*found : nullptr;
}

const City* StreetFile::FindCity(std::string_view state, std::string_view key) const {
  const auto found = city_places_.find({std::string(state), std::string(key)});
  return found == city_places_.end() ? nullptr : &cities_[found->second];
}

StreetName StreetFile::NameOf(const Street& street) const {
  return {Text(street.pre), Text(street.name), Text(street.suffix), Text(street.post)};
}

std::size_t StreetFile::MemoryUse() const {
  const auto heap = [](const std::string& text) { return text.capacity() > 15 ? text.capacity() + 1 : 0; };
  std::size_t bytes = texts_.capacity() * sizeof(std::string) + zips_.capacity() * sizeof(Zip) +
                      cities_.capacity() * sizeof(City) + streets_.capacity() * sizeof(Street) +
                      ranges_.capacity() * sizeof(NumberRange) + counties_.capacity() * sizeof(County);
  for (const auto& text : texts_) bytes += heap(text);
  for (const auto& zip : zips_) bytes += zip.accepted.capacity() * sizeof(std::uint32_t);
  for (const auto& city : cities_) {
    constexpr std::size_t kNode = 112;  // of the map: two texts, a number, the tree
    bytes += kNode + heap(city.name) + 2 * heap(city.key) + city.zips.capacity() * sizeof(std::uint32_t);
  }
  return bytes;
}

}  // namespace postal
