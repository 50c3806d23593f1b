#include "wordprocessor/printing/session.h"

#include <array>
#include <string_view>
#include <utility>

#include "platform/agreed/saved_letter.h"
#include "platform/failure.h"
#include "platform/parties/trap.h"
#include "platform/text.h"
#include "platform/whole_file.h"
#include "wordprocessor/document/template_file.h"
#include "wordprocessor/printing/pdf_pages.h"

namespace wordprocessor {
namespace {

using platform::Failure;
using platform::PrintNotify;

/// By `format` ("docx", ".PDF"), or by the file's ending where that is empty.
platform::SavedAs HowToSave(const std::filesystem::path& file, const std::string& format) {
  if (const auto how = platform::SavedAsOf(format.empty() ? file.extension().string() : format)) return *how;
  throw Failure(Failure::Kind::kRefused, "A letter is saved as \".docx\" or \".pdf\"; the name \"" +
                                             file.string() + "\" is neither. Give the file another ending.");
}

/// The spooler would take the letter and print nothing of it.
void RequirePages(const std::string& ranges, const std::filesystem::path& pdf) {
  if (ranges.empty()) return;
  const auto last = std::stoul(ranges.substr(ranges.find_last_of(",-") + 1));  // they ascend
  const auto pages = CountPdfPages(pdf);
  if (last <= pages) return;
  const auto has = pages == 1 ? "one page" : std::to_string(pages) + " pages";
  throw Failure(Failure::Kind::kRefused, "The letter has " + has + ", there is no page " +
                                             std::to_string(last) +
                                             " in it. Nothing was printed; choose among its pages.");
}

/// A letter that spooler or file system are about to get. What ends before it was accepted has failed.
class HandOverScope {
 public:
  explicit HandOverScope(std::shared_ptr<platform::HandOver> told) : told_(std::move(told)) {
    if (told_) told_->Begins();
  }
  HandOverScope(const HandOverScope&) = delete;
  HandOverScope& operator=(const HandOverScope&) = delete;
  ~HandOverScope() {
    if (told_) told_->Failed();
  }
  void Accepted() {
    if (const auto told = std::exchange(told_, nullptr)) told->Accepted();
  }

