#pragma once

#include "composition/letter_combo.h"
#include "customers/customer_panel.h"
#include "platform/controls/grid.h"
#include "platform/controls/text_field.h"
#include "platform/parties/services.h"

namespace workspace {

/// What the correspondence page and the tracking page both have: a customer, a letter type, a document, and
/// the letters that were produced.
struct LetterPage {
  explicit LetterPage(const platform::Services& services)
      : ZEMLO_LetterType(services, "LETTERS"), ZEMLO_FormTypeCodes(services, "REFDOCTYP") {}

  customers::CustomerPanel panel;
  /// Its tag holds the form types the chosen letter type needs; "" when it needs no document.
  composition::ZEMLO_LetterCombo ZEMLO_LetterType;
  /// Its tag holds the form type of a form that was chosen through the form inquiry.
  composition::ZEMLO_LetterCombo ZEMLO_FormTypeCodes;
  platform::TextField txtFormNum;
  platform::Grid sdgGrid;
};

}  // namespace workspace
