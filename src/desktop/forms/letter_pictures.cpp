#include "desktop/forms/letter_pictures.h"

#include <array>
#include <string_view>

#include <QPainter>
#include <QPolygonF>

#include "composition/frm_batch.h"

namespace desktop {
namespace {

using composition::frmBatch;

constexpr int kSide = 16;
constexpr auto kScales = std::to_array({1, 2, 3});  // pixels of the screen for one of ours

void DrawTick(QPainter& painter) {
  painter.setBrush(QColor(0x2E, 0x7D, 0x32));
  painter.drawEllipse(QRectF(1, 1, 14, 14));
  painter.setPen(QPen(Qt::white, 2));
  painter.drawPolyline(QPolygonF({{4.5, 8.5}, {7, 11}, {11.5, 5.5}}));
}

void DrawCross(QPainter& painter) {
  painter.setBrush(QColor(0xC6, 0x28, 0x28));
  painter.drawRoundedRect(QRectF(1, 1, 14, 14), 2, 2);
  painter.setPen(QPen(Qt::white, 2));
  painter.drawLine(QPointF(5, 5), QPointF(11, 11));
  painter.drawLine(QPointF(11, 5), QPointF(5, 11));
}

void DrawTriangle(QPainter& painter) {
  painter.setBrush(QColor(0xF9, 0xA8, 0x25));
  painter.drawPolygon(QPolygonF({{1, 3}, {15, 3}, {8, 14.5}}));
  painter.setPen(QPen(Qt::black, 1.6));
  painter.drawLine(QPointF(8, 4.5), QPointF(8, 8.5));
  painter.drawPoint(QPointF(8, 11));
}

struct Picture {
  std::string_view key;
  void (*draw)(QPainter& painter);
};
constexpr auto kPictures = std::to_array<Picture>({
    {frmBatch::kCorrect, DrawTick},
    {frmBatch::kErrorInChild, DrawTriangle},
    {frmBatch::kError, DrawCross},
});

QPixmap Drawn(const Picture& picture, int scale) {
  QPixmap pixmap(kSide * scale, kSide * scale);
  pixmap.setDevicePixelRatio(scale);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(Qt::white, 1));  // sets the picture off from a dark or selected row
  picture.draw(painter);
  return pixmap;
}

}  // namespace

QIcon LetterPicture(const std::string& key) {
  QIcon icon;
  for (const auto& picture : kPictures) {
    if (picture.key != key) continue;
    for (const int scale : kScales) {
      const auto pixmap = Drawn(picture, scale);
      icon.addPixmap(pixmap);
      icon.addPixmap(pixmap, QIcon::Selected);  // a selected row leaves the picture its colours
    }
  }
  return icon;
}

}  // namespace desktop
