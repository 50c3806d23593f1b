#include "apps/letters/page_user.h"

#include <QString>

#include "platform/failure.h"
#include "platform/text.h"

namespace apps {

void Refuse(const std::string& text) {
  throw platform::Failure(platform::Failure::Kind::kRefused, text);
}

void Pick(composition::ZEMLO_LetterCombo& list, const std::string& code, const std::string& refusal) {
  list.UserOpens();
  const auto row =
      list.rows() ? list.rows()->Find("CD_TBL_CD", platform::RecordSet::Match::kEquals, code) : std::nullopt;
  if (code.empty() || !row || !list.enabled()) Refuse(refusal);
  list.UserPicks(*row);
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
