#include "server/setup/server_data.h"

#include <cerrno>
#include <chrono>
#include <fstream>
#include <string>

#include <QFile>
#include <QLockFile>

#include "platform/failure.h"
#include "platform/file_access.h"
#include "platform/file_failure.h"
#include "platform/whole_file.h"
#include "server/batch/batch_rules.h"
#include "server/context/letter_fields.h"
#include "server/context/stored_context.h"
#include "server/customers/customer_words.h"
#include "server/schema/schema.h"
#include "server/setup/demo_customers.h"
#include "server/setup/demo_history.h"
#include "server/setup/letter_definitions.h"
#include "server/setup/office_tables.h"
#include "server/storage/server_folders.h"

namespace server {
namespace {

using platform::Failure;
namespace fs = std::filesystem;

constexpr std::string_view kNothingTaken = "The letter definitions were not taken in.";

fs::path DefinitionFile(const InitOptions& options) {
  return options.product_data_folder / "server" / kDefinitionFile;
}

/// "" for a file that cannot be read: storing its fields will say so.
std::string TextOf(const fs::path& file) {
  QFile source(QString::fromStdString(file.string()));
  return source.open(QIODevice::ReadOnly) ? source.readAll().toStdString() : "";
}

bool HasCurrentDefinitions(Database& database, const InitOptions& options) {
  const auto rows = database.Select("SELECT CONTENT FROM server_info WHERE NAME = ?", {kDefinitions});
  return !rows->IsEmpty() && rows->FirstText() == TextOf(DefinitionFile(options));
}

void StoreDefinitions(Database& database, const InitOptions& options) {
  platform::TableFaults faults;
  const auto definitions = ReadLetterDefinitions(options.product_data_folder, faults);
  TryQueries(database, definitions, options.today, faults);
  faults.OrFail(kNothingTaken);
  StoreLetterFields(database, definitions);
  StoreContextDictionaries(database);
  database.Change("DELETE FROM server_info WHERE NAME = ?", {kDefinitions});
  database.Change("INSERT INTO server_info (NAME, CONTENT) VALUES (?, ?)",
                  {kDefinitions, TextOf(DefinitionFile(options))});
}

void BringUpToDate(const fs::path& file, const InitOptions& options) {
  Database database(file, Database::Opening::kExisting);
  PrepareSchema(database, options.tell);
  Transaction transaction(database, Transaction::Purpose::kChanging);
  BringCustomerWordsUpToDate(database);
  TakeInOfficeTables(database, options.product_data_folder);
  if (!HasCurrentDefinitions(database, options)) StoreDefinitions(database, options);
  transaction.Commit();
}

void Fill(const fs::path& file, const InitOptions& options) {
  Database database(file, Database::Opening::kNew);
  Transaction transaction(database, Transaction::Purpose::kChanging);
  CreateTables(database);
  StoreDefinitions(database, options);
  CreateDemoAdministration(database, options.product_data_folder, options.customers, options.today);
  TakeInOfficeTables(database, options.product_data_folder);
  BringCustomerWordsUpToDate(database);
  CreateDemoHistory(database, options.product_data_folder, options.letters, options.today);
  CreateHistoryIndexes(database);
  database.Change("ANALYZE");  // tells the engine which index narrows a search most
  transaction.Commit();
  database.Settle();
}

/// Made under another name: a database of the right name is always whole.
void CreateDatabase(const fs::path& file, const InitOptions& options) {
  auto unfinished = file;
  unfinished += ".new";
  for (const auto* suffix : {"", "-wal", "-shm", "-journal"}) fs::remove(unfinished.string() + suffix);
  platform::MakeFile(unfinished);
  Fill(unfinished, options);
  fs::rename(unfinished, file);
}

void CopyMissingTemplates(const InitOptions& options) {
  const auto folder = TemplateFolder(options.data_folder);
  platform::MakeFolder(folder);
  for (const auto& entry : fs::directory_iterator(options.product_data_folder / "templates")) {
    const auto target = folder / entry.path().filename();
    if (entry.is_regular_file() && !fs::exists(target)) platform::CopyWholeFile(entry.path(), target);
  }
}

/// An office's own rules stay.
void CopyMissingRules(const InitOptions& options) {
  const auto target = RuleFile(options.data_folder);
  if (!fs::exists(target))
    platform::CopyWholeFile(options.product_data_folder / "server" / kRuleFile, target);
}

/// Throws where the lock says that it is not another program that keeps this one from working.
void RequireWritable(const fs::path& folder, QLockFile::LockError error) {
  if (error == QLockFile::LockFailedError) return;
  const auto number = error == QLockFile::PermissionError ? EACCES : ENOSPC;
  throw platform::FolderFailure("could not be written to", folder, number);
}

void CreateOrUpdate(const InitOptions& options) {
  platform::MakeFolder(ServerFolder(options.data_folder));
  const auto file = DatabaseFile(options.data_folder);
  QLockFile lock(QString::fromStdString((ServerFolder(options.data_folder) / "init.lock").string()));
  constexpr auto kPatience = std::chrono::minutes(2);
  if (!lock.tryLock(static_cast<int>(std::chrono::milliseconds(kPatience).count()))) {
    RequireWritable(ServerFolder(options.data_folder), lock.error());
    throw Failure(Failure::Kind::kUnavailable, "Another program is making the server's data in \"" +
                                                   options.data_folder.string() +
                                                   "\". Try again when it is done.");
  }
  if (fs::exists(file)) {
    BringUpToDate(file, options);
  } else {
    CreateDatabase(file, options);
  }
  CopyMissingTemplates(options);
  CopyMissingRules(options);
}

void RequireAtLeast(int least, int number, const std::string& things) {
  if (number >= least) return;
  throw Failure(Failure::Kind::kRefused, "\"" + std::to_string(number) + "\" is no number of " + things +
                                             ". Ask for at least " + std::to_string(least) + ".");
}

}  // namespace

void CheckLetterDefinitions(const InitOptions& options, platform::TableFaults& faults) {
  const auto definitions = ReadLetterDefinitions(options.product_data_folder, faults);
  const auto file = DatabaseFile(options.data_folder);
  if (fs::exists(file)) {
    Database database(file, Database::Opening::kExisting);
    if (HasCurrentTables(database)) return TryQueries(database, definitions, options.today, faults);
  }
  Database scratch(":memory:", Database::Opening::kNew);
  CreateTables(scratch);
  TryQueries(scratch, definitions, options.today, faults);
}

void CreateServerData(const InitOptions& options) {
  RequireAtLeast(options.letters > 0 ? 1 : 0, options.customers, "customers");
  RequireAtLeast(0, options.letters, "letters");
  try {
    platform::While("making the server's data", [&] { CreateOrUpdate(options); });
  } catch (const fs::filesystem_error& error) {
    const bool denied =
        error.code() == std::errc::permission_denied || error.code() == std::errc::read_only_file_system;
    throw Failure(denied ? Failure::Kind::kPermissionDenied : Failure::Kind::kUnavailable,
                  "The server's data cannot be made (" + error.code().message() + "): \"" +
                      error.path1().string() + "\".");
  }
}

}  // namespace server
