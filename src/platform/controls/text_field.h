#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "platform/controls/control.h"

namespace platform {

/// A line of text the user types.
class TextField : public Control {
 public:
  const std::string& text() const { return text_; }
  /// From code or from the user alike; tells Changed when the text differs.
  void SetText(std::string text) {
    if (text == text_) return;
    text_ = std::move(text);
    Changed();
  }
  bool IsEmpty() const { return text_.empty(); }

  /// Characters the user may type at most; 0 for any number. Code may set more.
  std::size_t max_length = 0;
  /// Whether a typed character is taken, and as what; nothing drops it with a beep. Empty takes every key.
  std::function<std::optional<char32_t>(char32_t key)> key_filter;

  Event<> Changed;

 private:
  std::string text_;
};

}  // namespace platform
