#include "workspace/document/letter_dialogs.h"

#include "composition/frm_letter.h"
#include "workspace/letter_information.h"

namespace workspace {

void LetterDialogs::ShowLetterInformation(const LetterInformation& letter) {
  workspace::ShowLetterInformation(services_, letter);
}

LetterForms::EnteredLetter LetterDialogs::EnterBookmarks(const std::string& file_name,
                                                         const std::string& template_name,
                                                         const std::string& context) {
  composition::frmLetter form(services_, state_.message_title);
  form.FileName = file_name;
  form.TemplateName = template_name;
  form.BookMarkInput = context;
  services_.host.ShowModal(form);
  return {form.XMLBookMark, form.DocPrinted};
}

}  // namespace workspace
