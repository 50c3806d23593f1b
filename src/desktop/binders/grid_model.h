#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QAbstractTableModel>

#include "platform/controls/grid.h"

namespace desktop {

/// The rows of a grid. A row is loaded when something of it is first read, which is when it is first painted.
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

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  bool IsBold(const std::string& style_set) const;
  QString CellText(std::size_t row, const std::string& key) const;
  std::vector<std::string> ColumnKeys() const;

  platform::Grid& grid_;
  std::shared_ptr<platform::RecordSet> shown_rows_;
  int row_count_ = 0;
  std::vector<std::string> shown_columns_;
  mutable bool loading_ = false;
};

}  // namespace desktop
