#include "server/context/stored_explanations.h"

#include <algorithm>
#include <string_view>

#include "platform/agreed/field_attributes.h"
#include "platform/agreed/requests.h"
#include "platform/failure.h"

namespace server {
namespace {

using platform::XmlElement;

namespace field_attribute = platform::field_attribute;

// What is no flag word has nothing to explain, and the letter is handed out all the same: its reader refuses
// the word.
FlagWord FlagsToExplain(const XmlElement& element, std::string_view attribute) {
  return platform::ParseFlagWord(element.Attribute(attribute).value_or("")).value_or(0);
}

void SetOrRemove(XmlElement& element, std::string_view attribute, bool wanted, const std::string& text) {
  if (wanted && !text.empty()) {
    element.SetAttribute(attribute, text);
  } else {
    element.RemoveAttribute(attribute);
  }
}

/// What was stored says more than the flags where it goes on after them: which field, and why.
std::string LongerOf(const std::string& stored, const std::string& of_flags) {
  return !of_flags.empty() && stored.starts_with(of_flags) ? stored : of_flags;
}

class Explainer {
 public:
  Explainer(const Explanations& explanations, const std::vector<LetterField>& fields)
      : explanations_(explanations), fields_(fields) {}

  void Explain(XmlElement element) const {
    const auto state = FlagsToExplain(element, field_attribute::kState);
    const auto stored = [&](std::string_view attribute) { return element.Attribute(attribute).value_or(""); };
    const bool descriptors = explanations_.descriptors;
    const bool states = explanations_.states;
    const auto description = stored(field_attribute::kDescription);
    SetOrRemove(element, field_attribute::kDescription, descriptors,
                description.empty() ? DescriptionOf(element.Name()) : description);
    SetOrRemove(element, field_attribute::kExplainedType, descriptors, ExplainType(state));
    SetOrRemove(element, field_attribute::kExplainedAttributes, descriptors, ExplainAttributes(state));
    SetOrRemove(element, field_attribute::kRawValue, descriptors, stored(field_attribute::kRawValue));
    SetOrRemove(element, field_attribute::kExplainedState, states, ExplainState(state));
    SetOrRemove(element, field_attribute::kExplainedErrors, states,
                LongerOf(stored(field_attribute::kExplainedErrors),
                         ExplainErrors(state, FlagsToExplain(element, field_attribute::kErrors))));
    SetOrRemove(element, field_attribute::kExplainedAddress, states,
                ExplainAddress(FlagsToExplain(element, field_attribute::kAddressState)));
    for (const auto& child : element.Children()) Explain(child);
  }

 private:
  std::string DescriptionOf(const std::string& name) const {
    const auto field = std::ranges::find(fields_, name, &LetterField::name);
    return field == fields_.end() ? "" : field->description;
  }

  const Explanations& explanations_;
  const std::vector<LetterField>& fields_;
};

}  // namespace

Explanations AskedExplanations(const RequestKeys& keys) {
  return {.descriptors = keys.IsYes(platform::request_key::kFieldDescriptors),
          .states = keys.IsYes(platform::request_key::kExplainState)};
}

std::string WithExplanations(const std::string& context, const Explanations& explanations,
                             const std::vector<LetterField>& fields) {
  const auto document = platform::While("reading a stored letter",
                                        [&] { return platform::XmlDocument::Parse(context).OrFail(); });
  Explainer(explanations, fields).Explain(document.Root());
  return document.Root().Xml();
}

}  // namespace server
