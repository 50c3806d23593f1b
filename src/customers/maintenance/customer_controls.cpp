#include "customers/maintenance/customer_controls.h"

#include "platform/text.h"

namespace customers {

namespace {

constexpr const char* kStates = "STATE";  // code table

}  // namespace

CustomerControls::CustomerControls(const platform::Services& services)
    : mCboState{composition::ZEMLO_LetterCombo(services, kStates),
                composition::ZEMLO_LetterCombo(services, kStates)} {
  for (auto field = text_number::kSuggestedMailing; field < mTxtCust.size(); ++field)
    mTxtCust[field].read_only = true;
}

bool CustomerControls::HasMailingSuggestion() const {
  return !platform::Trim(mTxtCust[kMailingSide.SuggestedLine1()].text()).empty();
}

bool CustomerControls::HasResidentSuggestion() const {
  return !platform::Trim(mTxtCust[kResidentSide.SuggestedLine1()].text()).empty();
}

std::vector<std::size_t> CustomerControls::DifferingFields(const AddressSide& side) {
  const auto& first = mTxtCust[side.SuggestedLine1()].text();
  if (platform::Trim(first).empty() || first == kNoSuggestion) return {};
  const auto compared = [](const std::string& text) {
    return platform::UpperCase(platform::Trim(platform::ReplaceAll(text, "-", "")));
  };
  std::vector<std::size_t> differing;
  const auto compare = [&](std::size_t suggested, const std::string& entered) {
    if (compared(mTxtCust[suggested].text()) != compared(entered)) differing.push_back(suggested);
  };
  compare(side.SuggestedLine1(), mTxtCust[side.Line1()].text());
  compare(side.SuggestedLine2(), mTxtCust[side.Line2()].text());
  compare(side.SuggestedCity(), mTxtCust[side.City()].text());
  compare(side.SuggestedState(), State(side));
  compare(side.SuggestedZip(), mTxtCust[side.Zip()].text());
  return differing;
}

void CustomerControls::ShowState(const AddressSide& side, const std::string& code) {
  auto& list = mCboState[side.number];
  const auto trimmed = platform::Trim(code);
  const bool is_listed = trimmed.empty() || !list.DescriptionOf(trimmed).empty();
  if (is_listed) {
    list.Code(trimmed);
  } else {
    list.SetText(std::string(trimmed));
  }
}

void CustomerControls::ShowCounty(std::size_t label, const std::string& name, const std::string& code) {
  mLblCounty.at(label).SetCaption(platform::ReplaceAll(name, "&", "&&"));
  mLblCounty.at(label).Tag = code;
}

}  // namespace customers
