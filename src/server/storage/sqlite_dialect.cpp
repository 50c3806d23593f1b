#include <array>
#include <cerrno>
#include <filesystem>

#include <sqlite3.h>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlResult>
#include <QUrl>
#include <QVariant>

#include "platform/failure.h"
#include "server/storage/database_file.h"
#include "server/storage/dialect.h"

namespace server {
namespace {

using platform::Failure;

// FULL: a commit is on the disk before it is acknowledged, also in the write-ahead log
// (https://sqlite.org/pragma.html).
constexpr auto kPragmas = std::to_array<const char*>(
    {"PRAGMA journal_mode = WAL", "PRAGMA synchronous = FULL", "PRAGMA foreign_keys = ON"});

// A journal would double what is written. The cache is in KiB; indexes are sorted in it.
constexpr auto kFillingPragmas =
    std::to_array<const char*>({"PRAGMA journal_mode = MEMORY", "PRAGMA synchronous = FULL",
                                "PRAGMA foreign_keys = ON", "PRAGMA cache_size = -65536"});

// Milliseconds that one program waits while another one writes.
constexpr auto kOptions = "QSQLITE_BUSY_TIMEOUT=5000";

// The low byte of an extended result code is the primary one.
int PrimaryCode(const QSqlError& error) {
  return error.nativeErrorCode().toInt() & 0xff;
}

/// What stands behind one of Qt's handles; null where that is of another type.
template <typename Handle>
Handle* Behind(const QVariant& handle, const char* type) {
  const bool is_ours = handle.isValid() && qstrcmp(handle.typeName(), type) == 0;
  return is_ours ? *static_cast<Handle* const*>(handle.constData()) : nullptr;
}

bool FoundNoRoom(const QSqlDatabase& connection, const QSqlError& error) {
  auto* const database = Behind<sqlite3>(connection.driver()->handle(), "sqlite3*");
  const int number = database == nullptr ? 0 : sqlite3_system_errno(database);
  const bool has_no_room = number == ENOSPC || number == EDQUOT || number == EFBIG;
  return PrimaryCode(error) == SQLITE_FULL || (PrimaryCode(error) == SQLITE_IOERR && has_no_room);
}

bool IsNoData(const QSqlError& error) {
  return PrimaryCode(error) == SQLITE_CORRUPT || PrimaryCode(error) == SQLITE_NOTADB;
}

void Run(QSqlDatabase& connection, const char* statement) {
  QSqlQuery query(connection);
  if (query.exec(QString::fromLatin1(statement))) return;
  if (IsNoData(query.lastError())) throw DamagedData(connection.databaseName().toStdString());
  if (FoundNoRoom(connection, query.lastError())) throw FullDisk();
  throw Failure(Failure::Kind::kUnavailable, "The server's database refuses \"" + std::string(statement) +
                                                 "\": " + query.lastError().text().toStdString() + ".");
}

/// The engine asks again and again while a statement runs whether it may go on. What stands in double quotes
/// is a name: by itself the engine takes a name that there is not for a text.
class SqliteGuard : public ReadingGuard {
 public:
  SqliteGuard(sqlite3* database, const ReadingLimits& limits)
      : database_(database), usual_length_(sqlite3_limit(database_, SQLITE_LIMIT_LENGTH, kLongestValue)) {
    sqlite3_db_config(database_, SQLITE_DBCONFIG_DQS_DML, -1, &usual_quotes_);
    sqlite3_db_config(database_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    // The engine takes whatever it hands back as writable.
    sqlite3_progress_handler(database_, kStepsBetween, MustEnd,
                             const_cast<ReadingLimits*>(&limits));  // NOLINT
  }
  SqliteGuard(const SqliteGuard&) = delete;
  SqliteGuard& operator=(const SqliteGuard&) = delete;
  ~SqliteGuard() override {
    sqlite3_progress_handler(database_, 0, nullptr, nullptr);
    sqlite3_limit(database_, SQLITE_LIMIT_LENGTH, usual_length_);
    sqlite3_db_config(database_, SQLITE_DBCONFIG_DQS_DML, usual_quotes_, nullptr);
  }

 private:
  static constexpr int kStepsBetween = 1'000;
  // Bytes; a single step on a text without a limit could take minutes, and nobody asks within a step.
  static constexpr int kLongestValue = 1'000'000;

  static int MustEnd(void* given) {
    const auto& limits = *static_cast<const ReadingLimits*>(given);
    return limits.ending.stop_requested() || std::chrono::steady_clock::now() >= limits.until ? 1 : 0;
  }

  sqlite3* const database_;
  const int usual_length_;
  int usual_quotes_ = 1;
};

/// `file` as the engine takes it with `parameters`; https://sqlite.org/uri.html.
QString Uri(const QString& file, const char* parameters) {
  return QLatin1String("file:") + QString::fromLatin1(QUrl::toPercentEncoding(file, "/")) + QLatin1Char('?') +
         QLatin1String(parameters);
}

/// Whether nobody can write there and the last program left nothing in its log.
bool IsAtRest(const QString& file) {
  std::error_code missing;
  const auto log_size = std::filesystem::file_size((file + QLatin1String("-wal")).toStdString(), missing);
  return !MayChange(file.toStdString()) && (missing || log_size == 0);
}

constexpr auto kUnlocked = "immutable=1";

/// Settles what does not have to be written down.
bool CanRead(QSqlDatabase& connection) {
  QSqlQuery query(connection);
  return query.exec(QStringLiteral("PRAGMA synchronous = FULL")) &&
         query.exec(QStringLiteral("PRAGMA foreign_keys = ON")) &&
         query.exec(QStringLiteral("SELECT COUNT(*) FROM sqlite_master"));
}

/// The index of the write-ahead log lies in a shared file that is made anew by the first program that opens
/// the data, also to read: a disk without 32 KB of room keeps everybody out. This program can keep the index
/// to itself instead, with others shut out as long as it has the data open; who cannot write there needs no
/// log.
bool OpenWithoutRoom(QSqlDatabase& connection) {
  const auto file = connection.databaseName();
  connection.close();
  connection.setDatabaseName(Uri(file, IsAtRest(file) ? kUnlocked : "vfs=unix-excl"));
  connection.setConnectOptions(QLatin1String(kOptions) + QLatin1String(";QSQLITE_OPEN_URI"));
  return connection.open() && CanRead(connection);
}

class Sqlite : public Dialect {
 public:
  const char* Driver() const override { return "QSQLITE"; }

