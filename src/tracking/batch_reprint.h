#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "platform/counter.h"
#include "platform/parties/services.h"
#include "tracking/run_progress.h"
#include "workspace/letters/print_run.h"
#include "workspace/messaging/request_envelope.h"

namespace tracking {

/// Letters of one type that a batch run holds for a Troop/District, printed one after the other, and the
/// report of how many were printed.
class BatchReprint : public workspace::PrintRun {
 public:
  /// Which letters there are; the total is what the server counts for the whole run.
  struct Letters {
    std::string letter_type;  ///< "110" certificates of tax liability, "109" tax warrants
    std::string station;      ///< troop and district
    std::deque<std::int32_t> sequence_numbers;
    std::int16_t total = 0;
  };

  /// All references outlive this.
  BatchReprint(const platform::Services& services, workspace::RequestEnvelope& envelope)
      : services_(services), envelope_(envelope), progress_(services) {}

  /// These are printed next; the run starts with the fetch of the first one.
  void Prepare(Letters letters);
  /// Takes the next letter to fetch off the list, for a run of that request name; 0 where none is left, or
  /// for a request that is no batch reprint.
  std::int32_t TakeNext(std::string_view request_name);
  /// Whether letters of that type are left to print and the run was not cancelled.
  bool HasLettersToReprint(std::string_view letter_type) const;

  void LetterPrinted(workspace::RequestDescription& message) override;
  void LetterFailed(const platform::PrintFault& fault) override { Stop(fault.reason); }
  /// Cancels the run and reports the counts reached.
  void Stop(const std::string& reason) override;
  /// Reports to the server how many letters were printed; `status` is shown where it is not "".
  void SendBatchCount(std::string_view status);

  static bool IsReprint(std::string_view request_name);

 private:
  void ShowProgress();
  void SendBatchCountUpd(workspace::RequestDescription& message) const;
  std::string Progress(const char* word) const;

  const platform::Services& services_;
  workspace::RequestEnvelope& envelope_;

  Letters letters_;
  platform::Counter count_;  ///< letters found
  platform::Counter printed_;
  RunProgress progress_;
};

}  // namespace tracking
