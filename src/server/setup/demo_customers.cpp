#include "server/setup/demo_customers.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/agreed/form_numbers.h"
#include "platform/failure.h"
#include "platform/tab_table.h"
#include "platform/text.h"
#include "server/setup/demo_draw.h"
#include "server/setup/demo_streets.h"
#include "server/subject/letter_text.h"

namespace server {
namespace {

using platform::Date;
using platform::TabTable;
using platform::Value;

namespace form_type = platform::form_type;

constexpr auto kHomeState = "KV";
constexpr int kFirstCustomer = 100001;
constexpr int kFirstForm = 3100000;
constexpr auto kSecondForms =
    std::to_array<std::string_view>({form_type::kWarrant, form_type::kReturn, form_type::kOverdueAccount,
                                     form_type::kCitation, form_type::kReceipt});
constexpr auto kThirdForms =
    std::to_array<std::string_view>({form_type::kReceipt, form_type::kWarrant, form_type::kCitation,
                                     form_type::kReturn, form_type::kOverdueAccount});

constexpr auto kCustomerColumns = std::to_array<std::string_view>(
    {"CUST_BSNS_NM", "FIRST_NM",     "LAST_NM",      "MAIL_ADDR_1", "MAIL_ADDR_2", "MAIL_CITY",   "MAIL_ST",
     "MAIL_ZIP_CD",  "MAIL_BAD_FLG", "MAIL_VRFY_CD", "RES_ADDR_1",  "RES_ADDR_2",  "RES_CITY",    "RES_ST",
     "RES_ZIP_CD",   "RES_BAD_FLG",  "RES_VRFY_CD",  "PHN_NBR",     "ACCNT_NBR",   "QZ_CNTY_NBR", "MID_NM",
     "SUFX_NM",      "CO_CNTCT_NM",  "DRVR_LIC_NBR", "RGSTRTN_NBR"});
/// "Y" or "N", and "N" where nothing is said.
constexpr auto kMarkColumns =
    std::to_array<std::string_view>({"DRVR_LIC_IND", "RGSTRTN_IND", "DLR_IND", "ACDNT_IND", "ENFRC_IND"});
constexpr auto kNameSuffixes = std::to_array<const char*>({"Jr", "Sr", "II", "III"});

/// What is shown by the customer's forms, where it is not drawn: how many periods the first form has, the tax
/// of each of its periods in cents, and the status of each form, a letter each.
constexpr auto kFormColumns = std::to_array<std::string_view>({"PRD_CNT", "PRD_AMT", "FORM_STTS"});

using CustomerRow = std::map<std::string_view, std::string>;

struct County {
  std::string number;
  std::string seat;
  std::string zip_prefix;
};

std::vector<County> StoreCounties(Database& database, const std::filesystem::path& file) {
  const auto table = TabTable::Read(file);
  std::vector<County> counties;
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    database.Change(
        "INSERT INTO county (QZ_CNTY_NBR, QZ_CNTY_DESC, TRP_ID, TRP_DIST_ID, ZIP_PRFX)"
        " VALUES (?, ?, ?, ?, ?)",
        {table.Text(row, "CNTY_CD"), table.Text(row, "CNTY_NM"), table.Text(row, "TRP_ID"),
         table.Text(row, "TRP_DIST_ID"), table.Text(row, "ZIP_PRFX")});
    counties.push_back(
        {table.Text(row, "CNTY_CD"), table.Text(row, "CNTY_SEAT_NM"), table.Text(row, "ZIP_PRFX")});
  }
  return counties;
}

void StoreOffice(Database& database, const std::filesystem::path& file) {
  const auto table = TabTable::Read(file);
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    const auto text = [&](std::string_view column) { return Value(table.Text(row, column)); };
    database.Change(
        R"(INSERT INTO office (OFFICE_NBR, OFFICE_NM, OFFICE_ADDR_1, OFFICE_CITY, OFFICE_ST, OFFICE_ZIP_CD,
           OFFICE_PHN_NBR, OFFICER_NM) VALUES (?, ?, ?, ?, ?, ?, ?, ?))",
        {row + 1, text("OFFICE_NM"), text("OFFICE_ADDR_1"), text("OFFICE_CITY"), text("OFFICE_ST"),
         text("OFFICE_ZIP_CD"), text("OFFICE_PHN_NBR"), text("OFFICER_NM")});
  }
}

