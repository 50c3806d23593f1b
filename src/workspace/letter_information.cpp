#include "workspace/letter_information.h"

#include "composition/frm_batch.h"

namespace workspace {

void ShowLetterInformation(const platform::Services& services, const LetterInformation& letter) {
  composition::frmBatch form(services);
  form.ErrBookMark(letter.context);
  form.first_printed.SetCaption(letter.first_printed);
  form.last_printed.SetCaption(letter.last_printed);
  form.print_status.SetCaption(letter.print_status);
  form.print_error.SetCaption(letter.print_error);
  if (letter.batch_error) form.ShowBatchError(*letter.batch_error);
  services.host.ShowModal(form);
}

}  // namespace workspace
