#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/event.h"

/// What a screen holds, without its pixels. The logic reads and writes these objects; a window, or a test,
/// shows and works them. User-interface thread only.
namespace platform {

/// What every control has: whether it can be used, is seen, and is marked as wrong, and why.
class Control {
 public:
  Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  bool enabled() const { return enabled_; }
  void SetEnabled(bool enabled) { Assign(enabled_, enabled); }
  bool visible() const { return visible_; }
  void SetVisible(bool visible) { Assign(visible_, visible); }
  bool marked_invalid() const { return marked_invalid_; }
  void SetMarkedInvalid(bool invalid) { Assign(marked_invalid_, invalid); }

  /// Why the value is not accepted: sentences for a user who wonders. Shown only while the control is marked;
  /// "" leaves the window's own words.
  const std::string& invalid_reason() const { return invalid_reason_; }
  void SetInvalidReason(std::string reason) { Assign(invalid_reason_, std::move(reason)); }

  /// What the holder keeps with the control; no effect.
  std::string Tag;

  /// Why the control cannot be used, for a user who wonders: sentences, a line each. Asked when it is wanted,
  /// and only while the control is disabled; empty where nobody knows. Decision [why-disabled].
  std::function<std::string()> why_disabled;

  /// Enabled, visible, marked or (where the control has one) caption has changed.
  Event<> LookChanged;

 protected:
  template <typename Held>
  bool Assign(Held& held, Held value) {
    if (held == value) return false;
    held = std::move(value);
    LookChanged();
    return true;
  }

 private:
  bool enabled_ = true;
  bool visible_ = true;
  bool marked_invalid_ = false;
  std::string invalid_reason_;
};

}  // namespace platform
