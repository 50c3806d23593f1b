#include "server/subject/letter_text.h"

#include <algorithm>
#include <array>

namespace server {
namespace {

constexpr auto kMonths =
    std::to_array<std::string_view>({"January", "February", "March", "April", "May", "June", "July", "August",
                                     "September", "October", "November", "December"});

std::string_view MonthName(std::chrono::month month) {
  return kMonths[static_cast<unsigned>(month) - 1];
}

bool IsDigits(std::string_view text, std::size_t count) {
  return text.size() == count && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

std::string Joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const auto part : parts) text += part;
  return text;
}

}  // namespace

std::string MonthInLetter(std::chrono::year_month month) {
  return Joined({MonthName(month.month()), " ", std::to_string(static_cast<int>(month.year()))});
}

std::string DateInLetter(platform::Date date) {
  return Joined({MonthName(date.month()), " ", std::to_string(static_cast<unsigned>(date.day())), ", ",
                 std::to_string(static_cast<int>(date.year()))});
}

std::string DateInLetter(std::string_view day) {
  const auto date = platform::ParseDate(day);
  return date ? DateInLetter(*date) : std::string(day);
}

std::string CityLine(std::string_view city, std::string_view state, std::string_view zip) {
  if (IsDigits(zip, 9)) return Joined({city, ", ", state, " ", zip.substr(0, 5), "-", zip.substr(5)});
  return Joined({city, ", ", state, " ", zip});
}

std::string PhoneInLetter(std::string_view phone) {
  if (!IsDigits(phone, 10)) return std::string(phone);
  return Joined({"(", phone.substr(0, 3), ") ", phone.substr(3, 3), "-", phone.substr(6)});
}

std::string FuelTaxAccountInLetter(std::string_view account) {
  if (account.size() != 13) return std::string(account);
  return Joined({account.substr(0, 2), "-", account.substr(2, 9), "-", account.substr(11)});
}

}  // namespace server
