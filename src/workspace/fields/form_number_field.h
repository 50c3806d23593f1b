#pragma once

#include <string>
#include <vector>

#include "platform/parties/services.h"
#include "workspace/fields/field_check.h"
#include "workspace/pages/letter_page.h"

namespace workspace {

/// The form number field of a page: the keys it takes, and what may be pasted into it.
///
/// A text that changes while Shift+Insert or the mouse is down was pasted: it is taken when the whole number
/// is valid for the page's form type, else the text from before comes back with a beep. Every change ends
/// with the page's field check.
class FormNumberField {
 public:
  /// All outlive this.
  FormNumberField(const platform::Services& services, LetterPage& page, PageIndex index,
                  FieldCheck& field_check)
      : services_(services), page_(page), index_(index), field_check_(field_check) {}

  /// Acts on the field from now on, for as long as the result lives; this outlives it.
  std::vector<platform::Connection> Connect();

 private:
  void Change();
  void KeyDown(const platform::Key& key);
  void KeyUp();
  void MouseDown();
  void MouseUp();
  void Remember(bool& flag);
  void PutBackUnlessValid();

  const platform::Services& services_;
  LetterPage& page_;
  const PageIndex index_;
  FieldCheck& field_check_;

  bool pastes_by_key_ = false;
  bool pastes_by_mouse_ = false;
  std::string remembered_;  // the text from before either flag was raised
};

}  // namespace workspace
