#include "desktop/binders/entry_grid_view.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>

#include "desktop/binders/binding.h"

namespace desktop {
namespace {

using Entry = platform::EntryGrid::Entry;

constexpr int kRoomInRow = 10;

/// The editor is read out under the name of its row.
class NamedEditors : public QStyledItemDelegate {
 public:
  NamedEditors(const EntryGridModel& model, QObject* parent) : QStyledItemDelegate(parent), model_(model) {}

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override {
    auto* editor = QStyledItemDelegate::createEditor(parent, option, index);
    if (editor != nullptr) editor->setAccessibleName(model_.RowName(index.row()));
    return editor;
  }

 private:
  const EntryGridModel& model_;
};

bool IsEnter(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool StartsEditing(const QKeyEvent& event) {
  const bool is_character = !event.text().isEmpty() && event.text().front().isPrint();
  return (is_character && (event.modifiers() & Qt::ControlModifier) == 0) || event.key() == Qt::Key_F2;
}

}  // namespace

EntryGridView::EntryGridView(QWidget* parent) : QTableView(parent) {
  setSelectionBehavior(SelectItems);
  setSelectionMode(SingleSelection);
  setEditTriggers(DoubleClicked | SelectedClicked | EditKeyPressed | AnyKeyPressed);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setTabKeyNavigation(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRoomInRow);
}

void EntryGridView::SetGrid(platform::EntryGrid& grid, const QString& name) {
  model_ = new EntryGridModel(grid, this);
  setAccessibleName(name);
  setModel(model_);
  setItemDelegate(new NamedEditors(*model_, this));
  grid_ = &grid;
  LayOutColumns();
  ShowCurrentRow();
  content_changed_ = grid.ContentChanged.Connect([this] { model_->Refresh(); });
  current_changed_ = grid.CurrentChanged.Connect([this] { ShowCurrentRow(); });
}

void EntryGridView::LayOutColumns() {
  for (int section = 0; section < model_->columnCount(); ++section) {
    const bool is_tick = section == model_->entry_column() && grid_->entry == Entry::kTick;
    setColumnHidden(section, model_->column(section).hidden);
    horizontalHeader()->setSectionResizeMode(section,
                                             is_tick ? QHeaderView::ResizeToContents : QHeaderView::Stretch);
  }
}

void EntryGridView::ShowCurrentRow() {
  const auto row = grid_->rows() ? grid_->rows()->CurrentRow() : std::nullopt;
  if (!row || (currentIndex().isValid() && currentIndex().row() == static_cast<int>(*row))) return;
  setCurrentIndex(model_->index(static_cast<int>(*row), model_->entry_column()));
}

void EntryGridView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (grid_ != nullptr && current.isValid()) grid_->UserMovesTo(static_cast<std::size_t>(current.row()));
}

void EntryGridView::focusInEvent(QFocusEvent* event) {
  if (!currentIndex().isValid()) ShowCurrentRow();
  QTableView::focusInEvent(event);
}

void EntryGridView::keyPressEvent(QKeyEvent* event) {
  const bool is_bare = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  if (is_bare && event->key() == Qt::Key_Space && grid_->entry == Entry::kTick) return ToggleTick();
  if (IsEnter(*event) && state() == EditingState)
    return event->accept();  // the editor is about to close on it
  if (is_bare && IsEnter(*event) && grid_->entry == Entry::kText) return EditNextBlank();
  if (grid_->entry == Entry::kText && StartsEditing(*event) && currentIndex().isValid()) {
    // Beside the value, in its description for instance, it is typed into the value as well.
    setCurrentIndex(model_->index(currentIndex().row(), model_->entry_column()));
  }
  QTableView::keyPressEvent(event);
}

void EntryGridView::ToggleTick() {
  if (!currentIndex().isValid()) return;
  const auto tick = model_->index(currentIndex().row(), model_->entry_column());
  const bool is_ticked = model_->data(tick, Qt::CheckStateRole).toInt() == Qt::Checked;
  model_->setData(tick, is_ticked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

void EntryGridView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  const bool is_given_up = hint == QAbstractItemDelegate::RevertModelCache;
  if (is_given_up && model_->data(currentIndex(), Qt::EditRole).toString().isEmpty()) commitData(editor);
  QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
  if (hint == QAbstractItemDelegate::SubmitModelCache) EditNextBlank();
  if (hint == QAbstractItemDelegate::EditNextItem) EditNeighbour(1);
  if (hint == QAbstractItemDelegate::EditPreviousItem) EditNeighbour(-1);
}

void EntryGridView::EditNextBlank() {
  const auto row = grid_->NextBlank();
  if (row) {
    Edit(static_cast<int>(*row));
  } else {
    focusNextChild();
  }
}

void EntryGridView::EditNeighbour(int step) {
  const int row = currentIndex().row() + step;
  if (row >= 0 && row < model_->rowCount()) {
    Edit(row);
  } else {
    focusNextPrevChild(step > 0);
  }
}

void EntryGridView::Edit(int row) {
  const auto cell = model_->index(row, model_->entry_column());
  setCurrentIndex(cell);
  edit(cell);
}

void Bind(platform::EntryGrid& grid, EntryGridView& view, const QString& name) {
  new Binding(grid, view);
  view.SetGrid(grid, name);
}

}  // namespace desktop
