#pragma once

#include <QPushButton>
#include <QWidget>

#include "customers/select_cust_form_inq.h"
#include "desktop/binders/grid_view.h"
#include "desktop/forms/cust_select_view.h"

namespace desktop {

/// "Select Account". When the accounts of a customer come, the keyboard goes to their list, once, where the
/// user has done nothing else since he chose the customer; Enter on one is "OK". The form outlives the view.
class AccountDialogView : public QWidget {
 public:
  explicit AccountDialogView(customers::ZEMLO_SelectCustFormInq& form, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void LayOut();
  void MoveKeyboardToAccounts();

  customers::ZEMLO_SelectCustFormInq& form_;
  CustSelectView* select_;
  GridView* accounts_;
  QPushButton* ok_;
  QPushButton* cancel_;
  bool awaits_accounts_ = false;  // of the customer just chosen
  platform::Connection customer_chosen_;
  platform::Connection typed_;
  platform::Connection accounts_changed_;
};

}  // namespace desktop
