#pragma once

#include <QProxyStyle>

namespace desktop {

/// The look of the window: the same on every machine, and readable in a dark palette, where the edges of
/// fields and options are drawn light instead of darker than dark.
class OfficeStyle : public QProxyStyle {
 public:
  OfficeStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
};

}  // namespace desktop
