#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/failure.h"

class QSqlDatabase;
class QSqlQuery;

namespace reference {

/// An open SQLite file. Used by the thread that made it; closed when it goes.
class SqliteConnection {
 public:
  enum class Mode { kReadOnly, kReadWrite };  ///< kReadWrite creates the file where there is none

  /// Throws Failure kUnavailable where the file cannot be opened or the driver is missing. SQLite reads
  /// nothing before the first statement: a damaged file shows itself there.
  SqliteConnection(const std::filesystem::path& file, Mode mode);
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;
  ~SqliteConnection();

  const std::filesystem::path& file() const { return file_; }
  QSqlDatabase Database() const;

  /// Runs a statement whose rows do not matter. Fails like Fail.
  void Execute(const std::string& statement);
  /// The first cell of the first row as text; "" where there is no row.
  std::string FirstText(const std::string& statement);

  /// Throws the query's error as a Failure of the fitting kind: kRefused for a wrong statement or a broken
  /// constraint, kDamaged for a file that is no (whole) database, kPermissionDenied, kUnavailable.
  [[noreturn]] void Fail(const QSqlQuery& query) const;

 private:
  const std::filesystem::path file_;
  const std::string name_;  // Qt knows connections by name
};

}  // namespace reference
