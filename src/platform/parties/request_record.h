#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/parties/reference_database.h"
#include "platform/record_set.h"

namespace platform {

/// A row set under way to or from the server, or read from the reference database.
///
/// To send: set Source to a record layout's name, Open, AddNew, assign Fields, Update. To read: set Source to
/// a SELECT, Open. A reply's record is open already. Columns that were not assigned are null.
class RequestRecord {
 public:
  /// A record yet to be opened; `reference` answers a Source that is a SELECT and outlives the record.
  explicit RequestRecord(ReferenceDatabase& reference) : reference_(&reference) {}
  /// A record that is open on `rows`.
  explicit RequestRecord(std::shared_ptr<RecordSet> rows) : rows_(std::move(rows)) {}

  /// A cell of the current row, for reading and for assigning.
  class Field {
   public:
    Field(RecordSet& rows, std::string_view column) : rows_(rows), column_(column) {}
    Field& operator=(Value value) {
      rows_.Set(column_, std::move(value));
      return *this;
    }
    operator const Value&() const { return rows_.Get(column_); }  // NOLINT: a field reads as its value
    std::string AsText() const { return rows_.Text(column_); }

   private:
    RecordSet& rows_;
    std::string column_;
  };

  void Source(std::string source) { source_ = std::move(source); }
  /// Throws Failure kNotFound for a layout that does not exist; what Select throws for a statement.
  void Open();
  void AddNew() { Rows().AddNew(); }
  Field Fields(std::string_view column) { return {Rows(), column}; }
  /// Ends the assignment of a new row.
  void Update() { Rows(); }

  long RecordCount() const { return rows_ ? static_cast<long>(rows_->RecordCount()) : 0; }
  void MoveFirst() { Rows().MoveFirst(); }
  /// The underlying rows, for binding to a grid; null before Open.
  const std::shared_ptr<RecordSet>& Recordset() const { return rows_; }

 private:
  RecordSet& Rows() const;  // throws Failure kInternal before Open

  ReferenceDatabase* reference_ = nullptr;
  std::string source_;
  std::shared_ptr<RecordSet> rows_;
};

}  // namespace platform