/// What names are put together from, by kind: FIRST, LAST, STEM, TRADE, STREET.
std::map<std::string, std::vector<std::string>> ReadNames(const std::filesystem::path& file) {
  const auto table = TabTable::Read(file);
  std::map<std::string, std::vector<std::string>> names;
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    names[table.Text(row, "KIND")].push_back(table.Text(row, "NAME"));
  }
  for (const auto* kind : {"FIRST", "LAST", "STEM", "TRADE", "STREET"}) {
    if (names[kind].empty())
      throw platform::Failure(
          platform::Failure::Kind::kDamaged,
          platform::Quoted(file.string()) + " has no name of kind " + platform::Quoted(kind) + ".");
  }
  return names;
}

class Administration {
 public:
  Administration(Database& database, const std::filesystem::path& product_data, Date today)
      : database_(database),
        today_(today),
        counties_(StoreCounties(database, product_data / "reference" / "counties.tsv")),
        names_(ReadNames(product_data / "server" / "demo_names.tsv")),
        shown_(TabTable::Read(product_data / "server" / "demo_customers.tsv")),
        streets_(product_data) {
    StoreOffice(database, product_data / "server" / "office.tsv");
  }

  /// `index` counts from 1.
  void AddCustomer(int index) {
    Draw draw(static_cast<std::uint64_t>(index));
    const auto shown = static_cast<std::size_t>(index) <= shown_.RowCount();
    auto row = shown ? Shown(static_cast<std::size_t>(index) - 1) : Drawn(index, draw);
    const auto id = std::to_string(kFirstCustomer + index - 1);
    StoreCustomer(id, row);
    StoreForms(id, index, row, draw);
  }

 private:
  CustomerRow Shown(std::size_t place) const {
    CustomerRow row;
    for (const auto column : kCustomerColumns) row[column] = shown_.Text(place, column);
    for (const auto column : kMarkColumns) row[column] = shown_.Text(place, column);
    for (const auto column : kFormColumns) row[column] = shown_.Text(place, column);
    return row;
  }

  CustomerRow Drawn(int index, Draw& draw) {
    CustomerRow row;
    const bool business = draw.Below(3) > 0;
    if (business) {
      row["CUST_BSNS_NM"] = draw.From(names_["STEM"]) + " " + draw.From(names_["TRADE"]);
    } else {
      row["FIRST_NM"] = draw.From(names_["FIRST"]);
      row["LAST_NM"] = draw.From(names_["LAST"]);
    }
    const auto& county = counties_[static_cast<std::size_t>(draw.Below(static_cast<int>(counties_.size())))];
    row["QZ_CNTY_NBR"] = county.number;
    DrawAddress(row, "MAIL_", county, draw);
    if (!business || draw.OneIn(2)) DrawAddress(row, "RES_", county, draw);
    if (draw.OneIn(6)) MoveToBox(row, draw.Between(10, 990));
    row["MAIL_BAD_FLG"] = draw.OneIn(30) ? "Y" : "N";
    row["MAIL_VRFY_CD"] = draw.OneIn(40) ? "F" : "V";
    if (row["MAIL_VRFY_CD"] == "F") MoveOutOfTown(row["MAIL_ADDR_1"]);
    row["RES_BAD_FLG"] = "N";
    row["RES_VRFY_CD"] = "V";
    row["PHN_NBR"] = "555" + draw.Digits(7);
    row["ACCNT_NBR"] = "62000" + std::to_string(kFirstCustomer + index - 1) + "01";
    DrawWhatMaintainingShows(row, business, index);
    return row;
  }

