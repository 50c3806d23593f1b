#include "composition/template_bookmarks.h"

#include <algorithm>
#include <utility>

#include "composition/common_template.h"
#include "platform/agreed/template_versions.h"
#include "platform/failure.h"

namespace composition {

void TemplateBookmarks::Load(const std::string& file_name) {
  if (!document_) document_ = services_.print.NewDocument();
  const auto document = document_;  // the member goes where the document ends meanwhile
  if (!document->IsDocumentOpen(file_name)) Open(file_name);
  bookmarks_ = document->Bookmarks();
  loaded_ = true;
}

void TemplateBookmarks::Open(const std::string& file_name) {
  using platform::Failure;
  const auto document = document_;
  document->SetTemplate(CommonTemplatePath(services_.settings));
  if (!document->OpenDocument(file_name)) {
    throw Failure(Failure::Kind::kUnavailable, "The letter's document \"" + file_name +
                                                   "\" could not be opened. Check the file and try again.");
  }
  notify_ = std::make_shared<platform::PrintNotify>();
  doc_end_ = notify_->DocEnd.Connect([this] { DocEnd(); });
  document->SetNotify(notify_);
  document->SetNotifyEnabled(true);
}

const platform::DocumentBookmark* TemplateBookmarks::Find(std::string_view name) const {
  const auto found = std::ranges::find(bookmarks_, name, &platform::DocumentBookmark::Name);
  return found == bookmarks_.end() ? nullptr : &*found;
}

void TemplateBookmarks::Release() {
  bookmarks_.clear();
  loaded_ = false;
  doc_end_.Disconnect();
  const auto notify = std::exchange(notify_, nullptr);
  // Out of the member first: a document that tells of its end while it is released finds nothing to do.
  if (const auto document = std::exchange(document_, nullptr)) document->Release(platform::kCommonTemplate);
}

}  // namespace composition
