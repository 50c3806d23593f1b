#include "workspace/document/incomplete_letter_forms.h"

#include "composition/node_state.h"
#include "platform/text.h"
#include "platform/xml.h"
#include "workspace/letter_information.h"

namespace workspace {

namespace {

using composition::ZEMLO_NodeState;

std::string NameOf(const platform::XmlElement& field) {
  const auto description = field.Attribute("V_EnglishDesc").value_or("");
  return description.empty() ? field.Name() : description;
}

// The fields of the context for which `applies` holds, in document order, as a person knows them.
template <typename Applies>
std::vector<std::string> FieldsWhere(const std::string& context, Applies applies) {
  const auto document = platform::XmlDocument::Parse(context).OrFail();
  std::vector<std::string> names;
  ZEMLO_NodeState state;
  for (const auto& field : document.Root().Children()) {
    state.InitFromNode(field);
    if (applies(state)) names.push_back(NameOf(field));
  }
  return names;
}

}  // namespace

void IncompleteLetterForms::ShowLetterInformation(const LetterInformation& letter) {
  workspace::ShowLetterInformation(services_, letter);
}

LetterForms::EnteredLetter IncompleteLetterForms::EnterBookmarks(const std::string&, const std::string&,
                                                                 const std::string& context) {
  Tell("These fields wait for what only the user knows:",
       FieldsWhere(context,
                   [](const ZEMLO_NodeState& field) { return field.IsUserType() || field.IsParaType(); }));
  return {context, false};
}

void IncompleteLetterForms::Tell(const std::string& about_the_fields,
                                 const std::vector<std::string>& fields) {
  const std::string line_break(platform::kLineBreak);
  std::string text = "The letter \"" + pages_.correspondence.ZEMLO_LetterType.Description() +
                     "\" cannot be completed here yet. " + about_the_fields;
  for (const auto& field : fields) text += line_break + field;
  services_.host.ShowMessage({text, platform::MessageIcon::kExclamation, state_.message_title});
}

}  // namespace workspace
