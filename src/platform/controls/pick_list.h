#pragma once

#include <memory>
#include <string>

#include "platform/controls/control.h"
#include "platform/record_set.h"

namespace platform {

/// A drop-down list over a record set, with a text field: what the view of one needs to show and work it.
///
/// The rows and what a typed text means belong to the class derived from it.
class PickList : public Control {
 public:
  /// The rows offered; null until the list was first used.
  const std::shared_ptr<RecordSet>& rows() const { return rows_; }
  /// The column of `rows` that is shown.
  virtual std::string DescriptionColumn() const = 0;

  const std::string& shown_text() const { return shown_text_; }

  // The user opens the list, types one character more, picks a row, leaves the list.
  virtual void UserOpens() = 0;
  /// Returns whether the key is taken; a refused one beeps.
  virtual bool UserTypes(char32_t key) = 0;
  virtual void UserEditsText(std::string text) = 0;
  virtual void UserPicks(std::size_t row) = 0;
  virtual void UserLeaves() = 0;

  /// Raised when the user picks a row (completion on leaving the list included), not when code sets a value.
  Event<> Change;
  /// The shown text or the rows have changed, for the view.
  Event<> ContentChanged;

 protected:
  void SetShownText(std::string text) {
    if (text == shown_text_) return;
    shown_text_ = std::move(text);
    ContentChanged();
  }
  void SetRows(std::shared_ptr<RecordSet> rows) {
    rows_ = std::move(rows);
    ContentChanged();
  }

 private:
  std::shared_ptr<RecordSet> rows_;
  std::string shown_text_;
};

}  // namespace platform