  void Locate(QSqlDatabase& connection, const std::filesystem::path& file) const override {
    connection.setDatabaseName(QString::fromStdString(file.string()));
    connection.setConnectOptions(QLatin1String(kOptions));
  }

  void Configure(QSqlDatabase& connection) const override {
    const std::filesystem::path file = connection.databaseName().toStdString();
    if (!MayChange(file)) {
      // Where another program has the data open, its log and index can be read along.
      if (CanRead(connection) || OpenWithoutRoom(connection)) return;
      const bool is_damaged =
          IsNoData(QSqlQuery(QStringLiteral("PRAGMA schema_version"), connection).lastError());
      throw is_damaged ? DamagedData(file) : NoRightToChange(file);
    }
    try {
      for (const auto* pragma : kPragmas) Run(connection, pragma);
    } catch (const Failure& failure) {
      if (failure.kind() == Failure::Kind::kDamaged || !OpenWithoutRoom(connection)) throw;
    }
  }

  void ConfigureForFilling(QSqlDatabase& connection) const override {
    for (const auto* pragma : kFillingPragmas) Run(connection, pragma);
  }

  std::string BeginReading() const override { return "BEGIN"; }
  std::string BeginChanging() const override { return "BEGIN IMMEDIATE"; }

  bool IsBusy(const QSqlError& error) const override {
    return PrimaryCode(error) == SQLITE_BUSY || PrimaryCode(error) == SQLITE_LOCKED;
  }

  bool IsFull(const QSqlDatabase& connection, const QSqlError& error) const override {
    return FoundNoRoom(connection, error);
  }

  bool IsDamaged(const QSqlError& error) const override { return IsNoData(error); }
  bool MayOnlyRead(const QSqlError& error) const override { return PrimaryCode(error) == SQLITE_READONLY; }
  bool SeesChanges(const QSqlDatabase& connection) const override {
    return !connection.databaseName().endsWith(QLatin1String(kUnlocked));
  }

  std::unique_ptr<ReadingGuard> Guard(QSqlDatabase& connection, const ReadingLimits& limits) const override {
    auto* const database = Behind<sqlite3>(connection.driver()->handle(), "sqlite3*");
    if (database == nullptr) {
      throw Failure(Failure::Kind::kInternal, "The database driver does not let a statement be limited.");
    }
    return std::make_unique<SqliteGuard>(database, limits);
  }
  bool WasEnded(const QSqlError& error) const override { return PrimaryCode(error) == SQLITE_INTERRUPT; }
  bool OnlyReads(const QSqlQuery& prepared) const override {
    auto* const statement = Behind<sqlite3_stmt>(prepared.result()->handle(), "sqlite3_stmt*");
    return statement != nullptr && sqlite3_stmt_readonly(statement) != 0;
  }

  std::string NeverReusedKey() const override { return "INTEGER PRIMARY KEY AUTOINCREMENT"; }
  std::string BytesType() const override { return "BLOB"; }
  std::string StoredByKey() const override { return "WITHOUT ROWID"; }
  std::string Utf8Of(const std::string& column) const override { return "CAST(" + column + " AS BLOB)"; }

  void Settle(QSqlDatabase& connection) const override { Run(connection, "PRAGMA journal_mode = DELETE"); }
};

}  // namespace

const Dialect& SqliteDialect() {
  static const Sqlite dialect;
  return dialect;
}

}  // namespace server
