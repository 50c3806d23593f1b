#pragma once

#include <QDialog>
#include <QPointer>

#include "desktop/preview/preview_pages.h"
#include "desktop/shell/busy_guard.h"
#include "desktop/shell/notice_bar.h"
#include "desktop/shell/qt_event_queue.h"
#include "platform/parties/print_component.h"

class QAction;
class QLabel;
class QLineEdit;
class QToolBar;
class QVBoxLayout;

namespace desktop {

/// A letter's pages on the screen, modal to the whole application and above every open form. It does not
/// block the code that opened it. What is printed or saved while the workspace waits for a reply is printed
/// or saved when the reply is there: its record would take that reply's place. Decision [print-waits].
class PreviewDialog : public QDialog, public NoticePlace {
 public:
  /// `events` and `guard` outlive the window.
  PreviewDialog(platform::PreviewContent content, QtEventQueue& events, BusyGuard& guard, QWidget* parent);
  ~PreviewDialog() override;

  /// The reader has closed the window.
  std::function<void()> closed;

  PreviewPages& pages() { return *pages_; }
  /// A line above the pages, until something else is tried.
  void ShowNotice(const QString& text) override;

  void done(int result) override;

 protected:
  /// Gives the keyboard back to what is below, however the window went.
  void hideEvent(QHideEvent* event) override;

 private:
  QToolBar* MakeToolbar();
  /// Says above the pages which places still show a placeholder, where there are any.
  void AddWarning();
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
  QVBoxLayout* layout_;
  QPointer<NoticeBar> notice_;
  PreviewPages* pages_;
  QLabel* page_number_;
  QLabel* finds_;
  QLineEdit* search_;
};

}  // namespace desktop
