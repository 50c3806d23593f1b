#include "desktop/form_dialog.h"

#include <QCloseEvent>
#include <QVBoxLayout>

#include "desktop/qt_text.h"

namespace desktop {

FormDialog::FormDialog(platform::Form& form, QWidget* view, QWidget* parent) : QDialog(parent), form_(form) {
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(view);
  setWindowTitle(ToQt(form.caption()));
  caption_changed_ = form.CaptionChanged.Connect([this] { setWindowTitle(ToQt(form_.caption())); });
  hidden_ = form.Hidden.Connect([this] { FormHidden(); });
}

void FormDialog::Present() {
  show();
  form_.Activate();
}

void FormDialog::FormHidden() {
  hide();
  if (parentWidget() != nullptr) parentWidget()->activateWindow();  // not every host does
  if (form_hidden) form_hidden();
}

void FormDialog::reject() {
  form_.Close();
}

void FormDialog::closeEvent(QCloseEvent* event) {
  event->ignore();  // the form decides, and hides this window when it agrees
  form_.Close();
}

}  // namespace desktop
