#pragma once

#include <string>

#include "platform/controls/text_field.h"
#include "platform/controls/typed_text.h"
#include "platform/text.h"

namespace platform {

/// A text of several lines. Lines end with carriage return and line feed, whatever the host's widget ends
/// them with.
class TextBox : public TextField {
 public:
  /// The user can read and copy it, not change it.
  bool read_only() const { return read_only_; }
  void SetReadOnly(bool read_only) { Assign(read_only_, read_only); }

  /// The user changes the text, taken as TypedText has it; nothing happens while it is read only, disabled or
  /// hidden.
  void UserEdits(const std::string& text) {
    if (!read_only_ && enabled() && visible()) SetText(WithLineBreaks(TypedText(text)));
  }
  /// The user leaves the box.
  void UserLeaves() { LostFocus(); }
  Event<> LostFocus;

 private:
  static std::string WithLineBreaks(const std::string& text) {
    return ReplaceAll(ReplaceAll(ReplaceAll(text, "\r\n", "\n"), "\r", "\n"), "\n", kLineBreak);
  }

  bool read_only_ = false;
};

}  // namespace platform
