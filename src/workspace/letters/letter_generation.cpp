#include "workspace/letters/letter_generation.h"

#include <utility>

#include "customers/returned_mail.h"
#include "platform/agreed/field_attributes.h"
#include "platform/agreed/form_numbers.h"
#include "platform/agreed/letter_record.h"
#include "platform/agreed/requests.h"
#include "platform/text.h"
#include "platform/xml/xml.h"
#include "workspace/letters/whole_number.h"

namespace workspace {

namespace {

namespace request_key = platform::request_key;
using platform::KeyWithBlank;
using platform::Trap;

constexpr std::string_view kInputLayout = platform::record_name::kContextInput;

// A column of a reply; one that the server left out reads like an empty one.
std::string TextOf(const platform::RecordSet& row, std::string_view column) {
  return row.HasColumn(column) ? row.Text(column) : "";
}

}  // namespace

void LetterGeneration::SelectNewType(const ChosenLetter& chosen) {
  Trap(uses_.services, "ZEMLO_Corresp.SelectNewType", [&] {
    const auto letter_type = WholeNumber<std::int32_t>("letter type", chosen.letter_type);
    const auto in_force = tried_ ? *tried_ : uses_.templates.InForce(letter_type);
    if (!take_ && !RequireTemplate(in_force)) return;
    LetterData letter{.letter_type = chosen.letter_type,
                      .letter_name = chosen.letter_name,
                      .template_name = in_force.name,
                      .template_path = in_force.path,
                      .is_trial = tried_.has_value(),
                      .form_type = uses_.request.form_type,
                      .form_number = uses_.request.form_number,
                      .check_digit = uses_.request.check_digit,
                      .page_customer_id = chosen.customer_id,
                      .page_customer_name = chosen.customer_name};

    RequestDescription message{
        .type = platform::message_type::kFetch,
        .name = "XMLRequest",
        .letter = std::move(letter),
        .with_user_id = false,
        .keys = {platform::Criterion(KeyWithBlank(request_key::kLetterType), std::to_string(letter_type)),
                 platform::Criterion(KeyWithBlank(request_key::kFillBookmarks), "Y"),
                 platform::Criterion(KeyWithBlank(request_key::kFieldDescriptors), "Y"),
                 platform::Criterion(KeyWithBlank(request_key::kExplainState), "Y")},
        .status = "Requesting bookmark information",
        .waits_for_context = true};
    SendXMLRequest(message);
    uses_.envelope.Send(message);
  });
}

bool LetterGeneration::RequireTemplate(const TemplateInForce& in_force) const {
  if (in_force.fault.empty()) return true;
  uses_.services.status.ShowReason("No letter was made. " + in_force.fault);
  Tell(in_force.name.empty() ? "This request can not be processed at this time. "
                               "Please create a template to complete this request."
                             : "Unable to process this request. No template is available for print.",
       platform::MessageIcon::kExclamation);
  return false;
}

void LetterGeneration::SendXMLRequest(RequestDescription& message) const {
  constexpr const char* kProcedure = "ZEMLO_Corresp.SendXMLRequest";
  Trap(uses_.services, kProcedure, [&] {
    const auto& request = uses_.request;
    const bool is_receipt = request.form_type == platform::form_type::kReceipt;
    RecordDescription::Row row;
    const auto add = [&row](std::string column, const std::string& value) {
      if (!value.empty()) row.emplace_back(std::move(column), value);
    };
    if (request.form_number.empty()) add("CUST_ID", request.customer_id);
    add("FORM_NBR", request.form_number);
    if (is_receipt) {
      add("FORM_CK_DGT_NBR", request.check_digit);
      add("RCPT_NBR", request.form_number);
      add("RCPT_CK_DGT_NBR", request.check_digit);
    }
    add("FORM_TYP_CD", request.form_type);
    message.records.push_back({std::string(kInputLayout), {std::move(row)}, kProcedure});
  });
}

void LetterGeneration::CreateNewCorrespondence(const Reply& reply) {
  constexpr std::string_view kProcedure = "ZEMLO_Corresp.CreateNewCorrespondence";
  const bool is_done = Trap(uses_.services, kProcedure, [&] {
    letter_ = reply.letter;
    const auto context = RowsOf(uses_.services, reply, platform::record_name::kContext);
    if (context == nullptr)
      throw platform::Failure(platform::Failure::Kind::kNotFound,
                              "The server's reply brought no data of the letter.");
    letter_.context = context->FirstText();
    const auto document = platform::XmlDocument::Parse(letter_.context).OrFail();
    composition::ZEMLO_NodeState root;
    root.InitFromNode(document.Root());
    const auto history = RowsOf(uses_.services, reply, platform::record_name::kHistory);
    if (history != nullptr) TakeHistoryRow(*history);
    if (!uses_.customer.Settle(letter_, document)) return;

    if (!root.IsErroneous()) {
      WarnOfReturnedMail(root);
      FinishLetter(root, letter_, reply.request_name);
    } else if (history != nullptr && letter_.print_status == platform::print_status::kAddressNotVerified) {
      uses_.services.status.ShowStatus("Ready");
      TellWhyAddressesFail(document);
      TellAddressErrors(root);
    } else {
      uses_.services.status.ShowStatus("Ready");
      uses_.services.status.ShowReason("No letter was made. Its data are in error.");
      uses_.forms.ShowLetterInformation({.context = letter_.context, .is_refused = true});
    }
  });
  if (!is_done) uses_.services.status.ShowStatus("Ready");
}

void LetterGeneration::TakeHistoryRow(const platform::RecordSet& row) {
  auto& letter = letter_;
  auto& request = uses_.request;
  const std::pair<const char*, std::string*> targets[] = {
      {"CUST_ID", &letter.customer_id},       {"PRNT_STTS_CD", &letter.print_status},
      {"QZ_CNTY_NBR", &letter.county_number}, {"FORM_NBR", &letter.form_number},
      {"FORM_TYP_CD", &letter.form_type},     {"FORM_CK_DGT_NBR", &letter.check_digit},
      {"LST_PRCS_TS", &letter.process_time},
  };
  for (const auto& [column, target] : targets) *target = TextOf(row, column);
  request.form_number = letter.form_number;
  request.form_type = letter.form_type;
  request.check_digit = letter.check_digit;
  const auto address_type = TextOf(row, "ADDR_TYP_CD");
  letter.address_type =
      address_type.empty() ? std::int16_t{0} : WholeNumber<std::int16_t>("address type", address_type);
}

// A marked address takes no letter: this one goes to the other, which the user may not expect.
void LetterGeneration::WarnOfReturnedMail(const composition::ZEMLO_NodeState& root) const {
  const bool leaves_mailing = root.IsMailMarkedBad() && root.IsResiUsed() && !root.IsResiPreferred();
  const bool leaves_residential = root.IsResiMarkedBad() && root.IsMailUsed() && root.IsResiPreferred();
  if (!leaves_mailing && !leaves_residential) return;
  Tell(customers::ReturnedMailText({leaves_mailing, leaves_residential}) +
           (leaves_mailing ? " This letter goes to the residential address."
                           : " This letter goes to the mailing address."),
       platform::MessageIcon::kExclamation);
}

// "Incomplete" is said of an address that is marked bad, too.
void LetterGeneration::TellWhyAddressesFail(const platform::XmlDocument& context) const {
  const auto reason = context.Root().Attribute(platform::field_attribute::kExplainedAddress).value_or("");
  if (!reason.empty()) uses_.services.status.ShowReason("No letter was made. " + reason);
}

void LetterGeneration::TellAddressErrors(const composition::ZEMLO_NodeState& root) const {
  // The texts are given, "residental" included.
  const auto tell = [this](const char* which) {
    Tell(std::string("Request could not be processed due to ") + which + " address is incomplete.",
         platform::MessageIcon::kCritical);
  };
  if (root.HasMailWarn() && root.HasResiWarn()) {
    tell("mail and residental");
  } else if (root.HasMailWarn()) {
    tell("mail");
  } else if (root.HasResiWarn()) {
    tell("residental");
  }
}

// The letter is a copy: the entry form lets events in, which may begin the next letter.
void LetterGeneration::FinishLetter(const composition::ZEMLO_NodeState& root, LetterData letter,
                                    const std::string& request_name) const {
  if (take_) return take_(letter);
  if (root.IsParaType() || root.IsUserType()) {
    uses_.printing.ReleasePreview();  // of the letter before: it must not open over the form
    uses_.printing.ExpectFromDialog(letter, request_name);
    CompleteLetter(letter);
    if (letter.printed_from_entry_form) uses_.printing.PrintDoc(letter, request_name);
    uses_.printing.DialogClosed();
  } else {
    uses_.printing.Preview(letter, request_name);
  }
}

void LetterGeneration::CompleteLetter(LetterData& letter) const {
  uses_.services.status.ShowStatus("Displaying bookmark information");
  auto entered = uses_.forms.EnterBookmarks(letter);
  letter.context = std::move(entered.XMLBookMark);
  letter.printed_from_entry_form = entered.DocPrinted;
  uses_.services.status.ShowStatus("Ready");
}

void LetterGeneration::Tell(const std::string& text, platform::MessageIcon icon) const {
  uses_.services.host.ShowMessage({text, icon, uses_.message_title});
}

}  // namespace workspace
