#pragma once

#include <memory>

#include <QAbstractTableModel>

#include "platform/controls/entry_grid.h"

namespace desktop {

/// The rows of a grid in whose cells the user enters values: texts are written, ticks are set.
class EntryGridModel : public QAbstractTableModel {
 public:
  EntryGridModel(platform::EntryGrid& grid, QObject* parent);

  /// Rows may have come or changed.
  void Refresh();
  /// The column in which the user enters.
  int entry_column() const;
  const platform::Grid::Column& column(int section) const {
    return grid_.columns[static_cast<std::size_t>(section)];
  }
  /// What a row is about, as it is read out: its first column.
  QString RowName(int row) const { return CellText(row, 0); }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  QString CellText(int row, int section) const;
  bool IsText(const QModelIndex& index) const;
  bool IsTick(const QModelIndex& index) const;
  QVariant TickOf(const QModelIndex& index) const;
  QString Spoken(const QModelIndex& index) const;

  platform::EntryGrid& grid_;
  std::shared_ptr<platform::RecordSet> shown_rows_;
  int row_count_ = 0;
};

}  // namespace desktop
