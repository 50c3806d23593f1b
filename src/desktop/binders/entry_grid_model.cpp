#include "desktop/binders/entry_grid_model.h"

#include <algorithm>

#include "desktop/look/qt_text.h"

namespace desktop {

using Entry = platform::EntryGrid::Entry;

EntryGridModel::EntryGridModel(platform::EntryGrid& grid, QObject* parent)
    : QAbstractTableModel(parent), grid_(grid) {
  Refresh();
}

void EntryGridModel::Refresh() {
  const int count = grid_.rows() ? static_cast<int>(grid_.rows()->RecordCount()) : 0;
  if (grid_.rows() == shown_rows_ && count == row_count_) {
    if (count > 0) emit dataChanged(index(0, 0), index(count - 1, columnCount() - 1));
    return;
  }
  beginResetModel();
  shown_rows_ = grid_.rows();
  row_count_ = count;
  endResetModel();
}

int EntryGridModel::entry_column() const {
  const auto found = std::ranges::find(grid_.columns, grid_.entry_key, &platform::Grid::Column::key);
  return static_cast<int>(found - grid_.columns.begin());
}

int EntryGridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : row_count_;
}

int EntryGridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(grid_.columns.size());
}

Qt::ItemFlags EntryGridModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  auto flags = QAbstractTableModel::flags(index);
  if (IsText(index)) flags |= Qt::ItemIsEditable;
  if (IsTick(index)) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

QString EntryGridModel::CellText(int row, int section) const {
  if (!shown_rows_ || static_cast<std::size_t>(row) >= shown_rows_->RecordCount()) return {};
  return ToQt(grid_.CellText(static_cast<std::size_t>(row), column(section)));
}

QVariant EntryGridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::AccessibleTextRole) return Spoken(index);
  if (IsTick(index)) {
    return role == Qt::CheckStateRole ? TickOf(index) : QVariant();
  }
  const bool is_text = role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::ToolTipRole;
  return is_text ? CellText(index.row(), index.column()) : QVariant();
}

QVariant EntryGridModel::TickOf(const QModelIndex& index) const {
  return grid_.IsTicked(static_cast<std::size_t>(index.row())) ? Qt::Checked : Qt::Unchecked;
}

QString EntryGridModel::Spoken(const QModelIndex& index) const {
  auto text = CellText(index.row(), index.column());
  const auto name = RowName(index.row()) + QStringLiteral(": ");
  if (IsTick(index))
    return name + (TickOf(index) == Qt::Checked ? QStringLiteral("ticked") : QStringLiteral("not ticked"));
  if (IsText(index)) return name + (text.isEmpty() ? QStringLiteral("empty") : text);
  return text;
}

bool EntryGridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  const auto row = static_cast<std::size_t>(index.row());
  if (role == Qt::EditRole && IsText(index)) {
    grid_.UserEdits(row, FromQt(value.toString()));
    return true;
  }
  if (role == Qt::CheckStateRole && IsTick(index)) {
    grid_.UserTicks(row, value.toInt() == Qt::Checked);
    return true;
  }
  return false;
}

bool EntryGridModel::IsText(const QModelIndex& index) const {
  return index.isValid() && index.column() == entry_column() && grid_.entry == Entry::kText;
}

bool EntryGridModel::IsTick(const QModelIndex& index) const {
  return index.isValid() && index.column() == entry_column() && grid_.entry == Entry::kTick;
}

QVariant EntryGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  if (role == Qt::DisplayRole) return ToQt(column(section).Heading());
  if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
  return {};
}

}  // namespace desktop
