#pragma once

#include <QPushButton>
#include <QWidget>

#include "customers/frm_cust_select.h"
#include "desktop/forms/cust_select_view.h"

namespace desktop {

/// "Select Customer". Enter on the customer who is chosen is "OK", Esc in an empty line "Cancel". The form
/// outlives the view.
class CustomerDialogView : public QWidget {
 public:
  explicit CustomerDialogView(customers::frmCustSelect& form, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  CustSelectView* select_;
  QPushButton* ok_;
  QPushButton* cancel_;
};

}  // namespace desktop
