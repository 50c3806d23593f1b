#include "server/subject/field_rules.h"

#include <algorithm>
#include <array>
#include <vector>

#include "platform/text.h"

namespace server {
namespace {

struct RuleName {
  std::string_view name;
  FieldRules rule;
};

constexpr auto kRuleNames = std::to_array<RuleName>({
    {"INDIRECT", rule::kIndirect},
    {"REF_OPTIONAL", rule::kReferenceOptional},
    {"AMOUNT", rule::kAmount},
    {"DAY", rule::kDay},
    {"OPEN_DOCUMENT", rule::kOpenDocument},
    {"NO_PO_BOX", rule::kNoPostOfficeBox},
    {"IN_STATE", rule::kInState},
    {"OUT_OF_STATE", rule::kOutOfState},
    {"PREFER_MAIL", rule::kPreferMail},
    {"PREFER_RESIDENTIAL", rule::kPreferResidential},
});

constexpr std::string_view kOneOf = "ONE_OF:";

std::vector<std::string_view> WordsOf(std::string_view text) {
  std::vector<std::string_view> words;
  for (text = platform::Trim(text); !text.empty(); text = platform::Trim(text)) {
    words.push_back(text.substr(0, text.find(' ')));
    text.remove_prefix(words.back().size());
  }
  return words;
}

bool NamesGroup(std::string_view word) {
  return word.starts_with(kOneOf) && word.size() > kOneOf.size();
}

}  // namespace

std::optional<FieldRules> ReadRules(std::string_view words) {
  FieldRules rules = 0;
  for (const auto word : WordsOf(words)) {
    const auto known = std::ranges::find(kRuleNames, word, &RuleName::name);
    const bool is_second_group = NamesGroup(word) && (rules & rule::kOneOf) != 0;
    if (is_second_group || (known == kRuleNames.end() && !NamesGroup(word))) return std::nullopt;
    rules |= NamesGroup(word) ? rule::kOneOf : known->rule;
  }
  return rules;
}

std::string ParagraphGroup(std::string_view words) {
  const auto all = WordsOf(words);
  const auto group = std::ranges::find_if(all, NamesGroup);
  return group == all.end() ? "" : std::string(group->substr(kOneOf.size()));
}

}  // namespace server
