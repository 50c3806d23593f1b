#pragma once

#include <functional>

#include <QLineEdit>
#include <QTableView>
#include <QTimer>
#include <QWidget>

#include "customers/cust_select.h"
#include "desktop/forms/customer_rows_model.h"

namespace desktop {

/// The customer select control: the line that is typed into, the customers found below it, the one chosen.
///
/// The keyboard stays in the line: arrows and page keys move in the list, Enter chooses, Esc takes the text
/// back; what the control has no use for goes on to the dialog. The control outlives the view.
class CustSelectView : public QWidget {
 public:
  /// How long the typing rests before it is searched for.
  static constexpr std::chrono::milliseconds kRest{150};

  /// So many rows of the list are seen at least, where the screen has room.
  CustSelectView(customers::ZEMLO_CustSelect& select, int rows, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  /// The keyboard into the line.
  void Begin();
  bool HasKeyboard() const { return find_->hasFocus() || list_->hasFocus(); }

  /// A row was chosen with a double click.
  std::function<void()> chosen_for_good;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void LayOut();
  void SetList(int rows);
  void ShowRows();
  void LookForEnd();
  bool TakesKey(const QKeyEvent& event);
  int RowsInSight() const;

  customers::ZEMLO_CustSelect& select_;
  QLineEdit* find_;
  QTableView* list_;
  CustomerRowsModel* model_;
  QTimer rest_;
  bool showing_ = false;  // the current row is being taken over from the control
  platform::Connection typed_;
  platform::Connection rows_changed_;
};

}  // namespace desktop
