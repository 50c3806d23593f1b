#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <string>

#include "platform/failure.h"

class QSqlDatabase;
class QSqlError;
class QSqlQuery;

namespace server {

/// How long statements that somebody else wrote may take together, and who may end them earlier.
struct ReadingLimits {
  std::chrono::steady_clock::time_point until;
  std::stop_token ending;
};

/// Holds the statements of a connection to ReadingLimits as long as it lives; a statement that goes past them
/// fails. Goes before the connection.
class ReadingGuard {
 public:
  virtual ~ReadingGuard() = default;
};

/// What differs between database engines. All other SQL of this room is taken by each of them as it stands.
class Dialect {
 public:
  virtual ~Dialect() = default;

  /// The Qt driver's name.
  virtual const char* Driver() const = 0;
  /// Says where the data is, before the connection is opened.
  virtual void Locate(QSqlDatabase& connection, const std::filesystem::path& file) const = 0;
  /// Settles how a connection that has just been opened behaves. On a disk that takes nothing more, or is
  /// read only, and for a user who may not write, the connection is made one that can read all the same.
  /// Throws Failure kUnavailable, kDamaged or kPermissionDenied.
  virtual void Configure(QSqlDatabase& connection) const = 0;
  /// The same for a connection that fills a new file, which counts for nothing until it is whole.
  virtual void ConfigureForFilling(QSqlDatabase& connection) const = 0;

  virtual std::string BeginReading() const = 0;
  /// Takes the right to write at once, so that two writers wait for each other and never collide half way.
  virtual std::string BeginChanging() const = 0;
  /// Whether trying again a little later may help.
  virtual bool IsBusy(const QSqlError& error) const = 0;
  /// Whether the statement that just failed found no room on the disk.
  virtual bool IsFull(const QSqlDatabase& connection, const QSqlError& error) const = 0;
  /// Whether the statement that just failed met data that are not what the engine wrote.
  virtual bool IsDamaged(const QSqlError& error) const = 0;
  /// Whether the statement that just failed would have changed data that may only be read.
  virtual bool MayOnlyRead(const QSqlError& error) const = 0;
  /// False for a connection that reads the file as if nobody ever wrote to it: whoever reads asks before and
  /// after whether somebody did.
  virtual bool SeesChanges(const QSqlDatabase& connection) const = 0;
  /// `limits` outlives the guard.
  virtual std::unique_ptr<ReadingGuard> Guard(QSqlDatabase& connection,
                                              const ReadingLimits& limits) const = 0;
  /// Whether a guard has ended the statement.
  virtual bool WasEnded(const QSqlError& error) const = 0;
  /// Whether a prepared statement changes nothing.
  virtual bool OnlyReads(const QSqlQuery& prepared) const = 0;

  /// The type of a key column whose numbers the engine gives out and never gives out again.
  virtual std::string NeverReusedKey() const = 0;
  /// What stands behind a table whose rows are to lie in the order of their key, and nowhere else.
  virtual std::string StoredByKey() const = 0;
  /// The type of a column that holds bytes which are no text.
  virtual std::string BytesType() const = 0;
  /// An expression for the bytes of a text column, in UTF-8. The driver hands texts out in UTF-16; where rows
  /// are read by the thousand, that costs as much as finding them.
  virtual std::string Utf8Of(const std::string& column) const = 0;
  /// Writes everything into the one data file, so that it may be renamed after the connection is closed.
  virtual void Settle(QSqlDatabase& connection) const = 0;
};

const Dialect& SqliteDialect();

/// What is said where the engine has found no room.
platform::Failure FullDisk();

}  // namespace server
