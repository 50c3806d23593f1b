#include "desktop/binders/grid_model.h"

#include <QColor>
#include <QFont>
#include <QGuiApplication>

#include "desktop/look/qt_text.h"

namespace desktop {
namespace {

// The same in a light and a dark palette.
constexpr QColor kHit(255, 230, 140);
constexpr QColor kCurrentHit(255, 165, 60);
constexpr QColor kOnHit(0, 0, 0);

}  // namespace

GridModel::GridModel(platform::Grid& grid, QObject* parent) : QAbstractTableModel(parent), grid_(grid) {
  Refresh();
}

bool GridModel::Refresh() {
  const int count = grid_.rows() ? static_cast<int>(grid_.rows()->RecordCount()) : 0;
  auto columns = ColumnKeys();
  if (grid_.rows() == shown_rows_ && count == row_count_ && columns == shown_columns_) {
    if (count > 0) emit dataChanged(index(0, 0), index(count - 1, static_cast<int>(columns.size()) - 1));
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

void GridModel::ShowHits(const platform::GridSearch* search) {
  search_ = search;
  if (row_count_ > 0) emit dataChanged(index(0, 0), index(row_count_ - 1, columnCount() - 1));
}

QString GridModel::CellText(const QModelIndex& index) const {
  const auto row = static_cast<std::size_t>(index.row());
  if (shown_rows_ != grid_.rows()) return {};  // the grid is telling of other rows
  if (!loading_) {
    loading_ = true;
    grid_.EnsureRowLoaded(row);
    loading_ = false;
  }
  return ToQt(grid_.CellText(row, column(index.column())));
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.column() >= columnCount()) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
      return CellText(index);
    case Qt::AccessibleTextRole:
      return ToQt(column(index.column()).Heading()) + QStringLiteral(": ") + CellText(index);
    case Qt::FontRole:
      return FontOf(column(index.column()).cell_style);
    case Qt::BackgroundRole:
    case Qt::ForegroundRole:
      return HitColour(index, role);
    default:
      return {};
  }
}

QVariant GridModel::HitColour(const QModelIndex& index, int role) const {
  if (search_ == nullptr || !search_->IsHit(FromQt(CellText(index)))) return {};
  if (role == Qt::ForegroundRole) return kOnHit;
  return IsCurrentHit(index) ? kCurrentHit : kHit;
}

bool GridModel::IsCurrentHit(const QModelIndex& index) const {
  const auto current = search_->current();
  if (!current) return false;
  const auto& hit = search_->hits()[*current];
  return hit.row == static_cast<std::size_t>(index.row()) &&
         search_->ColumnOf(hit) == static_cast<std::size_t>(index.column());
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  switch (role) {
    case Qt::DisplayRole:
      return ToQt(column(section).Heading());
    case Qt::AccessibleTextRole:
      return SpokenHeading(section);
    case Qt::FontRole:
      return FontOf(column(section).heading_style);
    default:
      return {};
  }
}

QString GridModel::SpokenHeading(int section) const {
  const auto& heading = column(section);
  auto spoken = ToQt(heading.Heading());
  if (!heading.group.empty()) spoken.prepend(ToQt(heading.group) + QStringLiteral(", "));
  const auto& order = grid_.order();
  if (!order || order->key != heading.key) return spoken;
  return spoken +
         (order->descending ? QStringLiteral(", sorted descending") : QStringLiteral(", sorted ascending"));
}

// What is plain has the view's own font.
QVariant GridModel::FontOf(const std::string& style_set) const {
  if (!IsBold(style_set)) return {};
  auto font = QGuiApplication::font();
  font.setBold(true);
  return font;
}

bool GridModel::IsBold(const std::string& style_set) const {
  const auto found = grid_.style_sets.find(style_set);
  return found == grid_.style_sets.end() ? grid_.style.bold : found->second.bold;
}

}  // namespace desktop
