#pragma once

#include <string>

#include "platform/controls/control.h"

namespace platform {

/// A button. "&" in the caption marks the mnemonic.
class Command : public Control {
 public:
  Command() = default;
  explicit Command(std::string caption) : caption_(std::move(caption)) {}
  const std::string& caption() const { return caption_; }
  void SetCaption(std::string caption) { Assign(caption_, std::move(caption)); }

  /// The user presses it; nothing happens while it is disabled or hidden.
  void UserClicks() {
    if (enabled() && visible()) Click();
  }
  Event<> Click;

 private:
  std::string caption_;
};

}  // namespace platform
