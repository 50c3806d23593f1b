#pragma once

#include <QProxyStyle>

namespace desktop {

/// The look of the window: the same on every machine, and readable in a dark palette, where the edges of
/// fields and options are drawn light instead of darker than dark. A list that has the keyboard shows it by
/// its frame. Buttons of boxes carry words, no pictures.
class OfficeStyle : public QProxyStyle {
 public:
  OfficeStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;
};

}  // namespace desktop
