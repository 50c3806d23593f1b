#include "desktop/forms/customer_search_view.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "desktop/binders/command_binding.h"
#include "desktop/binders/field_layout.h"
#include "desktop/binders/text_field_binding.h"
#include "desktop/look/screen_fit.h"

namespace desktop {
namespace {

constexpr QSize kSmallestList(720, 320);
constexpr int kNameColumn = 1;  // the longest texts

}  // namespace

CustomerSearchView::CustomerSearchView(customers::frmCustSearch& form, QWidget* parent)
    : QWidget(parent),
      form_(form),
      find_(new QLineEdit(this)),
      search_(MakeButton(form.cmdFind, this)),
      found_(new GridView(this)),
      ok_(MakeButton(form.cmdOk, this)) {
  LayOut();
  Bind(form_.txtFind, *find_);
  Bind(form_.sdgGrid, *found_, QStringLiteral("Customers found"));
  found_->horizontalHeader()->setSectionResizeMode(kNameColumn, QHeaderView::Stretch);
  found_->horizontalHeader()->setStretchLastSection(false);
  connect(found_, &QAbstractItemView::doubleClicked, this, [this] { ok_->click(); });
  search_->setDefault(true);
  search_changed_ = form_.cmdFind.LookChanged.Connect([this] { MoveKeyboardAfterSearch(); });
}

void CustomerSearchView::LayOut() {
  auto* criterion = new QHBoxLayout;
  criterion->addWidget(CaptionFor(*find_, "&Find:"));
  criterion->addWidget(find_, 1);
  criterion->addWidget(search_);
  auto* status = new QLabel(this);
  status->setWordWrap(true);
  Bind(form_.status, *status);
  found_->setSelectionMode(QAbstractItemView::SingleSelection);
  found_->setMinimumSize(SmallestOnScreen(*this, kSmallestList));
  auto* ends = new QHBoxLayout;
  ends->addStretch();
  ends->addWidget(ok_);
  ends->addWidget(MakeButton(form_.cmdCancel, this));

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(criterion);
  layout->addWidget(status);
  layout->addWidget(found_, 1);
  layout->addLayout(ends);
}

void CustomerSearchView::MoveKeyboardAfterSearch() {
  const bool ended = searching_ && form_.cmdFind.enabled();
  searching_ = !form_.cmdFind.enabled();
  if (!ended) return;
  if (found_->model()->rowCount() > 0) {
    found_->setFocus();
    // The first arrow chooses the first of several.
    if (!found_->selectionModel()->hasSelection()) found_->selectionModel()->clearCurrentIndex();
  } else {
    find_->setFocus();
    find_->selectAll();
  }
}

void CustomerSearchView::GoOnInList() {
  found_->setFocus();
  if (!found_->selectionModel()->hasSelection()) found_->selectRow(0);
}

void CustomerSearchView::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && found_->hasFocus()) {
    ok_->click();
  } else if (enter && find_->hasFocus()) {
    form_.UserEntersText();  // the dialog's default has moved on with the keyboard
  } else if (event->key() == Qt::Key_Down && find_->hasFocus() && found_->model()->rowCount() > 0) {
    GoOnInList();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void CustomerSearchView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  find_->setFocus();
}

}  // namespace desktop
