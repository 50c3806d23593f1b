#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>

#include "platform/parties/address_verifier.h"

namespace postal {

/// A program that runs, with pipes to its standard input, output and error.
class ProgramProcess;

/// Asks a program of the office's: a JSON line an address on its standard input, a JSON line back.
/// docs/operations.md describes both. The program is started for the first address and kept; one that is
/// slow, dead or talks nonsense is ended with its process group, and started anew for the next address.
///
/// What the program passes is standardised; in other words than were entered it is suggested, so that the
/// user sees it.
class ProgramVerifier : public platform::AddressVerifier {
 public:
  /// `time_out`: from the question to the whole answer, the start of the program included.
  ProgramVerifier(std::filesystem::path program, std::chrono::milliseconds time_out);
  /// Ends the program with its process group.
  ~ProgramVerifier() override;

  bool IsSamePlace(const platform::PostalAddress& one, const platform::PostalAddress& other) const override;

 private:
  /// Throws Failure kTimedOut where no whole answer came in time, kUnavailable where the program does not
  /// start, has ended, or answers something else than docs/operations.md says, and when `ending` is stopped.
  platform::AddressVerdict Judge(const platform::PostalAddress& address,
                                 const std::stop_token& ending) override;
  std::string Ask(const std::string& question, const std::stop_token& ending);

  const std::filesystem::path program_;
  const std::chrono::milliseconds time_out_;
  std::unique_ptr<ProgramProcess> process_;  // null while none runs
  std::int64_t last_id_ = 0;
};

}  // namespace postal
