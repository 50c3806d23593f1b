#pragma once

#include <QString>
#include <QWidget>
#include <vector>

#include "tracking/frm_batch_stat.h"

namespace desktop {

/// A run's letters by type as bars, split into those that succeeded, failed, and are outstanding (not
/// processed yet). The parts differ in their patterns and carry their numbers, so that they are told apart
/// without colour. The context menu copies the picture and saves it.
class StatisticsPicture : public QWidget {
 public:
  /// `form`, from whose list the picture is drawn, outlives it.
  explicit StatisticsPicture(tracking::frmBatchStat& form, QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  struct Bar {
    QString name;
    int parts[3];  ///< succeeded, failed, outstanding

    int Total() const { return parts[0] + parts[1] + parts[2]; }
  };

  void Read();
  void Paint(QPainter& painter, const QSize& size) const;
  void PaintBar(QPainter& painter, const Bar& bar, const QRect& line, double width_of_one) const;
  void PaintPart(QPainter& painter, int part, const QRect& box, int count) const;
  void PaintLegend(QPainter& painter, const QRect& line) const;
  QPixmap Picture() const;
  void Save();
  int LineHeight() const { return fontMetrics().height() * 8 / 5; }

  platform::Grid& statistics_;
  std::vector<Bar> bars_;
  platform::Connection changed_;
};

}  // namespace desktop
