#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/parties/address_verifier.h"

namespace postal {

/// The addresses that the post delivers to.
class StreetFile;

/// Looks addresses up in the street file of a folder (postal/street_file.h), which is read at the first
/// address and kept.
///
/// Passed is what is in the file once both are standardised: capitals, punctuation, accents, blanks,
/// abbreviations and the place of a unit make no difference, and neither do a plus-four that is added and the
/// county. Anything else that differs is suggested, where one address alone is near enough; another plus-four
/// and another name of the city, too. In a state that the file does not cover every address is unknown.
/// Decision [verified-addresses].
class StreetFileVerifier : public platform::AddressVerifier {
 public:
  /// `folder` holds the two tables.
  explicit StreetFileVerifier(std::filesystem::path folder);
  ~StreetFileVerifier() override;

  bool IsSamePlace(const platform::PostalAddress& one, const platform::PostalAddress& other) const override;

 private:
  /// Throws Failure kUnavailable where the tables are missing or wrong: all faults with file, line and
  /// column.
  platform::AddressVerdict Judge(const platform::PostalAddress& address,
                                 const std::stop_token& ending) override;

  const std::filesystem::path folder_;
  std::unique_ptr<const StreetFile> file_;
};

}  // namespace postal
