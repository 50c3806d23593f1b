#pragma once

#include <functional>

#include <QHeaderView>

#include "desktop/binders/grid_model.h"

namespace desktop {

/// Column headings with a line of group headings above them, each over the columns of its group that stand
/// together. Headings can be chosen, sized and moved.
class GridHeader : public QHeaderView {
 public:
  GridHeader(const GridModel& model, QWidget* parent);

  QSize sizeHint() const override;

  /// The user chooses a heading; a group heading is none.
  std::function<void(int section)> chosen;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void paintSection(QPainter* painter, const QRect& rect, int section) const override;

 private:
  bool HasGroups() const;
  int GroupHeight() const;
  QRect GroupRect(const QRect& rect, int section) const;
  void PaintGroup(QPainter& painter, const QRect& rect, const QString& caption) const;

  const GridModel& model_;
  bool pressed_on_heading_ = false;
};

}  // namespace desktop
