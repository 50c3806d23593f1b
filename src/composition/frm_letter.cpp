#include "composition/frm_letter.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "composition/bookmark_name.h"
#include "composition/node_state.h"
#include "composition/unreadable_message.h"
#include "platform/agreed/field_attributes.h"
#include "platform/text.h"

namespace composition {

using platform::Trap;

namespace {

namespace field_attribute = platform::field_attribute;

// A letter without paragraphs may leave this one out: not every sheriff has a second address line.
constexpr std::string_view kMayBeEmpty = "U_SHERIFFADDR2";

}  // namespace

frmLetter::frmLetter(const platform::Services& services, std::string message_title)
    : Form("Letter Bookmark"),
      services_(services),
      message_title_(std::move(message_title)),
      user_bookmarks_(services, sdgUserBookmark),
      paragraphs_(services, sdgGrid, txtParagraph),
      doc_end_(paragraphs_.DocEnd().Connect([this] { ClearForm(); })),
      ok_clicked_(cmdOK.Click.Connect([this] { cmdOK_click(); })),
      cancel_clicked_(cmdCancel.Click.Connect([this] { cmdCancel_click(); })) {}

void frmLetter::OnLoad() {
  Trap(services_, "frmLetter.Load", [&] {
    paragraphs_.Begin(FileName);
    ReadBookMarkInput();
    OfferEntries();
    user_bookmarks_.Show();
    paragraphs_.Show();
    sdgGrid.SetVisible(has_paragraphs_);
    txtParagraph.SetVisible(has_paragraphs_);
    cmdOK.SetEnabled(is_read_);
  });
  services_.host.SetMousePointer(platform::MousePointer::kNormal);
  services_.status.ShowStatus("Ready");
}

void frmLetter::ReadBookMarkInput() {
  context_ = std::move(platform::XmlDocument::Parse(BookMarkInput).document);
  is_read_ = false;
  if (context_) {
    is_read_ = GetBookMarkCollection(context_->Root());
  } else {
    ReportUnreadable(services_, BookMarkInput, "frmLetter.load", "frmLetter.Load");
  }
}

void frmLetter::OfferEntries() {
  const bool has_values = user_bookmarks_.Offer(Offered);
  const bool has_choices = paragraphs_.Offer(Offered);
  if (has_values || has_choices)
    offered_notice.SetCaption("What was entered for this letter before is filled in again. Check it.");
}

KeptEntries frmLetter::Entries() const {
  KeptEntries entries;
  user_bookmarks_.AddTo(entries);
  paragraphs_.AddTo(entries);
  return entries;
}

bool frmLetter::GetBookMarkCollection(platform::XmlElement root) {
  return Trap(services_, "frmLetter.GetBookMarkCollection", [&] {
    ZEMLO_NodeState state;
    state.InitFromNode(root);
    has_paragraphs_ = state.IsParaType();
    if (has_paragraphs_) paragraphs_.GetParagraphBookmark();
    for (const auto& field : root.Children()) AddBookmark(field);
  });
}

void frmLetter::AddBookmark(const platform::XmlElement& field) {
  ZEMLO_NodeState state;
  state.InitFromNode(field);
  const bool is_paragraph = state.IsParaType() && state.IsCanDisplay();
  if (state.IsInput() || !(state.IsUserType() || is_paragraph)) return;
  auto name = field.Name();
  auto description = field.Attribute(field_attribute::kDescription).value_or("");
  if (description.empty()) description = name;
  XmlEscapeDecode(name);
  XmlEscapeDecode(description);
  if (state.IsUserType()) {
    user_bookmarks_.Add(description, name);
  } else {
    paragraphs_.Add(description, name, field.Attribute(field_attribute::kGroup).value_or(""));
  }
}

void frmLetter::cmdOK_click() {
  RunHandler([this] {
    Trap(services_, "frmLetter.cmdOK_click", [&] {
      if (!context_) return;
      paragraphs_.TxtParagraph_LostFocus();  // not every button takes the keyboard away from the text
      if (ValidateBookMark()) {
        PrintPreview();
      } else {
        TellMissingValues();
      }
    });
  });
}

bool frmLetter::ValidateBookMark() {
  missing_.clear();
  Trap(services_, "frmLetter.ValidateBookMark", [&] {
    if (has_paragraphs_) paragraphs_.GetUnCheckedParaBookMark(context_->Root());
    missing_ = user_bookmarks_.GetEmptySingleBookMark([this](const std::string& name) {
      return has_paragraphs_ ? paragraphs_.CheckParaBookMark(name) : platform::Trim(name) == kMayBeEmpty;
    });
    if (has_paragraphs_) std::ranges::move(paragraphs_.GetMissingParagraphs(), std::back_inserter(missing_));
  });
  return missing_.empty();
}

void frmLetter::TellMissingValues() {
  const std::string line_break(platform::kLineBreak);
  auto text = "Enter following bookmark value(s):" + line_break;
  for (const auto& entry : missing_) text += entry.description + line_break;
  services_.host.ShowMessage({text, platform::MessageIcon::kExclamation, message_title_});
}

void frmLetter::PrintPreview() {
  services_.status.ShowStatus("Prepare Print Preview");
  services_.host.SetMousePointer(platform::MousePointer::kHourglass);
  const auto root = context_->Root();
  user_bookmarks_.ReplaceUserBK(root);
  if (has_paragraphs_) paragraphs_.SaveParagraphMarks(root);
  paragraphs_.ReplaceParagraph(root);
  XMLBookMark = root.Xml();
  ClearForm();
  auto& preview = Preview();
  preview.BadAddress = false;
  preview.ProposedName = ProposedName;
  preview.PreviewDoc(FileName, TemplateName, XMLBookMark);
}

ZEMLO_PreviewDoc& frmLetter::Preview() {
  if (!preview_) {
    preview_ = std::make_unique<ZEMLO_PreviewDoc>(services_);
    word_printed_ = preview_->WordPrinted.Connect([this] { DocPrinted = true; });
    close_wanted_ = preview_->CloseLetterForm.Connect([this] { Close(); });
  }
  return *preview_;
}

void frmLetter::cmdCancel_click() {
  RunHandler([this] {
    Trap(services_, "frmLetter.cmdCancel_click", [&] {
      XMLBookMark.clear();
      ClearForm();
      DocPrinted = false;
      Close();
    });
  });
}

void frmLetter::ClearForm() {
  Trap(services_, "frmLetter.ClearForm", [&] { paragraphs_.Release(); });
}

// Decision [clear-form].
void frmLetter::OnUnload() {
  ClearForm();
  word_printed_.Disconnect();
  close_wanted_.Disconnect();
  preview_.reset();
}

}  // namespace composition
