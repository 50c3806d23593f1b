#pragma once

#include <QHeaderView>

#include "desktop/binders/grid_model.h"

namespace desktop {

/// Column headings with a line of group headings above them, each over the columns of its group.
class GridHeader : public QHeaderView {
 public:
  GridHeader(const GridModel& model, QWidget* parent);

  QSize sizeHint() const override;

 protected:
  void paintSection(QPainter* painter, const QRect& rect, int section) const override;

 private:
  bool HasGroups() const;
  int GroupHeight() const;
  QRect GroupRect(const QRect& rect, int section) const;
  void PaintGroup(QPainter& painter, const QRect& rect, const QString& caption) const;

  const GridModel& model_;
};

}  // namespace desktop
