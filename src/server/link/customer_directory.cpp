#include "server/link/customer_directory.h"

#include <array>

#include "platform/text.h"
#include "server/customers/customer_search.h"
#include "server/schema/schema.h"
#include "server/storage/database.h"
#include "server/storage/server_folders.h"

namespace server {
namespace {

struct ListedColumn {
  std::string CustomerListing::*field;
  std::string_view column;
};

constexpr auto kListedColumns = std::to_array<ListedColumn>({
    {&CustomerListing::CustID, "CUST_ID"},
    {&CustomerListing::MailAddress, "MAIL_ADDR_1"},
    {&CustomerListing::MailAddress2, "MAIL_ADDR_2"},
    {&CustomerListing::MailCity, "MAIL_CITY"},
    {&CustomerListing::MailState, "MAIL_ST"},
    {&CustomerListing::MailZip, "MAIL_ZIP_CD"},
    {&CustomerListing::ResAddress, "RES_ADDR_1"},
    {&CustomerListing::ResAddress2, "RES_ADDR_2"},
    {&CustomerListing::ResCity, "RES_CITY"},
    {&CustomerListing::ResState, "RES_ST"},
    {&CustomerListing::ResZip, "RES_ZIP_CD"},
    {&CustomerListing::Phone, "PHN_NBR"},
    {&CustomerListing::FuelTax, "ACCNT_NBR"},
});

}  // namespace

CustomerDirectory::CustomerDirectory(const std::filesystem::path& data_folder)
    : database_(std::make_unique<Database>(DatabaseFile(data_folder), Database::Opening::kExisting)) {
  PrepareSchema(*database_);
}

CustomerDirectory::~CustomerDirectory() = default;

std::vector<CustomerListing> CustomerDirectory::Find(std::string_view text, std::size_t limit) {
  Transaction transaction(*database_, Transaction::Purpose::kReading);
  const auto rows = FindCustomers(*database_, text, limit);
  transaction.Commit();
  std::vector<CustomerListing> listings(rows->RecordCount());
  for (std::size_t row = 0; row < listings.size(); ++row) {
    for (const auto& listed : kListedColumns) listings[row].*listed.field = rows->Text(row, listed.column);
    auto name = rows->Text(row, "CUST_BSNS_NM");
    if (platform::Trim(name).empty()) name = rows->Text(row, "FIRST_NM") + " " + rows->Text(row, "LAST_NM");
    listings[row].CUSTNAME = platform::Trim(name);
  }
  return listings;
}

}  // namespace server
