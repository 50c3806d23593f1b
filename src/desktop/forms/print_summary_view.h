#pragma once

#include <QWidget>

#include "tracking/frm_print_summary.h"

namespace desktop {

/// The letters of a print run that failed, in a list; the reason of the selected one stands below it.
class PrintSummaryView : public QWidget {
 public:
  /// `form` outlives the view.
  explicit PrintSummaryView(tracking::frmPrintSummary& form, QWidget* parent = nullptr);
};

}  // namespace desktop
