#include "desktop/shell/form_dialog.h"

#include <QCloseEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "desktop/look/qt_text.h"
#include "desktop/look/screen_fit.h"

namespace desktop {
namespace {

/// For a screen that has no room for all of it.
QWidget* Scrolled(QWidget* view) {
  auto* scrolled = new QScrollArea;
  scrolled->setWidget(view);
  scrolled->setWidgetResizable(true);
  scrolled->setFrameShape(QFrame::NoFrame);
  scrolled->setFocusPolicy(Qt::NoFocus);
  return scrolled;
}

}  // namespace

FormDialog::FormDialog(platform::Form& form, QWidget* view, QWidget* parent)
    : QDialog(parent), form_(form), layout_(new QVBoxLayout(this)) {
  const auto smallest = view->minimumSizeHint().expandedTo(view->minimumSize());
  const bool fits = smallest.boundedTo(RoomOnScreen(*this)) == smallest;
  layout_->addWidget(fits ? view : Scrolled(view), 1);
  for (auto* button : findChildren<QPushButton*>()) {
    if (!button->isDefault()) continue;
    button->setDefault(false);  // the dialog has to hear it, or takes another one for Enter
    button->setDefault(true);
  }
  if (!fits) resize(view->sizeHint().boundedTo(RoomOnScreen(*this)));
  KeepOnScreen(*this);
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

void FormDialog::ShowNotice(const QString& text) {
  delete notice_;
  notice_ = new NoticeBar(text, nullptr, this);
  layout_->insertWidget(0, notice_);
}

void FormDialog::CloseForm() {
  const QPointer<QWidget> field = focusWidget();
  if (field) field->clearFocus();
  if (!form_.Close() && field) field->setFocus();
}

void FormDialog::reject() {
  CloseForm();
}

void FormDialog::closeEvent(QCloseEvent* event) {
  event->ignore();  // the form decides, and hides this window when it agrees
  CloseForm();
}

}  // namespace desktop
