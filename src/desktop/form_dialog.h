#pragma once

#include <QDialog>

#include "platform/controls/form.h"

namespace desktop {

/// The window of one form: its caption, and its end. Closing it (close box, Esc) asks the form; hiding the
/// form closes it. The form outlives the dialog.
class FormDialog : public QDialog {
 public:
  /// Takes `view`, which shows the form's controls.
  FormDialog(platform::Form& form, QWidget* view, QWidget* parent);

  /// Shows the form, and itself while the form stays shown.
  void Present();

  std::function<void()> form_hidden;

  void reject() override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void FormHidden();

  platform::Form& form_;
  platform::Connection caption_changed_;
  platform::Connection hidden_;
};

}  // namespace desktop
