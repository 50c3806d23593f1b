#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QTableView>
#include <QTimer>

#include "desktop/binders/grid_columns.h"
#include "desktop/binders/grid_model.h"
#include "platform/controls/grid.h"

namespace desktop {

/// A grid on the screen: whole rows are selected, several with Shift and Ctrl, and copied with Ctrl+C; a
/// heading sorts. Both have a menu.
///
/// The grid is told of a selection when the mouse button or the key that made it is released, so that
/// dragging over rows, or holding an arrow key, is one click on what is selected in the end. A row that a
/// search goes to is selected on the screen at once; the grid is told when the search rests or ends.
class GridView : public QTableView {
 public:
  /// They sort by the column of the current cell.
  static constexpr QKeyCombination kSortAscending = Qt::ALT | Qt::Key_Up;
  static constexpr QKeyCombination kSortDescending = Qt::ALT | Qt::Key_Down;

  explicit GridView(QWidget* parent = nullptr);

  /// Once; the grid outlives the view.
  void SetGrid(platform::Grid& grid, const QString& name);
  /// Which columns are shown, and how wide. Not before SetGrid.
  GridColumns& columns() { return *columns_; }

  void SortBy(int section, bool descending);
  /// The selected rows in the order they stand in, and the columns that are shown, as text.
  void CopyRows();
  /// Offered in the menu where it is set.
  std::function<void()> find_wanted;
  /// Marks what a search finds; null marks nothing.
  void ShowHits(const platform::GridSearch* search) { model_->ShowHits(search); }
  /// The current hit becomes the current cell, in sight, and its row alone is selected. Where there is none,
  /// the selection is again what the grid knows. While the grid is disabled the selection stays as it is.
  void GoToHit(const platform::GridSearch& search);
  /// The search has ended: the grid is told of the row it went to, if it has not been yet.
  void TellFound();

 protected:
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void SetHeading();
  void ContentChanged();
  void ShowOrder();
  void FollowCurrentRow();
  void MakeCurrent(const QModelIndex& cell);
  void ShowSelection();
  void LeaveHit();
  void SelectOnScreen(const std::vector<std::size_t>& rows);
  void BringIntoSight(std::size_t row);
  bool TakesKey(const QKeyEvent& event);
  void Released();
  void TellSelection();
  std::vector<std::size_t> SelectedRows() const;

  platform::Grid* grid_ = nullptr;
  GridModel* model_ = nullptr;
  std::unique_ptr<GridColumns> columns_;
  platform::Connection content_changed_;
  platform::Connection row_wanted_;
  QTimer tell_found_soon_;
  std::optional<std::uint64_t> found_id_;    // of the row a search went to, until the grid is told
  std::optional<std::uint64_t> current_id_;  // of the current cell's row
  bool held_ = false;                        // a button or key is down
  bool click_waits_ = false;                 // the grid has not been told yet
  bool showing_ = false;                     // the selection is being taken over from the grid
};

/// `name` is the accessible name.
void Bind(platform::Grid& grid, GridView& view, const QString& name);

}  // namespace desktop
