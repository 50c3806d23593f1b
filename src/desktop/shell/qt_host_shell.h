#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <typeindex>
#include <vector>

#include "desktop/shell/busy_guard.h"
#include "desktop/shell/host_window.h"
#include "desktop/shell/qt_event_queue.h"
#include "platform/controls/form.h"
#include "platform/parties/host_shell.h"
#include "platform/parties/status_display.h"
#include "platform/parties/view_settings.h"

namespace desktop {

class FormDialog;

/// The host as a window: what the workspace asks of the screen. User-interface thread only.
///
/// While the hourglass shows, a box is open, a letter is laid out, or the workspace is not ready, the
/// document takes no command (see BusyGuard).
class QtHostShell : public platform::HostShell, public platform::StatusDisplay {
 public:
  /// `events` and `remembered` outlive the shell; null remembers nothing.
  explicit QtHostShell(QtEventQueue& events, platform::ViewSettings* remembered = nullptr);
  ~QtHostShell() override;

  HostWindow& window() { return window_; }
  /// Busy while the document takes no command.
  BusyGuard& guard() { return guard_; }

  /// Registers who shows forms of one type; the view is a new widget, which the form's window takes.
  template <typename FormType>
  void ShowFormsWith(std::function<QWidget*(FormType& form)> make_view) {
    makers_[typeid(FormType)] = [make_view](platform::Form& form) {
      return make_view(static_cast<FormType&>(form));
    };
  }

  std::string Caption() const override;
  std::string Tag() const override;
  void SetMousePointer(platform::MousePointer pointer) override;
  platform::MessageAnswer ShowMessage(const platform::Message& message) override;
  /// Throws Failure kNotFound for a form nobody was registered for.
  void ShowModal(platform::Form& form) override;
  void Show(platform::Form& form) override;
  void RunPendingEvents() override;
  void Beep() override;
  std::string ClipboardText() override;
  /// Proposes the folder of the last save. Asks before the file that will be written, its ending included,
  /// takes the place of another one; No leads back to the choice.
  std::optional<std::string> AskSaveFile(const std::string& suggested_name) override;
  /// Printer and sides are remembered; copies and pages belong to the letters they were chosen for.
  std::optional<platform::PrintChoice> AskPrint(const platform::PrintQuestion& question) override;

  /// Shows a sentence above the document and, where a form or a preview stands in front, above that too.
  void ShowNotice(const QString& text);

  /// Returns when `done` holds. The window is painted meanwhile; replies, keys and clicks wait.
  void WaitUntil(const std::function<bool()>& done);

  /// A preview is being laid out, or no more: the page waits for it, so that it opens over what it was asked
  /// of.
  void LayoutUnderWay(bool is_under_way);

  void ShowStatus(std::string_view text) override;
  void CommandBegins() override { window_.DropNotice(); }
  void ShowReason(std::string_view text) override;
  void SetReady(bool ready) override;
  void EnableToolbarButton(int button_index, bool enabled, std::string_view host_tag) override;
  /// False while the workspace waits for a letter's data.
  bool ready() const { return ready_; }

 private:
  using ViewMaker = std::function<QWidget*(platform::Form& form)>;
  class BoxScope;
  class WorkScope;

  std::unique_ptr<FormDialog> MakeDialog(platform::Form& form);
  QWidget* Front();
  QString SaveFolder() const;
  bool MayReplace(const QString& file);
  platform::PrintChoice Remembered(const platform::PrintQuestion& question) const;
  void Remember(const platform::PrintChoice& choice);
  void ShowPointer();
  void TellGuard();

  QtEventQueue& events_;
  platform::ViewSettings* const remembered_;
  HostWindow window_;
  BusyGuard guard_{window_};
  std::map<std::type_index, ViewMaker> makers_;
  std::vector<std::unique_ptr<FormDialog>> modeless_;
  platform::MousePointer pointer_ = platform::MousePointer::kNormal;  // as the workspace wants it
  bool shows_hourglass_ = false;
  bool ready_ = true;
  int open_boxes_ = 0;
  int under_work_ = 0;  // things that keep the user, boxes among them
  bool layout_under_way_ = false;
};

}  // namespace desktop
