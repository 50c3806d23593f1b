#pragma once

#include <string>

/// Postal verification of addresses.
namespace platform {

/// An address as it is stored and sent: capitals and punctuation as they come, the zip as digits with or
/// without its hyphen.
struct PostalAddress {
  std::string line1 = {};
  std::string line2 = {};
  std::string city = {};
  std::string state = {};
  std::string zip = {};
  std::string county_code = {};
  std::string county = {};  ///< its name

  bool operator==(const PostalAddress&) const = default;
};

/// What the verification says of an address.
struct AddressVerdict {
  enum class Kind {
    kPassed,     ///< `address` is it, standardised: this is what may be stored
    kSuggested,  ///< it is not deliverable as it stands; `address` is the one that is near enough
    kUnknown,    ///< it is not deliverable, and none or several are near; `address` is empty
  };
  Kind kind = Kind::kUnknown;
  PostalAddress address = {};
};

/// Checks addresses against what the post delivers to. Used on the server's thread.
class AddressVerifier {
 public:
  virtual ~AddressVerifier() = default;

  /// Throws Failure kUnavailable or kTimedOut where no verdict can be had, saying why and what to do.
  virtual AddressVerdict Verify(const PostalAddress& address) = 0;
};

}  // namespace platform
