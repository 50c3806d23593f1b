#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "platform/parties/services.h"
#include "workspace/requests/letter_request.h"

namespace workspace {

/// The four choices of the correspondence page.
class OnlineActions {
 public:
  /// `create` starts a letter whose request is valid; `reprint` fetches the listed letter for a request name.
  OnlineActions(const platform::Services& services, LetterRequest& request, std::function<void()> create,
                std::function<void(const std::string& request_name)> reprint)
      : services_(services), request_(request), create_(std::move(create)), reprint_(std::move(reprint)) {}

  /// Called for a click, and again when a chosen option is clicked once more.
  void OnlineActClick(std::size_t option);

 private:
  const platform::Services& services_;
  LetterRequest& request_;
  const std::function<void()> create_;
  const std::function<void(const std::string& request_name)> reprint_;
};

}  // namespace workspace
