#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "platform/controls/control.h"

namespace platform {

/// A key of the keyboard and what was held with it, as a field is told of it.
struct Key {
  int code = 0;  ///< that of its character, 45 for Insert; 0 for a key that has neither
  bool shift = false;
  bool control = false;
  bool alt = false;

  bool operator==(const Key&) const = default;
  /// Shift and Insert. Hosts that paste with another key as well tell it as this one.
  static constexpr Key Paste();
};

constexpr Key Key::Paste() {
  constexpr int kInsert = 45;
  return {kInsert, /*shift=*/true};
}

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
  /// Shown and copied from, but not changed by the user. Set before the field is shown.
  bool read_only = false;
  /// Whether a typed character is taken, and as what; nothing drops it with a beep. Empty takes every key.
  std::function<std::optional<char32_t>(char32_t key)> key_filter;
  /// Whether a text may be pasted, dropped or put in from a menu; one that may not is dropped with a beep.
  /// The text is one line without control characters (PastedLine). Empty takes every text.
  std::function<bool(const std::string& text)> paste_filter;

  Event<> Changed;

  // What the user does with keyboard and mouse, told by the view: the pressing before the text changes, the
  // releasing after it. Pasting from a menu and dropping a text on the field are the mouse's.
  Event<Key> KeyDown;
  Event<Key> KeyUp;
  Event<> MouseDown;
  Event<> MouseUp;

 private:
  std::string text_;
};

}  // namespace platform
