#include "workspace/document/letter_dialogs.h"

#include "composition/frm_letter.h"
#include "workspace/letters/letter_information.h"
#include "workspace/letters/proposed_file_name.h"

namespace workspace {

void LetterDialogs::ShowLetterInformation(const LetterInformation& letter) {
  workspace::ShowLetterInformation(services_, letter);
}

LetterForms::EnteredLetter LetterDialogs::EnterBookmarks(const LetterData& letter) {
  const Key key{letter.letter_type, letter.customer_id, letter.form_type, letter.form_number};
  if (kept_for_ != key) kept_ = {};
  kept_for_ = key;
  composition::frmLetter form(services_, message_title_);
  form.FileName = letter.template_path;
  form.TemplateName = letter.template_name;
  form.ProposedName = ProposedFileName(letter, services_.clock.Today());
  form.BookMarkInput = letter.context;
  form.Offered = kept_;
  services_.host.ShowModal(form);
  // A letter that was begun while the form stood has taken the place of this one.
  if (kept_for_ == key) kept_ = form.Entries();
  return {form.XMLBookMark, form.DocPrinted};
}

}  // namespace workspace
