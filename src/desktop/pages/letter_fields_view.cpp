#include "desktop/pages/letter_fields_view.h"

#include <QLineEdit>

#include "desktop/binders/field_layout.h"
#include "desktop/binders/pick_list_field.h"
#include "desktop/binders/text_field_binding.h"

namespace desktop {

void AddLetterFields(workspace::LetterPage& page, QGridLayout& layout) {
  auto* names = new PickListField;
  auto* form_type = new PickListField;
  auto* form_number = new QLineEdit;
  AddField(layout, 0, 0, "Correspondence &Names:", *names);
  AddField(layout, 1, 0, "For&m Type:", *form_type);
  AddField(layout, 2, 0, "Form N&umber:", *form_number);
  Bind(page.ZEMLO_LetterType, *names);
  Bind(page.ZEMLO_FormTypeCodes, *form_type);
  Bind(page.txtFormNum, *form_number);
}

}  // namespace desktop
