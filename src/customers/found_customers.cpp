#include "customers/found_customers.h"

#include <array>

#include "platform/agreed/customer_record.h"

namespace customers {

namespace {

/// How a page shows a value that is stored in another form.
struct Encoding {
  std::string SelectedCustomer::*held;
  std::string (DisplayEncoders::*encoder)(std::string_view text) const;
};
constexpr auto kEncodings = std::to_array<Encoding>({
    {&SelectedCustomer::MailZip, &DisplayEncoders::EncodeZipCode},
    {&SelectedCustomer::ResZip, &DisplayEncoders::EncodeZipCode},
    {&SelectedCustomer::Phone, &DisplayEncoders::FormatPhone},
    {&SelectedCustomer::FuelTax, &DisplayEncoders::EncodeFuelTaxAccountNbr},
});

struct ShownColumn {
  std::string_view caption;
  bool is_number;
};
constexpr auto kShownColumns = std::to_array<ShownColumn>(
    {{"Name", false}, {"City", false}, {"Fuel Tax Account", true}, {"Phone", true}});
static_assert(kShownColumns.size() == kFoundColumns);

const std::string& TextOf(const SelectedCustomer& customer, FoundColumn column) {
  switch (column) {
    case FoundColumn::kName:
      return customer.CUSTNAME;
    case FoundColumn::kCity:
      return customer.City();
    case FoundColumn::kAccount:
      return customer.FuelTax;
    case FoundColumn::kPhone:
      break;
  }
  return customer.Phone;
}

}  // namespace

std::vector<FoundCustomer> ReadFoundCustomers(const platform::RecordSet& records,
                                              const DisplayEncoders& encoders) {
  std::vector<FoundCustomer> found;
  found.reserve(records.RecordCount());
  for (std::size_t row = 0; row < records.RecordCount(); ++row) {
    auto customer = platform::CustomerRecord(records, row).Values();
    for (const auto& [held, encoder] : kEncodings) customer.*held = (encoders.*encoder)(customer.*held);
    found.push_back({std::move(customer)});
  }
  return found;
}

std::string_view CaptionOf(FoundColumn column) {
  return kShownColumns.at(static_cast<std::size_t>(column)).caption;
}

FoundCell CellOf(const FoundCustomer& customer, FoundColumn column, std::string_view typed) {
  const auto& text = TextOf(customer.values, column);
  const bool is_number = kShownColumns.at(static_cast<std::size_t>(column)).is_number;
  return {text, is_number ? platform::RangesOfNumber(text, typed)
                          : platform::RangesOfWords(text, platform::SearchWords(typed))};
}

}  // namespace customers
