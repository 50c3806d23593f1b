#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "composition/kept_entries.h"
#include "composition/missing_entry.h"
#include "composition/template_bookmarks.h"
#include "platform/controls/entry_grid.h"
#include "platform/controls/text_box.h"
#include "platform/parties/services.h"
#include "platform/record_set.h"
#include "platform/xml/xml.h"

namespace composition {

/// The optional paragraphs of a letter, in the grid "Paragraph Bookmark": which of them the user wants, what
/// the chosen one says, and the text that the user writes for PARA_FREE_TEXT.
///
/// No operation fails: what goes wrong is reported under the letter form's name.
class ParagraphChoice {
 public:
  /// Columns of the grid; the last one is the key of the row.
  static constexpr const char* kDescription = "Para_EngName";
  static constexpr const char* kTick = "Para_Value";
  static constexpr const char* kName = "Para_Name";

  /// Gives `grid` its columns. All outlive the object.
  ParagraphChoice(const platform::Services& services, platform::EntryGrid& grid, platform::TextBox& text);

  /// Forgets the free text; `file_name` is the letter's document from here on.
  void Begin(std::string file_name);
  /// `group`: at least one of the paragraphs with that name of a group is needed; "" where it is free.
  void Add(const std::string& description, const std::string& name, const std::string& group);
  /// The grid shows what was added, the text box what stands in its first row.
  void Show();

  /// Reads the paragraphs' wording from the letter's document, opening it where it is not open. Where that
  /// fails, no tick tries again before Release.
  void GetParagraphBookmark();
  /// The user leaves the text box: what stands there is the free text, where that is being edited.
  void TxtParagraph_LostFocus();

  /// Collects the user bookmarks that stand in unticked paragraphs: see CheckParaBookMark.
  void GetUnCheckedParaBookMark(platform::XmlElement root);
  /// The groups of which no paragraph is ticked; a free text without a word does not count. In the grid's
  /// order; the grid's cursor goes to the first one.
  std::vector<MissingEntry> GetMissingParagraphs();
  /// Ticks, and writes, what was entered before; returns whether anything was. AddTo takes the free text as
  /// it stands in the text box.
  bool Offer(const KeptEntries& kept);
  void AddTo(KeptEntries& kept) const;

  /// Whether a user bookmark stands in an unticked paragraph, by what was collected last.
  bool CheckParaBookMark(const std::string& name);
  /// Writes into the context which paragraphs the letter is to show, so that the last choice counts: unticked
  /// ones are marked and emptied, ticked ones are not, and the free text is marked to be put in.
  /// Decision [paragraph-marks].
  void SaveParagraphMarks(platform::XmlElement root) const;
  /// Writes the free text into the context where it is ticked and not blank.
  void ReplaceParagraph(platform::XmlElement root) const;

  /// Closes the letter's document. Throws what the print component throws.
  void Release() {
    is_unreadable_ = false;
    template_.Release();
  }
  /// The letter's document was closed by somebody else.
  platform::Event<>& DocEnd() { return template_.DocEnd; }

 private:
  void sdgGrid_Change();
  void GetParagraphText();
  void SetState(const std::vector<std::string>& names, bool flag, platform::XmlElement root);
  void SetInnerState(const std::string& name, bool flag, platform::XmlElement root);
  void RequireTemplate();
  bool IsTicked(std::size_t row) const { return rows_->Get(row, kTick).AsInteger() != 0; }
  /// Ticked, and with something to say.
  bool IsChosen(std::size_t row) const;
  std::size_t WhereToChoose(std::size_t first) const;
  MissingEntry GroupFrom(std::size_t first) const;

  const platform::Services& services_;
  platform::EntryGrid& grid_;
  platform::TextBox& text_;
  TemplateBookmarks template_;
  std::shared_ptr<platform::RecordSet> rows_;
  std::vector<std::string> groups_;  // by row

  std::string file_name_;
  bool is_unreadable_ = false;  // the last try to read the template has failed
  std::string free_text_;
  bool editing_free_text_ = false;  // what stands in the text box is the free text
  std::set<std::string> unchosen_;  // user bookmarks in unticked paragraphs

  platform::Connection cell_changed_;
  platform::Connection row_changed_;
  platform::Connection left_;
};

}  // namespace composition
