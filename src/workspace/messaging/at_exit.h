#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/parties/services.h"

namespace workspace {

/// Runs a step when the scope ends, however it ends. A step that fails is reported under the procedure.
class AtExit {
 public:
  AtExit(const platform::Services& services, std::string_view procedure, std::function<void()> step)
      : services_(services), procedure_(procedure), step_(std::move(step)) {}
  AtExit(const AtExit&) = delete;
  AtExit& operator=(const AtExit&) = delete;
  ~AtExit() {
    if (step_) platform::Trap(services_, procedure_, step_);
  }

 private:
  const platform::Services& services_;
  const std::string procedure_;
  const std::function<void()> step_;
};

}  // namespace workspace
