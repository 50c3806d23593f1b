#include "server/link/customer_directory.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <unordered_map>

#include "server/customers/customer_search.h"
#include "server/schema/schema.h"
#include "server/storage/database.h"
#include "server/storage/server_folders.h"

namespace server {
namespace {

constexpr std::size_t kAtATime = 250;

/// Appends those that are there, in the order of the ids.
void AppendCustomers(Database& database, std::span<const std::string> ids,
                     std::vector<platform::SelectedCustomer>& customers) {
  std::string places;
  for (std::size_t place = 0; place < ids.size(); ++place) places += place == 0 ? "?" : ", ?";
  const auto rows =
      database.Select("SELECT * FROM customer WHERE CUST_ID IN (" + places + ")", {ids.begin(), ids.end()});
  std::unordered_map<std::string, std::size_t> row_of;
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) row_of[rows->Text(row, "CUST_ID")] = row;
  for (const auto& id : ids) {
    if (const auto row = row_of.find(id); row != row_of.end())
      customers.push_back(platform::CustomerRecord(*rows, row->second).Values());
  }
}

}  // namespace

CustomerDirectory::CustomerDirectory(const std::filesystem::path& data_folder)
    : database_(std::make_unique<Database>(DatabaseFile(data_folder), Database::Opening::kExisting)) {
  PrepareSchema(*database_);
}

CustomerDirectory::~CustomerDirectory() = default;

std::vector<platform::SelectedCustomer> CustomerDirectory::Find(std::string_view text, std::size_t limit) {
  Transaction transaction(*database_, Transaction::Purpose::kReading);
  const auto ids = FindCustomers(*database_, text, 0, static_cast<std::int64_t>(limit));
  std::vector<platform::SelectedCustomer> customers;
  customers.reserve(ids.size());
  for (std::span<const std::string> rest = ids; !rest.empty();) {
    const auto count = std::min(rest.size(), kAtATime);
    AppendCustomers(*database_, rest.first(count), customers);
    rest = rest.subspan(count);
  }
  transaction.Commit();
  return customers;
}

}  // namespace server
