#include "server/setup/demo_streets.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "platform/file_access.h"
#include "platform/tab_table.h"
#include "platform/whole_file.h"

namespace server {
namespace {

using platform::TabTable;

constexpr std::string_view kCityHeadings = "ZIP_CD\tCITY_NM\tCITY_USE\tST\tCNTY_CD\tCNTY_NM\n";
constexpr std::string_view kRangeHeadings =
    "ZIP_CD\tKIND\tPRE_DIR\tSTREET_NM\tSUFFIX\tPOST_DIR\tLOW_NBR\tHIGH_NBR\tPARITY\tPLUS4\n";
constexpr std::string_view kState = "KV";
constexpr std::size_t kSeatZips = 4;
constexpr int kHousesOfSeatZip = 2500;
constexpr int kHousesOfRange = 500;
constexpr int kFirstHouse = 11;
constexpr int kTownsOfCounty = 8;
constexpr int kStreetsOfTown = 14;
constexpr int kBlocksOfStreet = 3;
/// The last words of the lists' streets that are suffixes; another one is part of the name.
constexpr auto kSuffixes = std::to_array<std::string_view>({"St", "Rd",   "Ave", "Ln",   "Ct",  "Way",  "Dr",
                                                            "Sq", "Blvd", "Cir", "Row",  "Ter", "Pkwy", "Trl",
                                                            "Pl", "Loop", "Run", "Pike", "Cv",  "Xing"});

/// The FNV-1a hash: the same on every machine.
std::uint32_t Hash(std::string_view text) {
  std::uint32_t hash = 2166136261U;
  for (const char character : text) hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
  return hash;
}

std::string Digits(int number, std::size_t count) {
  const auto digits = std::to_string(number);
  return std::string(count - std::min(count, digits.size()), '0') + digits;
}

struct Range {
  std::string_view zip;
  char kind;
  std::string_view pre;
  std::string_view street;  // with its suffix
  std::string_view post;
  int low;
  int high;
  char parity;
  std::string_view plus_four;
};

void Write(const Range& range, std::string& table) {
  auto name = range.street;
  std::string_view suffix;
  const auto blank = name.rfind(' ');
  if (blank != std::string_view::npos &&
      std::ranges::find(kSuffixes, name.substr(blank + 1)) != kSuffixes.end()) {
    suffix = name.substr(blank + 1);
    name = name.substr(0, blank);
  }
  const auto cell = [&](std::string_view text) { (table += text) += '\t'; };
  cell(range.zip);
  cell(std::string_view(&range.kind, 1));
  cell(range.pre);
  cell(name);
  cell(suffix);
  cell(range.post);
  const bool has_numbers = range.kind != 'G';
  cell(has_numbers ? std::to_string(range.low) : "");
  cell(has_numbers ? std::to_string(range.high) : "");
  cell(has_numbers ? std::string_view(&range.parity, 1) : "");
  (table += range.plus_four) += '\n';
}

char ParityOf(int house) {
  return house % 2 == 1 ? 'O' : 'E';
}

}  // namespace

DemoStreets::DemoStreets(const std::filesystem::path& product_data) {
  const auto counties = TabTable::Read(product_data / "reference" / "counties.tsv");
  for (std::size_t row = 0; row < counties.RowCount(); ++row) {
    counties_.push_back({counties.Text(row, "CNTY_CD"), counties.Text(row, "CNTY_NM"),
                         counties.Text(row, "CNTY_SEAT_NM"), counties.Text(row, "ZIP_PRFX")});
  }
  ReadNames(product_data / "server" / "demo_names.tsv");
  for (auto& street : names_["STREET"]) names_["SEAT_STREET"].push_back(std::move(street));
  names_["STREET"].clear();
  ReadNames(product_data / "server" / "demo_places.tsv");
  for (auto& county : counties_) county.seat_zips.resize(kSeatZips);
  ReadShown(product_data);
  FillSeatZips();
  MakeTowns();
}

void DemoStreets::ReadNames(const std::filesystem::path& file) {
  const auto table = TabTable::Read(file);
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    const auto& kind = table.Text(row, "KIND");
    const auto& name = table.Text(row, "NAME");
    if (kind == "TOWN_LAST_WORD")
      names_["TOWN_LAST"].push_back(" " + name);
    else
      names_[kind].push_back(name);
  }
}

