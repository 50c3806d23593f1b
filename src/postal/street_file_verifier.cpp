#include "postal/street_file_verifier.h"

#include <utility>

#include "platform/failure.h"
#include "postal/address_matching.h"
#include "postal/standard_address.h"
#include "postal/street_file.h"

namespace postal {

using platform::Failure;

StreetFileVerifier::StreetFileVerifier(std::filesystem::path folder) : folder_(std::move(folder)) {}

StreetFileVerifier::~StreetFileVerifier() = default;

platform::AddressVerdict StreetFileVerifier::Judge(const platform::PostalAddress& address,
                                                   const std::stop_token&) {
  if (!file_) {
    try {
      file_ = std::make_unique<const StreetFile>(StreetFile::Read(folder_));
    } catch (const Failure& failure) {
      throw Failure(Failure::Kind::kUnavailable, "The address cannot be verified. " + failure.description());
    }
  }
  return postal::Judge(*file_, address);
}

bool StreetFileVerifier::IsSamePlace(const platform::PostalAddress& one,
                                     const platform::PostalAddress& other) const {
  return postal::IsSamePlace(one, other);
}

}  // namespace postal
