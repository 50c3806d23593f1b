#include "desktop/binders/check_box_binding.h"

#include "desktop/binders/binding.h"
#include "desktop/binders/disabled_reason.h"
#include "desktop/look/qt_text.h"

namespace desktop {
namespace {

class CheckBoxBinding : public Binding {
 public:
  CheckBoxBinding(platform::CheckBox& box, QCheckBox& shown, char mnemonic) : Binding(box, shown) {
    const auto caption = ToQt(box.caption()).trimmed();
    auto text = caption;
    if (const auto place = text.indexOf(QLatin1Char(mnemonic)); mnemonic != '\0' && place >= 0)
      text.insert(place, QLatin1Char('&'));
    shown.setText(text);
    if (shown.accessibleName().isEmpty()) shown.setAccessibleName(caption);
    shown.setChecked(box.ticked());
    connect(&shown, &QCheckBox::clicked, this, [&box, &shown] {
      box.UserClicks();
      shown.setChecked(box.ticked());
    });
    Keep(box.LookChanged.Connect([&box, &shown] { shown.setChecked(box.ticked()); }));
    ShowWhyDisabled(box, shown);
  }
};

}  // namespace

void Bind(platform::CheckBox& box, QCheckBox& shown, char mnemonic) {
  new CheckBoxBinding(box, shown, mnemonic);
}

}  // namespace desktop
