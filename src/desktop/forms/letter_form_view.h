#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QWidget>

#include "composition/frm_letter.h"
#include "desktop/binders/entry_grid_view.h"

namespace desktop {

/// The form in which a letter is completed: the values above, the paragraphs and their wording below, where
/// the letter has any. Esc cancels. The form outlives the view.
class LetterFormView : public QWidget {
 public:
  explicit LetterFormView(composition::frmLetter& form, QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void LayOut();
  void ShowParagraphs();
  void ShowOffer();
  /// To the first value or paragraph that is missing, where the user was told of any.
  void MoveKeyboardAfterConfirming();

  composition::frmLetter& form_;
  QLabel* offer_;
  EntryGridView* values_;
  EntryGridView* paragraphs_;
  QPlainTextEdit* text_;
  QGroupBox* paragraph_box_;
  QPushButton* preview_;
  QPushButton* cancel_;
  platform::Connection paragraphs_changed_;
  platform::Connection confirmed_;
};

}  // namespace desktop
