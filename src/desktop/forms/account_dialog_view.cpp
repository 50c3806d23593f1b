#include "desktop/forms/account_dialog_view.h"

#include <utility>

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "desktop/binders/command_binding.h"
#include "desktop/binders/field_layout.h"
#include "desktop/binders/pick_list_field.h"

namespace desktop {
namespace {

constexpr int kCustomersAboveAccounts = 5;
constexpr int kAccountsInSight = 4;
constexpr int kStatusLines = 2;

}  // namespace

AccountDialogView::AccountDialogView(customers::ZEMLO_SelectCustFormInq& form, QWidget* parent)
    : QWidget(parent),
      form_(form),
      select_(new CustSelectView(form.ZEMLO_CustSelect1, kCustomersAboveAccounts, this)),
      accounts_(new GridView(this)),
      ok_(MakeButton(form.mCmdButton[customers::ZEMLO_SelectCustFormInq::kOk], this)),
      cancel_(MakeButton(form.mCmdButton[customers::ZEMLO_SelectCustFormInq::kCancel], this)) {
  Bind(form_.mSdgGrid, *accounts_, QStringLiteral("Account List"));
  accounts_->setMinimumHeight((kAccountsInSight + 2) * accounts_->verticalHeader()->defaultSectionSize());
  LayOut();
  ok_->setDefault(true);
  connect(accounts_, &QAbstractItemView::doubleClicked, this, [this] { ok_->click(); });
  customer_chosen_ = form_.ZEMLO_CustSelect1.SelectionChanged.Connect([this] { awaits_accounts_ = true; });
  typed_ = form_.ZEMLO_CustSelect1.txtFind.Changed.Connect([this] { awaits_accounts_ = false; });
  accounts_changed_ = form_.mSdgGrid.ContentChanged.Connect([this] { MoveKeyboardToAccounts(); });
}

void AccountDialogView::LayOut() {
  auto* type = new PickListField(this);
  auto* criterion = new QHBoxLayout;
  criterion->addWidget(CaptionFor(*type, "Account &Type:"));
  criterion->addWidget(type, 1);
  Bind(form_.mKvcboDocType, *type);
  auto* box = new QGroupBox(QStringLiteral("Account List"), this);
  auto* list = new QVBoxLayout(box);
  list->addWidget(accounts_);
  auto* status = new QLabel(this);
  status->setWordWrap(true);
  status->setMinimumHeight(kStatusLines * status->fontMetrics().lineSpacing());
  Bind(form_.status_bar, *status);
  auto* ends = new QHBoxLayout;
  ends->addWidget(status, 1);
  ends->addWidget(ok_);
  ends->addWidget(cancel_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(select_, 1);
  layout->addLayout(criterion);
  layout->addWidget(box, 1);
  layout->addLayout(ends);
  setTabOrder(select_, type);
  setTabOrder(type, accounts_);
  setTabOrder(accounts_, ok_);
  setTabOrder(ok_, cancel_);
}

// Only from the line where the customer was chosen: whoever is elsewhere, or goes on finding, stays there.
void AccountDialogView::MoveKeyboardToAccounts() {
  const auto& rows = form_.mSdgGrid.rows();
  if (!rows || rows->IsEmpty() || !std::exchange(awaits_accounts_, false)) return;
  if (!select_->HasKeyboard() || form_.ZEMLO_CustSelect1.has_moved()) return;
  accounts_->setFocus();
  if (!accounts_->selectionModel()->hasSelection()) accounts_->selectionModel()->clearCurrentIndex();
}

void AccountDialogView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return cancel_->click();
  QWidget::keyPressEvent(event);
}

void AccountDialogView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  select_->Begin();
}

}  // namespace desktop
