#include "desktop/binders/grid_find_bar.h"

#include <algorithm>

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

#include "desktop/look/qt_text.h"

namespace desktop {
namespace {

constexpr int kWidestCountInCharacters = 16;

}  // namespace

GridFindBar::GridFindBar(platform::Grid& grid, GridView& view, QWidget* parent)
    : QWidget(parent),
      grid_(grid),
      view_(view),
      search_(grid),
      text_(new QLineEdit(this)),
      count_(new QLabel(this)) {
  LayOut();
  hide();
  again_.setSingleShot(true);
  connect(text_, &QLineEdit::textChanged, this, [this] { Search(); });
  connect(&again_, &QTimer::timeout, this, [this] {
    if (isVisible() && search_.FindAgain()) ShowCount();
  });
  content_changed_ = grid_.ContentChanged.Connect([this] {
    if (isVisible()) again_.start();
  });
}

void GridFindBar::LayOut() {
  text_->setAccessibleName(QStringLiteral("Find in the list"));
  text_->setClearButtonEnabled(true);
  text_->installEventFilter(this);
  text_->findChild<QToolButton*>()->setAccessibleName(QStringLiteral("Clear the text"));
  count_->setMinimumWidth(fontMetrics().averageCharWidth() * kWidestCountInCharacters);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(new QLabel(QStringLiteral("Find:"), this));
  layout->addWidget(text_, 1);
  layout->addWidget(count_);
  AddButton("Previous", "Previous hit", &GridFindBar::GoToPrevious);
  AddButton("Next", "Next hit", &GridFindBar::GoToNext);
  AddButton("Close", "Close the search", &GridFindBar::Close);
}

void GridFindBar::AddButton(const char* caption, const char* name, void (GridFindBar::*work)()) {
  auto* button = new QToolButton(this);
  button->setText(QString::fromUtf8(caption));
  button->setAccessibleName(QString::fromUtf8(name));
  connect(button, &QToolButton::clicked, this, work);
  layout()->addWidget(button);
}

void GridFindBar::Open() {
  const auto current = view_.currentIndex();
  from_row_ = static_cast<std::size_t>(std::max(0, current.isValid() ? current.row() : view_.rowAt(0)));
  show();
  text_->setFocus();
  text_->selectAll();
  Search();
}

void GridFindBar::Close() {
  StartsAnew();
  hide();
  view_.ShowHits(nullptr);
  view_.TellFound();
  view_.setFocus();
}

void GridFindBar::Search() {
  const auto shown = view_.columns().Shown();
  searched_columns_.assign(shown.begin(), shown.end());
  search_.Find(FromQt(text_->text()), searched_columns_, from_row_);
  ShowHits();
}

bool GridFindBar::SearchInOtherColumns() {
  const auto shown = view_.columns().Shown();
  if (!isVisible()) {
    Open();
  } else if (std::ranges::equal(shown, searched_columns_, {}, {},
                                [](std::size_t column) { return static_cast<int>(column); })) {
    return false;
  } else {
    Search();
  }
  return true;
}

void GridFindBar::GoToNext() {
  if (SearchInOtherColumns() || StartsAnew()) return;
  search_.GoToNext();
  ShowHits();
}

void GridFindBar::GoToPrevious() {
  if (SearchInOtherColumns() || StartsAnew()) return;
  search_.GoToPrevious();
  ShowHits();
}

bool GridFindBar::StartsAnew() {
  search_.FindAgain();
  if (view_.currentIndex().isValid()) return false;
  ShowHits();
  return true;
}

void GridFindBar::ShowHits() {
  ShowCount();
  view_.GoToHit(search_);
}

void GridFindBar::ShowCount() {
  const auto current = search_.current();
  QString count;
  if (current) {
    from_row_ = search_.hits()[*current].row;
    count = QStringLiteral("%L1 of %L2").arg(*current + 1).arg(search_.hits().size());
  } else if (!text_->text().isEmpty()) {
    count = QStringLiteral("Not found");
  }
  count_->setText(count);
  text_->setAccessibleDescription(count);
  view_.ShowHits(&search_);
}

// Who turns to something else acts on what was found; in the list itself another row may be chosen yet.
bool GridFindBar::eventFilter(QObject* text, QEvent* event) {
  if (event->type() == QEvent::FocusOut && QApplication::focusWidget() != &view_) view_.TellFound();
  return QWidget::eventFilter(text, event);
}

// A key that the text field does not take comes here.
void GridFindBar::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (event->modifiers().testFlag(Qt::ShiftModifier)) return GoToPrevious();
      return search_.hits().size() == 1 ? Close() : GoToNext();
    case Qt::Key_Escape:
      return Close();
    case Qt::Key_Down:
    case Qt::Key_Up:
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
      view_.setFocus();
      QApplication::sendEvent(&view_, event);
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace desktop
