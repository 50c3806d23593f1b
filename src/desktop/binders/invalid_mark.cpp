#include "desktop/binders/invalid_mark.h"

#include <QEvent>
#include <QPainter>
#include <QPalette>

namespace desktop {
namespace {

constexpr auto kMarkName = "invalid mark";
constexpr auto kDescription = "This value is not accepted. Please correct it.";
constexpr int kThickness = 2;

QColor MarkColor(const QPalette& palette) {
  const bool dark = palette.color(QPalette::Window).lightness() < 128;
  return dark ? QColor(0xff, 0x6b, 0x6b) : QColor(0xc6, 0x28, 0x28);
}

}  // namespace

InvalidMark::InvalidMark(QWidget& field) : QWidget(&field) {
  setObjectName(QLatin1String(kMarkName));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  field.installEventFilter(this);
  setGeometry(field.rect());
  raise();
}

InvalidMark* InvalidMark::Of(const QWidget& field) {
  return static_cast<InvalidMark*>(
      field.findChild<QWidget*>(QLatin1String(kMarkName), Qt::FindDirectChildrenOnly));
}

bool InvalidMark::IsOn(const QWidget& field) {
  return Of(field) != nullptr;
}

void InvalidMark::Show(QWidget& field, bool invalid, const QString& reason) {
  auto* mark = Of(field);
  if (!invalid && mark == nullptr) return;
  if (invalid && mark == nullptr) (new InvalidMark(field))->show();
  if (!invalid) delete mark;
  const auto why = !invalid ? QString() : reason.isEmpty() ? QString::fromLatin1(kDescription) : reason;
  if (field.accessibleDescription() == why) return;
  field.setAccessibleDescription(why);
  field.setToolTip(why);
}

bool InvalidMark::eventFilter(QObject* field, QEvent* event) {
  if (event->type() == QEvent::Resize) setGeometry(static_cast<QWidget*>(field)->rect());
  return false;
}

void InvalidMark::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(QPen(MarkColor(palette()), kThickness));
  painter.drawRect(rect().adjusted(1, 1, -1, -1));
  // More than a colour: a corner that a right value has not.
  const int corner = height() / 3;
  painter.setBrush(painter.pen().color());
  painter.drawPolygon(QPolygon({{width() - corner, 0}, {width(), 0}, {width(), corner}}));
}

}  // namespace desktop
