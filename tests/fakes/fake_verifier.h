#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/failure.h"
#include "platform/parties/address_verifier.h"
#include "platform/text.h"

namespace fakes {

/// Passes every address in capitals, but those whose first line a verdict stands for.
class FakeVerifier : public platform::AddressVerifier {
 public:
  std::map<std::string, platform::AddressVerdict> verdicts;  ///< by the first line asked for
  std::string fault;                                         ///< not "": there is no verdict
  std::vector<platform::PostalAddress> asked;

 private:
  platform::AddressVerdict Judge(const platform::PostalAddress& address, const std::stop_token&) override {
    using platform::UpperCase;
    asked.push_back(address);
    if (!fault.empty()) throw platform::Failure(platform::Failure::Kind::kUnavailable, fault);
    if (const auto verdict = verdicts.find(address.line1); verdict != verdicts.end()) return verdict->second;
    return {.kind = platform::AddressVerdict::Kind::kPassed,
            .address = {.line1 = UpperCase(address.line1),
                        .line2 = UpperCase(address.line2),
                        .city = UpperCase(address.city),
                        .state = UpperCase(address.state),
                        .zip = address.zip}};
  }
  bool IsSamePlace(const platform::PostalAddress& one, const platform::PostalAddress& other) const override {
    return platform::EqualsIgnoringCase(one.line1, other.line1) &&
           one.zip.substr(0, 5) == other.zip.substr(0, 5);
  }
};

}  // namespace fakes
