#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "composition/kept_entries.h"
#include "composition/missing_entry.h"
#include "composition/paragraph_choice.h"
#include "composition/preview_doc.h"
#include "composition/user_bookmarks.h"
#include "platform/controls/command.h"
#include "platform/controls/entry_grid.h"
#include "platform/controls/form.h"
#include "platform/controls/label.h"
#include "platform/controls/text_box.h"
#include "platform/parties/services.h"
#include "platform/xml/xml.h"

namespace composition {

/// The form in which the user completes a letter: values that only the user knows, and which optional
/// paragraphs the letter shows.
///
/// The caller sets BookMarkInput, FileName and TemplateName, shows the form modally, and reads XMLBookMark
/// and DocPrinted when it has closed. "Print Preview" completes the context and opens the preview; the form
/// stays until the letter is printed from there, or the user cancels. Printing more than once is not
/// possible: the first print closes the form, and with it the preview. Whichever way it closes, the caller
/// may keep what was entered (Entries) and offer it to the next form for the same letter. User-interface
/// thread only; no operation fails, what goes wrong is reported.
class frmLetter : public platform::Form {
 public:
  /// `message_title` is the title of the form's message boxes. `services` outlives the form.
  frmLetter(const platform::Services& services, std::string message_title);

  std::string BookMarkInput;  ///< the letter's data context as the server sent it
  std::string FileName;       ///< the letter's template
  std::string TemplateName;
  std::string ProposedName;  ///< under which a save from the preview proposes to keep the letter
  KeptEntries Offered;       ///< what was entered for the same letter before
  std::string XMLBookMark;   ///< the completed data context; empty where the user cancelled
  bool DocPrinted = false;   ///< the letter was printed from this form's preview

  platform::EntryGrid sdgUserBookmark;  ///< "User Bookmark": columns as in UserBookmarks
  platform::EntryGrid sdgGrid;          ///< "Paragraph Bookmark": columns as in ParagraphChoice
  platform::Label offered_notice;  ///< says that what was entered before is filled in; "" where it is not
  platform::TextBox txtParagraph;  ///< the chosen paragraph's wording, or the free text
  platform::Command cmdOK{"Print Preview"};
  platform::Command cmdCancel{"Cancel Preview"};

  /// What was missing when the form was last confirmed.
  const std::vector<MissingEntry>& missing() const { return missing_; }
  /// What stands in the form now, also after it was closed in whatever way.
  KeptEntries Entries() const;

 protected:
  void OnLoad() override;
  void OnUnload() override;

 private:
  void ReadBookMarkInput();
  void OfferEntries();
  /// Returns whether every field could be read.
  bool GetBookMarkCollection(platform::XmlElement root);
  void AddBookmark(const platform::XmlElement& field);
  void cmdOK_click();
  void cmdCancel_click();
  bool ValidateBookMark();
  void TellMissingValues();
  void PrintPreview();
  ZEMLO_PreviewDoc& Preview();
  /// Closes the letter's template where it is open. Empties no field.
  void ClearForm();

  const platform::Services& services_;
  const std::string message_title_;
  UserBookmarks user_bookmarks_;
  ParagraphChoice paragraphs_;

  std::optional<platform::XmlDocument> context_;  // nothing where the input did not parse
  bool is_read_ = false;                          // the whole of it
  bool has_paragraphs_ = false;
  std::vector<MissingEntry> missing_;

  std::unique_ptr<ZEMLO_PreviewDoc> preview_;
  platform::Connection word_printed_;
  platform::Connection close_wanted_;
  platform::Connection doc_end_;
  platform::Connection ok_clicked_;
  platform::Connection cancel_clicked_;
};

}  // namespace composition
