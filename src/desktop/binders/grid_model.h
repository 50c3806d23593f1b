#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QAbstractTableModel>

#include "platform/controls/grid.h"
#include "platform/controls/grid_search.h"

namespace desktop {

/// The rows of a grid. A row is loaded when something of it is first read, which is when it is first painted.
/// Cells and headings are read out with their column and group.
class GridModel : public QAbstractTableModel {
 public:
  GridModel(platform::Grid& grid, QObject* parent);

  /// Rows or columns may have changed. Returns whether the table is another one now.
  bool Refresh();
  const platform::Grid::Column& column(int section) const {
    return grid_.columns[static_cast<std::size_t>(section)];
  }
  /// Whether a row is being loaded: what the grid tells meanwhile is that row's own change.
  bool loading() const { return loading_; }
  /// Marks the cells that have what is looked for, the current hit most; null for none. The search outlives
  /// the model, or is taken away again.
  void ShowHits(const platform::GridSearch* search);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  bool IsBold(const std::string& style_set) const;
  QVariant FontOf(const std::string& style_set) const;
  QString CellText(const QModelIndex& index) const;
  QVariant HitColour(const QModelIndex& index, int role) const;
  bool IsCurrentHit(const QModelIndex& index) const;
  QString SpokenHeading(int section) const;
  std::vector<std::string> ColumnKeys() const;

  platform::Grid& grid_;
  std::shared_ptr<platform::RecordSet> shown_rows_;
  int row_count_ = 0;
  std::vector<std::string> shown_columns_;
  const platform::GridSearch* search_ = nullptr;
  mutable bool loading_ = false;
};

}  // namespace desktop
