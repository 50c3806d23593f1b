#include "wordprocessor/document/letter_date.h"

#include <array>
#include <charconv>
#include <chrono>
#include <optional>
#include <vector>

#include "platform/text.h"
#include "platform/value.h"

namespace wordprocessor {
namespace {

using platform::Date;

constexpr auto kMonths =
    std::to_array<std::string_view>({"January", "February", "March", "April", "May", "June", "July", "August",
                                     "September", "October", "November", "December"});
constexpr auto kWeekdays = std::to_array<std::string_view>(
    {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"});

constexpr std::size_t kShortName = 3;

std::optional<unsigned> DatePart(std::string_view text) {
  unsigned number = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole = parsed.ec == std::errc() && parsed.ptr == text.data() + text.size();
  return whole ? std::optional(number) : std::nullopt;
}

std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  while (true) {
    const auto begin = text.find_first_not_of(" ,/");
    if (begin == text.npos) return words;
    text.remove_prefix(begin);
    const auto end = std::min(text.find_first_of(" ,/"), text.size());
    words.push_back(text.substr(0, end));
    text.remove_prefix(end);
  }
}

std::optional<unsigned> MonthOf(std::string_view word) {
  for (unsigned month = 0; month < kMonths.size(); ++month) {
    if (platform::EqualsIgnoringCase(word, kMonths[month])) return month + 1;
  }
  return DatePart(word);
}

std::optional<Date> ReadDate(std::string_view text) {
  if (const auto date = platform::ParseDate(platform::Trim(text))) return date;
  const auto words = Words(text);
  if (words.size() != 3) return std::nullopt;
  const auto month = MonthOf(words[0]);
  const auto day = DatePart(words[1]);
  const auto year = DatePart(words[2]);
  if (!month || !day || !year) return std::nullopt;
  const Date date(std::chrono::year(static_cast<int>(*year)), std::chrono::month(*month),
                  std::chrono::day(*day));
  return date.ok() && *year >= 1000 ? std::optional(date) : std::nullopt;
}

std::string TwoDigits(unsigned number) {
  return {static_cast<char>('0' + number / 10 % 10), static_cast<char>('0' + number % 10)};
}

std::string_view Named(std::string_view name, std::size_t letters) {
  return letters == kShortName ? name.substr(0, kShortName) : name;
}

std::string DayPiece(Date date, std::size_t letters) {
  const auto day = static_cast<unsigned>(date.day());
  if (letters == 1) return std::to_string(day);
  if (letters == 2) return TwoDigits(day);
  const auto weekday = std::chrono::weekday(std::chrono::sys_days(date)).c_encoding();
  return std::string(Named(kWeekdays[weekday], letters));
}

std::string MonthPiece(Date date, std::size_t letters) {
  const auto month = static_cast<unsigned>(date.month());
  if (letters == 1) return std::to_string(month);
  return letters == 2 ? TwoDigits(month) : std::string(Named(kMonths[month - 1], letters));
}

std::string YearPiece(Date date, std::size_t letters) {
  const auto year = static_cast<int>(date.year());
  return letters <= 2 ? TwoDigits(static_cast<unsigned>(year)) : std::to_string(year);
}

bool IsLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// Nothing where the picture asks for more than a date.
std::optional<std::string> Shown(std::string_view picture, Date date) {
  std::string shown;
  while (!picture.empty()) {
    const char first = picture.front();
    std::size_t used = std::min(picture.find_first_not_of(first), picture.size());
    if (first == '\'') {
      used = picture.find('\'', 1);
      if (used == picture.npos) return std::nullopt;
      shown += picture.substr(1, used - 1);
      ++used;
    } else if (first == 'd' || first == 'D') {
      shown += DayPiece(date, used);
    } else if (first == 'M') {
      shown += MonthPiece(date, used);
    } else if (first == 'y' || first == 'Y') {
      shown += YearPiece(date, used);
    } else if (IsLetter(first)) {
      return std::nullopt;
    } else {
      shown += picture.substr(0, used);
    }
    picture.remove_prefix(used);
  }
  return shown;
}

}  // namespace

std::string LetterDateIn(std::string_view picture, std::string_view date) {
  if (platform::Trim(picture).empty()) return std::string(date);
  const auto day = ReadDate(date);
  const auto shown = day ? Shown(picture, *day) : std::nullopt;
  return shown ? *shown : std::string(date);
}

}  // namespace wordprocessor
