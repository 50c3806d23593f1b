#include "reference/reference_database.h"

#include <system_error>
#include <utility>
#include <vector>

#include <QMetaType>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QString>
#include <QVariant>

#include "platform/failure.h"
#include "reference/reference_schema.h"
#include "reference/sql_dialect.h"
#include "reference/sqlite_connection.h"

namespace reference {
namespace {

using platform::Failure;

constexpr std::string_view kHowToMakeIt = "Run \"zemlo-letters init\" to make it again.";

platform::Value CellValue(const QVariant& cell) {
  if (cell.isNull()) return platform::Value::Null();
  if (cell.typeId() == QMetaType::LongLong) return cell.toLongLong();
  return cell.toString().toStdString();
}

std::vector<std::string> ColumnNames(const QSqlRecord& layout) {
  std::vector<std::string> names(static_cast<std::size_t>(layout.count()));
  for (int i = 0; i < layout.count(); ++i)
    names[static_cast<std::size_t>(i)] = layout.fieldName(i).toStdString();
  return names;
}

std::vector<platform::Value> ReadRow(const QSqlQuery& query, std::size_t columns) {
  std::vector<platform::Value> cells(columns);
  for (std::size_t i = 0; i < columns; ++i) cells[i] = CellValue(query.value(static_cast<int>(i)));
  return cells;
}

std::shared_ptr<platform::RecordSet> ReadRows(QSqlQuery& query) {
  auto rows = std::make_shared<platform::RecordSet>(ColumnNames(query.record()));
  const platform::RecordSet::Edit edit(*rows);
  while (query.next()) rows->Append(ReadRow(query, rows->columns().size()));
  rows->MoveFirst();
  return rows;
}

/// A file without our mark is an empty one, or another program's.
void RequireOurSchema(SqliteConnection& connection) {
  const auto version = connection.FirstText("PRAGMA user_version");
  if (version == std::to_string(kSchemaVersion)) return;
  throw Failure(Failure::Kind::kDamaged, "it is no reference database of this version");
}

std::unique_ptr<SqliteConnection> Open(const std::filesystem::path& file) {
  std::error_code unreachable;
  if (!std::filesystem::exists(file, unreachable)) {
    throw Failure(Failure::Kind::kNotFound, "The reference database \"" + file.string() +
                                                "\" is missing. Make the disk it lies on available again, or "
                                                "restore it from a backup.");
  }
  try {
    auto connection = std::make_unique<SqliteConnection>(file, SqliteConnection::Mode::kReadOnly);
    RequireOurSchema(*connection);
    return connection;
  } catch (const Failure& failure) {
    throw Failure(failure.kind(), "The reference database \"" + file.string() + "\" cannot be used: " +
                                      failure.description() + ". " + std::string(kHowToMakeIt));
  }
}

}  // namespace

ReferenceDatabase::ReferenceDatabase(std::filesystem::path file, const platform::Clock& clock)
    : file_(std::move(file)), clock_(clock) {}

ReferenceDatabase::~ReferenceDatabase() = default;

std::shared_ptr<platform::RecordSet> ReferenceDatabase::Select(const std::string& statement) {
  const auto translated = TranslateStatement(statement, clock_.Today());
  auto& connection = Connection();
  QSqlQuery query(connection.Database());
  query.setForwardOnly(true);
  if (!query.exec(QString::fromStdString(translated))) connection.Fail(query);
  return ReadRows(query);
}

SqliteConnection& ReferenceDatabase::Connection() {
  if (!connection_) connection_ = Open(file_);
  return *connection_;
}

}  // namespace reference
