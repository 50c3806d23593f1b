#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/event.h"
#include "platform/parties/print_fault.h"
#include "platform/parties/services.h"

namespace composition {

class NotedHandOver;

/// Turns a letter's data context into a document on the screen, on paper or in a file, and tells its holder
/// when a previewed letter was printed.
///
/// Each print of which the holder hears is noted in the print journal, as the holder's letter.
///
/// Owns one print document at a time. User-interface thread only. No operation fails: what goes wrong is
/// reported, and the status bar and the mouse pointer are put back. A holder may destroy this object from
/// inside any of its events.
class ZEMLO_PreviewDoc {
 public:
  /// `services` outlives the object.
  explicit ZEMLO_PreviewDoc(const platform::Services& services) : services_(services) {}
  ZEMLO_PreviewDoc(const ZEMLO_PreviewDoc&) = delete;
  ZEMLO_PreviewDoc& operator=(const ZEMLO_PreviewDoc&) = delete;
  /// Closes a preview that still is open.
  ~ZEMLO_PreviewDoc();

  /// Merges `lstrBookMark` (XML) into the document and shows it. The preview stays until its reader closes
  /// it, the next call, or the end of this object; the call does not wait for that. What the system has no
  /// permission for on the way is passed over, but a document that was not merged is never shown. Before a
  /// letter with a bookmark that nothing filled is printed or saved from the preview, the user is asked. The
  /// template's name is taken for the caller's sake only. Answers false.
  bool PreviewDoc(const std::string& lstrFileName, const std::string& lstrTemplateName,
                  const std::string& lstrBookMark);

  /// Merges and prints without a preview. Answers whether the letter was printed: one with a bookmark that
  /// nothing filled never is, because nobody has looked at it. Raises no WordPrinted: the caller has the
  /// answer.
  bool PrintDocument(const std::string& lstrFileName, const std::string& lstrBookMark, bool lBlnShowDialog);
  /// Why the last PrintDocument did not print. From the hand-over on the fault is never the letter's own.
  const platform::PrintFault& print_fault() const { return print_fault_; }

  /// Previews as PreviewDoc does, then, where the preview stands, asks where to save. Answers false.
  bool SaveDocument(const std::string& lstrFileName, const std::string& lstrTemplateName,
                    const std::string& lstrBookMark);

  /// Set by the holder; true keeps the next print, or finished save, from being announced, and is used up by
  /// it.
  bool BadAddress = false;

  /// Set by the holder: the name, without an ending, under which a save proposes to keep the letter; ""
  /// leaves that to the print component.
  std::string ProposedName;

  /// A previewed letter was printed, or saved to a file.
  platform::Event<> WordPrinted;
  /// Follows every print, announced or not: an open form in which the letter was completed closes now.
  platform::Event<> CloseLetterForm;

 private:
  // Both answer whether the merged document is shown.
  bool Preview(const std::string& file_name, const std::string& bookmark_xml);
  bool OpenAndPreview(const std::string& file_name, const std::string& bookmark_text,
                      const std::shared_ptr<platform::HandOver>& hand_over);
  /// `printed` is told as soon as it is known: what fails afterwards does not take it back.
  void OpenAndPrint(const std::string& file_name, const std::string& bookmark_text,
                    const std::shared_ptr<platform::HandOver>& hand_over, bool show_dialog, bool& printed);
  void KeepPrintFault(const std::optional<platform::PrintFault>& fault, const NotedHandOver& hand_over);
  // Of a letter whose reader is the user, and of one that nobody sees. The first is released before this
  // object goes, and hears of no print then.
  std::shared_ptr<platform::HandOver> PreviewHandOver(const std::string& bookmark_xml);
  std::shared_ptr<NotedHandOver> PrintHandOver(const std::string& bookmark_xml) const;
  void AttachNotify();
  void OnDocEnd();
  void OnDocPrint();
  std::shared_ptr<platform::PrintDocument> RequireDocument() const;
  void ReleaseDocument();

  // Constant after construction.
  const platform::Services& services_;
  const std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);  // ends with this object

  // The current preview. Shared, because a document that is left from inside one of its own calls has to
  // outlast that call.
  std::shared_ptr<platform::PrintDocument> document_;
  std::shared_ptr<platform::PrintNotify> notify_;
  platform::Connection doc_end_;
  platform::Connection doc_print_;

  platform::PrintFault print_fault_;
};

}  // namespace composition
