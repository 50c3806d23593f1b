#pragma once

#include <optional>

#include <QDialog>

#include "platform/parties/print_choice.h"

class QComboBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace desktop {

/// Asks for printer, copies, sides and, of one letter, pages. What the chosen printer does not take is
/// disabled.
class PrintDialog : public QDialog {
 public:
  PrintDialog(const platform::PrintQuestion& question, QWidget* parent);

  /// As it stands; nothing while the pages are none.
  std::optional<platform::PrintChoice> choice() const;

 private:
  void LayOut();
  void Propose(const platform::PrintChoice& proposed);
  void ShowWhatGoes();

  const platform::PrintQuestion question_;
  QComboBox* printer_;
  QSpinBox* copies_;
  QComboBox* sides_;
  QLineEdit* pages_;
  QLabel* remark_;
  QDialogButtonBox* buttons_;
};

}  // namespace desktop
