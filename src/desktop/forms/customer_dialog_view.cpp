#include "desktop/forms/customer_dialog_view.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "desktop/binders/field_layout.h"

namespace desktop {
namespace {

constexpr int kCustomersInSight = 10;

}  // namespace

CustomerDialogView::CustomerDialogView(customers::frmCustSelect& form, QWidget* parent)
    : QWidget(parent),
      select_(new CustSelectView(form.ZEMLO_CustSelect1, kCustomersInSight, this)),
      ok_(MakeButton(form.cmdOk, this)),
      cancel_(MakeButton(form.cmdCancel, this)) {
  auto* ends = new QHBoxLayout;
  ends->addStretch();
  ends->addWidget(ok_);
  ends->addWidget(cancel_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(select_, 1);
  layout->addLayout(ends);
  ok_->setDefault(true);
  select_->chosen_for_good = [this] { ok_->click(); };
}

void CustomerDialogView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return cancel_->click();
  QWidget::keyPressEvent(event);
}

void CustomerDialogView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  select_->Begin();
}

}  // namespace desktop
