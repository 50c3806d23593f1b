#pragma once

#include <string>
#include <string_view>

#include "platform/value.h"

/// Values as a letter writes them.
namespace server {

/// "November 2026".
std::string MonthInLetter(std::chrono::year_month month);
/// "November 22, 2026".
std::string DateInLetter(platform::Date date);
/// The same from "yyyy-mm-dd"; any other text comes back as it is.
std::string DateInLetter(std::string_view day);
/// "Springdale, ZE 12345-6789": nine digits of a zip code get their hyphen.
std::string CityLine(std::string_view city, std::string_view state, std::string_view zip);
/// "(555) 123-4567" for ten digits; any other text comes back as it is.
std::string PhoneInLetter(std::string_view phone);
/// "FT-123456789-01" for thirteen characters; any other text comes back as it is.
std::string FuelTaxAccountInLetter(std::string_view account);

}  // namespace server
