#include "desktop/binders/grid_view.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <utility>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include "desktop/binders/binding.h"
#include "desktop/binders/grid_header.h"
#include "desktop/binders/grid_menu.h"
#include "desktop/look/qt_text.h"
#include "platform/controls/grid_text.h"

namespace desktop {
namespace {

// Each row that the grid is told of may ask the server for its customer: going through hits must not.
constexpr std::chrono::milliseconds kUntilSearchRests(400);

/// A cell with a colour of its own keeps it in a selected row.
class GridCell : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->backgroundBrush.style() != Qt::NoBrush) option->state &= ~QStyle::State_Selected;
  }
};

/// Rows next to each other as one range.
QItemSelection RangesOf(std::vector<std::size_t> rows, const QAbstractItemModel& model) {
  std::ranges::sort(rows);
  QItemSelection ranges;
  for (std::size_t first = 0, last = 0; first < rows.size(); first = ++last) {
    while (last + 1 < rows.size() && rows[last + 1] == rows[last] + 1) ++last;
    ranges.select(model.index(static_cast<int>(rows[first]), 0),
                  model.index(static_cast<int>(rows[last]), 0));
  }
  return ranges;
}

bool IsModifier(int key) {
  return key == Qt::Key_Alt || key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Meta ||
         key == Qt::Key_AltGr;
}

QMenu& MenuOf(QWidget& widget) {
  auto* menu = new QMenu(&widget);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  return *menu;
}

}  // namespace

GridView::GridView(QWidget* parent) : QTableView(parent) {
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setItemDelegate(new GridCell(this));
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  tell_found_soon_.setSingleShot(true);
  tell_found_soon_.setInterval(kUntilSearchRests);
  connect(&tell_found_soon_, &QTimer::timeout, this, &GridView::TellFound);
}

void GridView::SetGrid(platform::Grid& grid, const QString& name) {
  model_ = new GridModel(grid, this);
  setAccessibleName(name);
  SetHeading();
  setModel(model_);
  columns_ = std::make_unique<GridColumns>(*this, *model_);
  grid_ = &grid;  // from here on a selection is the user's
  content_changed_ = grid.ContentChanged.Connect([this] { ContentChanged(); });
  row_wanted_ = grid.RowWanted.Connect([this](std::size_t row) { BringIntoSight(row); });
  ShowOrder();
  ShowSelection();
}

void GridView::SetHeading() {
  auto* heading = new GridHeader(*model_, this);
  setHorizontalHeader(heading);
  heading->chosen = [this](int section) {
    TellFound();
    grid_->UserSortsBy(model_->column(section).key);
    ShowOrder();
  };
  heading->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(heading, &QWidget::customContextMenuRequested, this, [this, heading](const QPoint& place) {
    auto& menu = MenuOf(*this);
    FillHeadingMenu(menu, *this, heading->logicalIndexAt(place));
    menu.popup(heading->mapToGlobal(place));
  });
}

void GridView::ContentChanged() {
  if (model_->loading()) return;
  if (model_->Refresh()) {
    current_id_.reset();
    found_id_.reset();
    columns_->Refresh();
    if (isVisible()) columns_->Fit();
  }
  ShowOrder();
  FollowCurrentRow();
  ShowSelection();
}

void GridView::ShowOrder() {
  const auto& order = grid_->order();
  int ordered = -1;
  for (int section = 0; order && section < model_->columnCount(); ++section) {
    if (model_->column(section).key == order->key) ordered = section;
  }
  horizontalHeader()->setSortIndicatorShown(ordered >= 0);
  horizontalHeader()->setSortIndicator(ordered,
                                       order && order->descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void GridView::SortBy(int section, bool descending) {
  TellFound();
  if (grid_->enabled()) grid_->SortBy(model_->column(section).key, descending);
}

void GridView::CopyRows() {
  auto rows = SelectedRows();
  if (rows.empty()) return;
  std::ranges::sort(rows);
  const auto shown = columns_->Shown();
  QApplication::clipboard()->setText(
      ToQt(platform::TextOfRows(*grid_, rows, std::vector<std::size_t>(shown.begin(), shown.end()))));
}

void GridView::GoToHit(const platform::GridSearch& search) {
  if (!search.current()) return LeaveHit();
  const auto& hit = search.hits()[*search.current()];
  MakeCurrent(model_->index(static_cast<int>(hit.row), static_cast<int>(search.ColumnOf(hit))));
  if (!grid_->enabled()) return;
  found_id_ = current_id_;
  SelectOnScreen({hit.row});
  tell_found_soon_.start();
}

// A row that was gone to while the text was being typed, and that the whole text does not find.
void GridView::LeaveHit() {
  tell_found_soon_.stop();
  if (!std::exchange(found_id_, std::nullopt)) return;
  ShowSelection();
  const auto& selected = grid_->selected_rows();
  if (selected.size() != 1) return;
  MakeCurrent(model_->index(static_cast<int>(selected.front()), std::max(0, currentIndex().column())));
}

void GridView::TellFound() {
  tell_found_soon_.stop();
  if (grid_ == nullptr) return;
  const auto found = std::exchange(found_id_, std::nullopt);
  const auto row = found ? grid_->RowOf(*found) : std::nullopt;
  if (row && grid_->selected_rows() != std::vector{*row}) grid_->UserSelects({*row});
  ShowSelection();
}

// Sideways the list stays where the user has it.
void GridView::BringIntoSight(std::size_t row) {
  const int across = horizontalScrollBar()->value();
  scrollTo(model_->index(static_cast<int>(row), std::max(0, currentIndex().column())));
  horizontalScrollBar()->setValue(across);
}

void GridView::MakeCurrent(const QModelIndex& cell) {
  selectionModel()->setCurrentIndex(cell, QItemSelectionModel::NoUpdate);
  scrollTo(cell);
}

void GridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  const auto row = static_cast<std::size_t>(current.row());
  const bool known = grid_ != nullptr && grid_->rows() && current.isValid();
  current_id_ = known ? std::optional(grid_->rows()->RowId(row)) : std::nullopt;
}

// The rows have another order: the keyboard goes on from the same letter, which stays in sight.
void GridView::FollowCurrentRow() {
  if (!current_id_ || held_) return;
  const auto row = grid_->RowOf(*current_id_);
  if (!row || static_cast<int>(*row) == currentIndex().row()) return;
  MakeCurrent(model_->index(static_cast<int>(*row), std::max(0, currentIndex().column())));
}

void GridView::showEvent(QShowEvent* event) {
  QTableView::showEvent(event);
  if (columns_) columns_->Fit();
}

void GridView::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  if (columns_) columns_->Fill();
}

