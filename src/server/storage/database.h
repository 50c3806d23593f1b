#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/failure.h"
#include "platform/record_set.h"
#include "platform/value.h"
#include "server/storage/database_file.h"
#include "server/storage/dialect.h"

class QSqlError;
class QSqlQuery;

namespace server {

/// One connection to the server's data. Stays on the thread that made it, and needs an application object
/// (the drivers are plug-ins). Values reach SQL as bound parameters only, at the question marks.
class Database {
 public:
  enum class Opening {
    kExisting,  ///< throws Failure kNotFound where there is no data yet
    kNew,       ///< makes the file where it is missing, to be filled as a whole by one transaction
  };

  /// Throws Failure kNotFound (see Opening), kPermissionDenied, kDamaged or kUnavailable, naming the file.
  /// Who may not write there can read all the same.
  Database(const std::filesystem::path& file, Opening opening, const Dialect& dialect = SqliteDialect());
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database();

  /// The rows of a SELECT (or of a change with RETURNING), the first one current. Numbers come as integers,
  /// everything else as text, bytes (Dialect::Utf8Of) too. Throws Failure kUnavailable, or kDamaged and
  /// kPermissionDenied naming the file, as does Change.
  std::shared_ptr<platform::RecordSet> Select(const std::string& statement,
                                              const std::vector<platform::Value>& values = {});
  /// Returns how many rows were changed.
  std::int64_t Change(const std::string& statement, const std::vector<platform::Value>& values = {});

  /// The same where the last question mark stands for bytes that are no text.
  std::int64_t ChangeWithBytes(const std::string& statement, const std::vector<platform::Value>& values,
                               const std::string& bytes);
  /// The first column of the first row, as bytes; "" where there is no row.
  std::string SelectBytes(const std::string& statement, const std::vector<platform::Value>& values);

  /// The first column of the first row of a SELECT that somebody else wrote; nothing where there is no row.
  /// Throws Failure kTimedOut where `limits` ended it, else kRefused, also where it would change anything or
  /// make a value of more than a million bytes; the text is a clause ("no such column: SHOE_SIZE").
  std::optional<platform::Value> SelectOne(const std::string& statement,
                                           const std::vector<platform::Value>& values,
                                           const ReadingLimits& limits);

  /// After a change of tables: the driver would read rows of `SELECT *` with as many columns as there were.
  void ForgetStatements();

  const Dialect& dialect() const { return dialect_; }
  /// See Dialect::Settle. The connection is good for nothing but closing afterwards.
  void Settle();

 private:
  friend class Transaction;
  platform::Failure RefusalOf(const QSqlError& error) const;
  QSqlQuery& Prepared(const std::string& statement, const std::vector<platform::Value>& values);
  QSqlQuery& Execute(const std::string& statement, const std::vector<platform::Value>& values);
  void Open(Opening opening);
  void Begin(const std::string& statement);
  void RequireUnchanged() const;

  // Constant after construction.
  const Dialect& dialect_;
  const std::string name_;
  const std::filesystem::path file_;

  std::optional<FileStamp> unlocked_;  // when it was opened, where the connection sees no changes

  std::unordered_map<std::string, std::unique_ptr<QSqlQuery>> prepared_;
};

/// All or nothing: what is not committed is undone when the transaction goes.
class Transaction {
 public:
  enum class Purpose { kReading, kChanging };

  /// Throws Failure kUnavailable when another program keeps the data busy for too long.
  Transaction(Database& database, Purpose purpose);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();

  /// Returns when the changes are on the disk. Throws Failure kUnavailable; nothing is stored then, and what
  /// was read may be half a change of another program.
  void Commit();

 private:
  Database& database_;
  bool open_ = true;
};

}  // namespace server
