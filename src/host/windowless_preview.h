#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/event_loop.h"
#include "platform/parties/print_component.h"

namespace host {

/// "Sees" a preview without a window: prints it, saves it or just closes it, as told beforehand.
class WindowlessPreview : public platform::PreviewViewer {
 public:
  enum class Wish { kClose, kPrint, kSave };

  WindowlessPreview(EventLoop& loop, Wish wish) : loop_(loop), wish_(wish) {}

  /// For the previews that open from here on.
  void SetWish(Wish wish) { wish_ = wish; }

  std::unique_ptr<platform::PreviewWindow> Open(platform::PreviewContent content) override;

  /// Whether a preview is open, or was opened at all.
  bool is_open() const { return open_windows_ > 0; }
  int opened() const { return opened_; }

 private:
  class Window;

  EventLoop& loop_;
  Wish wish_;
  int open_windows_ = 0;
  int opened_ = 0;
};

/// Remembers where letters went, for the program's last lines.
class PrintOutcome : public platform::PrintObserver {
 public:
  void LetterPrinted(const std::string& destination) override { printed.push_back(destination); }
  void LetterSaved(const std::filesystem::path& file) override { saved.push_back(file.string()); }
  void LayoutUnderWay(bool) override {}
  void BookmarksNotFilled(const std::string&, const std::vector<std::string>& names) override {
    not_filled = names;
  }

  std::vector<std::string> printed;
  std::vector<std::string> saved;
  std::vector<std::string> not_filled;  ///< of the last letter
};

}  // namespace host
