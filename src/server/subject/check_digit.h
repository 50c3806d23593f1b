#pragma once

#include <string>
#include <string_view>

namespace server {

/// The check digit of a form number of seven digits: the digits weighted 7 to 1, summed, modulo 11; ten is
/// "X".
std::string CheckDigit(std::string_view seven_digits);

}  // namespace server
