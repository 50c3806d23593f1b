#include "platform/parties/address_verifier.h"

#include "platform/text.h"

namespace platform {
namespace {

bool FitsRegister(const PostalAddress& address) {
  const auto fits = [](const std::string& text, std::size_t longest) {
    return CharacterCount(text) <= longest;
  };
  return fits(address.line1, kLongestAddressLine) && fits(address.line2, kLongestAddressLine) &&
         fits(address.city, kLongestCity) && fits(address.state, kLongestState) &&
         fits(address.zip, kLongestZip);
}

}  // namespace

AddressVerdict AddressVerifier::Verify(const PostalAddress& address, const std::stop_token& ending) {
  auto verdict = Judge(address, ending);
  return FitsRegister(verdict.address) ? verdict : AddressVerdict();
}

}  // namespace platform
