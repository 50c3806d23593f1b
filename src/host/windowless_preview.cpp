#include "host/windowless_preview.h"

#include <utility>

namespace host {

class WindowlessPreview::Window : public platform::PreviewWindow {
 public:
  Window(WindowlessPreview& viewer, platform::PreviewContent content)
      : viewer_(viewer), content_(std::move(content)) {
    ++viewer_.open_windows_;
    ++viewer_.opened_;
  }
  ~Window() override { --viewer_.open_windows_; }

  /// What the reader does, each step from the event loop as a click would be.
  void Read() {
    if (viewer_.wish_ == Wish::kPrint) PostWhileOpen(content_.print);
    if (viewer_.wish_ == Wish::kSave) PostWhileOpen(content_.save);
    PostWhileOpen(content_.closed);
  }

 private:
  void PostWhileOpen(std::function<void()> step) {
    viewer_.loop_.Post([alive = std::weak_ptr<char>(alive_), step = std::move(step)] {
      if (!alive.expired() && step) step();
    });
  }

  WindowlessPreview& viewer_;
  platform::PreviewContent content_;
  std::shared_ptr<char> alive_ = std::make_shared<char>();
};

std::unique_ptr<platform::PreviewWindow> WindowlessPreview::Open(platform::PreviewContent content) {
  auto window = std::make_unique<Window>(*this, std::move(content));
  window->Read();
  return window;
}

}  // namespace host
