#include "desktop/binders/pick_list_accessible.h"

#include <QAccessibleWidget>
#include <QLineEdit>

#include "desktop/binders/pick_list_field.h"

namespace desktop {
namespace {

class PickListAccessible : public QAccessibleWidget {
 public:
  explicit PickListAccessible(PickListField& field)
      : QAccessibleWidget(&field, QAccessible::ComboBox), field_(field) {}

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? field_.lineEdit()->text() : QAccessibleWidget::text(kind);
  }
  QAccessible::State state() const override {
    auto state = QAccessibleWidget::state();
    state.editable = true;
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = field_.IsOpen();
    state.collapsed = !field_.IsOpen();
    return state;
  }

 private:
  PickListField& field_;
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
  auto* field = dynamic_cast<PickListField*>(object);
  return field == nullptr ? nullptr : new PickListAccessible(*field);
}

}  // namespace

void InstallPickListAccessible() {
  static const bool installed = [] {
    QAccessible::installFactory(MakeAccessible);
    return true;
  }();
  static_cast<void>(installed);
}

}  // namespace desktop
