#include "tests/postal/spoiled_addresses.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>
#include <utility>

namespace postal {
namespace {

constexpr std::array<std::string_view, 4> kKeyboard = {"QWERTYUIOP", "ASDFGHJKL", "ZXCVBNM", ""};
constexpr std::array<std::string_view, 9> kOtherSuffixes = {"Street", "Avenue", "Road", "Lane",     "Drive",
                                                            "Court",  "Place",  "Way",  "Boulevard"};
constexpr std::array<std::string_view, 8> kDirectionals = {"N", "S", "E", "W", "NE", "NW", "SE", "SW"};

std::vector<std::string> Cells(const std::string& line) {
  std::vector<std::string> cells;
  std::stringstream stream(line);
  for (std::string cell; std::getline(stream, cell, '\t');) cells.push_back(cell);
  cells.resize(10);
  return cells;
}

std::string Upper(std::string text) {
  std::ranges::transform(text, text.begin(), [](char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 32) : character;
  });
  return text;
}

std::string Line(unsigned number, std::initializer_list<std::string> parts) {
  auto line = std::to_string(number);
  for (const auto& part : parts)
    if (!part.empty()) line += " " + part;
  return line;
}

}  // namespace

AddressSpoiler::AddressSpoiler(const std::filesystem::path& folder, std::uint32_t seed) : draw_(seed) {
  std::map<std::string, Names> zips;
  std::ifstream cities(folder / "cities.tsv");
  std::string line;
  std::getline(cities, line);
  while (std::getline(cities, line)) {
    const auto cells = Cells(line);
    auto& names = zips[cells[0]];
    if (cells[2] == "P") {
      names.preferred = Upper(cells[1]);
      names.state = cells[3];
    } else {
      names.accepted.push_back(cells[1]);
    }
  }
  zips_.assign(zips.begin(), zips.end());
  std::ifstream ranges(folder / "ranges.tsv");
  std::getline(ranges, line);
  while (std::getline(ranges, line)) {
    const auto cells = Cells(line);
    const bool is_plain =
        std::ranges::all_of(cells[3], [](unsigned char letter) { return letter < 0x80 && letter != '\''; });
    if (cells[1] != "S" || !is_plain) continue;
    rows_.push_back({cells[0], Upper(cells[2]), Upper(cells[3]), Upper(cells[4]), Upper(cells[5]),
                     static_cast<unsigned>(std::stoul(cells[6])), static_cast<unsigned>(std::stoul(cells[7])),
                     cells[8] == "B"});
  }
}

SpoiledAddress AddressSpoiler::Draw(Spoiling spoiling) {
  for (;;) {
    if (auto spoiled = Spoil(rows_[Below(rows_.size())], spoiling)) return *spoiled;
  }
}

std::optional<SpoiledAddress> AddressSpoiler::Spoil(const Row& row, Spoiling spoiling) {
  const auto names =
      std::ranges::lower_bound(zips_, row.zip, {}, &std::pair<std::string, Names>::first)->second;
  const unsigned step = row.both_sides ? 1 : 2;
  auto number = row.low + step * Below((row.high - row.low) / step + 1);
  auto pre = row.pre;
  auto name = row.name;
  auto suffix = row.suffix;
  auto post = row.post;
  auto city = names.preferred;
  auto zip = row.zip;
  const auto right_number = [&] { return spoiling == Spoiling::kNumberAcrossTheStreet ? row.high : number; };
  const SpoiledAddress right = {
      {Line(right_number(), {pre, name, suffix, post}), "", names.preferred, names.state, row.zip, "", ""},
      {}};
  switch (spoiling) {
    case Spoiling::kMisspelledStreet:
      if (name.size() < 5 || name.find_first_of("0123456789") != std::string::npos) return std::nullopt;
      name = Misspelled(name);
      if (name == row.name) return std::nullopt;
      break;
    case Spoiling::kMissingSuffix:
      if (suffix.empty()) return std::nullopt;
      suffix.clear();
      break;
    case Spoiling::kWrongSuffix:
      if (suffix.empty()) return std::nullopt;
      suffix = kOtherSuffixes[Below(kOtherSuffixes.size())];
      // "Street" for "St" is right: the two begin and end alike.
      if (Upper(suffix).front() == row.suffix.front()) return std::nullopt;
      break;
    case Spoiling::kMissingDirectional:
      if (pre.empty() && post.empty()) return std::nullopt;
      pre.clear();
      post.clear();
      break;
    case Spoiling::kWrongDirectional: {
      auto& directional = pre.empty() ? post : pre;
      const auto other = std::string(kDirectionals[Below(kDirectionals.size())]);
      if (directional.empty() || directional == other) return std::nullopt;
      directional = other;
      break;
    }
    case Spoiling::kTransposedZip: {
      const auto at = Below(4);
      std::swap(zip[at], zip[at + 1]);
      if (zip == row.zip) return std::nullopt;
      break;
    }
    case Spoiling::kOtherCityName:
      if (names.accepted.empty()) return std::nullopt;
      city = names.accepted[Below(names.accepted.size())];
      break;
    case Spoiling::kNumberAcrossTheStreet:
      number = row.high + 1;
      if (row.both_sides) return std::nullopt;
      // Where the other side or the next house is there, it is another address and no fault.
      for (const auto& other : rows_) {
        if (other.zip != row.zip || other.name != row.name || other.suffix != row.suffix) continue;
        for (const auto there : {number, number + 1}) {
          if (there >= other.low && there <= other.high && (other.both_sides || there % 2 == other.low % 2))
            return std::nullopt;
        }
      }
      break;
  }
  auto spoiled = right;
  spoiled.spoiled = {Line(number, {pre, name, suffix, post}), "", city, names.state, zip, "", ""};
  return spoiled;
}

std::string AddressSpoiler::Misspelled(const std::string& name) {
  auto wrong = name;
  // The first letter is the one people get right.
  const auto at = 1 + Below(wrong.size() - 2);
  switch (Below(4)) {
    case 0:
      wrong.erase(at, 1);
      break;
    case 1:
      wrong.insert(at, 1, wrong[at]);
      break;
    case 2:
      std::swap(wrong[at], wrong[at + 1]);
      break;
    default:
      for (const auto row : kKeyboard) {
        const auto key = row.find(wrong[at]);
        if (key == std::string_view::npos) continue;
        wrong[at] = row[key == 0 ? 1 : key - 1];
        break;
      }
  }
  return wrong;
}

platform::PostalAddress AddressSpoiler::DrawFarAway() {
  // Streets of nowhere: syllables of another language.
  static constexpr std::array<std::string_view, 8> kSyllables = {"ZHU", "KWO", "XAI", "GRZ",
                                                                 "VYP", "OOJ", "QIB", "TLH"};
  std::string name;
  for (auto count = 3 + Below(2); count > 0; --count) name += kSyllables[Below(kSyllables.size())];
  const auto& [zip, names] = zips_[Below(zips_.size())];
  const bool knows_city = Below(2) == 0;
  return {Line(1 + Below(9900), {name, std::string(kOtherSuffixes[Below(kOtherSuffixes.size())])}),
          "",
          knows_city ? names.preferred : name,
          names.state,
          Below(2) == 0 ? zip : std::to_string(10'000 + Below(80'000)),
          "",
          ""};
}

}  // namespace postal
