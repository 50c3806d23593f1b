#include "platform/agreed/customer_record.h"

#include "platform/text.h"

namespace platform {

std::optional<std::string> CustomerRecord::Text(std::string_view column) const {
  const auto& value = rows_.Get(row_, column);
  if (value.IsNull()) return std::nullopt;
  return value.AsText();
}

std::optional<std::string> CustomerRecord::Trimmed(std::string_view column) const {
  const auto text = Text(column);
  if (!text) return std::nullopt;
  return std::string(Trim(*text));
}

std::string CustomerRecord::Name() const {
  auto name = Text("CUST_BSNS_NM").value_or("");
  if (!Trim(name).empty()) return name;
  const auto first = Text("FIRST_NM");
  const auto last = Text("LAST_NM");
  return first && last ? *first + " " + *last : name;
}

bool CustomerRecord::IsMarked(std::string_view column) const {
  return rows_.HasColumn(column) && EqualsIgnoringCase(rows_.Text(row_, column), "Y");
}

ReturnedMail CustomerRecord::Returned() const {
  return {.mailing = IsMarked("MAIL_RTND_IND"), .residential = IsMarked("RES_RTND_IND")};
}

SelectedCustomer CustomerRecord::Values() const {
  SelectedCustomer customer;
  for (const auto& value : kCustomerValues)
    customer.*value.held = value.column.empty() ? Name() : Trimmed(value.column).value_or("");
  customer.returned = Returned();
  return customer;
}

}  // namespace platform
