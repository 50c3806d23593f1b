#pragma once

#include "desktop/host_window.h"
#include "platform/print_component.h"

namespace desktop {

/// Tells in the window where letters went.
class PrintNotices : public platform::PrintObserver {
 public:
  /// `window` outlives this.
  explicit PrintNotices(HostWindow& window) : window_(window) {}

  void LetterPrinted(const std::string& destination) override;
  void LetterSaved(const std::filesystem::path& file) override;
  void LayoutUnderWay(bool is_under_way) override { window_.ShowWork(is_under_way); }
  void BookmarksNotFilled(const std::string& document, const std::vector<std::string>& names) override;

 private:
  HostWindow& window_;
};

}  // namespace desktop
