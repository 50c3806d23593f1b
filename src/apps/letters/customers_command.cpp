#include <array>
#include <iostream>
#include <limits>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/listing.h"
#include "apps/letters/standard_streams.h"
#include "customers/display_encoders.h"
#include "host/error_log.h"
#include "host/settings_file.h"
#include "host/system_clock.h"
#include "server/link/customer_directory.h"
#include "server/link/data_preparation.h"

namespace apps {

int RunCustomers(const QStringList& words) {
  CommandLine line("customers", "Lists customers");
  line.DataOption()
      .Option("find", "TEXT",
              "Only those with words that begin with those of the text: of the name, the city, the zip, or a "
              "number "
              "(customer, account, telephone, driver licence, registration); the best first.",
              Takes::kAnyText)
      .JsonOption();
  if (const auto status = line.Parse(words)) return *status;

  static constexpr std::array<Listing::Column, 4> kColumns{
      {{"id", "Id"}, {"name", "Name"}, {"city", "City"}, {"account", "Fuel tax account"}}};
  Listing listing{kColumns, {}};
  const host::SettingsFile office(line.Data());  // a folder without an office is called that
  host::SystemClock clock;
  host::ErrorLog errors(
      line.Data().ErrorLog(), clock,
      [](const std::string& description, const std::string&) { std::cerr << description << '\n'; });
  const customers::DisplayEncoders encoders(errors);
  server::PrepareData(line.Data().root(), [](const std::string& text) { Notices() << text << '\n'; });
  server::CustomerDirectory directory(line.Data().root());
  for (const auto& customer : directory.Find(line.Value("find"), std::numeric_limits<int>::max())) {
    listing.rows.push_back({customer.CustID, customer.CUSTNAME, customer.City(),
                            encoders.EncodeFuelTaxAccountNbr(customer.FuelTax)});
  }
  Print(listing, line.IsSet("json"));
  return kDone;
}

}  // namespace apps
