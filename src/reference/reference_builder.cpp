#include "reference/reference_builder.h"

#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include "platform/failure.h"
#include "platform/file_access.h"
#include "reference/reference_schema.h"
#include "reference/sqlite_connection.h"
#include "reference/table_check.h"

namespace reference {
namespace {

namespace fs = std::filesystem;
using platform::Failure;

constexpr std::string_view kNothingTaken = "The tables were not taken in.";

/// Which files the database is made from: their names, sizes and times.
std::string SourceStamp(const fs::path& product_data_folder) {
  std::string stamp;
  for (const auto& table : kTables) {
    const auto file = TableFile(product_data_folder, table.file);
    std::error_code missing;
    const auto size = fs::file_size(file, missing);
    if (missing) {
      throw Failure(Failure::Kind::kNotFound,
                    "\"" + file.string() + "\" is missing; install the product's data again.");
    }
    stamp += std::string(table.file) + " " + std::to_string(size) + " " +
             std::to_string(fs::last_write_time(file).time_since_epoch().count()) + "\n";
  }
  return stamp;
}

bool IsUpToDate(const fs::path& target, const std::string& stamp) {
  std::error_code unreachable;
  if (!fs::exists(target, unreachable)) return false;
  try {
    SqliteConnection connection(target, SqliteConnection::Mode::kReadOnly);
    return connection.FirstText("PRAGMA user_version") == std::to_string(kSchemaVersion) &&
           connection.FirstText("SELECT STAMP FROM REFERENCE_SOURCES") == stamp;
  } catch (const Failure&) {
    return false;  // whatever stands there is replaced
  }
}

void CreateTable(SqliteConnection& connection, const Table& table) {
  std::string statement = "CREATE TABLE " + std::string(table.name) + " (";
  for (const auto& column : table.columns) {
    statement += std::string(column.name) + (IsOptional(column.kind) ? " TEXT" : " TEXT NOT NULL") +
                 " COLLATE NOCASE, ";
  }
  connection.Execute(statement + std::string(table.constraints) + ") WITHOUT ROWID");
}

std::string InsertStatement(const Table& table) {
  std::string marks = "?";
  for (std::size_t i = 1; i < table.columns.size(); ++i) marks += ", ?";
  return "INSERT INTO " + std::string(table.name) + " VALUES (" + marks + ")";
}

void FillTable(SqliteConnection& connection, const Table& table, const platform::TabTable& rows) {
  QSqlQuery insert(connection.Database());
  if (!insert.prepare(QString::fromStdString(InsertStatement(table)))) connection.Fail(insert);
  for (std::size_t row = 0; row < rows.RowCount(); ++row) {
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      const auto& cell = rows.Text(row, table.columns[i].name);
      insert.bindValue(static_cast<int>(i),
                       cell.empty() ? QVariant() : QVariant(QString::fromStdString(cell)));
    }
    if (!insert.exec()) connection.Fail(insert);
  }
}

void Build(const fs::path& product_data_folder, const fs::path& file, const std::string& stamp) {
  platform::TableFaults faults;
  const auto tables = ReadTables(product_data_folder, faults);
  faults.OrFail(kNothingTaken);
  SqliteConnection connection(file, SqliteConnection::Mode::kReadWrite);
  connection.Execute("PRAGMA foreign_keys = ON");
  connection.Execute("BEGIN");
  for (std::size_t i = 0; i < kTables.size(); ++i) {
    CreateTable(connection, kTables[i]);
    FillTable(connection, kTables[i], tables[i]);
  }
  connection.Execute("CREATE TABLE REFERENCE_SOURCES (STAMP TEXT NOT NULL)");
  QSqlQuery remember(connection.Database());
  remember.prepare("INSERT INTO REFERENCE_SOURCES VALUES (?)");
  remember.addBindValue(QString::fromStdString(stamp));
  if (!remember.exec()) connection.Fail(remember);
  connection.Execute("PRAGMA user_version = " + std::to_string(kSchemaVersion));
  connection.Execute("COMMIT");
}

void RemoveIfThere(const fs::path& file) {
  std::error_code absent;
  fs::remove(file, absent);
}

}  // namespace

void CheckReferenceTables(const fs::path& product_data_folder, platform::TableFaults& faults) {
  ReadTables(product_data_folder, faults);
}

NextReferenceDatabase::NextReferenceDatabase(const fs::path& product_data_folder, fs::path target)
    : target_(std::move(target)), file_(target_) {
  const auto stamp = SourceStamp(product_data_folder);
  is_needed_ = !IsUpToDate(target_, stamp);
  if (!is_needed_) return;
  file_ += ".new" + std::to_string(QCoreApplication::applicationPid());
  platform::MakeFolder(target_.parent_path());
  RemoveIfThere(file_);
  try {
    platform::MakeFile(file_);
    Build(product_data_folder, file_, stamp);
  } catch (...) {
    RemoveIfThere(file_);
    throw;
  }
}

NextReferenceDatabase::~NextReferenceDatabase() {
  if (is_needed_) RemoveIfThere(file_);
}

void NextReferenceDatabase::PutInPlace() {
  if (!is_needed_) return;
  std::error_code failed;
  fs::rename(file_, target_, failed);
  if (failed) {
    throw Failure(Failure::Kind::kPermissionDenied,
                  "\"" + target_.string() + "\" cannot be replaced: " + failed.message() + ".");
  }
}

bool CreateReferenceDatabase(const fs::path& product_data_folder, const fs::path& target) {
  NextReferenceDatabase next(product_data_folder, target);
  next.PutInPlace();
  return next.is_needed();
}

}  // namespace reference
