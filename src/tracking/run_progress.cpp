#include "tracking/run_progress.h"

#include "platform/text.h"

namespace tracking {

void RunProgress::Begin() {
  Close();
  is_cancelled_ = false;
}

void RunProgress::Show(const std::string& text, const std::string& letter) {
  form_.progress.SetCaption(text);
  form_.letter.SetCaption(platform::ReplaceAll(letter, "&", "&&"));
  if (form_.shown() || is_cancelled_) return;
  form_.Cancelled = false;
  services_.host.Show(form_);
}

bool RunProgress::TakeCancellation() {
  if (form_.Cancelled) Cancel();
  return is_cancelled_;
}

void RunProgress::Cancel() {
  is_cancelled_ = true;
  Close();
}

void RunProgress::Close() {
  if (form_.shown()) form_.Close();
}

}  // namespace tracking
