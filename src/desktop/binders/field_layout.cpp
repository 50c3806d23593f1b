#include "desktop/binders/field_layout.h"

#include "desktop/binders/command_binding.h"
#include "desktop/binders/date_field_edit.h"
#include "desktop/look/qt_text.h"

namespace desktop {
namespace {

QString NameOf(const char* caption) {
  auto name = WithoutMnemonic(caption);
  if (name.endsWith(QLatin1Char(':'))) name.chop(1);
  return name;
}

}  // namespace

QLabel* CaptionFor(QWidget& field, const char* caption) {
  auto* label = new QLabel(QString::fromUtf8(caption), field.parentWidget());
  label->setBuddy(&field);
  if (auto* date = dynamic_cast<DateFieldEdit*>(&field)) {
    date->SetName(NameOf(caption));
  } else {
    field.setAccessibleName(NameOf(caption));
  }
  return label;
}

void AddField(QGridLayout& layout, int row, int column, const char* caption, QWidget& field) {
  layout.addWidget(CaptionFor(field, caption), row, column);
  layout.addWidget(&field, row, column + 1);
}

void AddShown(QGridLayout& layout, int row, int column, const char* caption, platform::Label& label) {
  auto* shown = new QLabel;
  shown->setWordWrap(true);
  shown->setMinimumHeight(shown->fontMetrics().height());
  shown->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  layout.addWidget(new QLabel(QString::fromUtf8(caption)), row, column, Qt::AlignTop);
  layout.addWidget(shown, row, column + 1, Qt::AlignTop);
  Bind(label, *shown, NameOf(caption));
}

QPushButton* MakeButton(platform::Command& command, QWidget* parent, char mnemonic) {
  auto* button = new QPushButton(parent);
  Bind(command, *button, mnemonic);
  return button;
}

}  // namespace desktop
