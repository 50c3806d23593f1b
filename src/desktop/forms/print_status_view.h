#pragma once

#include <QWidget>

#include "tracking/frm_print_status.h"

namespace desktop {

/// How far a print run has come. Esc ends the run, as the button does.
class PrintStatusView : public QWidget {
 public:
  /// `form` outlives the view.
  explicit PrintStatusView(tracking::frmPrintStatus& form, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  tracking::frmPrintStatus& form_;
};

}  // namespace desktop