  /// Drawn apart, so that everything else stays what it was.
  void DrawWhatMaintainingShows(CustomerRow& row, bool business, int index) {
    Draw draw(0x5EED'0000'0000ULL + static_cast<std::uint64_t>(index));
    if (business) {
      if (draw.OneIn(2)) row["CO_CNTCT_NM"] = draw.From(names_["FIRST"]) + " " + draw.From(names_["LAST"]);
    } else {
      if (draw.OneIn(2)) row["MID_NM"] = draw.From(names_["FIRST"]);
      if (draw.OneIn(12))
        row["SUFX_NM"] = kNameSuffixes[static_cast<std::size_t>(draw.Below(kNameSuffixes.size()))];
      if (draw.OneIn(10)) KeepElsewhere(row, "DRVR_LIC_", "D" + draw.Digits(8));
    }
    if (draw.OneIn(15)) KeepElsewhere(row, "RGSTRTN_", "R" + draw.Digits(7));
  }

  /// The prefix is how the columns of the other register begin.
  static void KeepElsewhere(CustomerRow& row, const std::string& prefix, const std::string& number) {
    for (const auto column : kMarkColumns)
      if (column == prefix + "IND") row[column] = "Y";
    for (const auto column : kCustomerColumns)
      if (column == prefix + "NBR") row[column] = number;
  }

  /// The prefix is how the address's columns begin.
  void DrawAddress(CustomerRow& row, const std::string& prefix, const County& county, Draw& draw) {
    const auto house = draw.Between(11, 9899);
    const auto& street = draw.From(names_["STREET"]);
    const auto unit = draw.OneIn(5) ? "Suite " + std::to_string(draw.Between(1, 60)) : "";
    // As many digits are drawn as ever, so that everything else stays what it was.
    const bool has_plus_four = draw.Digits(draw.OneIn(2) ? 2 : 6).size() > 2;
    const std::map<std::string, std::string> parts = {
        {"ADDR_1", std::to_string(house) + " " + street},
        {"ADDR_2", unit},
        {"CITY", county.seat},
        {"ST", kHomeState},
        {"ZIP_CD", streets_.ZipInSeat(county.number, house) +
                       (has_plus_four ? DemoStreets::PlusFour(street, house) : "")}};
    for (const auto column : kCustomerColumns) {
      if (!column.starts_with(prefix)) continue;
      if (const auto part = parts.find(std::string(column.substr(prefix.size()))); part != parts.end()) {
        row[column] = part->second;
      }
    }
  }

  static void MoveToBox(CustomerRow& row, int box) {
    row["MAIL_ADDR_1"] = "PO Box " + std::to_string(box);
    auto& zip = row["MAIL_ZIP_CD"];
    if (zip.size() > 5) zip = zip.substr(0, 5) + DemoStreets::PlusFourOfBox(box);
  }

  /// There is no such number: the address fails its verification.
  static void MoveOutOfTown(std::string& line) {
    const auto digits = line.find_first_of("0123456789");
    const auto end = std::min(line.find(' ', digits), line.size());
    constexpr int kBeyond = 10'000;
    line.replace(digits, end - digits,
                 std::to_string(std::stoi(line.substr(digits, end - digits)) + kBeyond));
  }

  void StoreCustomer(const std::string& id, CustomerRow& row) {
    std::string names = "CUST_ID, OT_BAL";
    std::string places = "?, 0";
    std::vector<Value> values = {id};
    const auto put = [&](std::string_view column, Value value) {
      names += ", " + std::string(column);
      places += ", ?";
      values.push_back(std::move(value));
    };
    for (const auto column : kCustomerColumns)
      put(column, row[column].empty() ? Value() : Value(row[column]));
    for (const auto column : kMarkColumns) put(column, row[column].empty() ? "N" : row[column]);
    for (const std::string prefix : {"MAIL_", "RES_"}) {
      const auto state = row.find(prefix + "ST");
      const bool in_state = state != row.end() && state->second == kHomeState;
      put(prefix + "CNTY_CD", in_state ? Value(row["QZ_CNTY_NBR"]) : Value());
    }
    database_.Change("INSERT INTO customer (" + names + ") VALUES (" + places + ")", values);
  }

