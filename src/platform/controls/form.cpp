#include "platform/controls/form.h"

#include <utility>

namespace platform {

void Form::SetCaption(std::string caption) {
  if (caption == caption_) return;
  caption_ = std::move(caption);
  CaptionChanged();
}

void Form::Load() {
  if (loaded_) return;
  loaded_ = true;
  RunHandler([this] { OnLoad(); });
}

void Form::Activate() {
  Load();
  if (!loaded_) return;  // it closed itself while it was loading
  shown_ = true;
  RunHandler([this] { OnActivate(); });
}

void Form::Hide() {
  if (!shown_) return;
  shown_ = false;
  Hidden();  // last: an observer may destroy the form
}

bool Form::Close() {
  if (handlers_ == 0) return Unload();
  close_wanted_ = true;
  return true;
}

void Form::HandlerEnded() {
  if (--handlers_ > 0 || !close_wanted_) return;
  close_wanted_ = false;
  Unload();
}

bool Form::Unload() {
  if (!loaded_) return true;
  // What the two handlers close is this form, which is closing already.
  ++handlers_;
  const bool may_close = OnQueryUnload();
  if (may_close) OnUnload();
  --handlers_;
  close_wanted_ = false;
  if (!may_close) return false;
  loaded_ = false;
  Hide();
  return true;
}

}  // namespace platform
