#include "desktop/preview/preview_pages.h"

#include <algorithm>

#include <QGuiApplication>
#include <QPainter>
#include <QPdfLink>
#include <QScreen>
#include <QScrollBar>

namespace desktop {
namespace {

constexpr qreal kSmallestZoom = 0.25;
constexpr qreal kLargestZoom = 5.0;
constexpr qreal kPointsPerInch = 72.0;

}  // namespace

PreviewPages::PreviewPages(QWidget* parent) : QPdfView(parent) {
  setPageMode(PageMode::MultiPage);
  setZoomMode(ZoomMode::Custom);
  setAccessibleName(QStringLiteral("Pages of the letter"));
  setDocument(&file_);
  search_.setDocument(&file_);
  connect(&search_, &QAbstractItemModel::rowsInserted, this, [this] { FindsChanged(); });
  connect(&search_, &QAbstractItemModel::modelReset, this, [this] { FindsChanged(); });
}

bool PreviewPages::Load(const QString& pdf) {
  const bool read = file_.load(pdf) == QPdfDocument::Error::None && file_.pageCount() > 0;
  FitWidth();
  return read;
}

qreal PreviewPages::PixelsPerPoint() const {
  return QGuiApplication::primaryScreen()->logicalDotsPerInch() / kPointsPerInch;
}

void PreviewPages::ZoomBy(qreal factor) {
  fits_width_ = false;
  setZoomFactor(std::clamp(zoomFactor() * factor, kSmallestZoom, kLargestZoom));
}

void PreviewPages::FitWidth() {
  fits_width_ = true;
  qreal widest = 0;
  for (int page = 0; page < file_.pageCount(); ++page)
    widest = std::max(widest, file_.pagePointSize(page).width());
  if (widest <= 0) return;
  const auto margins = documentMargins();
  const int room = viewport()->width() - margins.left() - margins.right();
  setZoomFactor(std::clamp(room / (widest * PixelsPerPoint()), kSmallestZoom, kLargestZoom));
}

void PreviewPages::resizeEvent(QResizeEvent* event) {
  QPdfView::resizeEvent(event);
  if (fits_width_) FitWidth();
}

void PreviewPages::Search(const QString& text) {
  current_find_ = -1;
  search_.setSearchString(text);
  FindsChanged();
}

int PreviewPages::finds() const {
  return search_.rowCount({});
}

void PreviewPages::FindsChanged() {
  if (current_find_ < 0 && finds() > 0) {
    current_find_ = 0;
    ShowCurrentFind();
  }
  viewport()->update();
  if (finds_changed) finds_changed();
}

void PreviewPages::GoToFind(int step) {
  if (finds() == 0) return;
  current_find_ = (current_find_ + step + finds()) % finds();
  ShowCurrentFind();
  viewport()->update();
  if (finds_changed) finds_changed();
}

void PreviewPages::ShowCurrentFind() {
  const auto find = search_.resultAtIndex(current_find_);
  if (find.rectangles().isEmpty()) return;
  const auto place = FindRect(find, find.rectangles().first());
  const auto above = viewport()->height() / 3;
  verticalScrollBar()->setValue(static_cast<int>(place.top()) - above);
}

QRectF PreviewPages::PageRect(int page) const {
  // The view lays pages out below one another, each in the middle of the widest.
  const qreal scale = PixelsPerPoint() * zoomFactor();
  const auto size_of = [&](int number) { return QSizeF((file_.pagePointSize(number) * scale).toSize()); };
  qreal top = documentMargins().top();
  qreal widest = 0;
  for (int number = 0; number < file_.pageCount(); ++number) {
    widest = std::max(widest, size_of(number).width());
    if (number < page) top += size_of(number).height() + pageSpacing();
  }
  widest += documentMargins().left() + documentMargins().right();
  const auto size = size_of(page);
  const qreal left = (std::max<qreal>(widest, viewport()->width()) - size.width()) / 2;
  return {QPointF(left, top), size};
}

QRectF PreviewPages::FindRect(const QPdfLink& find, const QRectF& rectangle) const {
  const qreal scale = PixelsPerPoint() * zoomFactor();
  const auto corner = PageRect(find.page()).topLeft() + rectangle.topLeft() * scale;
  return {corner, rectangle.size() * scale};
}

void PreviewPages::paintEvent(QPaintEvent* event) {
  QPdfView::paintEvent(event);
  if (finds() == 0) return;
  QPainter painter(viewport());
  painter.translate(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
  painter.setCompositionMode(QPainter::CompositionMode_Multiply);
  for (int index = 0; index < finds(); ++index) {
    const auto find = search_.resultAtIndex(index);
    const QColor color = index == current_find_ ? QColor(255, 160, 60) : QColor(255, 240, 120);
    for (const auto& rectangle : find.rectangles()) painter.fillRect(FindRect(find, rectangle), color);
  }
}

}  // namespace desktop
