#include "workspace/letters/letter_information.h"

#include "composition/frm_batch.h"

namespace workspace {

void ShowLetterInformation(const platform::Services& services, const LetterInformation& letter) {
  composition::frmBatch form(services);
  form.ErrBookMark(letter.context);
  form.is_refused = letter.is_refused;
  form.SetText(form.first_printed, letter.first_printed);
  form.SetText(form.last_printed, letter.last_printed);
  form.SetText(form.print_status, letter.print_status);
  form.SetText(form.print_error, letter.print_error);
  if (letter.batch_error) form.ShowBatchError(*letter.batch_error);
  services.host.ShowModal(form);
}

}  // namespace workspace
