#include "server/link/data_preparation.h"

#include "server/schema/schema.h"
#include "server/storage/database.h"
#include "server/storage/server_folders.h"

namespace server {

void PrepareData(const std::filesystem::path& data_folder,
                 const std::function<void(const std::string&)>& tell) {
  Database database(DatabaseFile(data_folder), Database::Opening::kExisting);
  PrepareSchema(database, tell);
}

}  // namespace server
