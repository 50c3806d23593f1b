#include "desktop/pages/page_view.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>

#include "desktop/binders/grid_panel.h"

namespace desktop {

PageView::PageView(QWidget* parent) : QScrollArea(parent), content_(new QWidget) {
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidget(content_);
}

void PageView::AddResults(QBoxLayout& layout, platform::Grid& grid, const char* name,
                          platform::ViewSettings& settings) {
  auto* results = new GridPanel(grid, QString::fromUtf8(name), settings);
  layout.addWidget(results, 1);
  results->TakeKeysOf(*this);
  grid_ = &grid;
  results_ = &results->view();
  connections_.push_back(grid.ContentChanged.Connect([this] { has_results_ = true; }));
  connections_.push_back(grid.LookChanged.Connect([this] { ResultsChanged(); }));
}

void PageView::HandOnKeyboardOf(platform::Frame& frame, QWidget& box) {
  connections_.push_back(frame.LookChanged.Connect([this, &frame, &box] {
    const auto* keyboard = window()->focusWidget();
    if (!frame.enabled() && keyboard != nullptr && box.isAncestorOf(keyboard)) results_->setFocus();
  }));
}

void PageView::PressDefaultButton() {
  has_results_ = false;
  left_field_ = QApplication::focusWidget();
  default_button_->click();
  awaits_results_ = grid_ != nullptr && !grid_->enabled();  // until the reply
}

// Told while the reply is handled: what the user does next comes afterwards.
void PageView::ResultsChanged() {
  if (!awaits_results_ || !grid_->enabled()) return;
  awaits_results_ = false;
  QMetaObject::invokeMethod(
      this, [this] { GoOnInResults(); }, Qt::QueuedConnection);
}

void PageView::GoOnInResults() {
  const auto* focus = QApplication::focusWidget();
  if (left_field_ == nullptr || (focus != default_button_ && focus != left_field_)) return;  // moved on
  const int count = results_->model()->rowCount();
  if (!has_results_ || count == 0) return left_field_->setFocus();
  results_->setFocus();
  if (count == 1) {
    results_->selectRow(0);
  } else {
    results_->selectionModel()->clearCurrentIndex();
  }
}

void PageView::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const bool in_list = dynamic_cast<QAbstractItemView*>(QApplication::focusWidget()) != nullptr;
  if (enter && !in_list && default_button_ != nullptr) {
    PressDefaultButton();
  } else {
    QScrollArea::keyPressEvent(event);
  }
}

}  // namespace desktop
