#include "apps/letters/page_user.h"

#include <QString>

#include "platform/agreed/letter_types.h"
#include "platform/failure.h"
#include "platform/text.h"

namespace apps {
namespace {

std::optional<std::size_t> RowOf(composition::ZEMLO_LetterCombo& list, const std::string& code) {
  list.UserOpens();
  if (code.empty() || !list.rows()) return std::nullopt;
  return list.rows()->Find("CD_TBL_CD", platform::RecordSet::Match::kEquals, code);
}

/// Why a list of letter types has no such one.
std::string WhyNotListed(HeadlessOffice& office, const std::string& type, const std::string& way_out) {
  const auto& services = office.office().services();
  const auto quoted = [&](const std::string& text) { return services.utilities.SqlQuote(text); };
  const auto region = platform::UpperCase(platform::Trim(services.settings.Region()));
  const auto found =
      services.reference.Select("SELECT LTR_ONLN_IND FROM FLS_LETTER WHERE REGION=" + quoted(region) +
                                " AND LTR_TYP_ID=" + quoted(type));
  const auto indicator = found->IsEmpty() ? "" : found->FirstText();
  const auto name = "etter type " + platform::Quoted(type);
  if (indicator == platform::made_where::kSystem)
    return "L" + name + " is made by the system and is in no list to choose from." + way_out;
  if (indicator == platform::made_where::kElsewhere)
    return "L" + name + " has no template: it is made elsewhere.";
  return "There is no l" + name + ". \"zemlo-letters types\" lists them.";
}

}  // namespace

void Refuse(const std::string& text) {
  throw platform::Failure(platform::Failure::Kind::kRefused, text);
}

void Pick(composition::ZEMLO_LetterCombo& list, const std::string& code, const std::string& refusal) {
  const auto row = RowOf(list, code);
  if (!row || !list.enabled()) Refuse(refusal);
  list.UserPicks(*row);
}

void RequireLetterType(HeadlessOffice& office, composition::ZEMLO_LetterCombo& list, const std::string& type,
                       const std::string& way_out) {
  if (!RowOf(list, type)) Refuse(WhyNotListed(office, type, way_out));
}

void Type(platform::TextField& field, const std::string& text, const std::string& option) {
  for (const char32_t key : QString::fromStdString(text).toStdU32String()) {
    const auto taken = field.key_filter ? field.key_filter(key) : key;
    const auto typed = QString::fromUcs4(&key, 1).toStdString();
    if (!taken)
      Refuse(option + " does not take " + platform::Quoted(typed) + ", as in " + platform::Quoted(text) +
             ".");
    field.SetText(field.text() + QString::fromUcs4(&*taken, 1).toStdString());
  }
}

void ChooseCustomer(HeadlessOffice& office, const std::string& id, workspace::PageIndex page) {
  const auto customer = office.office().FindCustomer(id);
  if (!customer) Refuse("There is no customer \"" + id + "\". \"zemlo-letters customers\" lists them.");
  office.workspace().FillCustomerField(*customer, page);
}

void RequireEnabled(const platform::Control& command) {
  if (command.enabled()) return;
  Refuse(command.why_disabled ? command.why_disabled() : "The command is disabled.");
}

}  // namespace apps
