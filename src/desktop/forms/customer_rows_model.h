#pragma once

#include <string>
#include <vector>

#include <QAbstractTableModel>
#include <QStyledItemDelegate>

#include "customers/cust_select.h"

namespace desktop {

/// The customers on offer as a table. Cells are read out with their column; while alerts are on the last
/// column warns.
class CustomerRowsModel : public QAbstractTableModel {
 public:
  /// What a typed text has met in a cell: QList<QTextLayout::FormatRange>, bold.
  static constexpr int kMetRole = Qt::UserRole;

  /// The control outlives the model.
  CustomerRowsModel(customers::ZEMLO_CustSelect& select, QObject* parent);

  /// The control's rows may be others, or more: rows that stay keep their place on the screen.
  void Refresh();
  /// A row as it is read out.
  QString SpokenRow(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  customers::FoundCell Cell(const QModelIndex& index) const;

  customers::ZEMLO_CustSelect& select_;
  std::vector<std::string> ids_;  // of the rows shown
};

/// Paints a cell with what was met in bold.
class MetTextDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace desktop
