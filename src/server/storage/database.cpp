#include "server/storage/database.h"

#include <atomic>
#include <chrono>
#include <thread>
#include <variant>

#include <QByteArray>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

#include "platform/failure.h"

namespace server {
namespace {

using platform::Date;
using platform::Failure;
using platform::Money;
using platform::RecordSet;
using platform::Timestamp;
using platform::Value;

QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Days and times are stored as their texts, which sort as they do; money as whole cents.
struct ToVariant {
  QVariant operator()(std::monostate) const { return QVariant(QMetaType::fromType<QString>()); }
  QVariant operator()(const std::string& text) const { return ToQt(text); }
  QVariant operator()(std::int64_t number) const { return static_cast<qlonglong>(number); }
  QVariant operator()(Money amount) const { return static_cast<qlonglong>(amount.cents()); }
  QVariant operator()(Date date) const { return ToQt(platform::DateText(date)); }
  QVariant operator()(Timestamp time) const { return ToQt(platform::TimestampText(time)); }
};

Value FromVariant(const QVariant& variant) {
  if (variant.isNull()) return {};
  switch (variant.typeId()) {
    case QMetaType::LongLong:
    case QMetaType::Int:
      return variant.toLongLong();
    case QMetaType::QByteArray:
      return static_cast<const QByteArray*>(variant.constData())->toStdString();
    default:
      return variant.toString().toStdString();
  }
}

/// What the engine itself says, without the driver's words around it.
std::string Reason(const QSqlError& error) {
  const auto text = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
  return text.trimmed().toStdString();
}

std::string NewConnectionName() {
  static std::atomic<unsigned> count = 0;
  return "zemlo-server-" + std::to_string(++count);
}

QSqlDatabase Connection(const std::string& name) {
  return QSqlDatabase::database(QString::fromStdString(name), /*open=*/false);
}

}  // namespace

Database::Database(const std::filesystem::path& file, Opening opening, const Dialect& dialect)
    : dialect_(dialect), name_(NewConnectionName()), file_(file) {
  if (opening == Opening::kExisting) RequireReadable(file_);
  try {
    QSqlDatabase::addDatabase(QLatin1String(dialect.Driver()), QString::fromStdString(name_));
    Open(opening);
  } catch (Failure& failure) {
    if (failure.kind() == Failure::Kind::kUnavailable)
      failure.AddContext("opening \"" + file_.string() + "\"");
    QSqlDatabase::removeDatabase(QString::fromStdString(name_));
    throw;
  }
}

void Database::Open(Opening opening) {
  const auto stamp = StampOf(file_);
  auto connection = Connection(name_);
  dialect_.Locate(connection, file_);
  if (!connection.open()) throw RefusalOf(connection.lastError());
  opening == Opening::kNew ? dialect_.ConfigureForFilling(connection) : dialect_.Configure(connection);
  unlocked_ = dialect_.SeesChanges(connection) ? std::nullopt : std::optional(stamp);
}

platform::Failure FullDisk() {
  return {Failure::Kind::kUnavailable,
          "The disk with the server's database is full. Free some space there and try again."};
}

platform::Failure Database::RefusalOf(const QSqlError& error) const {
  if (dialect_.IsFull(Connection(name_), error)) return FullDisk();
  if (dialect_.IsDamaged(error)) return DamagedData(file_);
  if (dialect_.MayOnlyRead(error)) return NoRightToChange(file_);
  return {Failure::Kind::kUnavailable,
          "The server's database reports an error: " + error.text().trimmed().toStdString() + "."};
}

Database::~Database() {
  prepared_.clear();
  Connection(name_).close();
  QSqlDatabase::removeDatabase(QString::fromStdString(name_));
}

QSqlQuery& Database::Prepared(const std::string& statement, const std::vector<Value>& values) {
  auto& query = prepared_[statement];
  if (!query) {
    auto fresh = std::make_unique<QSqlQuery>(Connection(name_));
    fresh->setForwardOnly(true);
    if (!fresh->prepare(ToQt(statement))) throw RefusalOf(fresh->lastError());
    query = std::move(fresh);
  }
  for (std::size_t place = 0; place < values.size(); ++place) {
    query->bindValue(static_cast<int>(place), std::visit(ToVariant(), values[place].held()));
  }
  return *query;
}

QSqlQuery& Database::Execute(const std::string& statement, const std::vector<Value>& values) {
  auto& query = Prepared(statement, values);
  if (!query.exec()) throw RefusalOf(query.lastError());
  return query;
}

std::shared_ptr<RecordSet> Database::Select(const std::string& statement, const std::vector<Value>& values) {
  auto& query = Execute(statement, values);
  const auto layout = query.record();
  std::vector<std::string> columns;
  columns.reserve(static_cast<std::size_t>(layout.count()));
  for (int column = 0; column < layout.count(); ++column)
    columns.push_back(layout.fieldName(column).toStdString());
  auto rows = std::make_shared<RecordSet>(columns);
  {
    RecordSet::Edit edit(*rows);
    while (query.next()) {
      std::vector<Value> cells;
      cells.reserve(columns.size());
      for (int column = 0; column < layout.count(); ++column)
        cells.push_back(FromVariant(query.value(column)));
      rows->Append(std::move(cells));
    }
  }
  const auto error = query.lastError();
  query.finish();
  if (error.isValid()) throw RefusalOf(error);
  rows->MoveFirst();
  return rows;
}

std::int64_t Database::Change(const std::string& statement, const std::vector<Value>& values) {
  auto& query = Execute(statement, values);
  const auto changed = query.numRowsAffected();
  query.finish();
  return changed;
}

std::int64_t Database::ChangeWithBytes(const std::string& statement, const std::vector<Value>& values,
                                       const std::string& bytes) {
  auto& query = Prepared(statement, values);
  // Bound without a copy: the bytes outlive the execution.
  query.bindValue(static_cast<int>(values.size()),
                  QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())));
  if (!query.exec()) throw RefusalOf(query.lastError());
  const auto changed = query.numRowsAffected();
  query.finish();
  return changed;
}