void DemoStreets::ReadShown(const std::filesystem::path& product_data) {
  const auto table = TabTable::Read(product_data / "server" / "demo_customers.tsv");
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    for (const std::string prefix : {"MAIL_", "RES_"}) {
      const auto text = [&](const char* column) { return table.Text(row, prefix + column); };
      if (text("VRFY_CD") != "F" && text("ST") == kState)
        TakeShown(text("ADDR_1"), text("CITY"), text("ZIP_CD"));
    }
  }
  const auto office = TabTable::Read(product_data / "server" / "office.tsv");
  for (std::size_t row = 0; row < office.RowCount(); ++row)
    TakeShown(office.Text(row, "OFFICE_ADDR_1"), office.Text(row, "OFFICE_CITY"),
              office.Text(row, "OFFICE_ZIP_CD"));
}

void DemoStreets::TakeShown(const std::string& line, const std::string& city,
                            const std::string& nine_digits) {
  const auto zip = nine_digits.substr(0, 5);
  const auto county = std::ranges::find(counties_, zip.substr(0, 3), &County::zip_prefix);
  if (line.empty() || county == counties_.end()) return;
  const auto blank = line.find(' ');
  const bool is_house =
      blank != std::string::npos && line.find_first_not_of("0123456789") == blank && blank <= 5;
  const auto house = is_house ? std::stoi(line.substr(0, blank)) : 0;
  if (is_house) {
    const ShownHouse shown = {zip, house, line.substr(blank + 1),
                              nine_digits.size() == 9 ? nine_digits.substr(5) : ""};
    const auto is_same = [&](const ShownHouse& other) {
      return other.zip == shown.zip && other.house == shown.house && other.street == shown.street;
    };
    if (std::ranges::none_of(shown_, is_same)) shown_.push_back(shown);
  }
  if (!zips_.insert(zip).second) return;
  if (city != county->seat) {
    towns_.push_back(
        {city, zip, static_cast<std::size_t>(county - counties_.begin()), static_cast<int>(towns_.size())});
    return;
  }
  const auto place = static_cast<std::size_t>((house - 1) / kHousesOfSeatZip);
  if (is_house && place < kSeatZips && county->seat_zips[place].empty())
    county->seat_zips[place] = zip;
  else
    county->seat_zips.push_back(zip);
}

void DemoStreets::FillSeatZips() {
  for (auto& county : counties_) {
    for (auto& zip : county.seat_zips) {
      if (zip.empty()) zip = FreeZip(county, 1);
    }
  }
}

std::string DemoStreets::FreeZip(const County& county, int from) {
  for (int number = from;; ++number) {
    const auto zip = county.zip_prefix + Digits(number, 2);
    if (zips_.insert(zip).second) return zip;
  }
}

void DemoStreets::MakeTowns() {
  const auto& first = names_["TOWN_FIRST"];
  const auto& last = names_["TOWN_LAST"];
  constexpr int kFirstTownZip = 40;
  for (std::size_t county = 0; county < counties_.size(); ++county) {
    for (std::size_t town = 0; town < kTownsOfCounty; ++town) {
      const auto index = county * kTownsOfCounty + town;
      const auto word = index % first.size();
      const auto name = first[word] + last[(index / first.size() + word) % last.size()];
      towns_.push_back(
          {name, FreeZip(counties_[county], kFirstTownZip), county, static_cast<int>(towns_.size())});
    }
  }
}

const std::string& DemoStreets::ZipInSeat(const std::string& county, int house) const {
  const auto found = std::ranges::find(counties_, county, &County::number);
  return found->seat_zips.at(static_cast<std::size_t>((house - 1) / kHousesOfSeatZip));
}

std::string DemoStreets::PlusFour(std::string_view street, int house) {
  constexpr std::uint32_t kSmallest = 1000;
  const auto range = (house - 1) / kHousesOfRange;
  return std::to_string(kSmallest +
                        Hash(std::string(street) + ParityOf(house) + std::to_string(range)) % 9000);
}

std::string DemoStreets::PlusFourOfBox(int box) {
  return Digits(box, 4);
}

std::string DemoStreets::Cities() const {
  std::string table(kCityHeadings);
  const auto write = [&](const std::string& zip, const std::string& name, char use, const County& county) {
    table += zip + '\t' + name + '\t' + use + '\t' + std::string(kState) + '\t' + county.number + '\t' +
             county.name + '\n';
  };
  for (const auto& county : counties_) {
    for (const auto& zip : county.seat_zips) {
      write(zip, county.seat, 'P', county);
      write(zip, "East " + county.seat, 'A', county);
    }
  }
  for (const auto& town : towns_) {
    write(town.zip, town.name, 'P', counties_[town.county]);
    if (town.index % 2 == 0) write(town.zip, town.name + " Mills", 'A', counties_[town.county]);
  }
  return table;
}

