#include "customers/display_encoders.h"

#include <gtest/gtest.h>

#include "tests/fakes/recording_errors.h"

namespace customers {
namespace {

struct EncoderCase {
  std::string (DisplayEncoders::*encode)(std::string_view) const;
  const char* input;
  const char* shown;
};

TEST(DisplayEncoders, GroupOnlyNumbersOfTheExpectedLength) {
  fakes::RecordingErrors errors;
  const DisplayEncoders encoders(errors);
  const EncoderCase cases[] = {
      {&DisplayEncoders::EncodeZipCode, "731051234", "73105-1234"},
      {&DisplayEncoders::EncodeZipCode, "73105", "73105"},
      {&DisplayEncoders::EncodeZipCode, "73105-1234", "73105-1234"},
      {&DisplayEncoders::EncodeZipCode, "", ""},
      {&DisplayEncoders::EncodeZipCode, "ÄÖÜßé1234", "ÄÖÜßé-1234"},
      {&DisplayEncoders::EncodeFuelTaxAccountNbr, "1234567890123", "12-345678901-23"},
      {&DisplayEncoders::EncodeFuelTaxAccountNbr, "123456789012", "123456789012"},
      {&DisplayEncoders::EncodeFuelTaxAccountNbr, "12345678901234", "12345678901234"},
      {&DisplayEncoders::FormatPhone, "405.521 2485", "(405) 521-2485"},
      {&DisplayEncoders::FormatPhone, "521-2485", "521-2485"},
      {&DisplayEncoders::FormatPhone, "1 405 521 2485", "14055212485"},
      {&DisplayEncoders::FormatPhone, "none", ""},
  };
  for (const auto& [encode, input, shown] : cases) {
    EXPECT_EQ((encoders.*encode)(input), shown) << input;
  }
}

}  // namespace
}  // namespace customers
