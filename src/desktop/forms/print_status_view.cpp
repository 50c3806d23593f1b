#include "desktop/forms/print_status_view.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include "desktop/binders/command_binding.h"
#include "desktop/binders/field_layout.h"

namespace desktop {
namespace {

constexpr int kNarrowestBox = 320;  // the title can be read

}  // namespace

PrintStatusView::PrintStatusView(tracking::frmPrintStatus& form, QWidget* parent)
    : QWidget(parent), form_(form) {
  auto* progress = new QLabel(this);
  Bind(form.progress, *progress);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(progress);
  auto* letter = new QLabel(this);
  letter->setWordWrap(true);
  Bind(form.letter, *letter, QStringLiteral("Letter"));
  layout->addWidget(letter);
  layout->addWidget(MakeButton(form.cancel, this), 0, Qt::AlignRight);
  setMinimumWidth(kNarrowestBox);
}

void PrintStatusView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return form_.cancel.UserClicks();
  QWidget::keyPressEvent(event);
}

}  // namespace desktop
