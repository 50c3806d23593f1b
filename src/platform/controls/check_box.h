#pragma once

#include <string>

#include "platform/controls/control.h"

namespace platform {

/// A box the user ticks.
class CheckBox : public Control {
 public:
  CheckBox() = default;
  explicit CheckBox(std::string caption) : caption_(std::move(caption)) {}
  const std::string& caption() const { return caption_; }

  bool ticked() const { return ticked_; }
  /// From code or from the user alike: a box whose value differs afterwards tells Click.
  void SetTicked(bool ticked) {
    if (Assign(ticked_, ticked)) Click();
  }
  /// Nothing happens while it is disabled or hidden.
  void UserClicks() {
    if (enabled() && visible()) SetTicked(!ticked_);
  }
  Event<> Click;

 private:
  std::string caption_;
  bool ticked_ = false;
};

}  // namespace platform
