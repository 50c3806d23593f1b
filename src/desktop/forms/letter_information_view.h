#pragma once

#include <QGridLayout>
#include <QGroupBox>
#include <QWidget>

#include "composition/frm_batch.h"
#include "desktop/binders/tree_view.h"

namespace desktop {

/// What is wrong in a letter's data, and in the diagnostic mode what the server says of each field. The form
/// outlives the view.
class LetterInformationView : public QWidget {
 public:
  explicit LetterInformationView(composition::frmBatch& form, QWidget* parent = nullptr);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void LayOut();
  /// The labels that are to be seen, one below the other.
  template <typename Lines>
  QGridLayout* Labels(const Lines& lines);
  QWidget* Problems();
  QGroupBox* BookmarkInformation();

  composition::frmBatch& form_;
  TreeView* fields_;
};

}  // namespace desktop
