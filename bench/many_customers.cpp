#include "bench/many_customers.h"

#include <chrono>
#include <iostream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "bench/demo_server.h"
#include "platform/tab_table.h"
#include "server/customers/customer_words.h"
#include "server/setup/demo_draw.h"
#include "server/storage/database.h"
#include "server/storage/server_folders.h"

namespace bench {
namespace {

constexpr int kFirstId = 1'000'001;

class CustomerDraw {
 public:
  explicit CustomerDraw(const std::filesystem::path& product_data) {
    const auto names = platform::TabTable::Read(product_data / "server" / "demo_names.tsv");
    for (std::size_t row = 0; row < names.RowCount(); ++row)
      names_[names.Text(row, "KIND")].push_back(names.Text(row, "NAME"));
    const auto counties = platform::TabTable::Read(product_data / "reference" / "counties.tsv");
    for (std::size_t row = 0; row < counties.RowCount(); ++row)
      counties_.push_back({counties.Text(row, "CNTY_CD"), counties.Text(row, "CNTY_SEAT_NM"),
                           counties.Text(row, "ZIP_PRFX")});
  }

  void Store(server::Database& database, int index) {
    server::Draw draw(static_cast<std::uint64_t>(index) + 7);
    const auto id = std::to_string(kFirstId + index);
    const bool business = draw.Below(3) > 0;
    const auto& county = counties_[static_cast<std::size_t>(draw.Below(static_cast<int>(counties_.size())))];
    const auto name = business ? BusinessName(draw) : "";
    const auto first = business ? "" : draw.From(names_["FIRST"]);
    const auto last = business ? "" : LastName(draw);
    database.Change(
        R"(INSERT INTO customer (CUST_ID, CUST_BSNS_NM, FIRST_NM, LAST_NM, MAIL_ADDR_1, MAIL_CITY, MAIL_ST,
             MAIL_ZIP_CD, PHN_NBR, ACCNT_NBR, QZ_CNTY_NBR, MAIL_BAD_FLG, MAIL_VRFY_CD, RES_BAD_FLG,
             RES_VRFY_CD, OT_BAL) VALUES (?, ?, ?, ?, ?, ?, 'KV', ?, ?, ?, ?, 'N', 'V', 'N', 'V', 0))",
        {id, name, first, last, std::to_string(draw.Between(11, 9899)) + " " + draw.From(names_["STREET"]),
         county.seat, county.zip_prefix + draw.Digits(draw.OneIn(2) ? 2 : 6),
         (draw.OneIn(2) ? "555" : "31" + draw.Digits(1)) + std::to_string(draw.Between(2, 9)) +
             draw.Digits(6),
         "6200" + id + "01", county.number});
  }

 private:
  struct County {
    std::string number;
    std::string seat;
    std::string zip_prefix;
  };

  std::string BusinessName(server::Draw& draw) {
    auto name = draw.From(names_["STEM"]) + " ";
    if (draw.OneIn(2)) name += draw.From(names_["LAST"]) + " ";
    return name + draw.From(names_["TRADE"]);
  }
  /// A register of a million has more last names than the lists: most are put together from two.
  std::string LastName(server::Draw& draw) {
    auto name = draw.From(names_["LAST"]);
    const auto& other = draw.From(names_["LAST"]);
    if (draw.OneIn(3)) return name;
    name.resize(std::min<std::size_t>(name.size(), static_cast<std::size_t>(draw.Between(3, 5))));
    return name + other.substr(other.size() - std::min<std::size_t>(other.size(), 4));
  }

  std::map<std::string, std::vector<std::string>> names_;
  std::vector<County> counties_;
};

double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

void MakeManyCustomers(const std::filesystem::path& folder, int customers) {
  WithDemoData(folder);
  const auto file = server::DatabaseFile(folder);
  server::Database database(file, server::Database::Opening::kExisting);
  server::Transaction transaction(database, server::Transaction::Purpose::kChanging);
  CustomerDraw draw(std::filesystem::path(ZEMLO_SOURCE_DIR) / "data");
  for (int index = 0; index < customers; ++index) draw.Store(database, index);
  const auto start = std::chrono::steady_clock::now();
  server::BringCustomerWordsUpToDate(database);
  const auto took = SecondsSince(start);
  const auto blocks = database.Select("SELECT SUM(LENGTH(block)) AS BYTES FROM customer_index_data");
  transaction.Commit();
  database.Settle();
  std::cerr << customers << " customers: their index made in " << took << " s, "
            << blocks->Get("BYTES").AsInteger() / 1'000'000 << " MB of "
            << std::filesystem::file_size(file) / 1'000'000 << " MB\n";
}

}  // namespace bench
