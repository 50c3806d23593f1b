#include "tracking/run_progress.h"

namespace tracking {

void RunProgress::Begin() {
  Close();
  is_cancelled_ = false;
}

void RunProgress::Show(const std::string& text) {
  form_.progress.SetCaption(text);
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
