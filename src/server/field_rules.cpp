#include "server/field_rules.h"

#include <algorithm>
#include <array>

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

}  // namespace

std::optional<FieldRules> ReadRules(std::string_view words) {
  FieldRules rules = 0;
  for (words = platform::Trim(words); !words.empty(); words = platform::Trim(words)) {
    const auto word = words.substr(0, words.find(' '));
    const auto known = std::ranges::find(kRuleNames, word, &RuleName::name);
    if (known == kRuleNames.end()) return std::nullopt;
    rules |= known->rule;
    words.remove_prefix(word.size());
  }
  return rules;
}

}  // namespace server
