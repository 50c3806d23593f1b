#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/parties/print_choice.h"

namespace wordprocessor {

/// The print queues of this machine and its network. User-interface thread.
class PrinterQueues {
 public:
  virtual ~PrinterQueues() = default;

  /// Empty where there is none, or no spooler. Sorted.
  virtual std::vector<std::string> Names() const = 0;
  /// The user's or the system's choice among them; "" where there is no queue.
  virtual std::string Default() const = 0;
  /// Returns queue and job number once the spooler has accepted the file. Throws Failure kUnavailable with
  /// the spooler's reason.
  virtual std::string Print(const platform::PrintChoice& choice, const std::filesystem::path& pdf,
                            const std::string& title) = 0;
};

/// The queues of the CUPS server this user's settings name.
class CupsQueues : public PrinterQueues {
 public:
  std::vector<std::string> Names() const override;
  std::string Default() const override;
  std::string Print(const platform::PrintChoice& choice, const std::filesystem::path& pdf,
                    const std::string& title) override;
};

}  // namespace wordprocessor
