#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/event.h"

namespace platform {

/// What a print document tells its holder. Who is told may release and destroy the document meanwhile.
class PrintNotify {
 public:
  /// The previewed or printed document was closed.
  Event<> DocEnd;
  /// The document was printed (or saved: a saved letter leaves the office too).
  Event<> DocPrint;
};

/// Asked, and told, when a letter passes from the program to the spooler or the file system.
class HandOver {
 public:
  virtual ~HandOver() = default;
  /// Whether a letter may go out in which nothing has filled these bookmarks, at least one, in document
  /// order. Asked before the user is asked for a printer or a file; a failure is a No that is reported.
  virtual bool MayGoUnfilled(const std::vector<std::string>& names) = 0;
  /// The next moment they get it. A failure keeps the letter from being printed or saved.
  virtual void Begins() = 0;
  /// They have taken it: whatever fails from here on must not print it again. No failure leaves this.
  virtual void Accepted() = 0;
  /// They have not. No failure leaves this.
  virtual void Failed() = 0;
};

/// A bookmark of an open document.
struct DocumentBookmark {
  std::string Name;
  std::string Text;                ///< the text of its range; paragraphs end with a carriage return
  std::vector<std::string> Inner;  ///< bookmarks inside the range, itself included, in document order
};

/// One letter on its way from template to paper. User-interface thread only.
///
/// An operation that fails throws Failure, which names the file and says what to do; the document can then
/// only be released.
class PrintDocument {
 public:
  virtual ~PrintDocument() = default;

  virtual void Prepare() = 0;
  /// Whether this object has the file open.
  virtual bool IsDocumentOpen(const std::string& file_name) = 0;
  /// Attaches the common template; before OpenDocument.
  virtual void SetTemplate(const std::string& path) = 0;
  /// Without a set template the one beside the document is attached, where there is one.
  virtual bool OpenDocument(const std::string& file_name) = 0;
  virtual void SetNotify(std::shared_ptr<PrintNotify> notify) = 0;
  virtual void SetNotifyEnabled(bool enabled) = 0;
  /// Asked and told of every print and save of this document, before its notify object.
  virtual void SetHandOver(std::shared_ptr<HandOver> hand_over) = 0;
  /// The name, without an ending, that SaveToFile proposes to the user; "" proposes the document's own.
  virtual void SetProposedName(const std::string& name) = 0;
  /// In document order.
  virtual std::vector<DocumentBookmark> Bookmarks() = 0;
  virtual bool MergeBookmarks(const std::string& bookmark_xml) = 0;
  virtual void ShowPreview() = 0;
  /// Prints as was chosen last (PrintComponent::AskHow), `copies` times that many. A preview asks by itself.
  /// Returns whether spooler or file system accepted the letter; false when the user cancelled the dialog or
  /// would not let it go out unfilled.
  virtual bool PrintOut(int copies, bool show_dialog) = 0;
  virtual void EndPrint(int option) = 0;
  /// Asks for a file where `name` is empty; the format follows the file's ending where `format` is empty.
  /// Raises DocPrint once the file is written; a cancelled save, or one that may not go out unfilled, raises
  /// nothing.
  virtual void SaveToFile(const std::string& name, const std::string& format) = 0;
  virtual void Release(const std::string& template_name) = 0;
};

class PrintComponent {
 public:
  virtual ~PrintComponent() = default;
  virtual std::unique_ptr<PrintDocument> NewDocument() = 0;
  /// Asks the user where and how the next `letters` letters are printed, once for all of them; a user who
  /// prints without asking is not asked, but after a printer that took no letter. What was chosen holds for
  /// each PrintOut until the next question, copies and pages of one letter for the next PrintOut alone.
  /// Returns false where the user cancels.
  virtual bool AskHow(std::size_t letters) = 0;
};

/// The pages of a laid-out letter, and what the reader may do with them. The functions stay good while the
/// window is open; each reports its own failures.
struct PreviewContent {
  std::filesystem::path pdf;  ///< removed after the window has closed
  std::string title;
  std::function<void()> print;
  std::function<void()> save;
  std::function<void()> closed;  ///< called once, from the event loop, when the reader has closed the window
  std::vector<std::string> not_filled = {};  ///< bookmarks that still show the template's placeholder
};

/// An open preview; destroying it closes the window without calling `closed`.
class PreviewWindow {
 public:
  virtual ~PreviewWindow() = default;
};

/// Where the print component shows pages: a window, or a host that answers from its command line.
class PreviewViewer {
 public:
  virtual ~PreviewViewer() = default;
  virtual std::unique_ptr<PreviewWindow> Open(PreviewContent content) = 0;
};

/// Told where letters went, so that the person can be told.
class PrintObserver {
 public:
  virtual ~PrintObserver() = default;
  /// `destination` is the printed file's path, or the queue's name and job number.
  virtual void LetterPrinted(const std::string& destination) = 0;
  virtual void LetterSaved(const std::filesystem::path& file) = 0;
  /// Pages of a letter are being made, or all are there.
  virtual void LayoutUnderWay(bool is_under_way) = 0;
  /// Bookmarks that no field of the data context filled, in document order.
  virtual void BookmarksNotFilled(const std::string& document, const std::vector<std::string>& names) = 0;
};

}  // namespace platform
