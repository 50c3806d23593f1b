#include "server/customers/customer_forms.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "platform/agreed/record_layouts.h"
#include "platform/agreed/requests.h"
#include "platform/failure.h"

namespace server {
namespace {

using platform::Value;

namespace request_key = platform::request_key;

// An account was first assessed at its tax; penalties came to it, and interest until now. Decision
// [account-amounts].
constexpr std::string_view kSelectForms =
    R"(SELECT form.FORM_NBR, form.FORM_CK_DGT_NBR, form.FORM_TYP_CD, form.FORM_STTS_CD AS CTTN_STTS_CD,
         form.STP_DT, form.LST_PYMT_DT,
         COALESCE(SUM(TAX_AMT), 0) AS ORIG_ASSMT_AMT,
         COALESCE(SUM(TAX_AMT + PNLTY_AMT), 0) AS ASSMT_DUE_AMT,
         COALESCE(SUM(TAX_AMT + PNLTY_AMT + INTRST_AMT), 0) AS BAL_DUE
       FROM form LEFT JOIN tax_period
         ON tax_period.FORM_TYP_CD = form.FORM_TYP_CD AND tax_period.FORM_NBR = form.FORM_NBR
       WHERE form.CUST_ID = ? AND form.FORM_TYP_CD = ?
       GROUP BY form.FORM_TYP_CD, form.FORM_NBR ORDER BY form.FORM_NBR)";

constexpr auto kAmounts = std::to_array<std::string_view>({"ORIG_ASSMT_AMT", "ASSMT_DUE_AMT", "BAL_DUE"});

std::string RequiredText(const RequestKeys& keys, std::string_view name) {
  auto text = keys.Text(name);
  if (!text.empty()) return text;
  throw platform::Failure(platform::Failure::Kind::kRefused,
                          "The request for a customer's forms came without a " + std::string(name) + ".");
}

}  // namespace

void AnswerCustomerForms(Exchange& exchange) {
  const auto forms = exchange.database.Select(std::string(kSelectForms),
                                              {RequiredText(exchange.keys, request_key::kCustomer),
                                               RequiredText(exchange.keys, request_key::kFormTypeAsked)});
  if (forms->IsEmpty()) return;
  auto& record = exchange.reply.AddRecord(
      platform::record_name::kCustomerForms,
      {platform::kCustomerFormColumns.begin(), platform::kCustomerFormColumns.end()});
  for (std::size_t row = 0; row < forms->RecordCount(); ++row) {
    record.AddNew();
    for (const auto& column : record.columns()) {
      if (!forms->HasColumn(column)) continue;
      const auto& value = forms->Get(row, column);
      const bool is_amount = std::ranges::find(kAmounts, column) != kAmounts.end();
      record.Set(column, is_amount ? Value(platform::Money::FromCents(value.AsInteger())) : value);
    }
  }
  record.MoveFirst();
}

}  // namespace server
