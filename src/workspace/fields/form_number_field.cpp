#include "workspace/fields/form_number_field.h"

#include <optional>
#include <utility>

#include "workspace/fields/key_filter.h"

namespace workspace {

using platform::Trap;

std::vector<platform::Connection> FormNumberField::Connect() {
  auto& field = page_.txtFormNum;
  std::vector<platform::Connection> connections;
  connections.push_back(FilterKeys(
      services_, field, "ZEMLO_FormInq.txtFormNum_KeyPress", [this](char32_t key) -> std::optional<char32_t> {
        const auto form_type = page_.ZEMLO_FormTypeCodes.Code();
        const char32_t meant = key == U'x' ? U'X' : key;  // a check digit that is ten
        if (!services_.utilities.AllowFormNumberKey(form_type, meant, page_.txtFormNum)) return std::nullopt;
        return meant;
      }));
  connections.push_back(field.Changed.Connect([this] { Change(); }));
  connections.push_back(field.KeyDown.Connect([this](const platform::Key& key) { KeyDown(key); }));
  connections.push_back(field.KeyUp.Connect([this](const platform::Key&) { KeyUp(); }));
  connections.push_back(field.MouseDown.Connect([this] { MouseDown(); }));
  connections.push_back(field.MouseUp.Connect([this] { MouseUp(); }));
  return connections;
}

void FormNumberField::Change() {
  Trap(services_, "ZEMLO_FormInq.txtFormNum_Change", [&] {
    // Lowered first: putting the text back is a change of its own.
    const bool by_key = std::exchange(pastes_by_key_, false);
    const bool by_mouse = std::exchange(pastes_by_mouse_, false);
    if (by_key || by_mouse) PutBackUnlessValid();
  });
  field_check_.CheckEdit(index_);
}

void FormNumberField::PutBackUnlessValid() {
  auto& field = page_.txtFormNum;
  if (services_.utilities.ValidateFormNumber(page_.ZEMLO_FormTypeCodes.Code(), field.text()).valid) return;
  services_.host.Beep();
  field.SetText(remembered_);
}

void FormNumberField::KeyDown(const platform::Key& key) {
  Trap(services_, "ZEMLO_FormInq.txtFormNum_KeyDown", [&] {
    if (key == platform::Key::Paste()) Remember(pastes_by_key_);
  });
}

void FormNumberField::KeyUp() {
  Trap(services_, "ZEMLO_FormInq.txtFormNum_KeyUp", [&] { pastes_by_key_ = false; });
}

void FormNumberField::MouseDown() {
  Trap(services_, "ZEMLO_FormInq.txtFormNum_MouseDown", [&] { Remember(pastes_by_mouse_); });
}

void FormNumberField::MouseUp() {
  Trap(services_, "ZEMLO_FormInq.txtFormNum_Mouseup", [&] { pastes_by_mouse_ = false; });
}

void FormNumberField::Remember(bool& flag) {
  remembered_ = page_.txtFormNum.text();
  flag = true;
}

}  // namespace workspace