std::string Database::SelectBytes(const std::string& statement, const std::vector<Value>& values) {
  auto& query = Execute(statement, values);
  std::string bytes;
  if (query.next()) bytes = query.value(0).toByteArray().toStdString();
  const auto error = query.lastError();
  query.finish();
  if (error.isValid()) throw RefusalOf(error);
  return bytes;
}

std::optional<Value> Database::SelectOne(const std::string& statement, const std::vector<Value>& values,
                                         const ReadingLimits& limits) {
  auto connection = Connection(name_);
  const auto guard = dialect_.Guard(connection, limits);
  const auto check = [&](bool is_well, const QSqlQuery& query) {
    if (is_well) return;
    const bool ended = dialect_.WasEnded(query.lastError());
    throw Failure(ended ? Failure::Kind::kTimedOut : Failure::Kind::kRefused, Reason(query.lastError()));
  };
  QSqlQuery query(connection);
  query.setForwardOnly(true);
  check(query.prepare(ToQt(statement)), query);
  if (!dialect_.OnlyReads(query)) throw Failure(Failure::Kind::kRefused, "it does more than read");
  for (const auto& value : values) query.addBindValue(std::visit(ToVariant(), value.held()));
  check(query.exec(), query);
  const bool found = query.next();
  check(!query.lastError().isValid(), query);
  return found ? std::optional(FromVariant(query.value(0))) : std::nullopt;
}

void Database::ForgetStatements() {
  prepared_.clear();
}

void Database::Settle() {
  ForgetStatements();
  auto connection = Connection(name_);
  dialect_.Settle(connection);
}

void Database::RequireUnchanged() const {
  if (!unlocked_ || *unlocked_ == StampOf(file_)) return;
  throw Failure(Failure::Kind::kUnavailable,
                "The server's data were changed while they were being read. Try again.");
}

void Database::Begin(const std::string& statement) {
  if (unlocked_ && *unlocked_ != StampOf(file_)) {
    ForgetStatements();
    Connection(name_).close();
    Open(Opening::kExisting);
  }
  constexpr int kTries = 3;  // each waits as long as the connection waits for a busy database
  for (int attempt = 1;; ++attempt) {
    QSqlQuery query(Connection(name_));
    if (query.exec(ToQt(statement))) return;
    const auto error = query.lastError();
    if (attempt == kTries || !dialect_.IsBusy(error)) throw RefusalOf(error);
    std::this_thread::sleep_for(std::chrono::milliseconds(50) * attempt);
  }
}

Transaction::Transaction(Database& database, Purpose purpose) : database_(database) {
  const auto& dialect = database_.dialect();
  database_.Begin(purpose == Purpose::kReading ? dialect.BeginReading() : dialect.BeginChanging());
}

Transaction::~Transaction() {
  if (!open_) return;
  // Where the engine has undone the transaction by itself (a full disk), there is nothing left to undo.
  QSqlQuery(Connection(database_.name_)).exec(QStringLiteral("ROLLBACK"));
}

void Transaction::Commit() {
  database_.RequireUnchanged();
  QSqlQuery query(Connection(database_.name_));
  if (!query.exec(QStringLiteral("COMMIT"))) throw database_.RefusalOf(query.lastError());
  open_ = false;
}

}  // namespace server
