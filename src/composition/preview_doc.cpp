#include "composition/preview_doc.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

#include "composition/common_template.h"
#include "composition/noted_hand_over.h"
#include "composition/paragraph_marks.h"
#include "composition/unfilled_letter.h"
#include "platform/agreed/template_versions.h"
#include "platform/failure.h"

namespace composition {
namespace {

using platform::Failure;
using platform::Trap;

constexpr int kOneCopy = 1;
constexpr int kEndPrintOption = 1;

// The word processor needs this long before it tells of its document.
constexpr std::chrono::milliseconds kShortestWait{1500};

/// One step of a preview: what the system has no permission for is passed over, and the next step follows.
template <typename Work>
void Step(Work&& work) {
  try {
    std::forward<Work>(work)();
  } catch (const Failure& failure) {
    if (failure.kind() != Failure::Kind::kPermissionDenied) throw;
  }
}

/// The two steps that make a document the letter. A missing permission is passed over here as well, but what
/// was not merged in the end goes no further, and the first cause is what failed.
class Merging {
 public:
  template <typename Work>
  void Step(Work&& work) {
    try {
      std::forward<Work>(work)();
    } catch (const Failure& failure) {
      if (failure.kind() != Failure::Kind::kPermissionDenied) throw;
      cause_ = failure;
    }
  }
  template <typename Work>
  void LastStep(Work&& work) const {
    try {
      std::forward<Work>(work)();
    } catch (const Failure& failure) {
      throw cause_.value_or(failure);
    }
  }

