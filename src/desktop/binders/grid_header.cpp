#include "desktop/binders/grid_header.h"

#include <QMouseEvent>
#include <QPainter>

#include "desktop/look/qt_text.h"

namespace desktop {

GridHeader::GridHeader(const GridModel& model, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), model_(model) {
  setSectionsClickable(true);
  setSectionsMovable(true);
  connect(this, &QHeaderView::sectionClicked, this, [this](int section) {
    if (chosen && pressed_on_heading_) chosen(section);
  });
  setHighlightSections(false);
  setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  setTextElideMode(Qt::ElideRight);
}

bool GridHeader::HasGroups() const {
  for (int section = 0; section < model_.columnCount(); ++section) {
    if (!model_.column(section).group.empty()) return true;
  }
  return false;
}

int GridHeader::GroupHeight() const {
  return HasGroups() ? fontMetrics().height() + 8 : 0;
}

QSize GridHeader::sizeHint() const {
  auto size = QHeaderView::sizeHint();
  return {size.width(), size.height() + GroupHeight()};
}

void GridHeader::mousePressEvent(QMouseEvent* event) {
  pressed_on_heading_ = event->position().y() >= GroupHeight();
  QHeaderView::mousePressEvent(event);
}

void GridHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
  const int height = GroupHeight();
  QHeaderView::paintSection(painter, rect.adjusted(0, height, 0, 0), section);
  if (height == 0) return;
  // Each section paints its own part of the group heading.
  const QRect part(rect.topLeft(), QSize(rect.width(), height));
  painter->save();
  painter->setClipRect(part);
  PaintGroup(*painter, GroupRect(part, section), ToQt(model_.column(section).group));
  painter->restore();
}

QRect GridHeader::GroupRect(const QRect& rect, int section) const {
  auto whole = rect;
  const auto belongs = [&](int place) {
    const int other = logicalIndex(place);
    return isSectionHidden(other) || model_.column(other).group == model_.column(section).group;
  };
  const int place = visualIndex(section);
  for (int other = place - 1; other >= 0 && belongs(other); --other) {
    whole.setLeft(whole.left() - sectionSize(logicalIndex(other)));
  }
  for (int other = place + 1; other < count() && belongs(other); ++other) {
    whole.setRight(whole.right() + sectionSize(logicalIndex(other)));
  }
  return whole;
}

void GridHeader::PaintGroup(QPainter& painter, const QRect& rect, const QString& caption) const {
  QStyleOptionHeader option;
  initStyleOption(&option);
  option.rect = rect;
  option.section = -1;
  option.position = QStyleOptionHeader::OnlyOneSection;
  style()->drawControl(QStyle::CE_HeaderSection, &option, &painter, this);

  // The caption stays in sight while its columns are scrolled through.
  const auto seen = rect.intersected(viewport()->rect());
  painter.setPen(palette().color(QPalette::ButtonText));
  auto font = this->font();
  font.setBold(true);
  painter.setFont(font);
  painter.drawText(seen.adjusted(6, 0, -6, 0), Qt::AlignLeft | Qt::AlignVCenter, caption);
}

}  // namespace desktop
