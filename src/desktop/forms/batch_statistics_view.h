#pragma once

#include <QWidget>

#include "tracking/frm_batch_stat.h"

namespace desktop {

/// "Batch Statistics": the run's figures, a picture of its letters by type, the same in numbers.
class BatchStatisticsView : public QWidget {
 public:
  /// `form` outlives the view.
  explicit BatchStatisticsView(tracking::frmBatchStat& form, QWidget* parent = nullptr);
};

}  // namespace desktop