std::string DemoStreets::Ranges() const {
  std::string table(kRangeHeadings);
  auto shown = shown_;
  for (const auto& county : counties_) WriteSeat(county, shown, table);
  for (const auto& town : towns_) WriteTown(town, table);
  for (const auto& house : shown) {
    if (house.is_written) continue;
    const auto plus_four = house.plus_four.empty() ? PlusFour(house.street, house.house) : house.plus_four;
    Write({house.zip, 'S', "", house.street, "", house.house, house.house, ParityOf(house.house), plus_four},
          table);
  }
  return table;
}

void DemoStreets::WriteSeat(const County& county, std::vector<ShownHouse>& shown, std::string& table) const {
  for (std::size_t place = 0; place < county.seat_zips.size(); ++place) {
    const auto& zip = county.seat_zips[place];
    constexpr int kBoxes = 999;
    Write({zip, 'P', "", "", "", 1, kBoxes, 'B', "BOX"}, table);
    if (place == 0) Write({zip, 'G', "", "", "", 0, 0, 'B', "9999"}, table);
    if (place >= kSeatZips) continue;
    const auto first = static_cast<int>(place) * kHousesOfSeatZip + 1;
    for (const auto& street : names_.at("SEAT_STREET")) {
      for (int side = 0; side < 2; ++side) {
        for (int low = first + side; low < first + kHousesOfSeatZip; low += kHousesOfRange) {
          const auto high = low + kHousesOfRange - 2;
          auto from = low < kFirstHouse ? kFirstHouse + side : low;
          const auto plus_four = PlusFour(street, high);
          // A house with a plus-four of its own parts the range.
          for (auto& house : shown) {
            if (house.zip != zip || house.street != street || house.house < from || house.house > high ||
                house.house % 2 != high % 2)
              continue;
            house.is_written = true;
            if (house.plus_four.empty()) continue;
            if (from < house.house)
              Write({zip, 'S', "", street, "", from, house.house - 2, ParityOf(high), plus_four}, table);
            Write({zip, 'S', "", street, "", house.house, house.house, ParityOf(high), house.plus_four},
                  table);
            from = house.house + 2;
          }
          if (from <= high) Write({zip, 'S', "", street, "", from, high, ParityOf(high), plus_four}, table);
        }
      }
    }
  }
}

void DemoStreets::WriteTown(const Town& town, std::string& table) const {
  static constexpr std::array<std::string_view, 4> kBefore = {"", "N", "", "E"};
  static constexpr std::array<std::string_view, 5> kBehind = {"", "", "SW", "", ""};
  const auto& streets = names_.at("STREET");
  Write({town.zip, 'P', "", "", "", 1, 299, 'B', "BOX"}, table);
  Write({town.zip, 'R', "", "1", "", 1, 150, 'B', "BOX"}, table);
  Write({town.zip, 'R', "", "2", "", 1, 90, 'B', ""}, table);
  if (town.index % 3 == 0) Write({town.zip, 'H', "", "61", "", 1, 120, 'B', "BOX"}, table);
  for (int number = 0; number < kStreetsOfTown; ++number) {
    const auto mixed = static_cast<std::size_t>(town.index * 11 + number * 5);
    const auto& street = streets[mixed % streets.size()];
    const auto pre = kBefore[mixed % kBefore.size()];
    const auto post = pre.empty() ? kBehind[mixed % kBehind.size()] : "";
    for (int block = 0; block < kBlocksOfStreet; ++block) {
      const auto low = 100 * (1 + static_cast<int>(mixed % 9) + block);
      Write({town.zip, 'S', pre, street, post, low + 1, low + 79, 'O', PlusFour(street, low + 1)}, table);
      // Now and then the river runs along the other side.
      if ((number + block) % 3 != 0)
        Write({town.zip, 'S', pre, street, post, low, low + 60, 'E', PlusFour(street, low)}, table);
    }
  }
}

namespace {

void WriteUnlessThere(const std::filesystem::path& file, std::string_view text) {
  if (!platform::IsThere(file)) platform::ReplaceFile(file, text);
}

}  // namespace

void CreateDemoStreetFile(const std::filesystem::path& product_data, const std::filesystem::path& folder) {
  if (platform::IsThere(folder / "cities.tsv") && platform::IsThere(folder / "ranges.tsv")) return;
  const DemoStreets streets(product_data);
  platform::MakeFolder(folder);
  WriteUnlessThere(folder / "cities.tsv", streets.Cities());
  WriteUnlessThere(folder / "ranges.tsv", streets.Ranges());
}

void CreateEmptyStreetFile(const std::filesystem::path& folder) {
  platform::MakeFolder(folder);
  WriteUnlessThere(folder / "cities.tsv", kCityHeadings);
  WriteUnlessThere(folder / "ranges.tsv", kRangeHeadings);
}

}  // namespace server
