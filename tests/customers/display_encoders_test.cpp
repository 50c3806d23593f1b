#include "customers/display_encoders.h"

#include <gtest/gtest.h>

namespace customers {
namespace {

struct EncoderCase {
  std::string (*encode)(std::string_view);
  const char* input;
  const char* shown;
};

TEST(DisplayEncoders, GroupOnlyNumbersOfTheExpectedLength) {
  const EncoderCase cases[] = {
      {EncodeZipCode, "731051234", "73105-1234"},
      {EncodeZipCode, "73105", "73105"},
      {EncodeZipCode, "73105-1234", "73105-1234"},
      {EncodeZipCode, "", ""},
      {EncodeZipCode, "ÄÖÜßé1234", "ÄÖÜßé-1234"},
      {EncodeFuelTaxAccountNbr, "1234567890123", "12-345678901-23"},
      {EncodeFuelTaxAccountNbr, "123456789012", "123456789012"},
      {EncodeFuelTaxAccountNbr, "12345678901234", "12345678901234"},
      {FormatPhone, "405.521 2485", "(405) 521-2485"},
      {FormatPhone, "521-2485", "521-2485"},
      {FormatPhone, "1 405 521 2485", "14055212485"},
      {FormatPhone, "none", ""},
  };
  for (const auto& [encode, input, shown] : cases) EXPECT_EQ(encode(input), shown) << input;
}

}  // namespace
}  // namespace customers