  void StoreForms(const std::string& customer, int index, CustomerRow& row, Draw& draw) {
    const auto turn = static_cast<std::size_t>(index - 1) % kSecondForms.size();
    std::vector<std::string> types = {std::string(form_type::kAssessment)};
    if (index % 3 != 0) types.emplace_back(kSecondForms[turn]);
    if (index % 3 == 1) types.emplace_back(kThirdForms[turn]);
    std::int64_t balance = 0;
    for (std::size_t place = 0; place < types.size(); ++place) {
      const auto number = std::to_string(kFirstForm + 4 * index + static_cast<int>(place));
      const auto status = place < row["FORM_STTS"].size()       ? row["FORM_STTS"].substr(place, 1)
                          : types[place] == form_type::kReceipt ? "C"
                                                                : "O";
      const Date issued(std::chrono::sys_days(today_) - std::chrono::days(draw.Between(10, 90)));
      database_.Change(
          "INSERT INTO form (FORM_TYP_CD, FORM_NBR, FORM_CK_DGT_NBR, CUST_ID, FORM_STTS_CD, ISS_DT, STP_DT,"
          " LST_PYMT_DT) VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
          {types[place], number, std::string(1, platform::CheckDigit(number)), customer, status, issued,
           StopDay(index, issued), LastPayment(index, types[place], status, issued)});
      const auto& count = row["PRD_CNT"];
      const bool counted = place == 0 && !count.empty();
      const auto periods = counted ? static_cast<int>(Value(count).AsInteger()) : draw.Between(1, 6);
      const auto& tax = row["PRD_AMT"];
      balance +=
          StorePeriods(types[place], number, periods, draw,
                       place == 0 && !tax.empty() ? std::optional(Value(tax).AsInteger()) : std::nullopt);
    }
    database_.Change("UPDATE customer SET OT_BAL = ? WHERE CUST_ID = ?", {balance, customer});
  }

  /// Most documents stop a month after their issue.
  static Value StopDay(int index, Date issued) {
    if (index % 7 == 0) return {};
    return Date(std::chrono::sys_days(issued) + std::chrono::days(30));
  }

  /// What is closed was paid some days after its issue, and part of every fourth that is open.
  static Value LastPayment(int index, std::string_view type, std::string_view status, Date issued) {
    if (type == form_type::kReceipt) return issued;
    if (status == "O" && index % 4 != 0) return {};
    return Date(std::chrono::sys_days(issued) + std::chrono::days(5 + index % 5));
  }

  /// The months before today's, the oldest first, with the tax that is to be shown or one that is drawn.
  /// Returns what they amount to, in cents.
  std::int64_t StorePeriods(const std::string& type, const std::string& number, int count, Draw& draw,
                            std::optional<std::int64_t> shown_tax) {
    std::int64_t total = 0;
    for (int period = 1; period <= count; ++period) {
      const int months_ago = count - period + 2;
      const auto month = today_.year() / today_.month() - std::chrono::months(months_ago);
      const auto drawn_tax = draw.Between(15'000, 2'500'000);
      const auto tax = shown_tax.value_or(drawn_tax);
      const auto penalty = tax / 10;
      const auto interest = tax * months_ago / 100;
      total += tax + penalty + interest;
      database_.Change(
          R"(INSERT INTO tax_period (FORM_TYP_CD, FORM_NBR, PRD_NBR, PRD_NM, DUE_DT, TAX_AMT, PNLTY_AMT,
               INTRST_AMT) VALUES (?, ?, ?, ?, ?, ?, ?, ?))",
          {type, number, period, MonthInLetter(month), Date((month + std::chrono::months(1)) / 20), tax,
           penalty, interest});
    }
    return total;
  }

  Database& database_;
  const Date today_;
  const std::vector<County> counties_;
  std::map<std::string, std::vector<std::string>> names_;
  const TabTable shown_;
  const DemoStreets streets_;
};

}  // namespace

void CreateDemoAdministration(Database& database, const std::filesystem::path& product_data, int customers,
                              Date today) {
  Administration administration(database, product_data, today);
  for (int index = 1; index <= customers; ++index) administration.AddCustomer(index);
}

}  // namespace server
