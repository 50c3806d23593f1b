#pragma once

#include <functional>

#include <QTableView>

#include "desktop/binders/entry_grid_model.h"
#include "platform/controls/entry_grid.h"

namespace desktop {

/// A grid in which the user enters values. Typing writes into the current cell, Space ticks. The current row
/// of the grid and the cursor go together.
///
/// Enter takes the value and goes to the next row without one, Tab to the next row; where there is none the
/// keyboard goes on to the next control. Esc while typing brings the value back that was there; where there
/// was none, it keeps what was typed. Decision [entry-grid].
class EntryGridView : public QTableView {
 public:
  explicit EntryGridView(QWidget* parent = nullptr);

  /// Once; the grid outlives the view.
  void SetGrid(platform::EntryGrid& grid, const QString& name);
  /// The cursor goes to the entry of the grid's current row.
  void ShowCurrentRow();

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

 private:
  void LayOutColumns();
  void ToggleTick();
  void EditNextBlank();
  /// `step` rows down, or up where it is negative.
  void EditNeighbour(int step);
  void Edit(int row);

  platform::EntryGrid* grid_ = nullptr;
  EntryGridModel* model_ = nullptr;
  platform::Connection content_changed_;
  platform::Connection current_changed_;
};

/// `name` is the accessible name.
void Bind(platform::EntryGrid& grid, EntryGridView& view, const QString& name);

}  // namespace desktop
