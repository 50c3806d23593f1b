#include <array>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include "platform/failure.h"
#include "server/dialect.h"

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

void Run(QSqlDatabase& connection, const char* statement) {
  QSqlQuery query(connection);
  if (query.exec(QString::fromLatin1(statement))) return;
  throw Failure(Failure::Kind::kUnavailable, "The server's database refuses \"" + std::string(statement) +
                                                 "\": " + query.lastError().text().toStdString() + ".");
}

class Sqlite : public Dialect {
 public:
  const char* Driver() const override { return "QSQLITE"; }

  void Locate(QSqlDatabase& connection, const std::filesystem::path& file) const override {
    connection.setDatabaseName(QString::fromStdString(file.string()));
    // Milliseconds that one program waits while another one writes.
    connection.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
  }

  void Configure(QSqlDatabase& connection) const override {
    for (const auto* pragma : kPragmas) Run(connection, pragma);
  }

  void ConfigureForFilling(QSqlDatabase& connection) const override {
    for (const auto* pragma : kFillingPragmas) Run(connection, pragma);
  }

  std::string BeginReading() const override { return "BEGIN"; }
  std::string BeginChanging() const override { return "BEGIN IMMEDIATE"; }

  bool IsBusy(const QSqlError& error) const override {
    // The low byte of an extended result code is the primary one: 5 SQLITE_BUSY, 6 SQLITE_LOCKED.
    const auto primary = error.nativeErrorCode().toInt() & 0xff;
    return primary == 5 || primary == 6;
  }

  std::string NeverReusedKey() const override { return "INTEGER PRIMARY KEY AUTOINCREMENT"; }
  std::string BytesType() const override { return "BLOB"; }
  std::string Utf8Of(const std::string& column) const override { return "CAST(" + column + " AS BLOB)"; }

  void Settle(QSqlDatabase& connection) const override { Run(connection, "PRAGMA journal_mode = DELETE"); }
};

}  // namespace

const Dialect& SqliteDialect() {
  static const Sqlite dialect;
  return dialect;
}

}  // namespace server
