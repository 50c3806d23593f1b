#pragma once

#include <QComboBox>
#include <QListView>

#include "desktop/binders/pick_list_model.h"
#include "platform/controls/pick_list.h"

namespace desktop {

/// A text field with a list below it. It looks like the host's own drop-down field; the list is one of its
/// own, so that thousands of entries open at once.
///
/// Typing opens the list with the entries that hold every typed word. Enter takes the entry that begins with
/// the text, or the only one offered; the arrows go on in the list. Decision [typed-words].
class PickListField : public QComboBox {
 public:
  explicit PickListField(QWidget* parent = nullptr);
  ~PickListField() override;

  /// Once; the control outlives the field. The accessible name comes before.
  void SetControl(platform::PickList& list);

  void showPopup() override;
  void hidePopup() override;
  bool IsOpen() const { return view_->isVisible(); }
  QListView& view() { return *view_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  bool PopupEvent(QEvent* event);
  void PressOutside(const QMouseEvent& press);
  /// Whether the key is no matter of the text any more.
  bool TakesKey(QKeyEvent* event);
  void Pick(const QModelIndex& index);
  void Leave();
  void ShowContent();
  void ShowColors();
  void MoveToMatch();
  void OfferMatches();
  /// Whether the open list takes the key, however it came.
  bool ListTakesKey(QKeyEvent* event);
  void TypeKey(QKeyEvent* event);
  void PlacePopup();
  void TakeRows();

  platform::PickList* list_ = nullptr;
  platform::Connection content_changed_;
  platform::Connection look_changed_;
  PickListModel model_;
  QListView* view_ = nullptr;
};

void Bind(platform::PickList& list, PickListField& field);

}  // namespace desktop
