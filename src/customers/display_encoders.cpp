#include "customers/display_encoders.h"

#include "platform/agreed/customer_numbers.h"
#include "platform/parties/trap.h"

namespace customers {

namespace {

/// What `encode` makes of the text; the text itself where it fails, which is reported under the procedure.
template <typename Encode>
std::string Encoded(platform::ErrorReporter& errors, std::string_view procedure, std::string_view text,
                    Encode&& encode) {
  std::string encoded;
  if (platform::Trap(errors, procedure, [&] { encoded = encode(text); })) return encoded;
  return std::string(text);
}

}  // namespace

std::string DisplayEncoders::EncodeZipCode(std::string_view zip) const {
  return Encoded(errors_, "ZEMLO_Corresp.EncodeZipCode", zip, [](std::string_view text) {
    return platform::InGroups(text, {5, 4});
  });
}

std::string DisplayEncoders::EncodeFuelTaxAccountNbr(std::string_view account) const {
  return Encoded(errors_, "ZEMLO_Corresp.EncodeFuelTaxAccountNbr", account, platform::ShownFuelTaxAccount);
}

std::string DisplayEncoders::FormatPhone(std::string_view phone) const {
  return Encoded(errors_, "ZEMLO_Corresp.FormatPhone", phone,
                 [](std::string_view text) { return platform::ShownPhone(platform::DigitsOf(text)); });
}

}  // namespace customers
