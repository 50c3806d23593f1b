#include "wordprocessor/printing/print_component.h"

#include <utility>
#include <vector>

namespace wordprocessor {
namespace {

/// The holder's end of a session. Every operation keeps the session itself: the holder may drop this object
/// from inside an event.
class OfficePrintDocument : public platform::PrintDocument {
 public:
  explicit OfficePrintDocument(std::shared_ptr<PrintShop> shop)
      : session_(std::make_shared<PrintSession>(std::move(shop))) {}
  OfficePrintDocument(const OfficePrintDocument&) = delete;
  OfficePrintDocument& operator=(const OfficePrintDocument&) = delete;
  ~OfficePrintDocument() override { session_->Release(); }

  void Prepare() override { session_->Prepare(); }
  bool IsDocumentOpen(const std::string& file_name) override { return session_->IsDocumentOpen(file_name); }
  void SetTemplate(const std::string& path) override { session_->SetTemplate(path); }
  bool OpenDocument(const std::string& file_name) override {
    session_->OpenDocument(file_name);
    return true;
  }
  void SetNotify(std::shared_ptr<platform::PrintNotify> notify) override {
    session_->SetNotify(std::move(notify));
  }
  void SetNotifyEnabled(bool enabled) override { session_->SetNotifyEnabled(enabled); }
  void SetHandOver(std::shared_ptr<platform::HandOver> hand_over) override {
    session_->SetHandOver(std::move(hand_over));
  }
  void SetProposedName(const std::string& name) override { session_->SetProposedName(name); }
  std::vector<platform::DocumentBookmark> Bookmarks() override { return session_->Bookmarks(); }
  bool MergeBookmarks(const std::string& bookmark_xml) override {
    Kept()->MergeBookmarks(bookmark_xml);
    return true;
  }
  void ShowPreview() override { session_->ShowPreview(); }
  bool PrintOut(int copies, bool show_dialog) override { return Kept()->PrintOut(copies, show_dialog); }
  void EndPrint(int /*option*/) override {}
  void SaveToFile(const std::string& name, const std::string& format) override {
    Kept()->SaveToFile(name, format);
  }
  void Release(const std::string& /*template_name*/) override { Kept()->Release(); }

 private:
  std::shared_ptr<PrintSession> Kept() const { return session_; }

  const std::shared_ptr<PrintSession> session_;
};

}  // namespace

OfficePrintComponent::OfficePrintComponent(const PrintSurroundings& outside,
                                           std::filesystem::path template_folder, Printing printing)
    : shop_(new PrintShop{.outside = outside,
                          .template_folder = std::move(template_folder),
                          .choice = {.printer = std::move(printing.printer)},
                          .without_asking = printing.without_asking,
                          .templates = TemplateCache()}) {}

std::unique_ptr<platform::PrintDocument> OfficePrintComponent::NewDocument() {
  return std::make_unique<OfficePrintDocument>(shop_);
}

bool OfficePrintComponent::AskHow(std::size_t letters) {
  auto choice = shop_->Ask(letters);
  if (!choice) return false;
  shop_->choice = *std::move(choice);
  shop_->is_for_one_letter = letters == 1;
  return true;
}

}  // namespace wordprocessor
