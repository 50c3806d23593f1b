#include "workspace/requests/letter_request.h"

#include <string_view>

#include "platform/text.h"
#include "workspace/requests/letter_list.h"

namespace workspace {

using platform::Trap;
using platform::Trim;

void LetterRequest::LetterTypeChanged(PageIndex index) {
  Trap(uses_.services, "ZEMLO_Corresp.ZEMLO_LetterType_Change", [&] {
    if (index != PageIndex::kCorrespondence && index != PageIndex::kTracking) return;
    auto& page = uses_.pages.Letter(index);
    const auto letter_type = page.ZEMLO_LetterType.Code();
    if (letter_type.empty()) return;

    auto& form_types = page.ZEMLO_FormTypeCodes;
    const auto remembered = form_types.Tag;
    form_types.Code("");
    form_types.SetText("");
    form_types.Tag.clear();
    const auto required = RequiredFormTypes(uses_.services.utilities, letter_type);
    page.ZEMLO_LetterType.Tag = required;
    uses_.form_types.FilterFormType(required, index);
    // A type that the letter does not go with would be reported as a fault.
    const bool is_offered = !required.empty() && !form_types.DescriptionOf(remembered).empty();
    if (is_offered) form_types.Code(remembered);
    uses_.field_check.CheckEdit(index);
  });
}

// A code table answers with the code itself where it has no value for it.
std::string RequiredFormTypes(platform::Utilities& utilities, const std::string& letter_type) {
  const std::string value(Trim(utilities.GetCodeValue("LTRINPUT", letter_type)));
  return value == letter_type ? "" : value;
}

void GetFormAndCheckDigit(const platform::Services& services, LetterRequestFields& fields) {
  Trap(services, "ZEMLO_Corresp.GetFormAndCheckDigit", [&] {
    constexpr std::size_t kWithDigit = 9;  // seven characters, a dash, one check digit
    const std::string_view text = fields.form_text;
    if (text.empty()) fields.check_digit.clear();

    const auto number = text.substr(0, text.find('-'));
    fields.form_number = number;
    const bool has_digit =
        platform::CharacterCount(text) == kWithDigit && platform::CharacterCount(number) == kWithDigit - 2;
    if (has_digit) fields.check_digit = text.substr(number.size() + 1);
  });
}

void LetterRequest::CreateLetter(const std::function<void()>& start) {
  TakeRequest();
  bool ok = false;
  ValidateLetter("Create Letter", ok);
  if (!ok) return;
  uses_.field_check.EnableCreateLetter();
  GetFormAndCheckDigit(uses_.services, uses_.fields);
  start();
}

void LetterRequest::TakeRequest() {
  auto& page = uses_.pages.correspondence;
  uses_.fields.form_text = page.txtFormNum.text();
  uses_.fields.form_type = Trim(page.ZEMLO_FormTypeCodes.Code());
  uses_.fields.customer_id = page.panel.customer_id.caption();
}

void LetterRequest::ValidateLetter(const std::string& action, bool& ok) {
  static_cast<void>(action);  // "Create Letter" is the only one
  ok = false;
  Trap(uses_.services, "ZEMLO_Corresp.ValidateLetter", [&] {
    uses_.field_check.DefaultFieldColor(PageIndex::kCorrespondence);
    const auto messages = BrokenRules(uses_.services, Rules());
    ok = messages.empty();
    if (!ok) ShowBrokenRules(uses_.services, uses_.message_title, messages);
  });
}

std::vector<ValidationRule> LetterRequest::Rules() {
  auto& page = uses_.pages.correspondence;
  const auto& fields = uses_.fields;
  auto* const form_type = &page.ZEMLO_FormTypeCodes;
  auto* const form_number = &page.txtFormNum;
  const bool has_type = !fields.form_type.empty();
  const bool has_text = !fields.form_text.empty();
  const bool is_remembered = !form_type->Tag.empty();
  std::vector<ValidationRule> rules = {
      {fields.customer_id.empty() && !has_text, "Please select a customer", {}},
      {page.ZEMLO_LetterType.Code().empty(), "Please select a correspondence type", {&page.ZEMLO_LetterType}},
      {is_remembered && !has_type && !has_text,
       "Please enter a doc type and number",
       {form_number, form_type}},
      {is_remembered && has_type && !has_text, "Please enter a doc number", {form_number}},
      {!has_type && has_text, "Please select a form type", {form_type}},
  };
  if (has_type && has_text) {
    rules.push_back(
        FormNumberRule(uses_.services.utilities, fields.form_type, fields.form_text, *form_number));
  }
  return rules;
}

void LetterRequest::ClearField(PageIndex index) {
  Trap(uses_.services, "ZEMLO_Corresp.ClearField", [&] {
    auto& page = uses_.pages.Letter(index);
    if (index == PageIndex::kCorrespondence) {
      uses_.fields = {};
    } else {
      uses_.search = {};
    }
    ClearLists(page);
    page.panel.EnableSelection(true);
    page.panel.ClearFields();
    if (index == PageIndex::kCorrespondence) {
      ClearCorrespondence();
    } else {
      ClearTracking();
    }
    uses_.field_check.DefaultFieldColor(index);  // emptying the fields had them checked
    ShowNoLetters(uses_.services, page.sdgGrid);
    uses_.services.status.ShowStatus("Ready");
  });
}

void LetterRequest::ClearLists(LetterPage& page) {
  for (auto* list : {&page.ZEMLO_FormTypeCodes, &page.ZEMLO_LetterType}) {
    list->Code("");
    list->SetText("");
  }
}

void LetterRequest::ClearCorrespondence() {
  for (auto& option : uses_.pages.correspondence.OptOnline) option.SetEnabled(false);
  uses_.form_types.FilterFormType("", PageIndex::kCorrespondence);
}

void LetterRequest::ClearTracking() {
  auto& page = uses_.pages.tracking;
  uses_.customer.TrackingCustomerFixed = false;
  for (auto& option : page.OptLetter) option.SetEnabled(false);
  for (auto* date : {&page.from_date, &page.to_date}) {
    date->SetValue(uses_.services.clock.Today());
    date->SetValue(std::nullopt);
  }
  page.txtFormNum.SetText("");
  page.txtBatch.SetText("");
  page.txtTD.SetText("");
  uses_.form_types.FilterFormType("CMOV", PageIndex::kTracking);
  for (auto& option : page.OptLetterStatus) option.SetSelected(false);
  page.search.SetEnabled(false);
}

}  // namespace workspace
