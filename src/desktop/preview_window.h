#pragma once

#include <QDialog>

#include "desktop/busy_guard.h"
#include "desktop/preview_pages.h"
#include "desktop/qt_event_queue.h"
#include "platform/print_component.h"

class QAction;
class QLabel;
class QLineEdit;
class QToolBar;

namespace desktop {

/// A letter's pages on the screen, modal to the whole application and above every open form. It does not
/// block the code that opened it. What is printed or saved while the workspace waits for a reply is printed
/// or saved when the reply is there: its record would take that reply's place.
class PreviewDialog : public QDialog {
 public:
  /// `events` and `guard` outlive the window.
  PreviewDialog(platform::PreviewContent content, QtEventQueue& events, BusyGuard& guard, QWidget* parent);
  ~PreviewDialog() override;

  /// The reader has closed the window.
  std::function<void()> closed;

  PreviewPages& pages() { return *pages_; }

  void done(int result) override;

 private:
  QToolBar* MakeToolbar();
  QAction* Add(QToolBar& bar, const char* caption, const QList<QKeySequence>& keys,
               std::function<void()> work);
  void AddSearch(QToolBar& bar);
  void RunWhenIdle(const std::function<void()>& work);
  void RunWaiting();
  /// Replies are held back while the letter is printed or saved, which may destroy this window.
  void RunHeld(const std::function<void()>& work);
  void ShowPageNumber();
  void ShowFinds();

  const platform::PreviewContent content_;
  QtEventQueue& events_;
  BusyGuard& guard_;
  std::function<void()> waiting_;  // until the guard is idle
  platform::Connection idle_;
  PreviewPages* pages_;
  QLabel* page_number_;
  QLabel* finds_;
  QLineEdit* search_;
};

}  // namespace desktop
