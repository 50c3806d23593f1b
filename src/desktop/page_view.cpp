#include "desktop/page_view.h"

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
}

void PageView::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const bool in_list = dynamic_cast<QAbstractItemView*>(QApplication::focusWidget()) != nullptr;
  if (enter && !in_list && default_button_ != nullptr) {
    default_button_->click();
  } else {
    QScrollArea::keyPressEvent(event);
  }
}

}  // namespace desktop
