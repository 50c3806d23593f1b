#pragma once

#include "desktop/shell/qt_host_shell.h"
#include "platform/parties/print_component.h"

namespace desktop {

/// Tells in the window, and in the form or preview in front, where letters went.
class PrintNotices : public platform::PrintObserver {
 public:
  /// `shell` outlives this.
  explicit PrintNotices(QtHostShell& shell) : shell_(shell) {}

  void LetterPrinted(const std::string& destination) override;
  void LetterSaved(const std::filesystem::path& file) override;
  void LayoutUnderWay(bool is_under_way) override { shell_.LayoutUnderWay(is_under_way); }
  void BookmarksNotFilled(const std::string& document, const std::vector<std::string>& names) override;

 private:
  QtHostShell& shell_;
};

}  // namespace desktop
