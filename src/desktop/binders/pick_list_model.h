#pragma once

#include <memory>
#include <string>

#include <QAbstractListModel>

#include "platform/record_set.h"

namespace desktop {

/// One column of a record set as a list. Texts are read when they are shown, not before.
class PickListModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  void SetRows(std::shared_ptr<platform::RecordSet> rows, std::string column);
  const std::shared_ptr<platform::RecordSet>& rows() const { return rows_; }
  /// The first row whose text starts with `text`, without regard to case; -1 for none or an empty text.
  int FirstMatch(const std::string& text) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  std::shared_ptr<platform::RecordSet> rows_;
  std::string column_;
};

}  // namespace desktop
