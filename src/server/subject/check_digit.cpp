#include "server/subject/check_digit.h"

namespace server {

std::string CheckDigit(std::string_view seven_digits) {
  int sum = 0;
  int weight = 7;
  for (const char digit : seven_digits) sum += (digit - '0') * weight--;
  const int check = sum % 11;
  return check == 10 ? "X" : std::to_string(check);
}

}  // namespace server
