#pragma once

#include <optional>

#include "platform/controls/control.h"
#include "platform/value.h"

namespace platform {

/// A date picker with a check box: its value may be empty.
class DateField : public Control {
 public:
  const std::optional<Date>& value() const { return value_; }
  /// Tells Changed when the value differs. A day before the earliest one becomes the earliest.
  void SetValue(std::optional<Date> value) {
    if (value && earliest_ && *value < *earliest_) value = earliest_;
    if (value == value_) return;
    value_ = value;
    Changed();
  }
  bool IsEmpty() const { return !value_; }

  const std::optional<Date>& earliest() const { return earliest_; }
  void SetEarliest(Date earliest) {
    earliest_ = earliest;
    LookChanged();
  }

  Event<> Changed;

 private:
  std::optional<Date> value_;
  std::optional<Date> earliest_;
};

}  // namespace platform
