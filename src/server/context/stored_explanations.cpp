#include "server/context/stored_explanations.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "platform/failure.h"

namespace server {
namespace {

using platform::XmlElement;

/// 0 for an attribute that is absent or no word.
FlagWord ReadFlags(const XmlElement& element, std::string_view attribute) {
  const auto text = element.Attribute(attribute).value_or("");
  FlagWord word = 0;
  std::from_chars(text.data(), text.data() + text.size(), word, 16);
  return word;
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
    const auto state = ReadFlags(element, "State");
    const auto stored = [&](std::string_view attribute) { return element.Attribute(attribute).value_or(""); };
    const bool descriptors = explanations_.descriptors;
    const bool states = explanations_.states;
    const auto description = stored("V_EnglishDesc");
    SetOrRemove(element, "V_EnglishDesc", descriptors,
                description.empty() ? DescriptionOf(element.Name()) : description);
    SetOrRemove(element, "V_ExplainType", descriptors, ExplainType(state));
    SetOrRemove(element, "V_ExplainAttr", descriptors, ExplainAttributes(state));
    SetOrRemove(element, "RawValue", descriptors, stored("RawValue"));
    SetOrRemove(element, "V_ExplainState", states, ExplainState(state));
    SetOrRemove(element, "V_ExplainErr", states,
                LongerOf(stored("V_ExplainErr"), ExplainErrors(state, ReadFlags(element, "Err"))));
    SetOrRemove(element, "V_ExplainAddr", states, ExplainAddress(ReadFlags(element, "AddrState")));
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
  return {.descriptors = keys.IsYes("EMITFIELDDESCRIPTORS"), .states = keys.IsYes("EXPLAINSTATE")};
}

std::string WithExplanations(const std::string& context, const Explanations& explanations,
                             const std::vector<LetterField>& fields) {
  const auto document = platform::While("reading a stored letter",
                                        [&] { return platform::XmlDocument::Parse(context).OrFail(); });
  Explainer(explanations, fields).Explain(document.Root());
  return document.Root().Xml();
}

}  // namespace server
