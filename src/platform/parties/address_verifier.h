#pragma once

#include <cstddef>
#include <stop_token>
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

// What the register has room for, in characters.
inline constexpr std::size_t kLongestAddressLine = 25;
inline constexpr std::size_t kLongestCity = 22;
inline constexpr std::size_t kLongestState = 2;
inline constexpr std::size_t kLongestZip = 9;

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

  /// An address that the register has no room for is neither passed nor suggested, but unknown. Throws
  /// Failure kUnavailable or kTimedOut where no verdict can be had, saying why and what to do; soon, once
  /// `ending` is stopped.
  AddressVerdict Verify(const PostalAddress& address, const std::stop_token& ending = {});

  /// Whether the post goes to the same place by both, however they are written: capitals, punctuation,
  /// abbreviations, a plus-four. Looks nothing up and never fails.
  virtual bool IsSamePlace(const PostalAddress& one, const PostalAddress& other) const = 0;

 private:
  /// Verify, whatever the register has room for.
  virtual AddressVerdict Judge(const PostalAddress& address, const std::stop_token& ending) = 0;
};

}  // namespace platform
