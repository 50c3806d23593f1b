#pragma once

#include <QTableView>

#include "desktop/binders/grid_model.h"
#include "platform/controls/grid.h"

namespace desktop {

/// A grid on the screen: whole rows are selected, several with Shift and Ctrl.
///
/// The grid is told of a selection when the mouse button or the key that made it is released, so that
/// dragging over rows, or holding an arrow key, is one click on what is selected in the end.
class GridView : public QTableView {
 public:
  explicit GridView(QWidget* parent = nullptr);

  /// Once; the grid outlives the view.
  void SetGrid(platform::Grid& grid, const QString& name);
  /// Columns as wide as their headings and the rows in sight ask for, within reason.
  void FitColumns();

 protected:
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void ContentChanged();
  void HideColumns();
  void ShowSelection();
  void Released();
  void TellSelection();
  std::vector<std::size_t> SelectedRows() const;

  platform::Grid* grid_ = nullptr;
  GridModel* model_ = nullptr;
  platform::Connection content_changed_;
  bool held_ = false;         // a button or key is down
  bool click_waits_ = false;  // the grid has not been told yet
  bool showing_ = false;      // the selection is being taken over from the grid
  bool columns_fitted_ = false;
};

/// `name` is the accessible name.
void Bind(platform::Grid& grid, GridView& view, const QString& name);

}  // namespace desktop
