#include "server/context/context_field.h"

#include "platform/agreed/field_attributes.h"

namespace server {
namespace {

using platform::XmlElement;

namespace field_attribute = platform::field_attribute;

void SetUnlessEmpty(XmlElement& element, std::string_view attribute, const std::string& text) {
  if (!text.empty()) element.SetAttribute(attribute, text);
}

void SetFlags(XmlElement& element, std::string_view attribute, FlagWord word) {
  if (word != 0) element.SetAttribute(attribute, platform::FlagText(word));
}

void Fill(XmlElement element, const ContextField& field, const Explanations& explanations) {
  SetFlags(element, field_attribute::kState, field.state);
  SetFlags(element, field_attribute::kErrors, field.error);
  SetFlags(element, field_attribute::kAddressState, field.address);
  SetUnlessEmpty(element, field_attribute::kGroup, field.group);
  if (explanations.descriptors) {
    SetUnlessEmpty(element, field_attribute::kDescription, field.description);
    SetUnlessEmpty(element, field_attribute::kExplainedType, ExplainType(field.state));
    SetUnlessEmpty(element, field_attribute::kExplainedAttributes, ExplainAttributes(field.state));
    SetUnlessEmpty(element, field_attribute::kRawValue, field.raw_value);
  }
  if (explanations.states) {
    SetUnlessEmpty(element, field_attribute::kExplainedState, ExplainState(field.state));
    SetUnlessEmpty(
        element, field_attribute::kExplainedErrors,
        ExplainErrors(field.state, field.error) + (field.error_place.empty() ? "" : " " + field.error_place));
    SetUnlessEmpty(element, field_attribute::kExplainedAddress, ExplainAddress(field.address));
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
