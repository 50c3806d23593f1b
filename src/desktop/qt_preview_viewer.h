#pragma once

#include <memory>

#include <QWidget>

#include "desktop/qt_event_queue.h"
#include "platform/print_component.h"

namespace desktop {

/// Opens previews. Both references outlive the windows.
class QtPreviewViewer : public platform::PreviewViewer {
 public:
  /// Windows belong to `parent`, the main window, never to a form: a form may close below its preview.
  QtPreviewViewer(QtEventQueue& events, QWidget& parent) : events_(events), parent_(parent) {}

  std::unique_ptr<platform::PreviewWindow> Open(platform::PreviewContent content) override;

 private:
  QtEventQueue& events_;
  QWidget& parent_;
};

}  // namespace desktop
