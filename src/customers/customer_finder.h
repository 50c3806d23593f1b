#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "customers/found_customers.h"
#include "platform/parties/services.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/messaging/request_envelope.h"

namespace customers {

/// Customers that the server has found.
struct CustomerAnswer {
  std::vector<FoundCustomer> customers = {};
  bool has_more = false;   ///< than the answer brings
  std::size_t total = 0;   ///< how many match, as far as the server counts; 0 where it does not say
  std::string error = {};  ///< why there is no answer; "" where there is one
};

/// Asks the server for customers in the background, under an application name of its own, so that a request
/// of the workspace goes on beneath it. A newer question takes the place of the one before, whose answer is
/// dropped. No failure leaves it: what fails is an answer with its error.
class CustomerFinder {
 public:
  static constexpr std::size_t kRowsAtOnce = 20;
  using Take = std::function<void(CustomerAnswer)>;

  /// `services` outlives the finder.
  explicit CustomerFinder(const platform::Services& services);

  /// Twenty of those who match the text, from `first_row` on (counted from 1). `take` is called from the
  /// event loop; at once where the question could not be sent.
  void AskFor(const std::string& text, std::size_t first_row, Take take);
  /// The customers of these ids, in that order, without those that are gone.
  void AskForIds(const std::vector<std::string>& ids, Take take);
  /// No answer is wanted any more.
  void Forget() { pending_.Forget(); }
  bool IsAwaited() const { return pending_.IsAwaited(); }

 private:
  void Ask(std::vector<platform::KeyItem> keys, Take take);
  void DataReady(const std::string& application);
  CustomerAnswer Read(const workspace::Reply& reply) const;

  const platform::Services& services_;
  workspace::PendingRequest pending_;
  std::unique_ptr<platform::ReplyListener> mVemtMessage_;
  workspace::RequestEnvelope envelope_;
  Take take_;
  std::vector<platform::Connection> connections_;
};

}  // namespace customers
