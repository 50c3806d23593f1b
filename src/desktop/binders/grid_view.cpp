#include "desktop/binders/grid_view.h"

#include <algorithm>
#include <set>

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>

#include "desktop/binders/binding.h"
#include "desktop/binders/grid_header.h"

namespace desktop {
namespace {

constexpr int kWidestColumnInCharacters = 34;
constexpr int kRoomInColumn = 7;

}  // namespace

GridView::GridView(QWidget* parent) : QTableView(parent) {
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setHorizontalScrollMode(ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
}

void GridView::SetGrid(platform::Grid& grid, const QString& name) {
  model_ = new GridModel(grid, this);
  setAccessibleName(name);
  setHorizontalHeader(new GridHeader(*model_, this));
  setModel(model_);
  grid_ = &grid;  // from here on a selection is the user's
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setResizeContentsPrecision(0);  // rows in sight only: reading a row loads it
  HideColumns();
  content_changed_ = grid.ContentChanged.Connect([this] { ContentChanged(); });
  ShowSelection();
}

void GridView::ContentChanged() {
  if (model_->loading()) return;
  if (model_->Refresh()) {
    HideColumns();
    if (isVisible()) FitColumns();
  }
  ShowSelection();
}

void GridView::HideColumns() {
  for (int section = 0; section < model_->columnCount(); ++section) {
    setColumnHidden(section, model_->column(section).hidden);
  }
}

void GridView::FitColumns() {
  if (columns_fitted_) return;  // from then on the widths are the user's
  resizeColumnsToContents();
  const int widest = fontMetrics().averageCharWidth() * kWidestColumnInCharacters;
  for (int section = 0; section < model_->columnCount(); ++section) {
    setColumnWidth(section, std::min(columnWidth(section) + kRoomInColumn, widest));
  }
  columns_fitted_ = model_->rowCount() > 0;
}

void GridView::showEvent(QShowEvent* event) {
  QTableView::showEvent(event);
  if (grid_ != nullptr) FitColumns();
}

void GridView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  if (grid_ == nullptr || showing_) return;
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

void GridView::keyPressEvent(QKeyEvent* event) {
  held_ = true;
  QTableView::keyPressEvent(event);
}

void GridView::keyReleaseEvent(QKeyEvent* event) {
  QTableView::keyReleaseEvent(event);
  if (!event->isAutoRepeat()) Released();
}

void GridView::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  Released();  // the release will be told to somebody else
}

void GridView::Released() {
  held_ = false;
  if (click_waits_) TellSelection();
}

void GridView::TellSelection() {
  click_waits_ = false;
  if (grid_ != nullptr) grid_->UserSelects(SelectedRows());
}

std::vector<std::size_t> GridView::SelectedRows() const {
  std::vector<std::size_t> now;
  for (const auto& index : selectionModel()->selectedRows())
    now.push_back(static_cast<std::size_t>(index.row()));
  std::ranges::sort(now);
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
  if (held_ || SelectedRows() == grid_->selected_rows()) return;
  showing_ = true;
  QItemSelection rows;
  for (const auto row : grid_->selected_rows()) {
    const auto index = model_->index(static_cast<int>(row), 0);
    rows.select(index, index);
  }
  selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  showing_ = false;
}

void Bind(platform::Grid& grid, GridView& view, const QString& name) {
  new Binding(grid, view);
  view.SetGrid(grid, name);
}

}  // namespace desktop
