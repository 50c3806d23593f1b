#include "platform/agreed/form_numbers.h"

namespace platform {

char CheckDigit(std::string_view seven_digits) {
  constexpr int kModulus = 11;
  int sum = 0;
  for (std::size_t i = 0; i < kFormNumberDigits; ++i)
    sum += static_cast<int>(kFormNumberDigits - i) * (seven_digits[i] - '0');
  const int rest = sum % kModulus;
  return rest == 10 ? 'X' : static_cast<char>('0' + rest);
}

}  // namespace platform
