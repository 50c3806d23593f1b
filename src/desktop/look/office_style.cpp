#include "desktop/look/office_style.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QStyleOption>

namespace desktop {
namespace {

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < 128;
}

/// Starts an edge that stands out from what is behind it; less so where nothing can be done.
void SetEdge(QPainter& painter, const QStyleOption& option) {
  auto edge = option.palette.color(QPalette::Active, QPalette::WindowText);
  edge.setAlpha(option.state & QStyle::State_Enabled ? 130 : 60);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(edge);
  painter.setBrush(Qt::NoBrush);
}

void DrawBox(QPainter& painter, const QStyleOption& option, qreal radius) {
  painter.save();
  SetEdge(painter, option);
  painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
  painter.restore();
}

void DrawCircle(QPainter& painter, const QStyleOption& option) {
  painter.save();
  SetEdge(painter, option);
  painter.drawEllipse(QRectF(option.rect).adjusted(1, 1, -1, -1));
  painter.restore();
}

/// The frame of a list says that it has the keyboard, as that of a field does: its rows may be none, or all
/// be in the colour of the mark.
void DrawKeyboardFrame(QPainter& painter, const QStyleOption& option) {
  painter.save();
  painter.setPen(option.palette.color(QPalette::Active, QPalette::Highlight));
  painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
  painter.restore();
}

}  // namespace

OfficeStyle::OfficeStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void OfficeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  const bool has_keyboard = option->state.testFlag(State_HasFocus) && option->state.testFlag(State_Enabled);
  if (element == PE_Frame && has_keyboard && qobject_cast<const QAbstractItemView*>(widget) != nullptr)
    DrawKeyboardFrame(*painter, *option);
  if (!IsDark(option->palette)) return;
  if (element == PE_IndicatorRadioButton) DrawCircle(*painter, *option);
  if (element == PE_IndicatorCheckBox) DrawBox(*painter, *option, 1);
  if (element == PE_FrameLineEdit || element == PE_PanelButtonCommand) DrawBox(*painter, *option, 2);
}

void OfficeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                     QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if (!IsDark(option->palette)) return;
  if (control == CC_ComboBox || control == CC_SpinBox) DrawBox(*painter, *option, 2);
}

int OfficeStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* returned) const {
  if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
  return QProxyStyle::styleHint(hint, option, widget, returned);
}

}  // namespace desktop
