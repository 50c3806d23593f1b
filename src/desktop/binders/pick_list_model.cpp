#include "desktop/binders/pick_list_model.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "desktop/look/qt_text.h"
#include "platform/text.h"

namespace desktop {

void PickListModel::SetRows(std::shared_ptr<platform::RecordSet> rows, std::string column) {
  beginResetModel();
  rows_ = std::move(rows);
  column_ = std::move(column);
  offered_.resize(rows_ ? rows_->RecordCount() : 0);
  std::iota(offered_.begin(), offered_.end(), std::size_t{0});
  endResetModel();
}

void PickListModel::Offer(std::vector<std::size_t> offered) {
  if (offered == offered_) return;
  beginResetModel();
  offered_ = std::move(offered);
  endResetModel();
}

int PickListModel::FirstMatch(const std::string& text) const {
  if (!rows_ || text.empty()) return -1;
  const auto row = rows_->Find(column_, platform::RecordSet::Match::kLike, text + "%");
  const auto place = row ? std::ranges::lower_bound(offered_, *row) : offered_.end();
  if (place != offered_.end() && *place == *row) return static_cast<int>(place - offered_.begin());
  return offered_.size() == 1 ? 0 : -1;
}

int PickListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(offered_.size());
}

QVariant PickListModel::data(const QModelIndex& index, int role) const {
  const auto place = static_cast<std::size_t>(index.row());
  if (role != Qt::DisplayRole || !rows_ || place >= offered_.size()) return {};
  return ToQt(rows_->Text(offered_[place], column_));
}

}  // namespace desktop