 private:
  std::optional<Failure> cause_;
};

void ShowReady(const platform::Services& services) {
  services.status.ShowStatus("Ready");
  services.host.SetMousePointer(platform::MousePointer::kNormal);
}

// A letter must not leave the office half filled: a document that did not open or merge goes no further.
void OpenOrFail(platform::PrintDocument& document, const std::string& file_name) {
  if (document.OpenDocument(file_name)) return;
  throw Failure(Failure::Kind::kUnavailable, "The letter's document \"" + file_name +
                                                 "\" could not be opened. Check the file and try again.");
}

void MergeOrFail(platform::PrintDocument& document, const std::string& bookmark_text) {
  if (document.MergeBookmarks(bookmark_text)) return;
  throw Failure(Failure::Kind::kUnavailable,
                "The letter's fields could not be filled in. Check the template's bookmarks and try again.");
}

}  // namespace

ZEMLO_PreviewDoc::~ZEMLO_PreviewDoc() {
  Trap(services_, "ZEMLO_PreviewDoc.Class_Terminate", [&] { ReleaseDocument(); });
}

bool ZEMLO_PreviewDoc::PreviewDoc(const std::string& lstrFileName, const std::string& /*lstrTemplateName*/,
                                  const std::string& lstrBookMark) {
  Preview(lstrFileName, lstrBookMark);
  return false;
}

bool ZEMLO_PreviewDoc::Preview(const std::string& file_name, const std::string& bookmark_xml) {
  const auto& services = services_;  // this object may be gone when the preview returns
  bool is_shown = false;
  Trap(services, "ZEMLO_Corresp.PreviewDoc", [&] {
    const auto bookmark_text = GetBKforPrint(services, bookmark_xml);
    Step([&] { ReleaseDocument(); });
    Step([&] { document_ = services.print.NewDocument(); });
    services.status.ShowStatus("Prepare Print Preview");
    if (bookmark_text.empty()) return;
    is_shown = OpenAndPreview(file_name, bookmark_text, PreviewHandOver(bookmark_xml));
  });
  ShowReady(services);
  return is_shown;
}

bool ZEMLO_PreviewDoc::OpenAndPreview(const std::string& file_name, const std::string& bookmark_text,
                                      const std::shared_ptr<platform::HandOver>& hand_over) {
  const auto document = RequireDocument();
  bool is_open = false;
  Step([&] { document->Prepare(); });
  document->SetHandOver(hand_over);
  document->SetProposedName(ProposedName);
  Step([&] { is_open = document->IsDocumentOpen(file_name); });
  if (is_open) return false;
  Step([&] { document->SetTemplate(CommonTemplatePath(services_.settings)); });
  Merging merging;
  merging.Step([&] { OpenOrFail(*document, file_name); });
  AttachNotify();
  services_.clock.Sleep(std::max(services_.settings.PreviewDelay(), kShortestWait));
  Step([&] { document->SetNotify(notify_); });
  Step([&] { document->SetNotifyEnabled(true); });
  merging.LastStep([&] { MergeOrFail(*document, bookmark_text); });
  document->ShowPreview();
  return true;
}

bool ZEMLO_PreviewDoc::PrintDocument(const std::string& lstrFileName, const std::string& lstrBookMark,
                                     bool lBlnShowDialog) {
  bool printed = false;
  std::optional<platform::PrintFault> fault;
  const auto hand_over = PrintHandOver(lstrBookMark);
  Trap(services_, "ZEMLO_Corresp.PrintDocument", [&] {
    platform::KeepFault(fault, [&] {
      const auto bookmark_text = GetBKforPrint(services_, lstrBookMark);
      ReleaseDocument();
      document_ = services_.print.NewDocument();
      services_.status.ShowStatus("Prepare Print");
      if (bookmark_text.empty()) return;
      OpenAndPrint(lstrFileName, bookmark_text, hand_over, lBlnShowDialog, printed);
    });
  });
  if (!printed) KeepPrintFault(fault, *hand_over);
  ShowReady(services_);
  document_ = nullptr;
  return printed;
}

void ZEMLO_PreviewDoc::OpenAndPrint(const std::string& file_name, const std::string& bookmark_text,
                                    const std::shared_ptr<platform::HandOver>& hand_over, bool show_dialog,
                                    bool& printed) {
  const auto document = RequireDocument();
  document->Prepare();
  document->SetHandOver(hand_over);
  if (document->IsDocumentOpen(file_name)) return;
  OpenOrFail(*document, file_name);
  MergeOrFail(*document, bookmark_text);
  printed = document->PrintOut(kOneCopy, show_dialog);
  document->EndPrint(kEndPrintOption);
}

void ZEMLO_PreviewDoc::KeepPrintFault(const std::optional<platform::PrintFault>& fault,
                                      const NotedHandOver& hand_over) {
  print_fault_ = fault.value_or(platform::PrintFault{
      "The letter could not be prepared. The error log says why.", /*is_letters_own=*/true});
  if (hand_over.has_begun()) print_fault_.is_letters_own = false;
}

bool ZEMLO_PreviewDoc::SaveDocument(const std::string& lstrFileName, const std::string& /*lstrTemplateName*/,
                                    const std::string& lstrBookMark) {
  const auto& services = services_;  // this object may be gone when the preview, or the save, returns
  const std::weak_ptr<const bool> life = life_;
  const bool is_shown = Preview(lstrFileName, lstrBookMark);
  Trap(services, "ZEMLO_Corresp.SaveDoc", [&] {
    if (is_shown && !life.expired()) RequireDocument()->SaveToFile("", "");
  });
  ShowReady(services);
  return false;
}

std::shared_ptr<platform::HandOver> ZEMLO_PreviewDoc::PreviewHandOver(const std::string& bookmark_xml) {
  const auto ask = [&services = services_](const auto& names) { return AskToLetOut(services, names); };
  return std::make_shared<NotedHandOver>(services_, bookmark_xml,
                                         NotedHandOver::Holder{[this] { return !BadAddress; }, ask});
}

std::shared_ptr<NotedHandOver> ZEMLO_PreviewDoc::PrintHandOver(const std::string& bookmark_xml) const {
  const auto refuse = [](const auto& names) -> bool { RefuseToLetOut(names); };
  return std::make_shared<NotedHandOver>(services_, bookmark_xml,
                                         NotedHandOver::Holder{[] { return true; }, refuse});
}

void ZEMLO_PreviewDoc::AttachNotify() {
  notify_ = std::make_shared<platform::PrintNotify>();
  doc_end_ = notify_->DocEnd.Connect([this] { OnDocEnd(); });
  doc_print_ = notify_->DocPrint.Connect([this] { OnDocPrint(); });
}

void ZEMLO_PreviewDoc::OnDocEnd() {
  Trap(services_, "ZEMLO_PreviewDoc.mclsNotify_DocEnd", [&] { ReleaseDocument(); });
}

void ZEMLO_PreviewDoc::OnDocPrint() {
  const std::weak_ptr<const bool> life = life_;
  Trap(services_, "ZEMLO_PreviewDoc.Err_mclsNotify_DocPrint", [&] {
    if (!std::exchange(BadAddress, false)) WordPrinted();
    if (!life.expired()) CloseLetterForm();
  });
}

std::shared_ptr<platform::PrintDocument> ZEMLO_PreviewDoc::RequireDocument() const {
  if (document_) return document_;
  throw Failure(Failure::Kind::kUnavailable, "There is no letter open. Preview it again.");
}

void ZEMLO_PreviewDoc::ReleaseDocument() {
  doc_end_.Disconnect();
  doc_print_.Disconnect();
  notify_ = nullptr;
  // Out of the member first: a document that tells of its end while it is released finds nothing to do.
  if (const auto document = std::exchange(document_, nullptr)) document->Release(platform::kCommonTemplate);
}

}  // namespace composition
