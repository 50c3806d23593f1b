#pragma once

#include <map>
#include <string_view>
#include <vector>

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

#include "customers/maintenance/cust_maint.h"

namespace desktop {

/// The dialog in which a customer is maintained: what was entered on the left, what the verification suggests
/// beside it on the right, with a mark where they differ. The form outlives the view.
class CustMaintView : public QWidget {
 public:
  explicit CustMaintView(customers::ZEMLO_CustMaint& form, QWidget* parent = nullptr);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  struct SideCaptions;
  static const SideCaptions kMailingCaptions;
  static const SideCaptions kResidentCaptions;

  void LayOut();
  QGroupBox* MakeType();
  QGroupBox* MakeCustomer();
  QGroupBox* MakeEntered(const customers::AddressSide& side, const SideCaptions& captions);
  QGroupBox* MakeSuggested(const customers::AddressSide& side, const SideCaptions& captions);
  QLineEdit* MakeText(std::size_t number, const QString& name);
  /// A caption that the form may change or hide; it leads to the field that stands in its line.
  void ShowCaption(platform::Label& label, QLabel& caption, std::vector<std::size_t> fields,
                   std::string_view mnemonics);
  void AddSuggested(QGridLayout& layout, int row, const char* caption, std::size_t number);
  void MarkDifferences();
  void SetTabs();
  void Centre();

  customers::ZEMLO_CustMaint& form_;
  std::map<const platform::Control*, QWidget*> widgets_;
  std::map<std::size_t, QLabel*> difference_marks_;  // by the number of the suggested field
  std::vector<QWidget*> after_fields_;               // in the order of the keyboard
  std::vector<platform::Connection> connections_;
};

}  // namespace desktop
