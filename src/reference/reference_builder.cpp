#include "reference/reference_builder.h"

#include <string>
#include <system_error>

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include "platform/failure.h"
#include "platform/file_access.h"
#include "reference/reference_schema.h"
#include "reference/sqlite_connection.h"
#include "reference/table_file.h"

namespace reference {
namespace {

namespace fs = std::filesystem;
using platform::Failure;

fs::path SourceFile(const fs::path& product_data_folder, const Table& table) {
  return product_data_folder / "reference" / table.file;
}

/// Which files the database is made from: their names, sizes and times.
std::string SourceStamp(const fs::path& product_data_folder) {
  std::string stamp;
  for (const auto& table : kTables) {
    const auto file = SourceFile(product_data_folder, table);
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

void FillTable(SqliteConnection& connection, const Table& table, const fs::path& file) {
  TableFile rows(file, table);
  QSqlQuery insert(connection.Database());
  if (!insert.prepare(QString::fromStdString(InsertStatement(table)))) connection.Fail(insert);
  while (const auto row = rows.Next()) {
    for (std::size_t i = 0; i < row->size(); ++i) {
      const auto& cell = (*row)[i];
      insert.bindValue(static_cast<int>(i),
                       cell.empty() ? QVariant() : QVariant(QString::fromStdString(cell)));
    }
    if (insert.exec()) continue;
    try {
      connection.Fail(insert);
    } catch (const Failure& failure) {
      if (failure.kind() != Failure::Kind::kRefused) throw;
      throw rows.Damaged("The row does not fit the others: " + failure.description() + ".");
    }
  }
}

void Build(const fs::path& product_data_folder, const fs::path& file, const std::string& stamp) {
  SqliteConnection connection(file, SqliteConnection::Mode::kReadWrite);
  connection.Execute("PRAGMA foreign_keys = ON");
  connection.Execute("BEGIN");
  for (const auto& table : kTables) {
    CreateTable(connection, table);
    FillTable(connection, table, SourceFile(product_data_folder, table));
  }
  connection.Execute("CREATE TABLE REFERENCE_SOURCES (STAMP TEXT NOT NULL)");
  QSqlQuery remember(connection.Database());
  remember.prepare("INSERT INTO REFERENCE_SOURCES VALUES (?)");
  remember.addBindValue(QString::fromStdString(stamp));
  if (!remember.exec()) connection.Fail(remember);
  connection.Execute("PRAGMA user_version = " + std::to_string(kSchemaVersion));
  connection.Execute("COMMIT");
}

/// A file under its temporary name, gone with this object unless it has been put in place.
class TemporaryFile {
 public:
  explicit TemporaryFile(fs::path target) : target_(std::move(target)), file_(target_) {
    file_ += ".new" + std::to_string(QCoreApplication::applicationPid());
    Remove();
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { Remove(); }

  const fs::path& file() const { return file_; }
  void PutInPlace() {
    std::error_code failed;
    fs::rename(file_, target_, failed);
    if (failed) {
      throw Failure(Failure::Kind::kPermissionDenied,
                    "\"" + target_.string() + "\" cannot be replaced: " + failed.message() + ".");
    }
  }

 private:
  void Remove() {
    std::error_code absent;
    fs::remove(file_, absent);
  }

  const fs::path target_;
  fs::path file_;
};

}  // namespace

bool CreateReferenceDatabase(const fs::path& product_data_folder, const fs::path& target) {
  const auto stamp = SourceStamp(product_data_folder);
  if (IsUpToDate(target, stamp)) return false;
  platform::MakeFolder(target.parent_path());
  TemporaryFile temporary(target);
  platform::MakeFile(temporary.file());
  Build(product_data_folder, temporary.file(), stamp);
  temporary.PutInPlace();
  return true;
}

}  // namespace reference
