#include "server/context/context_field.h"

namespace server {
namespace {

using platform::XmlElement;

void SetUnlessEmpty(XmlElement& element, std::string_view attribute, const std::string& text) {
  if (!text.empty()) element.SetAttribute(attribute, text);
}

void SetFlags(XmlElement& element, std::string_view attribute, FlagWord word) {
  if (word != 0) element.SetAttribute(attribute, FlagText(word));
}

void Fill(XmlElement element, const ContextField& field, const Explanations& explanations) {
  SetFlags(element, "State", field.state);
  SetFlags(element, "Err", field.error);
  SetFlags(element, "AddrState", field.address);
  SetUnlessEmpty(element, "OneOf", field.group);
  if (explanations.descriptors) {
    SetUnlessEmpty(element, "V_EnglishDesc", field.description);
    SetUnlessEmpty(element, "V_ExplainType", ExplainType(field.state));
    SetUnlessEmpty(element, "V_ExplainAttr", ExplainAttributes(field.state));
    SetUnlessEmpty(element, "RawValue", field.raw_value);
  }
  if (explanations.states) {
    SetUnlessEmpty(element, "V_ExplainState", ExplainState(field.state));
    SetUnlessEmpty(
        element, "V_ExplainErr",
        ExplainErrors(field.state, field.error) + (field.error_place.empty() ? "" : " " + field.error_place));
    SetUnlessEmpty(element, "V_ExplainAddr", ExplainAddress(field.address));
  }
  if (!field.text.empty()) element.SetText(field.text);
  for (const auto& child : field.children) Fill(element.AppendChild(child.name), child, explanations);
}

}  // namespace

void ContextField::SummariseErrors() {
  if (error != 0) state |= state::kHasError;
  for (auto& child : children) {
    child.SummariseErrors();
    if (!child.IsErroneous()) continue;
    state |= state::kErrorInChild;
    const bool of_address = (child.state & state::kAddressRelated) != 0;
    if (!of_address || (child.state & state::kErrorInNonAddressChild) != 0)
      state |= state::kErrorInNonAddressChild;
  }
}

std::string ContextXml(const ContextField& root, const Explanations& explanations) {
  platform::XmlDocument document(root.name);
  Fill(document.Root(), root, explanations);
  return document.Root().Xml();
}

}  // namespace server
