#include "desktop/preview/qt_preview_viewer.h"

#include <utility>

#include <QPointer>

#include "desktop/preview/preview_window.h"

namespace desktop {
namespace {

/// Keeps an open preview; destroying it closes the window without a word to the reader's side.
class OpenPreview : public QObject, public platform::PreviewWindow {
 public:
  OpenPreview(platform::PreviewContent content, QtEventQueue& events, BusyGuard& guard, QWidget& parent)
      : closed_(content.closed), dialog_(new PreviewDialog(std::move(content), events, guard, &parent)) {
    dialog_->closed = [this] {
      // From the event loop, and only while somebody keeps this object.
      QMetaObject::invokeMethod(
          this, [this] { TellClosed(); }, Qt::QueuedConnection);
    };
    dialog_->show();
    dialog_->raise();
    dialog_->activateWindow();
  }
  ~OpenPreview() override {
    if (!dialog_) return;
    dialog_->closed = nullptr;
    dialog_->hide();
    dialog_->deleteLater();  // it may be one of its own buttons that led here
  }

 private:
  void TellClosed() {
    if (const auto closed = std::exchange(closed_, nullptr)) closed();
  }

  std::function<void()> closed_;
  QPointer<PreviewDialog> dialog_;
};

}  // namespace

std::unique_ptr<platform::PreviewWindow> QtPreviewViewer::Open(platform::PreviewContent content) {
  return std::make_unique<OpenPreview>(std::move(content), events_, guard_, parent_);
}

}  // namespace desktop