 private:
  std::shared_ptr<platform::HandOver> told_;
};

}  // namespace

std::optional<platform::PrintChoice> PrintShop::Ask(std::size_t letters) {
  platform::PrintQuestion question{.printers = outside.printers.Offered(),
                                   .proposed = {.printer = choice.printer, .sides = choice.sides},
                                   .letters = letters,
                                   .with_dialog = !without_asking || has_refused};
  if (question.proposed.printer.empty()) question.proposed.printer = outside.printers.Default();
  const auto chosen = outside.host.AskPrint(question);
  if (chosen) choice = {.printer = chosen->printer, .sides = chosen->sides};
  return chosen;
}

DocxDocument& PrintSession::Document() {
  if (document_) return *document_;
  throw Failure(Failure::Kind::kRefused, "No letter is open. Open its template first.");
}

bool PrintSession::IsDocumentOpen(const std::string& file_name) const {
  if (!document_) return false;
  const auto name = platform::ReplaceAll(file_name, "\\", "/");
  return platform::EqualsIgnoringCase(std::filesystem::absolute(name).lexically_normal().string(),
                                      file_.string());
}

void PrintSession::SetTemplate(const std::string& path) {
  common_template_ = TemplateFile(shop_->template_folder, path);
}

void PrintSession::OpenDocument(const std::string& file_name) {
  const bool is_tried = !file_name.empty() && file_name == shop_->tried_template;
  const auto file =
      is_tried ? std::filesystem::path(file_name) : TemplateFile(shop_->template_folder, file_name);
  const auto common = common_template_.empty() ? CommonTemplateBeside(file) : common_template_;
  document_.emplace(shop_->templates.Open(file, common));
  file_ = file;
  not_filled_.clear();
  pages_ = nullptr;
}

void PrintSession::MergeBookmarks(const std::string& bookmark_xml) {
  const auto context = DataContext::Parse(bookmark_xml);
  not_filled_ = Document().MergeBookmarks(context);
  pages_ = nullptr;
  if (not_filled_.empty()) return;
  shop_->outside.observer.BookmarksNotFilled(file_.filename().string(), not_filled_);
}

void PrintSession::LayOut() {
  auto done = [tell = TellPagesDone(), &events = shop_->outside.events] { events.Post(tell); };
  pages_ = LetterPages::LayOut(shop_->outside.layout, file_.filename().string(), Document().Bytes(),
                               std::move(done));
  shop_->LayoutBegins();
}

/// What the event loop is to run, once, for a layout that has ended.
std::function<void()> PrintSession::TellPagesDone() {
  return [weak = weak_from_this(), shop = shop_] {
    if (const auto session = weak.lock()) session->PagesDone(session->pages_);
    shop->LayoutEnds();
  };
}

LetterPages& PrintSession::Pages() {
  if (pages_ == nullptr) LayOut();
  return *pages_;
}

void PrintSession::ShowPreview() {
  preview_wanted_ = true;
  if (pages_ == nullptr) return LayOut();
  shop_->outside.events.Post(TellPagesDone());
  shop_->LayoutBegins();
}

/// Told of every layout that ends, also of one that a merge has overtaken: only what is wanted and ready is
/// shown.
void PrintSession::PagesDone(const std::shared_ptr<LetterPages>& pages) {
  if (!preview_wanted_ || pages == nullptr || !pages->IsDone()) return;
  preview_wanted_ = false;
  const bool shown =
      platform::Trap(shop_->outside.errors, "ZEMLO_Print.ShowPreview", [&] { OpenWindow(pages); });
  if (!shown) Raise(&PrintNotify::DocEnd);
}

void PrintSession::OpenWindow(const std::shared_ptr<LetterPages>& pages) {
  CloseWindow();
  platform::PreviewContent content;
  content.pdf = pages->Pdf();
  content.title = file_.filename().string();
  content.not_filled = not_filled_;
  content.print = FromWindow(&PrintSession::PrintFromWindow);
  content.save = FromWindow(&PrintSession::SaveFromWindow);
  // The pages stay while the window stands, whatever is merged meanwhile.
  content.closed = [pages, closed = FromWindow(&PrintSession::WindowClosed)] { closed(); };
  window_ = shop_->outside.viewer.Open(std::move(content));
}

std::function<void()> PrintSession::FromWindow(void (PrintSession::*step)()) {
  return [weak = weak_from_this(), step] {
    const auto session = weak.lock();
    if (session == nullptr) return;
    const bool before = std::exchange(session->in_window_, true);
    ((*session).*step)();
    session->in_window_ = before;
  };
}

bool PrintSession::MayGoOut() const {
  return not_filled_.empty() || hand_over_ == nullptr || hand_over_->MayGoUnfilled(not_filled_);
}

void PrintSession::PrintFromWindow() {
  platform::Trap(shop_->outside.errors, "ZEMLO_Print.PrintOut", [&] {
    if (!MayGoOut()) return;
    if (const auto choice = shop_->Ask(1)) SendToPrinter(*choice);
  });
}

void PrintSession::SaveFromWindow() {
  platform::Trap(shop_->outside.errors, "ZEMLO_Print.SaveToFile", [&] { SaveToFile("", ""); });
}

void PrintSession::WindowClosed() {
  CloseWindow();
  Raise(&PrintNotify::DocEnd);
}

void PrintSession::CloseWindow() {
  std::shared_ptr<platform::PreviewWindow> window = std::move(window_);
  // A window that is calling us goes when its call has returned.
  if (window != nullptr && in_window_) shop_->outside.events.Post([window] {});
}

bool PrintSession::PrintOut(int copies, bool show_dialog) {
  if (!MayGoOut()) return false;
  Pages();  // laid out while the user chooses
  auto choice = shop_->choice;
  if (show_dialog) {
    const auto chosen = shop_->Ask(1);
    if (!chosen) return false;
    choice = *chosen;
  } else if (std::exchange(shop_->is_for_one_letter, false)) {
    shop_->choice = {.printer = choice.printer, .sides = choice.sides};
  }
  choice.copies *= copies;
  SendToPrinter(choice);
  return true;
}

/// The window may be painted meanwhile, but nobody else works with this letter.
std::filesystem::path PrintSession::PdfWhenDone() {
  Pages();
  const auto pages = pages_;
  if (const auto& wait = shop_->outside.wait) wait([&] { return pages->IsDone(); });
  return pages->Pdf();
}

void PrintSession::SendToPrinter(const platform::PrintChoice& chosen) {
  auto& printers = shop_->outside.printers;
  auto choice = chosen;
  if (choice.printer.empty()) choice.printer = printers.Default();
  const auto pdf = PdfWhenDone();
  RequirePages(choice.pages, pdf);
  HandOverScope hand_over(hand_over_);
  shop_->has_refused = true;
  const auto went_to = printers.Print(choice, pdf, file_.filename().string());
  hand_over.Accepted();
  shop_->has_refused = false;
  // Whatever fails from here on must not print it again.
  shop_->outside.observer.LetterPrinted(went_to);
  Raise(&PrintNotify::DocPrint);
}

void PrintSession::SaveToFile(const std::string& name, const std::string& format) {
  Document();
  if (!MayGoOut()) return;
  std::optional<std::string> file = name;
  if (name.empty()) file = shop_->outside.host.AskSaveFile(ProposedFile());
  if (!file || file->empty()) return;
  WriteTo(*file, format);
  shop_->outside.observer.LetterSaved(*file);
  Raise(&PrintNotify::DocPrint);
}

std::string PrintSession::ProposedFile() const {
  return (proposed_name_.empty() ? file_.stem().string() : proposed_name_) + platform::kDocumentEnding;
}

void PrintSession::WriteTo(const std::string& file, const std::string& format) {
  const auto content = HowToSave(file, format) == platform::SavedAs::kDocument
                           ? Document().Bytes()
                           : platform::ReadWholeFile(PdfWhenDone());
  HandOverScope hand_over(hand_over_);
  platform::WriteWholeFile(file, content);
  hand_over.Accepted();
}

void PrintSession::Release() {
  notify_ = nullptr;
  hand_over_ = nullptr;
  preview_wanted_ = false;
  document_.reset();
  pages_ = nullptr;
  CloseWindow();
}

/// The last thing a step does: whoever hears it may release this letter.
void PrintSession::Raise(platform::Event<> platform::PrintNotify::*event) const {
  if (const auto notify = notify_; notify != nullptr && notify_enabled_) ((*notify).*event)();
}

}  // namespace wordprocessor
