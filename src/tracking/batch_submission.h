#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/parties/services.h"
#include "platform/record_set.h"
#include "tracking/row_format.h"
#include "workspace/messaging/page_index.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/messaging/request_envelope.h"
#include "workspace/pages/pages.h"

namespace tracking {

/// Gives the selected letters to the coming batch run, and shows in their rows what came of it.
class BatchSubmission {
 public:
  /// What it works with and on; all of it outlives this.
  struct Uses {
    const platform::Services& services;
    const workspace::PendingRequest& pending;
    const std::string& message_title;
    workspace::Pages& pages;
    workspace::RequestEnvelope& envelope;
    RowFormat& row_format;
    std::function<void()> rows_changed;  ///< other statuses may allow other actions
  };
  explicit BatchSubmission(Uses uses) : uses_(std::move(uses)) {}

  /// Sends an item for each selected letter of the page in front, in the order of their selection. `action`:
  /// "REP", printed again; "RESUBMIT": letters that were merged or have failed are printed again, the others
  /// made again; "DEL", taken back. Returns whether the request is under way; a failure is reported.
  bool SubmitBatch(const std::string& action);

  /// The reply to what is recorded of letters: where it tells what came of items, their rows take it over.
  void Replied(const workspace::Reply& reply);
  /// The reply was an error.
  void Failed();
  /// A reply has been handled: says in a sentence what came of the items, and in a box which were refused.
  void ReplyHandled();

  /// What came of each item, as the last reply told it (record CORR_BITEM_OUTCOME); null before, and after a
  /// request that came to nothing.
  const std::shared_ptr<platform::RecordSet>& outcomes() const { return outcomes_; }

 private:
  struct Outcome {
    std::size_t taken = 0;
    std::size_t already = 0;
    std::size_t refused = 0;
    std::vector<std::string> reasons = {};  ///< of those refused, the first ones
  };

  workspace::RecordDescription Items(const std::string& action) const;
  void UpdateRows(workspace::PageIndex page, const platform::RecordSet& outcomes) const;
  void TellRefused(const Outcome& outcome) const;
  void Warn(const std::string& text) const;

  const Uses uses_;
  std::optional<workspace::PageIndex> page_;  // whose letters are under way
  std::optional<Outcome> outcome_;            // yet to be told
  bool takes_back_ = false;
  std::shared_ptr<platform::RecordSet> outcomes_;
};

}  // namespace tracking
