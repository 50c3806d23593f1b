#pragma once

#include <memory>

#include <QWidget>

#include "desktop/shell/busy_guard.h"
#include "desktop/shell/qt_event_queue.h"
#include "platform/parties/print_component.h"

namespace desktop {

/// Opens previews. All references outlive the windows.
class QtPreviewViewer : public platform::PreviewViewer {
 public:
  /// Windows belong to `parent`, the main window, never to a form: a form may close below its preview.
  QtPreviewViewer(QtEventQueue& events, BusyGuard& guard, QWidget& parent)
      : events_(events), guard_(guard), parent_(parent) {}

  std::unique_ptr<platform::PreviewWindow> Open(platform::PreviewContent content) override;

 private:
  QtEventQueue& events_;
  BusyGuard& guard_;
  QWidget& parent_;
};

}  // namespace desktop
