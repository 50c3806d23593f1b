#include <array>
#include <iostream>
#include <string>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/page_user.h"
#include "customers/customer_edit.h"
#include "customers/maintenance/cust_maint.h"
#include "platform/text.h"

namespace apps {
namespace {

namespace text_number = customers::text_number;
using customers::kMailingSide;
using customers::kResidentSide;
using customers::ZEMLO_CustMaint;

struct TextOption {
  const char* name;
  const char* meaning;
  std::size_t field;
};
constexpr auto kTextOptions = std::to_array<TextOption>({
    {"first", "First name.", text_number::kFirstName},
    {"middle", "Middle name.", text_number::kMiddleName},
    {"last", "Last name.", text_number::kLastName},
    {"suffix", "What follows the name.", text_number::kSuffix},
    {"business", "Name of a business.", text_number::kBusinessName},
    {"contact", "Whom to speak to in a business.", text_number::kContactName},
    {"address", "Mailing address.", kMailingSide.Line1()},
    {"address2", "Its second line.", kMailingSide.Line2()},
    {"city", "Its city.", kMailingSide.City()},
    {"zip", "Its zip code.", kMailingSide.Zip()},
    {"resident-address", "Resident address.", kResidentSide.Line1()},
    {"resident-address2", "Its second line.", kResidentSide.Line2()},
    {"resident-city", "Its city.", kResidentSide.City()},
    {"resident-zip", "Its zip code.", kResidentSide.Zip()},
});

void TypeOption(const CommandLine& line, const char* option, platform::TextField& field) {
  if (!line.IsSet(option)) return;
  const auto name = "--" + std::string(option);
  if (!field.enabled() || !field.visible()) Refuse(name + " cannot be changed for this customer.");
  field.SetText("");
  Type(field, line.Value(option), name);
  if (field.max_length > 0 && platform::CharacterCount(field.text()) > field.max_length)
    Refuse(name + " takes at most " + std::to_string(field.max_length) + " characters.");
}

void FillIn(const CommandLine& line, ZEMLO_CustMaint& form) {
  for (const auto& option : kTextOptions) TypeOption(line, option.name, form.mTxtCust.at(option.field));
  TypeOption(line, "phone", form.mPhone);
  TypeOption(line, "account", form.mFuelTaxAcct);
  form.mPhone.UserLeaves();
  form.mFuelTaxAcct.UserLeaves();
  const auto pick = [&](const char* option, const customers::AddressSide& side) {
    if (line.IsSet(option))
      Pick(form.mCboState[side.number], platform::UpperCase(line.Value(option)),
           "There is no state " + platform::Quoted(line.Value(option)) + ".");
  };
  pick("state", kMailingSide);
  pick("resident-state", kResidentSide);
}

/// Works the dialog as a clerk does, and leaves it.
void Maintain(HeadlessOffice& office, const CommandLine& line, ZEMLO_CustMaint& form) {
  FillIn(line, form);
  // A changed phone, account or state is saved with a touched text, as in the window.
  auto& touched = form.mTxtCust[kMailingSide.Line1()];
  const auto text = touched.text();
  touched.SetText(text + " ");
  touched.SetText(text);
  auto& save = form.mCmdOption[customers::option_number::kSave];
  RequireEnabled(save);
  save.UserClicks();
  office.RunUntilIdle();
  if (!form.shown() || !line.IsSet("accept-suggestion")) return;
  bool accepts = false;
  for (const auto& side : {kMailingSide, kResidentSide}) {
    if (!form.mFraFinalist[side.number].enabled()) continue;
    form.mChkAccept[side.number].UserClicks();
    accepts = true;
  }
  if (!accepts) return;
  save.UserClicks();
  office.RunUntilIdle();
}

void AddOptions(CommandLine& line) {
  line.DataOption();
  for (const auto& [name, meaning, field] : kTextOptions) line.Option(name, "TEXT", meaning, Takes::kAnyText);
  line.Option("phone", "NUMBER", "Phone.", Takes::kAnyText)
      .Option("account", "NUMBER", "Fuel tax account.", Takes::kAnyText)
      .Option("state", "CODE", "State of the mailing address.")
      .Option("resident-state", "CODE", "State of the resident address.")
      .Option("accept-suggestion", "", "Stores the suggested address where the one entered did not pass.");
}

}  // namespace

int RunMaintainCustomer(const QStringList& words) {
  const bool adds = words.value(0) == QLatin1String("add");
  CommandLine line(adds ? "customer add" : "customer edit", adds ? "Adds a customer" : "Changes a customer");
  AddOptions(line);
  if (!adds) line.Option("id", "NUMBER", "The customer's number.");
  if (const auto status = line.Parse(words.mid(1))) return *status;
  if (!adds && !line.IsSet("id")) return line.WrongUsage("Name the customer with --id.");
  if (adds && line.IsSet("business") == line.IsSet("last"))
    return line.WrongUsage("Give either --business or --first and --last.");

  HeadlessOffice::Options options;
  options.tell_left_behind = false;
  HeadlessOffice office(line.Data(), std::move(options));
  std::string refusal;
  office.shell().AnswerFormsWith([&](platform::Form& shown) {
    auto* form = dynamic_cast<ZEMLO_CustMaint*>(&shown);
    if (form == nullptr) return false;
    try {
      Maintain(office, line, *form);
    } catch (const platform::Failure& failure) {
      refusal = failure.what();
    }
    form->Hide();  // without the question: nobody is there to answer it
    return true;
  });
  customers::CustomerEdit edit(office.office().services(), office.shell().Caption());
  std::string saved_id;
  const auto saved = edit.Saved.Connect([&](const std::string& id) { saved_id = id; });
  if (!adds) {
    edit.Edit(line.Value("id"));
    office.RunUntilIdle();
  } else if (line.IsSet("business")) {
    edit.AddBusiness({});
  } else {
    edit.AddIndividual({});
  }
  if (!refusal.empty()) Refuse(refusal);
  if (saved_id.empty()) {
    if (!office.refused()) std::cerr << "The customer was not stored.\n";
    return kRefused;
  }
  std::cout << saved_id << '\n';
  return kDone;
}

}  // namespace apps
