#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QAbstractListModel>

#include "platform/record_set.h"

namespace desktop {

/// One column of a record set as a list, of all its rows or of some. Texts are read when they are shown, not
/// before.
class PickListModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  /// All of `rows`.
  void SetRows(std::shared_ptr<platform::RecordSet> rows, std::string column);
  const std::shared_ptr<platform::RecordSet>& rows() const { return rows_; }
  /// Only these rows of them, in ascending order.
  void Offer(std::vector<std::size_t> offered);
  /// The row of the record set that the list shows there.
  std::size_t RowOf(const QModelIndex& index) const {
    return offered_.at(static_cast<std::size_t>(index.row()));
  }
  /// Where the list shows the first row whose text starts with `text`, without regard to case, or the only
  /// row it shows; -1 for none or an empty text.
  int FirstMatch(const std::string& text) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  std::shared_ptr<platform::RecordSet> rows_;
  std::string column_;
  std::vector<std::size_t> offered_;
};

}  // namespace desktop
