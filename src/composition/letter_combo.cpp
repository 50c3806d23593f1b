#include "composition/letter_combo.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

#include "composition/pick_list_source.h"
#include "platform/failure.h"
#include "platform/text.h"

namespace composition {
namespace {

using platform::Failure;
using platform::RecordSet;

constexpr std::string_view kName = "ZEMLO_CodesCombo.";
constexpr std::string_view kCodeColumn = "CD_TBL_CD";
constexpr std::string_view kDescriptionColumn = "CD_TBL_DES";

constexpr std::uint32_t kCodeNotInList = 0x8004'03E9;  // application error number
constexpr char32_t kBackspace = 8;
// Decision [pick-list-length].
constexpr std::size_t kMostTypedCharacters = 30;
constexpr std::size_t kFormTypeDescriptionLength = 30;

std::shared_ptr<RecordSet> FormTypeRows(platform::Utilities& utilities, std::string_view types) {
  auto rows = std::make_shared<RecordSet>(
      std::vector<std::string>{std::string(kCodeColumn), std::string(kDescriptionColumn)});
  rows->Append({"", ""});
  while (!types.empty()) {
    const std::string type(platform::FirstCharacters(types, 1));
    const auto description = utilities.GetCodeDescription("REFDOCTYP", type);
    rows->Append({type, platform::FirstCharacters(description, kFormTypeDescriptionLength)});
    types.remove_prefix(type.size());
  }
  return rows;
}

}  // namespace

/// Runs what a member does and reports its failure under the member's name. Returns whether it ran to its
/// end.
template <typename Work>
bool ZEMLO_LetterCombo::Member(std::string_view name, Work&& work) const {
  return platform::Trap(services_, std::string(kName).append(name), std::forward<Work>(work));
}

ZEMLO_LetterCombo::ZEMLO_LetterCombo(const platform::Services& services, std::string code_type)
    : services_(services),
      connection_text_(services.settings.ProviderString() + "Persist Security Info=False;" +
                       "Data Source=" + services.settings.LocalDatabasePath()),
      code_type_(std::move(code_type)) {}

std::string ZEMLO_LetterCombo::Code() {
  std::string code;
  Member("Code", [&] {
    if (read_failed_ || !CheckRecordSource()) return;  // asked at every key, it would report at every key
    rows()->MoveFirst();
    const auto row =
        rows()->Find(kDescriptionColumn, RecordSet::Match::kEquals, platform::Trim(shown_text()));
    if (!row) return;
    rows()->MoveTo(*row);
    code = platform::Trim(rows()->Text(kCodeColumn));
  });
  return code;
}

void ZEMLO_LetterCombo::Code(std::string_view code) {
  const auto wanted = platform::UpperCase(code);
  Member("Property Let Code = " + wanted, [&] {
    const bool has_rows = CheckRecordSource();
    if (platform::Trim(wanted).empty()) {
      Clear();
    } else if (has_rows && !ShowRowWhere(kCodeColumn, wanted)) {
      throw Failure(Failure::Kind::kNotFound, services_.errors.ErrorText(kCodeNotInList));
    }
  });
}

std::string ZEMLO_LetterCombo::DescriptionOf(std::string_view code) {
  std::string description;
  Member("DescriptionOf", [&] {
    if (platform::Trim(code).empty() || !CheckRecordSource()) return;
    const auto row = rows()->Find(kCodeColumn, RecordSet::Match::kEquals, platform::Trim(code));
    if (row) description = rows()->Text(*row, kDescriptionColumn);
  });
  return description;
}

void ZEMLO_LetterCombo::Description(std::string_view description) {
  Member("Description = " + std::string(description), [&] {
    if (description.empty()) {
      Clear();
    } else if (CheckRecordSource() && !ShowRowWhere(kDescriptionColumn, description)) {
      throw Failure(Failure::Kind::kNotFound, "Invalid CD_TBL_DES for CodeType: " + code_type_);
    }
  });
}

void ZEMLO_LetterCombo::Clear() {
  Member("Clear", [&] {
    text_is_rows_ = true;
    SetShownText("");
  });
}

void ZEMLO_LetterCombo::ShowError() {
  Member("ShowError", [&] { SetMarkedInvalid(true); });
}

void ZEMLO_LetterCombo::ClearError() {
  Member("ClearError", [&] { SetMarkedInvalid(false); });
}

std::int16_t ZEMLO_LetterCombo::Length() const {
  constexpr std::size_t kMost = std::numeric_limits<std::int16_t>::max();
  return static_cast<std::int16_t>(std::min(platform::CharacterCount(shown_text()), kMost));
}

void ZEMLO_LetterCombo::SetText(std::string text) {
  Member("SetText", [&] {
    text_is_rows_ = false;
    SetShownText(std::move(text));
  });
}

void ZEMLO_LetterCombo::BackColor(std::uint32_t color) {
  Member("BackColor", [&] { SetColors(color, fore_color()); });
}

void ZEMLO_LetterCombo::ForeColor(std::uint32_t color) {
  Member("ForeColor", [&] { SetColors(back_color(), color); });
}

std::string ZEMLO_LetterCombo::AdditionalInfo() const {
  std::string info;
  Member("AdditionalInfo", [&] { info = CurrentRowText("ADTL_INFO_TXT"); });
  return info;
}

void ZEMLO_LetterCombo::Enable(bool enable) {
  Member("Enable", [&] { SetEnabled(enable); });
}

void ZEMLO_LetterCombo::LookupFormType(std::string_view types) {
  Member("LookupFormType", [&] {
    CheckRecordSource();
    if (types.empty()) return;
    SetRows(FormTypeRows(services_.utilities, types));
    source_set_ = true;
    read_failed_ = false;
  });
}

std::string ZEMLO_LetterCombo::OnlineInd() {
  std::string indicator;
  Member("OnlineInd", [&] {
    if (CheckRecordSource()) indicator = CurrentRowText("LTR_IND");
  });
  return indicator;
}

std::string ZEMLO_LetterCombo::DescriptionColumn() const {
  return std::string(kDescriptionColumn);
}

void ZEMLO_LetterCombo::UserOpens() {
  CheckRecordSource();
}

bool ZEMLO_LetterCombo::UserTypes(char32_t key, std::size_t selected) {
  const bool taken =
      key == kBackspace || platform::CharacterCount(shown_text()) < kMostTypedCharacters + selected;
  Member("mCboCodes_KeyPress", [&] {
    if (!taken) services_.host.Beep();
    CheckRecordSource();
  });
  return taken;
}

void ZEMLO_LetterCombo::UserEditsText(std::string text) {
  Member("mCboCodes_KeyPress", [&] {
    CheckRecordSource();
    // A description that was picked may be longer, and stays so while it is edited.
    const auto most = std::max(kMostTypedCharacters, platform::CharacterCount(shown_text()));
    const auto taken = platform::FirstCharacters(text, most);
    const bool cut = taken.size() < text.size();
    text_is_rows_ = false;
    SetShownText(std::string(taken));
    if (!cut) return;
    services_.host.Beep();
    ContentChanged();  // what the view shows is not what was taken
  });
}

void ZEMLO_LetterCombo::UserPicks(std::size_t row) {
  Member("Change", [&] {
    if (!CheckRecordSource() || row >= rows()->RecordCount()) return;
    ShowRow(row);
    Change();
  });
}

void ZEMLO_LetterCombo::UserLeaves() {
  Member("mCboCodes_LostFocus", [&] {
    if (!rows() || platform::Trim(shown_text()).empty()) return Left();
    rows()->MoveFirst();
    const auto row = rows()->Find(kDescriptionColumn, RecordSet::Match::kLike, shown_text() + "%");
    SetColors(kInputBackground, kBlack);
    SetMarkedInvalid(false);
    if (!row) return Left();
    const bool newly_picked = !text_is_rows_;
    ShowRow(*row);
    if (newly_picked) return Change();
    Left();
  });
}

/// Returns whether the list has rows to look into. Where reading them failed, the next use tries again, but
/// not the mere question for the code.
bool ZEMLO_LetterCombo::CheckRecordSource() {
  if (source_set_) return true;
  source_set_ = Member("CheckRecordSource", [&] {
    SetRows(services_.reference.Select(PickListStatement(code_type_, services_.settings.Region())));
  });
  read_failed_ = !source_set_;
  return source_set_;
}

/// Returns whether there is such a row; the first row is current where there is none.
bool ZEMLO_LetterCombo::ShowRowWhere(std::string_view column, std::string_view text) {
  rows()->MoveFirst();
  const auto row = rows()->Find(column, RecordSet::Match::kEquals, text);
  if (row) ShowRow(*row);
  return row.has_value();
}

void ZEMLO_LetterCombo::ShowRow(std::size_t row) {
  rows()->MoveTo(row);
  text_is_rows_ = true;
  SetShownText(rows()->Text(kDescriptionColumn));
}

std::string ZEMLO_LetterCombo::CurrentRowText(std::string_view column) const {
  if (shown_text().empty()) return "";
  if (!rows()) throw Failure(Failure::Kind::kNotFound, "The list \"" + code_type_ + "\" has no rows yet.");
  return rows()->Text(column);
}

}  // namespace composition
