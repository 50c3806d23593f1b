#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/parties/clock.h"
#include "platform/parties/reference_database.h"

namespace reference {

class SqliteConnection;

/// The local reference database in a SQLite file, opened read only when the first statement comes. Several
/// programs may read the file at once. User-interface thread only; Qt's application object exists.
class ReferenceDatabase : public platform::ReferenceDatabase {
 public:
  /// `clock` says what date() means, and outlives this object.
  ReferenceDatabase(std::filesystem::path file, const platform::Clock& clock);
  ~ReferenceDatabase() override;

  /// Columns come back under the names of the statement, cells as text, integer or null.
  std::shared_ptr<platform::RecordSet> Select(const std::string& statement) override;

 private:
  SqliteConnection& Connection();

  // Constant after construction.
  const std::filesystem::path file_;
  const platform::Clock& clock_;

  std::unique_ptr<SqliteConnection> connection_;  // null before the first statement
};

}  // namespace reference
