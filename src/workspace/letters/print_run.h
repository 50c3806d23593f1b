#pragma once

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
  /// A letter could not be fetched, printed or recorded: the run is over, as if the user had cancelled it.
  virtual void Stop() = 0;
};

}  // namespace workspace
