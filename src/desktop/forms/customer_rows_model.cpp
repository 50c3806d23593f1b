#include "desktop/forms/customer_rows_model.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QPainter>
#include <QTextLayout>

#include "desktop/look/qt_text.h"

namespace desktop {
namespace {

using Ranges = QList<QTextLayout::FormatRange>;
constexpr int kAlertColumn = customers::kFoundColumns;

Ranges BoldRanges(const customers::FoundCell& cell) {
  QTextCharFormat bold;
  bold.setFontWeight(QFont::Bold);
  Ranges ranges;
  for (const auto& [start, length] : cell.met) {
    const std::string_view text = cell.text;
    ranges.push_back({static_cast<int>(ToQt(text.substr(0, start)).size()),
                      static_cast<int>(ToQt(text.substr(start, length)).size()), bold});
  }
  return ranges;
}

QTextLine LayOutLine(QTextLayout& layout) {
  layout.beginLayout();
  const auto line = layout.createLine();
  layout.endLayout();
  return line;
}

/// One line of text, cut where the cell ends.
void DrawLine(QPainter& painter, const QStyleOptionViewItem& option, const QRect& place, const QString& text,
              const Ranges& ranges) {
  QTextLayout layout(text, option.font);
  layout.setFormats(ranges);
  auto line = LayOutLine(layout);
  if (line.isValid() && line.naturalTextWidth() > place.width()) {
    auto widest = option.font;
    widest.setBold(!ranges.empty());
    layout.setText(QFontMetrics(widest).elidedText(text, Qt::ElideRight, place.width()));
    layout.setFormats(ranges);
    line = LayOutLine(layout);
  }
  if (!line.isValid()) return;
  const bool is_selected = option.state.testFlag(QStyle::State_Selected);
  const bool is_active = option.state.testFlag(QStyle::State_Active);
  painter.save();
  painter.setClipRect(place);
  painter.setPen(option.palette.color(is_active ? QPalette::Active : QPalette::Inactive,
                                      is_selected ? QPalette::HighlightedText : QPalette::Text));
  layout.draw(&painter, {place.left() + 0.0, place.top() + (place.height() - line.height()) / 2});
  painter.restore();
}

}  // namespace

CustomerRowsModel::CustomerRowsModel(customers::ZEMLO_CustSelect& select, QObject* parent)
    : QAbstractTableModel(parent), select_(select) {
  Refresh();
}

void CustomerRowsModel::Refresh() {
  std::vector<std::string> ids;
  ids.reserve(select_.rows().size());
  for (const auto& row : select_.rows()) ids.push_back(row.values.CustID);
  const auto shown = ids_.size();
  const bool go_on = shown > 0 && ids.size() >= shown && std::equal(ids_.begin(), ids_.end(), ids.begin());
  if (!go_on) {
    beginResetModel();
    ids_ = std::move(ids);
    endResetModel();
    return;
  }
  if (ids.size() > shown) {
    beginInsertRows({}, static_cast<int>(shown), static_cast<int>(ids.size()) - 1);
    ids_ = std::move(ids);
    endInsertRows();
  }
  emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

int CustomerRowsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(ids_.size());
}

int CustomerRowsModel::columnCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return kAlertColumn + 1;
}

customers::FoundCell CustomerRowsModel::Cell(const QModelIndex& index) const {
  const auto row = static_cast<std::size_t>(index.row());
  if (row >= select_.rows().size()) return {};  // the control is ahead of the screen
  if (index.column() == kAlertColumn) return {std::string(select_.AlertOf(row)), {}};
  return select_.Cell(row, static_cast<customers::FoundColumn>(index.column()));
}

QVariant CustomerRowsModel::data(const QModelIndex& index, int role) const {
  switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
      return ToQt(Cell(index).text);
    case Qt::AccessibleTextRole:
      return headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString() + QLatin1Char(' ') +
             ToQt(Cell(index).text);
    case kMetRole:
      return QVariant::fromValue(BoldRanges(Cell(index)));
    default:
      return {};
  }
}

QVariant CustomerRowsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  if (section == kAlertColumn) return QStringLiteral("Alert");
  return ToQt(customers::CaptionOf(static_cast<customers::FoundColumn>(section)));
}

QString CustomerRowsModel::SpokenRow(int row) const {
  QStringList parts;
  for (int column = 0; column < columnCount(); ++column) {
    const auto text = data(index(row, column), Qt::DisplayRole).toString();
    if (!text.isEmpty()) parts += text;
  }
  return QStringLiteral("%1 of %2: %3").arg(row + 1).arg(rowCount()).arg(parts.join(QStringLiteral(", ")));
}

void MetTextDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  auto cell = option;
  initStyleOption(&cell, index);
  const auto text = std::exchange(cell.text, {});
  const auto* style = cell.widget != nullptr ? cell.widget->style() : QApplication::style();
  style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
  const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, cell.widget) + 1;
  DrawLine(*painter, cell, cell.rect.adjusted(margin, 0, -margin, 0), text,
           index.data(CustomerRowsModel::kMetRole).value<Ranges>());
}

}  // namespace desktop
