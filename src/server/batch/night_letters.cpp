#include "server/batch/night_letters.h"

#include <exception>
#include <map>
#include <vector>

#include "platform/agreed/field_names.h"
#include "platform/agreed/letter_record.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "platform/xml/xml.h"
#include "server/context/letter_context.h"
#include "server/context/stored_context.h"

namespace server {
namespace {

namespace print_status = platform::print_status;

constexpr const char* kMendAndResubmit = " Correct it and resubmit the letter.";
constexpr const char* kOnTheScreen = " Nobody can in the night: create the letter on the screen.";

std::string AddressFailure(const AddressVerdict& verdict) {
  const bool came_back = (verdict.flags & (address::kMailMarkedBad | address::kResidentialMarkedBad)) != 0;
  const std::string reason = came_back
                                 ? "Mail to the customer came back, and there is no other address to use: "
                                 : "The customer has no address that this letter can go to: ";
  return reason + ExplainAddress(verdict.flags) + kMendAndResubmit;
}

void AddErrors(const ContextField& field, std::string& list) {
  if (field.error != 0) {
    list += (list.empty() ? "" : "; ") + (field.description.empty() ? field.name : field.description) + ": " +
            ExplainErrors(0, field.error);
    if (!field.error_place.empty()) list += " (" + field.error_place + ")";
  }
  for (const auto& child : field.children) AddErrors(child, list);
}

std::string NamesOf(const std::vector<std::string>& names) {
  std::string list;
  for (const auto& name : names) list += (list.empty() ? "" : ", ") + name;
  return list;
}

/// Puts what an officer entered when the letter was made before into its new data; optional paragraphs that
/// nobody has chosen are left out. Returns what is still to be entered, in words; "" where nothing is.
std::string TakeEntries(ContextField& root, const std::string& entries) {
  platform::XmlDocument::ParseResult before;
  if (!entries.empty()) before = platform::XmlDocument::Parse(entries);
  std::vector<std::string> missing;
  std::map<std::string, bool> groups;  // whether a paragraph of the group is in the letter
  for (auto& field : root.children) {
    const auto entered =
        before.document ? before.document->FirstByTagName(field.name) : platform::XmlElement();
    if ((field.state & state::kParagraph) != 0) {
      const auto mark = entered ? platform::ReadFlagWord(entered, "State") : state::kUnselected;
      field.state |= mark & state::kUnselected;
      if (entered) field.text = entered.Text();
      const bool is_in = (field.state & state::kUnselected) == 0 || !platform::IsBlank(field.text);
      if (!field.group.empty()) groups[field.group] |= is_in;
    } else if ((field.state & state::kUser) != 0) {
      if (entered) field.text = entered.Text();
      if (platform::IsBlank(field.text))
        missing.push_back(field.description.empty() ? field.name : field.description);
    }
  }
  if (!missing.empty()) return "An officer has to enter " + NamesOf(missing) + ".";
  for (const auto& [group, is_in] : groups) {
    if (!is_in) return "An officer has to choose one of the paragraphs \"" + group + "\".";
  }
  return "";
}

}  // namespace

/// A letter that is in the history already.
struct NightLetters::Stored {
  bool is_there = false;
  bool was_never_made = false;  ///< a run failed to make it: there is nothing to print as it is
  std::string template_file;
  std::string context;
  platform::Value address_type;
};

const std::vector<LetterField>& NightLetters::FieldsOf(const std::string& letter_type) {
  const auto [place, is_new] = fields_.try_emplace(letter_type);
  if (is_new) place->second = FindLetterFields(database_, letter_type);
  return place->second;
}

NightLetter NightLetters::Prepare(std::int64_t item, const RunItem& what) {
  NightLetter letter{.item = item, .what = what};
  try {
    letter.station = StationOf(what.customer);
    const auto stored = FindStored(what);
    if (what.letter && !stored.is_there) {
      letter.failure = "The letter is not in the history any more.";
    } else if (what.source == run_source::kReprint && !stored.was_never_made) {
      TakeStored(letter, stored);
    } else {
      MakeContext(letter, stored.context);
    }
  } catch (const std::exception& failure) {
    letter.failure = failure.what();
  }
  return letter;
}

std::string NightLetters::StationOf(const std::string& customer) {
  return database_
      .Select(
          R"(SELECT TRP_ID || TRP_DIST_ID FROM county JOIN customer ON customer.QZ_CNTY_NBR = county.QZ_CNTY_NBR
                 WHERE CUST_ID = ?)",
          {customer})
      ->FirstText();
}

NightLetters::Stored NightLetters::FindStored(const RunItem& what) {
  if (!what.letter) return {};
  const auto found = database_.Select(
      R"(SELECT DCMT_FILE_TXT, PRNT_TS, ADDR_TYP_CD, SYS_RFRNC_CD, letter_history.PRNT_STTS_CD,
           batch_item.PRNT_STTS_CD AS STTS_BEFORE
         FROM letter_history LEFT JOIN batch_item ON batch_item.SEQ_NBR = letter_history.SEQ_NBR
         WHERE letter_history.SEQ_NBR = ?)",
      {*what.letter});
  if (found->IsEmpty()) return {};
  const auto status = found->Text(found->Get("STTS_BEFORE").IsNull() ? "PRNT_STTS_CD" : "STTS_BEFORE");
  return {.is_there = true,
          .was_never_made = status == print_status::kPrintFailed && found->Get("PRNT_TS").IsNull() &&
                            found->Text("SYS_RFRNC_CD") == platform::letter_origin::kBatch,
          .template_file = found->Text("DCMT_FILE_TXT"),
          .context = FindContext(database_, *what.letter).value_or(""),
          .address_type = found->Get("ADDR_TYP_CD")};
}

void NightLetters::TakeStored(NightLetter& letter, const Stored& stored) {
  letter.as_stored = true;
  letter.context = stored.context;
  letter.template_file = stored.template_file;
  letter.address_type = stored.address_type;
  if (stored.context.empty())
    letter.failure = "The letter was stored without its data. Resubmit it to be made again.";
}

void NightLetters::MakeContext(NightLetter& letter, const std::string& entries) {
  const auto& what = letter.what;
  const auto& fields = FieldsOf(what.letter_type);
  if (fields.empty()) {
    letter.failure = "There is no letter type \"" + what.letter_type + "\" any more.";
    return;
  }
  auto subject = FindLetterSubject(
      database_, what.letter_type,
      {.customer = what.customer, .form_type = what.form_type, .form_number = what.form_number}, today_);
  subject.address_rules = AddressRules(fields);
  const auto verdict = JudgeAddresses(subject.customer, subject.office.state, subject.address_rules);
  const auto limits = FieldQueryLimits({});
  auto root =
      BuildLetterContext(subject, fields, verdict, /*with_values=*/true, [&](const LetterField& field) {
        return RunFieldQuery(database_, field.source, field.rules, subject, limits);
      });
  const auto to_enter = TakeEntries(root, entries);
  letter.context = ContextXml(root, {.descriptors = true, .states = true});
  letter.address_type = verdict.AddressType();
  letter.county = subject.customer.county_number;
  if (subject.form) letter.check_digit = subject.form->check_digit;
  if (!verdict.IsUsable()) {
    letter.failure = AddressFailure(verdict);
  } else if (root.IsErroneous()) {
    std::string errors;
    AddErrors(root, errors);
    letter.failure = "The letter's data are in error: " + errors + "." + kMendAndResubmit;
  } else if (!to_enter.empty()) {
    letter.failure = to_enter + kOnTheScreen;
  }
}

}  // namespace server
