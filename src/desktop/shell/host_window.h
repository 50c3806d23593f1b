#pragma once

#include <functional>
#include <map>
#include <string>

#include <QMainWindow>

#include "desktop/shell/notice_bar.h"

class QAction;
class QLabel;
class QVBoxLayout;

namespace desktop {

/// The host's main window: its toolbar, its status bar, and the document in between.
class HostWindow : public QMainWindow, public NoticePlace {
 public:
  explicit HostWindow(const QString& caption);

  /// Puts the document between toolbar and status bar. The window owns the widget.
  void ShowDocument(QWidget* document);
  /// Whether a notice stays when the user goes on to something else.
  enum class Stays { kNo, kYes };
  /// A line above the document.
  void ShowNotice(const QString& text) override { ShowNotice(text, Stays::kNo); }
  void ShowNotice(const QString& text, Stays stays);
  /// Takes the line away, unless it is one that stays.
  void DropNotice();
  /// Work goes on behind the window, or none does any more.
  void ShowWork(bool is_under_way);
  /// The user has dismissed the line.
  std::function<void()> notice_dismissed;

  /// Takes the reason beside the text before away.
  void ShowStatus(const QString& text);
  /// Shows a sentence beside the status text.
  void ShowReason(const QString& text);
  /// `index` is the host's number of the button; a number the host does not have is ignored.
  void EnableToolbarButton(int index, bool enabled);
  QAction* ToolbarButton(int index) const;

  /// The user presses a host button.
  std::function<void(int index)> toolbar_pressed;
  /// Asked when the user closes the window; false keeps it open.
  std::function<bool()> may_close;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void AddToolbar();
  void AddWork();

  std::map<int, QAction*> buttons_;
  QLabel* status_;
  QLabel* reason_;
  QVBoxLayout* content_;
  QWidget* notice_ = nullptr;
  Stays notice_stays_ = Stays::kNo;
  QWidget* work_;
};

}  // namespace desktop
