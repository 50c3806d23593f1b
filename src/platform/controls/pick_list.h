#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

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

  /// Colours as 0x00BBGGRR, or 0x80000000 plus the number of one of the host's own colours.
  std::uint32_t back_color() const { return back_color_; }
  std::uint32_t fore_color() const { return fore_color_; }
  static constexpr std::uint32_t kInputBackground = 0x8000'0005;  ///< the host's colour behind input areas
  static constexpr std::uint32_t kBlack = 0;

  /// The rows whose description holds every word of `text`, or a word that begins or goes on with it, without
  /// regard to case and accents; all of them for a text without words.
  std::vector<std::size_t> RowsWith(std::string_view text) const;

  // The user opens the list, types one character more, picks a row, leaves the list.
  virtual void UserOpens() = 0;
  /// Returns whether the key is taken; the list beeps for a refused one. The key takes the place of so many
  /// selected characters.
  virtual bool UserTypes(char32_t key, std::size_t selected = 0) = 0;
  virtual void UserEditsText(std::string text) = 0;
  virtual void UserPicks(std::size_t row) = 0;
  virtual void UserLeaves() = 0;

  /// Raised when the user picks a row (completion on leaving the list included), not when code sets a value.
  Event<> Change;
  /// The user has left the list, and the error look it may have had is gone: what is wrong has to be found
  /// again.
  Event<> Left;
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
  void SetColors(std::uint32_t back, std::uint32_t fore) {
    Assign(back_color_, back);
    Assign(fore_color_, fore);
  }

 private:
  std::shared_ptr<RecordSet> rows_;
  std::string shown_text_;
  std::uint32_t back_color_ = kInputBackground;
  std::uint32_t fore_color_ = kBlack;
};

}  // namespace platform
