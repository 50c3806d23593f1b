#include "workspace/letters/letter_customer.h"

#include <string>

#include "composition/node_state.h"
#include "customers/context_customer.h"
#include "platform/text.h"

namespace workspace {

namespace {

using platform::Failure;

/// How a person knows a customer: "100007 Milo Fenwright".
std::string Known(const std::string& id, const std::string& name) {
  return name.empty() ? id : id + " " + name;
}

/// "Form "3100030-0" belongs to", or where the letter has no form, what it is itself.
std::string Subject(const LetterData& letter) {
  if (letter.form_number.empty()) return "The letter is for ";
  const auto digit = letter.check_digit.empty() ? "" : "-" + letter.check_digit;
  return "Form " + platform::Quoted(letter.form_number + digit) + " belongs to ";
}

}  // namespace

bool LetterCustomer::Settle(const LetterData& letter, const platform::XmlDocument& context) {
  const auto named = customers::ReadContextCustomer(context);
  const std::string owner_id(
      platform::Trim(letter.customer_id.empty() ? named.id.value_or("") : letter.customer_id));
  const auto& shown_id = letter.page_customer_id;
  if (owner_id == shown_id) return ShowMarks(context);
  if (owner_id.empty()) {
    if (letter.form_number.empty()) return true;
    throw Failure(Failure::Kind::kDamaged,
                  "The server's reply does not say whose form \"" + letter.form_number + "\" is.");
  }
  if (!shown_id.empty() && !UserTakes(letter, Known(owner_id, named.name.value_or("")))) return false;
  customers::ShowContextCustomer({owner_id, named.name, named.address}, customer_, panel_);
  return ShowMarks(context);
}

// The context is of this moment, and knows both addresses.
bool LetterCustomer::ShowMarks(const platform::XmlDocument& context) {
  composition::ZEMLO_NodeState root;
  root.InitFromNode(context.Root());
  panel_.ShowReturnedMail({.mailing = root.IsMailMarkedBad(), .residential = root.IsResiMarkedBad()});
  return true;
}

bool LetterCustomer::UserTakes(const LetterData& letter, const std::string& owner) {
  const auto belongs = Subject(letter) + owner + ".";
  const auto answer =
      services_.host.ShowMessage({belongs + std::string(platform::kLineBreak) + "The page shows " +
                                      Known(letter.page_customer_id, letter.page_customer_name) + "." +
                                      std::string(platform::kLineBreak) + std::string(platform::kLineBreak) +
                                      "Do you want to make the letter for " + owner + "?",
                                  platform::MessageIcon::kQuestion, message_title_,
                                  platform::MessageButtons::kYesNo, platform::MessageAnswer::kNo});
  if (answer == platform::MessageAnswer::kYes) return true;
  TellWhatIsLeft(belongs);
  return false;
}

void LetterCustomer::TellWhatIsLeft(const std::string& belongs) {
  services_.status.ShowStatus("Ready");
  services_.status.ShowReason("No letter was made. " + belongs +
                              " Correct the form number, or clear the page.");
  services_.utilities.MarkFieldInvalid(form_number_);
}

}  // namespace workspace
