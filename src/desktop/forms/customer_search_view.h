#pragma once

#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include "customers/customer_search.h"
#include "desktop/binders/grid_view.h"

namespace desktop {

/// The search for a customer. Enter searches, and on a row of the list chooses it, as a double click does.
/// The form outlives the view.
class CustomerSearchView : public QWidget {
 public:
  explicit CustomerSearchView(customers::frmCustSearch& form, QWidget* parent = nullptr);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void LayOut();
  /// To the customers found; back to the text where there are none.
  void MoveKeyboardAfterSearch();
  void GoOnInList();

  customers::frmCustSearch& form_;
  QLineEdit* find_;
  QPushButton* search_;
  GridView* found_;
  QPushButton* ok_;
  platform::Connection search_changed_;
  bool searching_ = false;
};

}  // namespace desktop
