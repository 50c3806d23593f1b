#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace server {

class Database;

/// A customer as a list shows it, and as a page's panel is filled from it; "" for what is not known.
struct CustomerListing {
  std::string CustID;
  std::string CUSTNAME;
  std::string MailAddress;
  std::string MailAddress2;
  std::string MailCity;
  std::string MailState;
  std::string MailZip;
  std::string ResAddress;
  std::string ResAddress2;
  std::string ResCity;
  std::string ResState;
  std::string ResZip;
  std::string Phone;
  std::string FuelTax;

  /// The mailing address's city, or the residential one's.
  const std::string& City() const { return MailCity.empty() ? ResCity : MailCity; }
};

/// Looks customers up in the server's data. Stays on the thread that made it.
class CustomerDirectory {
 public:
  /// Throws Failure kNotFound where there are no data yet, kUnavailable or kRefused where they cannot be
  /// used.
  explicit CustomerDirectory(const std::filesystem::path& data_folder);
  ~CustomerDirectory();

  /// The customers whose id, names, cities and account hold the words of `text`, by their ids, as
  /// FindCustomers does; all of them for "". At most `limit`. Throws Failure kUnavailable.
  std::vector<CustomerListing> Find(std::string_view text, std::size_t limit);

 private:
  std::unique_ptr<Database> database_;
};

}  // namespace server
