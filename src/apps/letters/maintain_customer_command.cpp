#include <algorithm>
#include <array>
#include <iostream>
#include <string>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/page_user.h"
#include "apps/letters/standard_streams.h"
#include "customers/customer_edit.h"
#include "customers/maintenance/cust_maint.h"
#include "platform/agreed/customer_numbers.h"
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
    {"first", "First name of a person.", text_number::kFirstName},
    {"middle", "Middle name.", text_number::kMiddleName},
    {"last", "Last name.", text_number::kLastName},
    {"suffix", "What follows the name.", text_number::kSuffix},
    {"business", "Name of a business.", text_number::kBusinessName},
    {"contact", "Whom to speak to in a business.", text_number::kContactName},
    {"address", "Mailing address.", kMailingSide.Line1()},
    {"address2", "Its second line.", kMailingSide.Line2()},
    {"city", "Its city.", kMailingSide.City()},
    {"zip", "Its zip code: five digits, or nine.", kMailingSide.Zip()},
    {"resident-address", "Resident address.", kResidentSide.Line1()},
    {"resident-address2", "Its second line.", kResidentSide.Line2()},
    {"resident-city", "Its city.", kResidentSide.City()},
    {"resident-zip", "Its zip code.", kResidentSide.Zip()},
});

struct MarkOption {
  const char* name;
  const char* meaning;
  const customers::AddressSide& side;
};
constexpr auto kMarkOptions = std::to_array<MarkOption>({
    {"return-mail", "Whether mail came back from the mailing address: yes or no.", kMailingSide},
    {"resident-return-mail", "Whether mail came back from the resident address: yes or no.", kResidentSide},
});

struct AddressWords {
  const customers::AddressSide& side;
  const char* name;
};
constexpr auto kAddresses =
    std::to_array<AddressWords>({{kMailingSide, "mailing address"}, {kResidentSide, "resident address"}});

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
  for (const auto& option : kMarkOptions) {
    if (!line.IsSet(option.name)) continue;
    auto& box = form.mChkReturnMail[option.side.number];
    const bool is_wanted = line.Value(option.name) == "yes";
    if (box.ticked() != is_wanted) box.UserClicks();
    if (box.ticked() != is_wanted)
      Refuse("--" + std::string(option.name) + " cannot be changed for this customer.");
  }
}

/// "1200 DEPOT ST, STE 4, HARTSFIELD KV 88312-0431".
std::string Suggestion(const ZEMLO_CustMaint& form, const customers::AddressSide& side) {
  const auto text = [&](std::size_t field) { return form.mTxtCust.at(field).text(); };
  const auto line2 = text(side.SuggestedLine2());
  return text(side.SuggestedLine1()) + ", " + (line2.empty() ? "" : line2 + ", ") +
         text(side.SuggestedCity()) + " " + text(side.SuggestedState()) + " " +
         platform::InGroups(text(side.SuggestedZip()), {5, 4});
}

/// What did not pass, with what is suggested for it; accepts that where `accepts` holds. Refuses where
/// something has no suggestion, or nothing is to be accepted.
void AcceptSuggestions(ZEMLO_CustMaint& form, bool accepts) {
  std::string told;
  bool is_all_suggested = true;
  for (const auto& [side, name] : kAddresses) {
    const bool is_suggested = form.mFraFinalist[side.number].enabled();
    const bool has_none = form.mTxtCust[side.SuggestedLine1()].text() == customers::kNoSuggestion;
    if (is_suggested)
      told += "Suggested " + std::string(name) + ": " + Suggestion(form, side) + "\n";
    else if (has_none)
      told += "The " + std::string(name) + " did not pass, and nothing is suggested for it.\n";
    is_all_suggested = is_all_suggested && !has_none;
  }
  if (!is_all_suggested) Refuse(told + "The customer was not stored. Correct the address.");
  if (!accepts)
    Refuse(told +
           "The customer was not stored. Correct the address, or take what is suggested with "
           "--accept-suggestion.");
  Notices() << told;
  for (const auto& [side, name] : kAddresses)
    if (form.mFraFinalist[side.number].enabled()) form.mChkAccept[side.number].UserClicks();
}

bool HasVerdict(const ZEMLO_CustMaint& form) {
  return std::ranges::any_of(kAddresses, [&](const AddressWords& address) {
    return !form.mTxtCust[address.side.SuggestedLine1()].text().empty();
  });
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
  if (!form.shown() || !HasVerdict(form)) return;
  AcceptSuggestions(form, line.IsSet("accept-suggestion"));
  save.UserClicks();
  office.RunUntilIdle();
}

void AddOptions(CommandLine& line) {
  line.DataOption();
  for (const auto& [name, meaning, field] : kTextOptions) line.Option(name, "TEXT", meaning, Takes::kAnyText);
  line.Option("phone", "NUMBER", "Phone: ten digits, with any punctuation.", Takes::kAnyText)
      .Option("account", "NUMBER", "Fuel tax account: thirteen digits, with any punctuation.",
              Takes::kAnyText)
      .Option("state", "CODE", "State of the mailing address: its two letters.")
      .Option("resident-state", "CODE", "State of the resident address.");
  for (const auto& option : kMarkOptions) line.Option(option.name, "yes|no", option.meaning);
  line.Option("accept-suggestion", "",
              "Stores the suggested address where the one entered does not pass its verification; without it "
              "nothing is stored then, and the suggestion is shown.");
}

/// "" where there is none.
std::string MarkFault(const CommandLine& line) {
  for (const auto& option : kMarkOptions) {
    if (line.IsSet(option.name) && line.Value(option.name) != "yes" && line.Value(option.name) != "no")
      return "--" + std::string(option.name) + " is \"yes\" or \"no\".";
  }
  return "";
}

}  // namespace

int RunMaintainCustomer(const QStringList& words) {
  const bool adds = words.value(0) == QLatin1String("add");
  CommandLine line(
      adds ? "customer add" : "customer edit",
      adds ? "Adds a customer by the rules of the window, with the right CustomerAdd of server.ini, and "
             "writes the new number"
           : "Changes a customer by the rules of the window, with the right CustomerEdit of server.ini: what "
             "is not given stays, \"\" empties it. Writes the number");
  if (!adds) line.Option("id", "NUMBER", "The customer's number.");
  AddOptions(line);
  if (const auto status = line.Parse(words.mid(1))) return *status;
  if (!adds && !line.IsSet("id")) return line.WrongUsage("Name the customer with --id.");
  if (adds && line.IsSet("business") == line.IsSet("last"))
    return line.WrongUsage("Give either --business or --first and --last.");
  if (const auto fault = MarkFault(line); !fault.empty()) return line.WrongUsage(fault);

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
