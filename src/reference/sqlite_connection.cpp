#include "reference/sqlite_connection.h"

#include <array>
#include <atomic>
#include <cerrno>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include "platform/file_failure.h"

namespace reference {
namespace {

using platform::Failure;

struct ErrorKind {
  int code;  ///< sqlite3 result code, the low byte of the extended one
  Failure::Kind kind;
};

// What is not in the list leaves the database unavailable: no space, locked, input or output error.
constexpr auto kErrorKinds = std::to_array<ErrorKind>({
    {1, Failure::Kind::kRefused},           // SQLITE_ERROR: the statement is wrong
    {3, Failure::Kind::kPermissionDenied},  // SQLITE_PERM
    {8, Failure::Kind::kPermissionDenied},  // SQLITE_READONLY
    {11, Failure::Kind::kDamaged},          // SQLITE_CORRUPT
    {19, Failure::Kind::kRefused},          // SQLITE_CONSTRAINT
    {26, Failure::Kind::kDamaged},          // SQLITE_NOTADB
});

Failure::Kind KindOf(const QSqlError& error) {
  const int code = error.nativeErrorCode().toInt() & 0xFF;
  for (const auto& known : kErrorKinds) {
    if (known.code == code) return known.kind;
  }
  return Failure::Kind::kUnavailable;
}

std::string NextName() {
  static std::atomic<unsigned> last = 0;
  return "reference-" + std::to_string(++last);
}

}  // namespace

SqliteConnection::SqliteConnection(const std::filesystem::path& file, Mode mode)
    : file_(file), name_(NextName()) {
  auto database = QSqlDatabase::addDatabase("QSQLITE", QString::fromStdString(name_));
  database.setDatabaseName(QString::fromStdString(file_.string()));
  if (mode == Mode::kReadOnly) database.setConnectOptions("QSQLITE_OPEN_READONLY");
  if (database.open()) return;
  const auto reason = database.lastError().text().toStdString();
  database = QSqlDatabase();
  QSqlDatabase::removeDatabase(QString::fromStdString(name_));
  throw Failure(Failure::Kind::kUnavailable, "\"" + file_.string() + "\" cannot be opened: " + reason);
}

SqliteConnection::~SqliteConnection() {
  QSqlDatabase::database(QString::fromStdString(name_), /*open=*/false).close();
  QSqlDatabase::removeDatabase(QString::fromStdString(name_));
}

QSqlDatabase SqliteConnection::Database() const {
  return QSqlDatabase::database(QString::fromStdString(name_), /*open=*/false);
}

void SqliteConnection::Execute(const std::string& statement) {
  QSqlQuery query(Database());
  if (!query.exec(QString::fromStdString(statement))) Fail(query);
}

std::string SqliteConnection::FirstText(const std::string& statement) {
  QSqlQuery query(Database());
  if (!query.exec(QString::fromStdString(statement))) Fail(query);
  return query.next() ? query.value(0).toString().toStdString() : std::string();
}

void SqliteConnection::Fail(const QSqlQuery& query) const {
  const auto error = query.lastError();
  constexpr int kFull = 13;  // SQLITE_FULL
  const bool is_full = (error.nativeErrorCode().toInt() & 0xFF) == kFull;
  if (is_full) throw platform::FileFailure("could not be written", file_, ENOSPC);
  const auto reason = error.databaseText().isEmpty() ? error.text() : error.databaseText();
  throw Failure(KindOf(error), reason.toStdString() + " (\"" + file_.filename().string() + "\")");
}

}  // namespace reference
