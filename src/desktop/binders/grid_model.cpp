#include "desktop/binders/grid_model.h"

#include <QFont>
#include <QGuiApplication>

#include "desktop/qt_text.h"

namespace desktop {

GridModel::GridModel(platform::Grid& grid, QObject* parent) : QAbstractTableModel(parent), grid_(grid) {
  Refresh();
}

bool GridModel::Refresh() {
  const int count = grid_.rows() ? static_cast<int>(grid_.rows()->RecordCount()) : 0;
  auto columns = ColumnKeys();
  if (grid_.rows() == shown_rows_ && count == row_count_ && columns == shown_columns_) {
    if (count > 0) emit dataChanged(index(0, 0), index(count - 1, columnCount() - 1));
    return false;
  }
  beginResetModel();
  shown_rows_ = grid_.rows();
  row_count_ = count;
  shown_columns_ = std::move(columns);
  endResetModel();
  return true;
}

std::vector<std::string> GridModel::ColumnKeys() const {
  std::vector<std::string> keys;
  for (const auto& column : grid_.columns) keys.push_back(column.key + (column.hidden ? "-" : "+"));
  return keys;
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : row_count_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_columns_.size());
}

QString GridModel::CellText(std::size_t row, const std::string& key) const {
  if (!shown_rows_ || row >= shown_rows_->RecordCount()) return {};
  if (!loading_) {
    loading_ = true;
    grid_.EnsureRowLoaded(row);
    loading_ = false;
  }
  return shown_rows_->HasColumn(key) ? ToQt(shown_rows_->Text(row, key)) : QString();
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.column() >= columnCount()) return {};
  const auto& shown = column(index.column());
  switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
      return CellText(static_cast<std::size_t>(index.row()), shown.key);
    case Qt::FontRole: {
      auto font = QGuiApplication::font();
      font.setBold(IsBold(shown.cell_style));
      return font;
    }
    default:
      return {};
  }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const auto& shown = column(section);
  if (role == Qt::DisplayRole) return ToQt(shown.caption.empty() ? shown.key : shown.caption);
  if (role == Qt::FontRole) {
    auto font = QGuiApplication::font();
    font.setBold(IsBold(shown.heading_style));
    return font;
  }
  return {};
}

bool GridModel::IsBold(const std::string& style_set) const {
  const auto found = grid_.style_sets.find(style_set);
  return found == grid_.style_sets.end() ? grid_.style.bold : found->second.bold;
}

}  // namespace desktop
