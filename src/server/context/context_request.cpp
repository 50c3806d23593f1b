#include "server/context/context_request.h"

#include <array>

#include "platform/agreed/letter_record.h"
#include "platform/agreed/requests.h"
#include "platform/failure.h"
#include "server/context/letter_context.h"
#include "server/context/stored_explanations.h"

namespace server {
namespace {

using platform::Failure;

constexpr auto kHistoryStart =
    std::to_array<std::string_view>({"CUST_ID", "PRNT_STTS_CD", "QZ_CNTY_NBR", "FORM_NBR", "FORM_TYP_CD",
                                     "FORM_CK_DGT_NBR", "LST_PRCS_TS", "ADDR_TYP_CD"});

std::string Status(const AddressVerdict& verdict, const ContextField& context) {
  namespace print_status = platform::print_status;
  if (verdict.IsRefused()) return std::string(print_status::kAddressNotVerified);
  return std::string(context.IsErroneous() ? print_status::kDataIncomplete : print_status::kPrinted);
}

void AddHistoryStart(Exchange& exchange, const LetterSubject& subject, const AddressVerdict& verdict,
                     const ContextField& context) {
  auto& history =
      exchange.reply.AddRecord(platform::record_name::kHistory, {kHistoryStart.begin(), kHistoryStart.end()});
  history.AddNew();
  history.Set("CUST_ID", subject.customer.id);
  history.Set("PRNT_STTS_CD", Status(verdict, context));
  history.Set("QZ_CNTY_NBR", subject.customer.county_number);
  history.Set("LST_PRCS_TS", platform::TimestampText(exchange.now));
  history.Set("ADDR_TYP_CD", verdict.AddressType());
  if (!subject.form) return;
  history.Set("FORM_NBR", subject.form->number);
  history.Set("FORM_TYP_CD", subject.form->type);
  history.Set("FORM_CK_DGT_NBR", subject.form->check_digit);
}

}  // namespace

void AnswerContext(Exchange& exchange) {
  const auto letter_type = exchange.keys.Text(platform::request_key::kLetterType);
  const auto fields = FindLetterFields(exchange.database, letter_type);
  if (fields.empty())
    throw Failure(Failure::Kind::kNotFound, "There is no letter type \"" + letter_type + "\".");
  auto subject = FindLetterSubject(exchange, letter_type);
  subject.address_rules = AddressRules(fields);
  const auto verdict = JudgeAddresses(subject.customer, subject.office.state, subject.address_rules);
  const bool with_values = !exchange.keys.Has(platform::request_key::kFillBookmarks) ||
                           exchange.keys.IsYes(platform::request_key::kFillBookmarks);
  const auto limits = FieldQueryLimits(exchange.ending);
  const auto context =
      BuildLetterContext(subject, fields, verdict, with_values, [&](const LetterField& field) {
        return RunFieldQuery(exchange.database, field.source, field.rules, subject, limits);
      });
  exchange.reply.AddRecord(platform::record_name::kContext, {"XML_CONTEXT"})
      .Append({ContextXml(context, AskedExplanations(exchange.keys))});
  AddHistoryStart(exchange, subject, verdict, context);
}

}  // namespace server
