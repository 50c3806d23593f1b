#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/event.h"
#include "platform/parties/services.h"

namespace composition {

/// The bookmarks of a letter's template, read from the document itself, which stays open meanwhile.
///
/// User-interface thread only. Load and Release throw what the print component throws.
class TemplateBookmarks {
 public:
  /// `services` outlives the object.
  explicit TemplateBookmarks(const platform::Services& services) : services_(services) {}

  bool loaded() const { return loaded_; }
  /// Opens the document where it is not open, and reads its bookmarks. A document that cannot be opened
  /// throws Failure kUnavailable.
  void Load(const std::string& file_name);
  /// In the document's order; none where nothing is loaded.
  const std::vector<platform::DocumentBookmark>& all() const { return bookmarks_; }
  /// The first of that name; null where there is none. Good until the next Load or Release.
  const platform::DocumentBookmark* Find(std::string_view name) const;

  /// Forgets the bookmarks and closes the document.
  void Release();

  /// The document was closed by somebody else.
  platform::Event<> DocEnd;

 private:
  void Open(const std::string& file_name);

  const platform::Services& services_;
  std::shared_ptr<platform::PrintDocument> document_;
  std::shared_ptr<platform::PrintNotify> notify_;
  platform::Connection doc_end_;
  std::vector<platform::DocumentBookmark> bookmarks_;
  bool loaded_ = false;
};

}  // namespace composition
