#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/agreed/customer_record.h"

namespace server {

class Database;

/// Looks customers up in the server's data. Stays on the thread that made it.
class CustomerDirectory {
 public:
  /// Throws Failure kNotFound where there are no data yet, kUnavailable or kRefused where they cannot be
  /// used.
  explicit CustomerDirectory(const std::filesystem::path& data_folder);
  ~CustomerDirectory();

  /// The customers that FindCustomers finds for `text`, in its order, with their values as they are stored;
  /// all of them by their ids for "". At most `limit`. Throws Failure kUnavailable.
  std::vector<platform::SelectedCustomer> Find(std::string_view text, std::size_t limit);

 private:
  std::unique_ptr<Database> database_;
};

}  // namespace server
