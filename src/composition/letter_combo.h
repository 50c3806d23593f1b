#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/controls/pick_list.h"
#include "platform/parties/services.h"

namespace composition {

/// The pick list for letter types, codes of a code table and form types: shows descriptions, is read and
/// written by code. Its reports call it "ZEMLO_CodesCombo".
///
/// It reads its rows from the reference database when it is first used, and never again. Its current row is
/// the one last chosen or looked up. No operation fails: what goes wrong is reported under the member's name,
/// and the list keeps its state. Descriptions and codes are found without regard to case.
class ZEMLO_LetterCombo : public platform::PickList {
 public:
  /// `code_type` as in PickListStatement. `services` outlives the list.
  ZEMLO_LetterCombo(const platform::Services& services, std::string code_type);

  /// The code whose description is shown, without blanks around it; "" where nothing or no row's text is
  /// shown.
  std::string Code();
  /// Shows the description of a code. "" and blanks empty the text; a code that is not in the list is
  /// reported and leaves the text.
  void Code(std::string_view code);

  const std::string& CodeType() const { return code_type_; }
  /// Without effect on the rows once the list was used.
  void CodeType(std::string code_type) { code_type_ = std::move(code_type); }

  std::string Description() const { return shown_text(); }
  /// The description that goes with a code, whatever is shown; "" where the list has none.
  std::string DescriptionOf(std::string_view code);
  /// Shows the row of that description. One that is not in the list is reported and leaves the text.
  void Description(std::string_view description);

  void Clear();
  void ShowError();
  void ClearError();
  /// Number of characters shown.
  std::int16_t Length() const;
  std::string GetText() const { return shown_text(); }
  /// Shows the text as it is, without looking it up.
  void SetText(std::string text);

  std::uint32_t BackColor() const { return back_color(); }
  void BackColor(std::uint32_t color);
  std::uint32_t ForeColor() const { return fore_color(); }
  void ForeColor(std::uint32_t color);

  /// ADTL_INFO_TXT of the current row; "" where nothing is shown.
  std::string AdditionalInfo() const;
  bool Enable() const { return enabled(); }
  void Enable(bool enable);
  /// Fills the list with a blank row and the form types of these one-character codes, in their order,
  /// described by code table "REFDOCTYP". An empty text changes nothing.
  void LookupFormType(std::string_view types);
  /// LTR_IND of the current row, the letter's online indicator; "" where nothing is shown.
  std::string OnlineInd();

  /// How the reference database of this list is reached. Decision [no-data-source].
  const std::string& connection_text() const { return connection_text_; }

  // What the user does. Opening fills the list and leaves the text alone.
  std::string DescriptionColumn() const override;
  void UserOpens() override;
  /// Refuses, with a beep, what would follow 30 characters; backspace is always taken.
  bool UserTypes(char32_t key, std::size_t selected = 0) override;
  /// A text that was put in at once is cut, with a beep, where typing would have ended.
  void UserEditsText(std::string text) override;
  void UserPicks(std::size_t row) override;
  /// Completes the text to the first description that starts with it, and takes away the error colours.
  void UserLeaves() override;

 private:
  template <typename Work>
  bool Member(std::string_view name, Work&& work) const;
  bool CheckRecordSource();
  bool ShowRowWhere(std::string_view column, std::string_view text);
  void ShowRow(std::size_t row);
  std::string CurrentRowText(std::string_view column) const;

  // Constant after construction.
  const platform::Services& services_;
  const std::string connection_text_;

  std::string code_type_;
  bool source_set_ = false;
  bool read_failed_ = false;
  bool text_is_rows_ = true;  // the shown text was taken from a row, or is none
};

}  // namespace composition
