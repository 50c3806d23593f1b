#include "composition/paragraph_choice.h"

#include <utility>

#include "composition/bookmark_name.h"
#include "composition/node_state.h"
#include "composition/paragraph_marks.h"
#include "platform/text.h"

namespace composition {

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

void ParagraphChoice::Add(const std::string& description, const std::string& name) {
  rows_->Append({description, 0, name});
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
    } else if (rows_->Text(kName) == kFreeText) {
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
  if (flag && platform::UpperCase(name).find("PARA_") == std::string::npos) unchosen_.insert(name);
  const auto element = root.FirstByTagName(name);
  if (!element) return;  // a bookmark that no field fills: there is nothing to mark
  ZEMLO_NodeState state;
  platform::While("reading the field \"" + name + "\" of a paragraph", [&] { state.InitFromNode(element); });
  state.SetIsUserUnSelected(flag);
  state.SaveState(element);
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
      platform::While("marking the paragraph \"" + name + "\"",
                      [&] { MarkParagraph(root.FirstByTagName(name), !IsTicked(row) || name == kFreeText); });
    }
  });
}

void ParagraphChoice::ReplaceParagraph(platform::XmlElement root) const {
  using platform::Failure;
  Trap(services_, "frmLetter.ReplaceParagraph", [&] {
    if (platform::Trim(free_text_).empty()) return;
    for (std::size_t row = 0; row < rows_->RecordCount(); ++row) {
      if (!IsTicked(row) || rows_->Text(row, kName) != kFreeText) continue;
      auto element = root.FirstByTagName(kFreeText);
      if (!element) {
        throw Failure(Failure::Kind::kNotFound,
                      "The letter has no field \"" + std::string(kFreeText) + "\" to write the text into.");
      }
      platform::While("writing the text of " + std::string(kFreeText),
                      [&] { element.SetText(free_text_ + std::string(kAfterFreeText)); });
    }
  });
}

}  // namespace composition
