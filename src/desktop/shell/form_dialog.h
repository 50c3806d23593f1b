#pragma once

#include <QDialog>
#include <QPointer>

#include "desktop/shell/notice_bar.h"
#include "platform/controls/form.h"

class QVBoxLayout;

namespace desktop {

/// The window of one form: its caption, and its end. Closing it (close box, Esc) asks the form; hiding the
/// form closes it. The form outlives the dialog.
class FormDialog : public QDialog, public NoticePlace {
 public:
  /// Takes `view`, which shows the form's controls.
  FormDialog(platform::Form& form, QWidget* view, QWidget* parent);

  /// Shows the form, and itself while the form stays shown.
  void Present();

  std::function<void()> form_hidden;

  /// A line above the form.
  void ShowNotice(const QString& text) override;
  void reject() override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  /// The field being left completes its value first, as it does before a button acts.
  void CloseForm();
  void FormHidden();

  platform::Form& form_;
  QVBoxLayout* layout_;
  QPointer<NoticeBar> notice_;
  platform::Connection caption_changed_;
  platform::Connection hidden_;
};

}  // namespace desktop
