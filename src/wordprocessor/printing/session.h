#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/parties/error_reporter.h"
#include "platform/parties/host_shell.h"
#include "platform/parties/print_component.h"
#include "wordprocessor/document/document.h"
#include "wordprocessor/document/template_cache.h"
#include "wordprocessor/layout/pool.h"
#include "wordprocessor/printing/pages.h"
#include "wordprocessor/printing/printers.h"

namespace wordprocessor {

/// What letters are printed with. All of it outlives the print component; `events` outlives `layout` too.
struct PrintSurroundings {
  platform::HostShell& host;
  platform::EventQueue& events;
  platform::PreviewViewer& viewer;
  platform::PrintObserver& observer;
  platform::ErrorReporter& errors;
  LayoutPool& layout;
  Printers& printers;
  /// Returns when `done` holds and keeps the window painted until then; nothing just waits.
  std::function<void(const std::function<bool()>& done)> wait = {};
};

/// What all letters of a print component share.
struct PrintShop {
  PrintSurroundings outside;
  std::filesystem::path template_folder;
  /// Where and how runs are printed. Its printer is the one that the settings name at first; "" for the
  /// default one.
  platform::PrintChoice choice;
  bool without_asking = false;  ///< as the user's settings have it
  TemplateCache templates;
  std::string tried_template = {};  ///< opened as well, wherever it lies; "" for none
  int under_way = 0;                ///< layouts of which the event loop has not told yet
  bool is_for_one_letter = false;   ///< copies and pages of `choice`
  bool has_refused = false;         ///< the printer, the last letter

  /// Asks where and how that many letters are printed; printer and sides are kept for those after them.
  /// Nothing where the user cancels.
  std::optional<platform::PrintChoice> Ask(std::size_t letters);

  void LayoutBegins() {
    if (++under_way == 1) outside.observer.LayoutUnderWay(true);
  }
  void LayoutEnds() {
    if (--under_way == 0) outside.observer.LayoutUnderWay(false);
  }
};

/// A letter from its opening to its release. It lives as long as somebody works with it, also when the holder
/// drops its print document from inside an event that this raised. User-interface thread.
class PrintSession : public std::enable_shared_from_this<PrintSession> {
 public:
  explicit PrintSession(std::shared_ptr<PrintShop> shop) : shop_(std::move(shop)) {}

  // What platform::PrintDocument says of the operation of that name.
  void Prepare() { shop_->outside.layout.WarmUp(); }
  bool IsDocumentOpen(const std::string& file_name) const;
  void SetTemplate(const std::string& path);
  void OpenDocument(const std::string& file_name);
  void SetNotify(std::shared_ptr<platform::PrintNotify> notify) { notify_ = std::move(notify); }
  void SetNotifyEnabled(bool enabled) { notify_enabled_ = enabled; }
  void SetHandOver(std::shared_ptr<platform::HandOver> hand_over) { hand_over_ = std::move(hand_over); }
  void SetProposedName(std::string name) { proposed_name_ = std::move(name); }
  std::vector<platform::DocumentBookmark> Bookmarks() { return Document().Bookmarks(); }
  void MergeBookmarks(const std::string& bookmark_xml);
  void ShowPreview();
  bool PrintOut(int copies, bool show_dialog);
  void SaveToFile(const std::string& name, const std::string& format);
  void Release();

 private:
  DocxDocument& Document();
  LetterPages& Pages();
  void LayOut();
  std::function<void()> TellPagesDone();
  void PagesDone(const std::shared_ptr<LetterPages>& pages);
  void OpenWindow(const std::shared_ptr<LetterPages>& pages);
  std::function<void()> FromWindow(void (PrintSession::*step)());
  /// Whether the letter may go out as it is; asks its holder where bookmarks are not filled.
  bool MayGoOut() const;
  std::string ProposedFile() const;
  void PrintFromWindow();
  void SaveFromWindow();
  void WindowClosed();
  void CloseWindow();
  std::filesystem::path PdfWhenDone();
  void SendToPrinter(const platform::PrintChoice& choice);
  void WriteTo(const std::string& file, const std::string& format);
  void Raise(platform::Event<> platform::PrintNotify::*event) const;

  const std::shared_ptr<PrintShop> shop_;
  std::shared_ptr<platform::PrintNotify> notify_;
  bool notify_enabled_ = false;
  std::shared_ptr<platform::HandOver> hand_over_;
  std::string proposed_name_;

  std::filesystem::path common_template_;
  std::filesystem::path file_;
  std::optional<DocxDocument> document_;
  std::vector<std::string> not_filled_;  ///< bookmarks that the merge left as they were
  std::shared_ptr<LetterPages> pages_;   ///< of the document as it is merged now; none until asked for

  bool preview_wanted_ = false;
  bool in_window_ = false;  ///< the window is calling us
  std::unique_ptr<platform::PreviewWindow> window_;
};

}  // namespace wordprocessor
