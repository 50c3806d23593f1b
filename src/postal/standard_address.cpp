#include "postal/standard_address.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <utility>

#include "platform/search_text.h"
#include "platform/text.h"
#include "postal/address_words.h"

namespace postal {
namespace {

using Words = std::vector<std::string>;

/// Nobody's address is longer; what is longer is not looked at any closer.
constexpr std::size_t kLongestLine = 120;

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

bool IsWordCharacter(char character) {
  return IsDigit(character) || (character >= 'A' && character <= 'Z') ||
         static_cast<unsigned char>(character) >= 0x80;
}

/// Capitals without accents; punctuation of ASCII stays.
std::string Capitals(std::string_view text) {
  const auto is_foreign = [](char character) { return static_cast<unsigned char>(character) >= 0x80; };
  const auto is_letter = [&](char character) {
    return is_foreign(character) || (character >= 'a' && character <= 'z') ||
           (character >= 'A' && character <= 'Z');
  };
  std::string capitals;
  capitals.reserve(text.size());
  for (auto start = text.begin(); start != text.end();) {
    const auto end = std::find_if_not(start, text.end(), is_letter);
    if (end == start) {
      capitals += *start++;
    } else if (std::none_of(start, end, is_foreign)) {
      std::transform(start, end, std::back_inserter(capitals),
                     [](char letter) { return static_cast<char>(letter & ~0x20); });
      start = end;
    } else {
      // With the letters around it: an accent may follow its letter.
      capitals += platform::UpperCase(platform::FoldForSearch({start, end}));
      start = end;
    }
  }
  return capitals;
}

/// Words in capitals. "#" is a word; a "-" stays between the digits of a number, a "/" in a fraction and in
/// "C/O".
Words WordsOf(std::string_view text) {
  const auto line = Capitals(text.substr(0, kLongestLine));
  Words words;
  std::string word;
  const auto end_word = [&] {
    if (!word.empty()) words.push_back(std::exchange(word, {}));
  };
  for (std::size_t at = 0; at < line.size(); ++at) {
    const char character = line[at];
    const char next = at + 1 < line.size() ? line[at + 1] : ' ';
    if (IsWordCharacter(character)) {
      word += character;
    } else if (character == '\'' || character == '.' || character == '`') {
      continue;
    } else if (!word.empty() && ((character == '-' && IsDigit(word.front()) && IsWordCharacter(next)) ||
                                 (character == '/' && IsDigit(word.front()) && IsDigit(next)) ||
                                 (character == '/' && word == "C" && next == 'O'))) {
      word += character;
    } else {
      end_word();
      if (character == '#' || character == '&') words.emplace_back(1, character);
      if (character == '%') words.emplace_back("C/O");
    }
  }
  end_word();
  return words;
}

std::string Joined(const Words& words, std::size_t from = 0, std::size_t to = std::string::npos) {
  std::string text;
  for (auto at = from; at < std::min(to, words.size()); ++at) text += (text.empty() ? "" : " ") + words[at];
  return text;
}

Words SplitAtBlanks(std::string_view text) {
  Words words;
  while (!text.empty()) {
    const auto end = std::min(text.find(' '), text.size());
    if (end > 0) words.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}

bool HasDigit(std::string_view word) {
  return std::ranges::any_of(word, IsDigit);
}

bool IsNumber(std::string_view word) {
  return !word.empty() && std::ranges::all_of(word, IsDigit);
}

/// "4", "12B", "B": what stands behind "APT".
bool IsUnitNumber(const std::string& word) {
  return HasDigit(word) || (word.size() == 1 && IsWordCharacter(word[0]));
}

/// Whether the words from `at` on are those, parted by blanks.
bool StandsAt(const Words& words, std::size_t at, std::string_view wanted) {
  while (!wanted.empty()) {
    const auto end = std::min(wanted.find(' '), wanted.size());
    if (at >= words.size() || words[at] != wanted.substr(0, end)) return false;
    ++at;
    wanted.remove_prefix(std::min(end + 1, wanted.size()));
  }
  return true;
}

std::size_t CountWords(std::string_view text) {
  return text.empty() ? 0 : static_cast<std::size_t>(std::ranges::count(text, ' ')) + 1;
}

/// "12", "12A" or "12-A" as a number and what follows it; false where it is none.
bool TakeNumber(std::string_view word, DeliveryLine& line) {
  const auto digits = static_cast<std::size_t>(std::ranges::find_if_not(word, IsDigit) - word.begin());
  auto rest = word.substr(digits);
  if (rest.starts_with('-')) rest.remove_prefix(1);
  if (digits == 0 || digits > 8 || rest.size() > 1 || (rest.size() == 1 && (rest[0] < 'A' || rest[0] > 'Z')))
    return false;
  std::from_chars(word.data(), word.data() + digits, line.number);
  line.number_rest = rest;
  return true;
}

struct Opening {
  std::string_view words;
  DeliveryKind kind;
};

constexpr auto kBoxes = std::to_array<std::string_view>({
    "POST OFFICE BOX",
    "PO BOX",
    "P O BOX",
    "POBOX",
    "POB",
    "P O B",
    "POST OFFICE DRAWER",
    "PO DRAWER",
    "P O DRAWER",
    "FIRM CALLER",
    "CALLER",
    "LOCKBOX",
    "LOCK BOX",
    "DRAWER",
    "BIN",
    "BOX",
});

constexpr auto kRoutes = std::to_array<Opening>({
    {"HIGHWAY CONTRACT ROUTE", DeliveryKind::kHighwayRoute},
    {"HIGHWAY CONTRACT", DeliveryKind::kHighwayRoute},
    {"STAR ROUTE", DeliveryKind::kHighwayRoute},
    {"STAR RTE", DeliveryKind::kHighwayRoute},
    {"HC ROUTE", DeliveryKind::kHighwayRoute},
    {"HCR", DeliveryKind::kHighwayRoute},
    {"HC", DeliveryKind::kHighwayRoute},
    {"H C", DeliveryKind::kHighwayRoute},
    {"RURAL ROUTE", DeliveryKind::kRuralRoute},
    {"RURAL RTE", DeliveryKind::kRuralRoute},
    {"RFD ROUTE", DeliveryKind::kRuralRoute},
    {"R F D", DeliveryKind::kRuralRoute},
    {"R R", DeliveryKind::kRuralRoute},
    {"RFD", DeliveryKind::kRuralRoute},
    {"ROUTE", DeliveryKind::kRuralRoute},
    {"RTE", DeliveryKind::kRuralRoute},
    {"RR", DeliveryKind::kRuralRoute},
    {"RT", DeliveryKind::kRuralRoute},
    {"RD", DeliveryKind::kRuralRoute},
});

void SkipNumberSign(const Words& words, std::size_t& at) {
  if (at < words.size() && (words[at] == "#" || words[at] == "NO" || words[at] == "NUMBER")) ++at;
}

bool ReadBox(const Words& words, DeliveryLine& line) {
  for (const auto opening : kBoxes) {
    if (!StandsAt(words, 0, opening)) continue;
    auto at = CountWords(opening);
    SkipNumberSign(words, at);
    if (at + 1 != words.size() || !TakeNumber(words[at], line)) return false;
    line.kind = DeliveryKind::kBox;
    return true;
  }
  return false;
}

/// "RR 2 BOX 18" and its other forms. Without a box it is no address.
bool ReadRoute(const Words& words, DeliveryLine& line) {
  for (const auto& [opening, kind] : kRoutes) {
    if (!StandsAt(words, 0, opening)) continue;
    auto at = CountWords(opening);
    SkipNumberSign(words, at);
    if (at >= words.size() || !IsNumber(words[at])) return false;
    const auto first = words[at].find_first_not_of('0');
    if (first == std::string::npos) return false;
    const auto route = words[at].substr(first);
    if (++at >= words.size() || words[at] != "BOX") return false;
    ++at;
    SkipNumberSign(words, at);
    if (at + 1 != words.size() || !TakeNumber(words[at], line)) return false;
    line.kind = kind;
    line.street.name = route;
    return true;
  }
  return false;
}

bool ReadGeneralDelivery(const Words& words, DeliveryLine& line) {
  for (const auto opening : {"GENERAL DELIVERY", "GEN DELIVERY", "GEN DEL", "GENERAL DEL"}) {
    if (!StandsAt(words, 0, opening) || words.size() != CountWords(opening)) continue;
    line.kind = DeliveryKind::kGeneralDelivery;
    return true;
  }
  return false;
}

/// Takes units off the end of `words`, of which `least` stay: "BLDG 2 APT 5", "# 5", "REAR", "3RD FLOOR".
std::string TakeUnits(Words& words, std::size_t least) {
  std::string units;
  const auto take = [&](std::size_t count, const std::string& unit) {
    words.resize(words.size() - count);
    units = units.empty() ? unit : unit + " " + units;
  };
  while (words.size() > least) {
    const auto& last = words.back();
    const auto last_unit = UnitWord(last);
    if (words.size() >= least + 2) {
      const auto& before = words[words.size() - 2];
      const auto unit = UnitWord(before);
      if (unit == "#" && last != "#" && words.size() >= least + 3) {
        const auto outer = UnitWord(words[words.size() - 3]);
        if (!outer.empty() && outer != "#" && UnitHasNumber(outer)) {
          take(3, std::string(outer) + " " + last);
          continue;
        }
      }
      if (!unit.empty() && UnitHasNumber(unit) && IsUnitNumber(last)) {
        take(2, std::string(unit) + " " + last);
        continue;
      }
      if (last_unit == "FL" && IsDigit(before.front())) {
        const auto digits = before.substr(0, before.find_first_not_of("0123456789"));
        take(2, "FL " + digits);
        continue;
      }
    }
    if (last_unit.empty() || UnitHasNumber(last_unit)) break;
    take(1, std::string(last_unit));
  }
  return units;
}

/// "CO RD 12" as "COUNTY ROAD 12", where a number or a letter is all that names the road.
void SpellRoadName(Words& words) {
  for (std::size_t at = 0; at < std::min<std::size_t>(words.size(), 2); ++at) {
    if (at > 0 && Directional(words[at - 1]).empty()) return;
    for (const auto& [spelling, standard] : RoadNames()) {
      if (!StandsAt(words, at, spelling)) continue;
      const auto behind = at + CountWords(spelling);
      if (behind >= words.size() || !(HasDigit(words[behind]) || words[behind].size() == 1)) continue;
      const auto from = words.begin() + static_cast<std::ptrdiff_t>(at);
      words.erase(from, words.begin() + static_cast<std::ptrdiff_t>(behind));
      auto named = SplitAtBlanks(standard);
      words.insert(words.begin() + static_cast<std::ptrdiff_t>(at), named.begin(), named.end());
      return;
    }
  }
}

bool NamesRoadByNumber(const Words& words) {
  return std::ranges::any_of(RoadNames(), [&](const RoadName& road) {
    return road.words == road.standard && StandsAt(words, 0, road.standard) &&
           CountWords(road.standard) + 1 == words.size();
  });
}

/// "N W" as "NW".
void JoinDirectionals(Words& words, std::size_t at) {
  if (at + 1 >= words.size()) return;
  const auto first = Directional(words[at]);
  const auto second = Directional(words[at + 1]);
  if ((first != "N" && first != "S") || (second != "E" && second != "W")) return;
  words[at] = std::string(first) + std::string(second);
  words.erase(words.begin() + static_cast<std::ptrdiff_t>(at) + 1);
}

StreetName ReadStreet(Words words) {
  StreetName street;
  // "NORTH ST" and "AVENUE E" have a directional for a name.
  const auto is_named_by = [&](std::size_t directional, std::size_t other) {
    return words.size() == 2 && !Directional(words[directional]).empty() && !Suffix(words[other]).empty();
  };
  if (words.size() > 3) JoinDirectionals(words, 0);
  if (words.size() > 3) JoinDirectionals(words, words.size() - 2);
  if (words.size() >= 2 && !Directional(words.front()).empty() && !is_named_by(0, 1)) {
    street.pre = Directional(words.front());
    words.erase(words.begin());
  }
  if (words.size() >= 2 && !Directional(words.back()).empty() && !is_named_by(1, 0) &&
      !NamesRoadByNumber(words)) {
    street.post = Directional(words.back());
    words.pop_back();
  }
  if (words.size() >= 2 && !Suffix(words.back()).empty()) {
    street.suffix = Suffix(words.back());
    words.pop_back();
  }
  street.name = Joined(words);
  return street;
}

/// A line that begins with a house number.
bool ReadHouse(Words words, DeliveryLine& line) {
  if (words.size() < 2 || !TakeNumber(words[0], line)) return false;
  std::size_t name = 1;
  if (words.size() > 2 && words[1].find('/') != std::string::npos) {
    line.number_rest += " " + words[1];
    name = 2;
  }
  line.unit = TakeUnits(words, name + 1);
  words.erase(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(name));
  line.street_words = Joined(words);
  SpellRoadName(words);
  line.street = ReadStreet(std::move(words));
  line.kind = DeliveryKind::kStreet;
  return true;
}

DeliveryLine ReadDelivery(const Words& words) {
  for (const auto read : {ReadBox, ReadRoute, ReadGeneralDelivery}) {
    DeliveryLine line;
    if (read(words, line)) return line;
  }
  DeliveryLine line;
  if (ReadHouse(words, line)) return line;
  return {};
}

/// "ATTENTION" as "ATTN", "CARE OF" as "C/O"; else the words.
std::string OtherText(const Words& words) {
  if (words.empty()) return "";
  if (words[0] == "ATTENTION" || words[0] == "ATTN") return Joined({"ATTN", Joined(words, 1)});
  if (StandsAt(words, 0, "CARE OF")) return Joined({"C/O", Joined(words, 2)});
  return Joined(words);
}

/// Takes the line that is not the delivery's: a unit alone, or what the carrier does not look at.
void TakeOtherLine(Words words, StandardAddress& address) {
  if (words.empty()) return;
  const auto as_written = OtherText(words);
  const auto unit = TakeUnits(words, 0);
  if (!words.empty() || unit.empty()) {
    address.other = as_written;
  } else if (address.delivery.unit.empty()) {
    address.delivery.unit = unit;
  } else {
    address.other = as_written;
    address.is_ambiguous = unit != address.delivery.unit;
  }
}

void ReadLines(const platform::PostalAddress& entered, StandardAddress& address) {
  auto first = WordsOf(entered.line1);
  auto second = WordsOf(entered.line2);
  if (entered.line1.size() > kLongestLine || entered.line2.size() > kLongestLine) {
    address.is_ambiguous = true;
    return;
  }
  address.delivery = ReadDelivery(first);
  auto below = ReadDelivery(second);
  if (address.delivery.kind == DeliveryKind::kNone) {
    if (below.kind == DeliveryKind::kNone) return;
    address.delivery = std::move(below);
    address.lines_exchanged = !first.empty();
    return TakeOtherLine(std::move(first), address);
  }
  address.is_ambiguous = below.kind != DeliveryKind::kNone;
  TakeOtherLine(std::move(second), address);
}

void ReadZip(std::string_view entered, StandardAddress& address) {
  std::string digits;
  bool is_clean = true;
  for (const char character : entered) {
    if (IsDigit(character)) {
      digits += character;
    } else if (character != ' ' && !(character == '-' && digits.size() == 5)) {
      is_clean = false;
    }
  }
  address.is_zip_whole = is_clean && (digits.empty() || digits.size() == 5 || digits.size() == 9);
  address.zip = digits.substr(0, 5);
  if (digits.size() == 9) address.plus_four = digits.substr(5);
}

std::string DeliveryText(const DeliveryLine& line) {
  const auto number = std::to_string(line.number) + line.number_rest;
  switch (line.kind) {
    case DeliveryKind::kNone:
      return "";
    case DeliveryKind::kStreet:
      return number + " " + StreetText(line.street);
    case DeliveryKind::kBox:
      return "PO BOX " + number;
    case DeliveryKind::kRuralRoute:
      return "RR " + line.street.name + " BOX " + number;
    case DeliveryKind::kHighwayRoute:
      return "HC " + line.street.name + " BOX " + number;
    case DeliveryKind::kGeneralDelivery:
      return "GENERAL DELIVERY";
  }
  return "";
}

/// Words that stand in the names of many streets, and name none of them alone.
bool IsCommonWord(const std::string& word) {
  return !Directional(word).empty() || !Suffix(word).empty() || word == "SAINT";
}

std::string KeyOfWords(Words words) {
  // From behind, so that what is joined is not looked at again.
  for (auto at = words.size(); at-- > 0;) JoinDirectionals(words, at);
  for (auto& word : words) word = CommonForm(word);
  return Joined(words);
}

/// "12|N|LAKE|DR||STE 4"; a line that is no street's as it is.
std::string KeyOfLine(const std::string& line) {
  const auto words = WordsOf(line);
  const auto read = ReadDelivery(words);
  if (read.kind != DeliveryKind::kStreet) return Joined(words);
  return std::to_string(read.number) + read.number_rest + "|" + StreetKey(read.street) + "|" + read.unit;
}

std::string KeyOfLines(const platform::PostalAddress& address) {
  const auto standard = Standardised(address);
  return KeyOfLine(standard.line1) + "|" + KeyOfLine(standard.line2) + "|" + CommonKey(standard.city) + "|" +
         standard.state;
}

}  // namespace

std::string StandardWords(std::string_view text) {
  return Joined(WordsOf(text));
}

std::string CommonKey(std::string_view text) {
  auto words = WordsOf(text);
  SpellRoadName(words);
  return KeyOfWords(std::move(words));
}

std::string StreetKey(const StreetName& street) {
  auto words = SplitAtBlanks(street.name);
  const bool has_letter_for_name = NamesRoadByNumber(words) && !Directional(words.back()).empty();
  const bool keeps_words = has_letter_for_name || std::ranges::all_of(words, IsCommonWord);
  const auto name = keeps_words ? street.name : KeyOfWords(std::move(words));
  return street.pre + "|" + name + "|" + street.suffix + "|" + street.post;
}

StreetName ReadStreetName(std::string_view text) {
  auto words = WordsOf(text);
  SpellRoadName(words);
  return ReadStreet(std::move(words));
}

std::string StreetText(const StreetName& street) {
  std::string text;
  for (const auto* part : {&street.pre, &street.name, &street.suffix, &street.post}) {
    if (part->empty()) continue;
    if (!text.empty()) text += ' ';
    text += *part;
  }
  return text;
}

std::vector<StreetName> StreetReadings(const StreetName& street) {
  std::vector<StreetName> readings = {street};
  const auto add_with = [&](auto change) {
    for (std::size_t place = 0, count = readings.size(); place < count; ++place) {
      auto reading = readings[place];
      change(reading);
      readings.push_back(std::move(reading));
    }
  };
  if (!street.pre.empty()) {
    add_with([](StreetName& reading) {
      reading.name = reading.pre + " " + reading.name;
      reading.pre.clear();
    });
  }
  if (!street.suffix.empty()) {
    add_with([](StreetName& reading) {
      reading.name += " " + reading.suffix;
      reading.suffix.clear();
    });
  }
  return readings;
}

StandardAddress ReadAddress(const platform::PostalAddress& entered) {
  StandardAddress address;
  ReadLines(entered, address);
  address.city = StandardWords(entered.city);
  address.state = StandardWords(entered.state);
  ReadZip(entered.zip, address);
  return address;
}

void WriteDelivery(const DeliveryLine& delivery, const std::string& other, platform::PostalAddress& address) {
  address.line1 = DeliveryText(delivery);
  address.line2 = delivery.unit;
  if (other.empty()) return;
  if (!delivery.unit.empty()) address.line1 += " " + delivery.unit;
  address.line2 = other;
}

platform::PostalAddress Standardised(const platform::PostalAddress& entered) {
  const auto read = ReadAddress(entered);
  auto address = entered;
  if (read.delivery.kind == DeliveryKind::kNone) {
    address.line1 = OtherText(WordsOf(entered.line1));
    address.line2 = OtherText(WordsOf(entered.line2));
  } else if (read.is_ambiguous) {
    address.line1 = StandardWords(entered.line1);
    address.line2 = StandardWords(entered.line2);
  } else {
    WriteDelivery(read.delivery, read.other, address);
  }
  address.city = read.city;
  address.state = read.state;
  if (read.is_zip_whole) address.zip = read.zip + read.plus_four;
  return address;
}

bool IsSamePlace(const platform::PostalAddress& one, const platform::PostalAddress& other) {
  return KeyOfLines(one) == KeyOfLines(other) && ReadAddress(one).zip == ReadAddress(other).zip;
}

bool IsSameButForForm(const platform::PostalAddress& entered, const platform::PostalAddress& found) {
  const auto entered_zip = ReadAddress(entered);
  const auto found_zip = ReadAddress(found);
  return KeyOfLines(entered) == KeyOfLines(found) && entered_zip.is_zip_whole &&
         entered_zip.zip == found_zip.zip &&
         (entered_zip.plus_four.empty() || entered_zip.plus_four == found_zip.plus_four) &&
         !entered_zip.lines_exchanged;
}

}  // namespace postal
