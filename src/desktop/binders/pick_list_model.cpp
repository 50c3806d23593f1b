#include "desktop/binders/pick_list_model.h"

#include <utility>

#include "desktop/qt_text.h"
#include "platform/text.h"

namespace desktop {

void PickListModel::SetRows(std::shared_ptr<platform::RecordSet> rows, std::string column) {
  beginResetModel();
  rows_ = std::move(rows);
  column_ = std::move(column);
  endResetModel();
}

int PickListModel::FirstMatch(const std::string& text) const {
  if (!rows_ || text.empty()) return -1;
  const auto row = rows_->Find(column_, platform::RecordSet::Match::kLike, text + "%");
  return row ? static_cast<int>(*row) : -1;
}

int PickListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() || !rows_ ? 0 : static_cast<int>(rows_->RecordCount());
}

QVariant PickListModel::data(const QModelIndex& index, int role) const {
  const auto row = static_cast<std::size_t>(index.row());
  if (role != Qt::DisplayRole || !rows_ || row >= rows_->RecordCount()) return {};
  return ToQt(rows_->Text(row, column_));
}

}  // namespace desktop
