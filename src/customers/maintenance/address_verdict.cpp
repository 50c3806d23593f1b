#include "customers/maintenance/address_verdict.h"

#include <algorithm>
#include <array>
#include <optional>

#include "platform/text.h"

namespace customers {

namespace {

constexpr long kMailingFailed = 1;
constexpr long kResidentFailed = 2;
constexpr long kBothFailed = 3;

struct VerdictText {
  long verdict;
  bool has_mailing;
  bool has_resident;
  std::array<std::string_view, 3> lines;
};
constexpr std::string_view kMailingDidNotPass =
    "The mailing address entered did not pass Finalist address verification.";
constexpr std::string_view kResidentDidNotPass =
    "The resident address entered did not pass Finalist address verification.";
constexpr std::string_view kNeitherPassed =
    "Neither the resident address entered nor the mailing address entered passed Finalist address "
    "verification.";
constexpr std::string_view kNone = "No suggested address is available.";
constexpr std::string_view kShown = "The suggested address is displayed.";
constexpr std::string_view kMailingShown = "The suggested mailing address is displayed.";
constexpr std::string_view kResidentShown = "The suggested resident address is displayed.";
constexpr std::string_view kNoResident = "No suggested resident address is available.";

// Of a verdict about one address the other's suggestion makes no difference: its row has it as it comes.
constexpr auto kVerdictTexts = std::to_array<VerdictText>({
    {kMailingFailed, false, false, {kMailingDidNotPass, kNone}},
    {kMailingFailed, true, false, {kMailingDidNotPass, kShown}},
    {kResidentFailed, false, false, {kResidentDidNotPass, kNone}},
    {kResidentFailed, false, true, {kResidentDidNotPass, kShown}},
    // As it is given, without a period at the end of the second line.
    {kBothFailed, false, false, {kNeitherPassed, "No suggested mailing address is available", kNoResident}},
    {kBothFailed, true, false, {kNeitherPassed, kMailingShown, kNoResident}},
    {kBothFailed,
     false,
     true,
     {kNeitherPassed, "No suggested mailing address is available.", kResidentShown}},
    {kBothFailed, true, true, {kNeitherPassed, kMailingShown, kResidentShown}},
});

std::string TextOf(long verdict, bool has_mailing, bool has_resident) {
  std::string text;
  for (const auto& row : kVerdictTexts) {
    if (row.verdict != verdict || row.has_mailing != has_mailing || row.has_resident != has_resident)
      continue;
    for (const auto line : row.lines) {
      if (!line.empty() && !text.empty()) text += platform::kLineBreak;
      text += line;
    }
  }
  return text;
}

}  // namespace

std::string AddressVerdict::Text(const AddressSide& side, const char* column) const {
  const auto name = std::string(side.prefix).append(column);
  return rows_.HasColumn(name) ? rows_.Text(row_, name) : "";
}

void AddressVerdict::FillSuggestion(const AddressSide& side, const AddressSide& other, bool& no_suggestion) {
  auto& fields = controls_.mTxtCust;
  controls_.mChkAccept[side.number].SetTicked(false);  // it was about another suggestion
  no_suggestion = platform::Trim(Text(side, "ADDR_1")).empty();
  if (no_suggestion) {
    fields[side.SuggestedLine1()].SetText(kNoSuggestion);
    for (auto field = side.SuggestedLine2(); field <= side.SuggestedZip(); ++field) fields[field].SetText("");
    controls_.ShowCounty(side.SuggestedCounty(), "", "");
    return;
  }
  fields[side.SuggestedLine1()].SetText(Text(side, "ADDR_1"));
  fields[side.SuggestedLine2()].SetText(Text(side, "ADDR_2"));
  fields[side.SuggestedCity()].SetText(Text(side, "CITY"));
  fields[side.SuggestedState()].SetText(Text(side, "ST"));
  fields[side.SuggestedZip()].SetText(Text(side, "ZIP_CD"));
  controls_.ShowCounty(side.SuggestedCounty(), Text(side, "COUNTY"), Text(side, "CNTY_CD"));
  auto& other_county = controls_.mLblCounty[other.number];
  if (other_county.caption().empty())
    controls_.ShowCounty(other.number, Text(other, "COUNTY"), other_county.Tag);
}

void AddressVerdict::CopyEntered(const AddressSide& side) {
  if (controls_.mChkAccept[side.number].ticked())
    return;  // what was sent is the suggestion that stands there
  auto& fields = controls_.mTxtCust;
  fields[side.SuggestedLine1()].SetText(fields[side.Line1()].text());
  fields[side.SuggestedLine2()].SetText(fields[side.Line2()].text());
  fields[side.SuggestedCity()].SetText(fields[side.City()].text());
  fields[side.SuggestedState()].SetText(controls_.State(side));
  fields[side.SuggestedZip()].SetText(fields[side.Zip()].text());
  controls_.ShowCounty(side.SuggestedCounty(), Text(side, "COUNTY"), Text(side, "CNTY_CD"));
}

void AddressVerdict::EnableFrames(long verdict) {
  for (auto& frame : controls_.mFraAddress) frame.SetEnabled(true);
  const bool mailing_failed = verdict == kMailingFailed || verdict == kBothFailed;
  const bool resident_failed = verdict == kResidentFailed || verdict == kBothFailed;
  controls_.mFraFinalist[kMailingSide.number].SetEnabled(mailing_failed && !no_mailing_suggestion_);
  controls_.mFraFinalist[kResidentSide.number].SetEnabled(resident_failed && !no_resident_suggestion_);
}

std::string AddressVerdict::Show() {
  bool mailing_changed = false;
  bool resident_changed = false;
  changes_.CheckChangedAddress(mailing_changed, resident_changed);
  const auto verdict = static_cast<long>(rows_.Get(row_, "FINALIST_IND").AsInteger());
  if (verdict == kMailingFailed || verdict == kBothFailed)
    FillSuggestion(kMailingSide, kResidentSide, no_mailing_suggestion_);
  if (verdict == kResidentFailed || verdict == kBothFailed)
    FillSuggestion(kResidentSide, kMailingSide, no_resident_suggestion_);
  if (verdict == kMailingFailed && resident_changed) CopyEntered(kResidentSide);
  if (verdict == kResidentFailed && mailing_changed) CopyEntered(kMailingSide);
  EnableFrames(verdict);
  return TextOf(verdict, verdict != kResidentFailed && !no_mailing_suggestion_,
                verdict != kMailingFailed && !no_resident_suggestion_);
}

}  // namespace customers
