#include "desktop/binders/grid_find_bar.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

#include "desktop/qt_text.h"

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
    if (isVisible() && search_.FindAgain()) ShowHits();
  });
  content_changed_ = grid_.ContentChanged.Connect([this] {
    if (isVisible()) again_.start();
  });
}

void GridFindBar::LayOut() {
  text_->setAccessibleName(QStringLiteral("Find in the list"));
  text_->setClearButtonEnabled(true);
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
  hide();
  view_.ShowHits(nullptr);
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
  if (SearchInOtherColumns()) return;
  search_.GoToNext();
  ShowHits();
}

void GridFindBar::GoToPrevious() {
  if (SearchInOtherColumns()) return;
  search_.GoToPrevious();
  ShowHits();
}

void GridFindBar::ShowHits() {
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

// A key that the text field does not take comes here.
void GridFindBar::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && event->modifiers().testFlag(Qt::ShiftModifier)) {
    GoToPrevious();
  } else if (enter) {
    GoToNext();
  } else if (event->key() == Qt::Key_Escape) {
    Close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace desktop
