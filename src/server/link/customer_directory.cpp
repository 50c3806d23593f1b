#include "server/link/customer_directory.h"

#include "server/customers/customer_search.h"
#include "server/schema/schema.h"
#include "server/storage/database.h"
#include "server/storage/server_folders.h"

namespace server {

CustomerDirectory::CustomerDirectory(const std::filesystem::path& data_folder)
    : database_(std::make_unique<Database>(DatabaseFile(data_folder), Database::Opening::kExisting)) {
  PrepareSchema(*database_);
}

CustomerDirectory::~CustomerDirectory() = default;

std::vector<platform::SelectedCustomer> CustomerDirectory::Find(std::string_view text, std::size_t limit) {
  Transaction transaction(*database_, Transaction::Purpose::kReading);
  const auto rows = FindCustomers(*database_, text, limit);
  transaction.Commit();
  std::vector<platform::SelectedCustomer> customers;
  customers.reserve(rows->RecordCount());
  for (std::size_t row = 0; row < rows->RecordCount(); ++row)
    customers.push_back(platform::CustomerRecord(*rows, row).Values());
  return customers;
}

}  // namespace server
