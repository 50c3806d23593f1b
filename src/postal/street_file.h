#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/tab_table.h"
#include "platform/table_faults.h"
#include "postal/standard_address.h"

namespace postal {

/// Which house numbers of a range there are.
enum class Parity : std::uint8_t { kOdd, kEven, kBoth };

/// The plus-four of a range.
inline constexpr std::uint16_t kNoPlusFour = 10000;     ///< the file has none
inline constexpr std::uint16_t kBoxIsPlusFour = 10001;  ///< it is the last four digits of the box

struct NumberRange {
  std::uint32_t low = 0;
  std::uint32_t high = 0;
  std::uint16_t plus_four = kNoPlusFour;
  Parity parity = Parity::kBoth;

  bool Holds(std::uint32_t number) const {
    return number >= low && number <= high &&
           (parity == Parity::kBoth || (number % 2 == 1) == (parity == Parity::kOdd));
  }
};

/// A street, or the boxes or a route, in one zip. The texts are numbers of StreetFile::Text.
struct Street {
  std::uint32_t key = 0;       ///< StreetKey; of a route CommonKey of its number
  std::uint32_t text = 0;      ///< StreetText
  std::uint32_t name = 0;      ///< as it is written
  std::uint32_t name_key = 0;  ///< CommonKey of the name alone
  std::uint32_t first_range = 0;
  std::uint32_t range_count = 0;
  std::uint32_t pre = 0;
  std::uint32_t suffix = 0;
  std::uint32_t post = 0;
  DeliveryKind kind = DeliveryKind::kStreet;
};

struct City {
  std::string name;
  std::string key;  ///< CommonKey
  std::string state;
  std::vector<std::uint32_t> zips;  ///< places in Zips(), preferred and accepted
};

struct Zip {
  std::uint32_t number = 0;
  std::uint32_t city = 0;               ///< the preferred one
  std::vector<std::uint32_t> accepted;  ///< other cities that are accepted
  std::uint16_t county = 0;             ///< place in Counties()
  std::uint32_t first_street = 0;
  std::uint32_t street_count = 0;
};

struct County {
  std::string code;
  std::string name;
};

/// What the post delivers to: two tables of a folder, cities.tsv and ranges.tsv (docs/operations.md), held
/// compactly. Does not change once it is read.
class StreetFile {
 public:
  /// Throws Failure kNotFound where a table is missing, kDamaged with all faults that both have.
  static StreetFile Read(const std::filesystem::path& folder);

  static std::filesystem::path CitiesFile(const std::filesystem::path& folder) {
    return folder / "cities.tsv";
  }
  static std::filesystem::path RangesFile(const std::filesystem::path& folder) {
    return folder / "ranges.tsv";
  }

  const std::vector<Zip>& Zips() const { return zips_; }
  const std::vector<City>& Cities() const { return cities_; }
  const std::vector<County>& Counties() const { return counties_; }
  bool CoversState(const std::string& state) const { return states_.contains(state); }
  bool IsEmpty() const { return zips_.empty(); }

  /// Places in Zips(); nothing where there is no such zip.
  const Zip* FindZip(std::string_view digits) const;
  const City* FindCity(std::string_view state, std::string_view key) const;
  /// In the order of their kinds and keys. Two streets may have one key (SAINT JOHN ST and ST JOHN ST), but
  /// not one text.
  std::span<const Street> StreetsOf(const Zip& zip) const {
    return std::span(streets_).subspan(zip.first_street, zip.street_count);
  }
  std::span<const NumberRange> RangesOf(const Street& street) const {
    return std::span(ranges_).subspan(street.first_range, street.range_count);
  }
  const std::string& Text(std::uint32_t number) const { return texts_[number]; }
  StreetName NameOf(const Street& street) const;

  std::size_t RangeCount() const { return ranges_.size(); }
  /// What is held, in bytes.
  std::size_t MemoryUse() const;

 private:
  struct Row;

  void TakeCities(const platform::TabTable& table, platform::TableFaults& faults);
  void TakeRanges(const platform::TabTable& table, platform::TableFaults& faults);
  std::uint32_t TakeCity(const std::string& name, const std::string& state);
  std::uint32_t TakeText(const std::string& text);
  Row ReadRow(const platform::TabTable& table, std::size_t row, platform::TableFaults& faults);
  Street ReadStreet(const platform::TabTable& table, std::size_t row, DeliveryKind kind,
                    platform::TableFaults& faults);
  void Arrange(std::vector<Row> rows);

  std::vector<std::string> texts_;
  std::vector<Zip> zips_;  // by number
  std::vector<City> cities_;
  std::map<std::pair<std::string, std::string>, std::uint32_t> city_places_;  // by state and key
  std::vector<County> counties_;
  std::vector<Street> streets_;  // by zip and key
  std::vector<NumberRange> ranges_;
  std::set<std::string> states_;

  // While it is read.
  std::unordered_map<std::string, std::uint32_t> text_numbers_;
  std::array<std::string, 4> last_cells_;
  Street last_street_ = {.kind = DeliveryKind::kNone};
};

}  // namespace postal
