#pragma once

#include <string>

#include "platform/parties/print_fault.h"
#include "workspace/messaging/request_envelope.h"

namespace workspace {

/// Letters that are printed one after the other: the reply that confirms one brings the next.
class PrintRun {
 public:
  virtual ~PrintRun() = default;

  /// A letter of the run has been printed, and `message` carries its history record: counts it, adds what
  /// brings the next letter, and names the request. Throws Failure where there is no next letter to be had;
  /// the letter is counted and the message can be sent all the same.
  virtual void LetterPrinted(RequestDescription& message) = 0;
  /// A letter that was fetched was not printed: the run goes on with the next one, or is over.
  virtual void LetterFailed(const platform::PrintFault& fault) = 0;
  /// The run is over, because a letter that was printed could not be recorded or no next one be had. `reason`
  /// is "" where the user has cancelled it.
  virtual void Stop(const std::string& reason) = 0;
};

}  // namespace workspace
