#include "server/link/waiting_items.h"

#include "server/history/batch_items.h"
#include "server/schema/schema.h"
#include "server/storage/database.h"
#include "server/storage/server_folders.h"

namespace server {

std::shared_ptr<platform::RecordSet> WaitingItems(const std::filesystem::path& data_folder) {
  Database database(DatabaseFile(data_folder), Database::Opening::kExisting);
  PrepareSchema(database);
  Transaction transaction(database, Transaction::Purpose::kReading);
  auto items = SelectWaitingItems(database);
  transaction.Commit();
  return items;
}

}  // namespace server