void GridView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  if (grid_ == nullptr || showing_) return;
  found_id_.reset();  // the user has chosen otherwise
  click_waits_ = true;
  if (!held_) TellSelection();
}

void GridView::mousePressEvent(QMouseEvent* event) {
  held_ = true;
  QTableView::mousePressEvent(event);
  if (indexAt(event->position().toPoint()).isValid()) click_waits_ = true;  // a click even on the same row
}

void GridView::mouseReleaseEvent(QMouseEvent* event) {
  QTableView::mouseReleaseEvent(event);
  Released();
}

bool GridView::TakesKey(const QKeyEvent& event) {
  const auto key = event.keyCombination();
  const bool sorts = key == kSortAscending || key == kSortDescending;
  if (sorts && currentIndex().isValid()) SortBy(currentIndex().column(), key == kSortDescending);
  const bool copies = event.matches(QKeySequence::Copy);
  if (copies) CopyRows();
  return sorts || copies;
}

void GridView::contextMenuEvent(QContextMenuEvent* event) {
  const bool by_key = event->reason() == QContextMenuEvent::Keyboard;
  const auto cell = by_key ? currentIndex() : indexAt(event->pos());
  const auto place = by_key ? visualRect(cell).center() : event->pos();
  auto& menu = MenuOf(*this);
  FillRowMenu(menu, *this, cell);
  menu.popup(viewport()->mapToGlobal(place));
}

void GridView::keyPressEvent(QKeyEvent* event) {
  if (grid_ != nullptr && TakesKey(*event)) return;
  held_ = held_ || !IsModifier(event->key());
  QTableView::keyPressEvent(event);
}

void GridView::keyReleaseEvent(QKeyEvent* event) {
  QTableView::keyReleaseEvent(event);
  if (!event->isAutoRepeat()) Released();
}

void GridView::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  Released();  // the release will be told to somebody else
  TellFound();
}

void GridView::Released() {
  held_ = false;
  if (click_waits_) TellSelection();
}

void GridView::TellSelection() {
  click_waits_ = false;
  found_id_.reset();
  if (grid_ != nullptr) grid_->UserSelects(SelectedRows());
}

std::vector<std::size_t> GridView::SelectedRows() const {
  std::vector<std::size_t> now;
  for (const auto& range : selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) now.push_back(static_cast<std::size_t>(row));
  }
  std::ranges::sort(now);
  now.erase(std::unique(now.begin(), now.end()), now.end());
  // In the order they were selected: those that were selected before come first, as they were.
  std::vector<std::size_t> ordered;
  std::set<std::size_t> taken;
  const auto take = [&](std::size_t row) {
    if (taken.insert(row).second) ordered.push_back(row);
  };
  for (const auto row : grid_->selected_rows()) {
    if (std::ranges::binary_search(now, row)) take(row);
  }
  for (const auto row : now) take(row);
  return ordered;
}

void GridView::ShowSelection() {
  if (held_ || found_id_ || SelectedRows() == grid_->selected_rows()) return;
  SelectOnScreen(grid_->selected_rows());
}

// The grid knows of it, or will.
void GridView::SelectOnScreen(const std::vector<std::size_t>& rows) {
  showing_ = true;
  selectionModel()->select(RangesOf(rows, *model_),
                           QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  showing_ = false;
}

void Bind(platform::Grid& grid, GridView& view, const QString& name) {
  new Binding(grid, view);
  view.SetGrid(grid, name);
}

}  // namespace desktop
