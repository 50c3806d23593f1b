#pragma once

#include <string>

#include "platform/controls/control.h"

namespace platform {

/// A text the user reads. "&&" stands for one ampersand.
class Label : public Control {
 public:
  Label() = default;
  explicit Label(std::string caption) : caption_(std::move(caption)) {}
  const std::string& caption() const { return caption_; }
  void SetCaption(std::string caption) { Assign(caption_, std::move(caption)); }

 private:
  std::string caption_;
};

/// A captioned frame: disabling it disables what stands in it, without touching those controls' own state.
class Frame : public Label {
 public:
  using Label::Label;
};

}  // namespace platform
