#include "composition/paragraph_choice.h"

#include <utility>

#include "composition/bookmark_name.h"
#include "composition/node_state.h"
#include "composition/paragraph_marks.h"
#include "platform/agreed/field_names.h"
#include "platform/text.h"

namespace composition {

using platform::kFreeTextParagraph;
using platform::Trap;

namespace {

constexpr const char* kNoCaption = " ";

// A paragraph of its own, and a blank one after it.
constexpr std::string_view kAfterFreeText = "||\r\n||";

}  // namespace

ParagraphChoice::ParagraphChoice(const platform::Services& services, platform::EntryGrid& grid,
                                 platform::TextBox& text)
    : services_(services),
      grid_(grid),
      text_(text),
      template_(services),
      rows_(std::make_shared<platform::RecordSet>(std::vector<std::string>{kDescription, kTick, kName})),
      cell_changed_(grid.CellChanged.Connect([this] { sdgGrid_Change(); })),
      row_changed_(grid.CurrentChanged.Connect([this] { sdgGrid_Change(); })),
      left_(text.LostFocus.Connect([this] { TxtParagraph_LostFocus(); })) {
  grid_.columns = {{kDescription, "Bookmark Name", "", false, "", ""},
                   {kTick, kNoCaption, "", false, "", ""},
                   {kName, "Para_Name", "", /*hidden=*/true, "", ""}};
  grid_.entry_key = kTick;
  grid_.entry = platform::EntryGrid::Entry::kTick;
  text_.SetReadOnly(true);
}

void ParagraphChoice::Begin(std::string file_name) {
  file_name_ = std::move(file_name);
  free_text_.clear();
}

void ParagraphChoice::Add(const std::string& description, const std::string& name, const std::string& group) {
  rows_->Append({description, 0, name});
  groups_.push_back(group);
}

bool ParagraphChoice::Offer(const KeptEntries& kept) {
  bool is_offered = false;
  for (std::size_t row = 0; row < rows_->RecordCount(); ++row) {
    const auto name = rows_->Text(row, kName);
    if (name == kFreeTextParagraph && !kept.free_text.empty()) {
      free_text_ = kept.free_text;
      is_offered = true;
    }
    if (!kept.ticked.contains(name)) continue;
    rows_->Set(row, kTick, 1);
    is_offered = true;
  }
  return is_offered;
}

void ParagraphChoice::AddTo(KeptEntries& kept) const {
  kept.free_text = editing_free_text_ ? text_.text() : free_text_;
  for (std::size_t row = 0; row < rows_->RecordCount(); ++row) {
    if (IsTicked(row)) kept.ticked.insert(rows_->Text(row, kName));
  }
}

void ParagraphChoice::Show() {
  grid_.Bind(rows_);
  sdgGrid_Change();
}

void ParagraphChoice::GetParagraphBookmark() {
  is_unreadable_ = !Trap(services_, "frmLetter.GetParagraphBookmark", [&] { template_.Load(file_name_); });
}

// One that could not be read was reported; it is tried again once the form has let it go.
void ParagraphChoice::RequireTemplate() {
  if (!template_.loaded() && !is_unreadable_) GetParagraphBookmark();
}

void ParagraphChoice::sdgGrid_Change() {
  Trap(services_, "frmLetter.sdgGrid_Change", [&] {
    TxtParagraph_LostFocus();  // a host may tick without taking the keyboard away from the text
    editing_free_text_ = false;
    const auto row = rows_->CurrentRow();
    if (!row || !IsTicked(*row)) {
      text_.SetText("");
    } else if (rows_->Text(kName) == kFreeTextParagraph) {
      text_.SetText(free_text_);
      editing_free_text_ = true;
    } else {
      GetParagraphText();
    }
    text_.SetReadOnly(!editing_free_text_);
  });
}

void ParagraphChoice::GetParagraphText() {
  Trap(services_, "frmLetter.GetParagraphText", [&] {
    text_.SetText("");
    RequireTemplate();
    const auto* paragraph = template_.Find(rows_->Text(kName));
    if (paragraph != nullptr)
      text_.SetText(platform::ReplaceAll(paragraph->Text, "\r", platform::kLineBreak));
  });
}

void ParagraphChoice::TxtParagraph_LostFocus() {
  Trap(services_, "frmLetter.TxtParagraph_LostFocus", [&] {
    if (editing_free_text_) free_text_ = text_.text();
  });
}

void ParagraphChoice::GetUnCheckedParaBookMark(platform::XmlElement root) {
  Trap(services_, "frmLetter.GetUnCheckedParaBookMark", [&] {
    unchosen_.clear();
    std::vector<std::string> unticked;
    std::vector<std::string> ticked;
    for (std::size_t row = 0; row < rows_->RecordCount(); ++row) {
      (IsTicked(row) ? ticked : unticked).push_back(rows_->Text(row, kName));
    }
    SetState(unticked, true, root);
    SetState(ticked, false, root);
  });
}

void ParagraphChoice::SetState(const std::vector<std::string>& names, bool flag, platform::XmlElement root) {
  Trap(services_, "frmLetter.SetState", [&] {
    RequireTemplate();
    for (const auto& name : names) {
      for (const auto& paragraph : template_.all()) {
        if (paragraph.Name != name) continue;
        for (const auto& inner : paragraph.Inner) SetInnerState(inner, flag, root);
      }
    }
  });
}

// What may stay empty is decided here. The mark itself is not kept: it is written for whole paragraphs, on
// confirmation, because a field that stands in one may stand elsewhere in the letter too.
void ParagraphChoice::SetInnerState(const std::string& name, bool flag, platform::XmlElement root) {
  if (CheckDoubleUnderScore(name)) return;
  if (flag && !platform::IsParagraphField(platform::UpperCase(name))) unchosen_.insert(name);
  const auto element = root.FirstByTagName(name);
  if (!element) return;  // a bookmark that no field fills: there is nothing to mark
  ZEMLO_NodeState state;
  platform::While("reading the field \"" + name + "\" of a paragraph", [&] { state.InitFromNode(element); });
  state.SetIsUserUnSelected(flag);
  state.SaveState(element);
}

bool ParagraphChoice::IsChosen(std::size_t row) const {
  return IsTicked(row) && (rows_->Text(row, kName) != kFreeTextParagraph || !platform::IsBlank(free_text_));
}

std::vector<MissingEntry> ParagraphChoice::GetMissingParagraphs() {
  std::vector<MissingEntry> missing;
  Trap(services_, "frmLetter.GetMissingParagraphs", [&] {
    std::set<std::string> chosen = {""};  // of no group
    for (std::size_t row = 0; row < rows_->RecordCount(); ++row) {
      if (IsChosen(row)) chosen.insert(groups_[row]);
    }
    for (std::size_t first = 0; first < rows_->RecordCount(); ++first) {
      if (!chosen.insert(groups_[first]).second) continue;
      if (missing.empty()) grid_.MoveTo(WhereToChoose(first));
      missing.push_back(GroupFrom(first));
    }
  });
  return missing;
}

/// Of the group that begins in this row: the free text that is ticked and blank, else its first paragraph.
std::size_t ParagraphChoice::WhereToChoose(std::size_t first) const {
  for (std::size_t row = first; row < rows_->RecordCount(); ++row) {
    if (groups_[row] == groups_[first] && IsTicked(row)) return row;
  }
  return first;
}

/// The group that begins in this row, as it is asked for.
MissingEntry ParagraphChoice::GroupFrom(std::size_t first) const {
  MissingEntry group{.description = "At least one of:", .names = {}, .is_paragraph = true};
  for (std::size_t row = first; row < rows_->RecordCount(); ++row) {
    if (groups_[row] != groups_[first]) continue;
    group.description += (group.names.empty() ? " " : ", ") + rows_->Text(row, kDescription);
    group.names.push_back(rows_->Text(row, kName));
  }
  return group;
}

bool ParagraphChoice::CheckParaBookMark(const std::string& name) {
  bool is_unchosen = false;
  Trap(services_, "frmLetter.CheckParaBookMark", [&] { is_unchosen = unchosen_.contains(name); });
  return is_unchosen;
}

void ParagraphChoice::SaveParagraphMarks(platform::XmlElement root) const {
  Trap(services_, "frmLetter.SaveParagraphMarks", [&] {
    for (std::size_t row = 0; row < rows_->RecordCount(); ++row) {
      const auto name = rows_->Text(row, kName);
      platform::While("marking the paragraph \"" + name + "\"", [&] {
        MarkParagraph(root.FirstByTagName(name), !IsTicked(row) || name == kFreeTextParagraph);
      });
    }
  });
}

void ParagraphChoice::ReplaceParagraph(platform::XmlElement root) const {
  using platform::Failure;
  Trap(services_, "frmLetter.ReplaceParagraph", [&] {
    if (platform::IsBlank(free_text_)) return;
    for (std::size_t row = 0; row < rows_->RecordCount(); ++row) {
      if (!IsTicked(row) || rows_->Text(row, kName) != kFreeTextParagraph) continue;
      auto element = root.FirstByTagName(kFreeTextParagraph);
      if (!element) {
        throw Failure(
            Failure::Kind::kNotFound,
            "The letter has no field \"" + std::string(kFreeTextParagraph) + "\" to write the text into.");
      }
      platform::While("writing the text of " + std::string(kFreeTextParagraph),
                      [&] { element.SetText(free_text_ + std::string(kAfterFreeText)); });
    }
  });
}

}  // namespace composition
