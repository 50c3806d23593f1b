#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "host/event_loop.h"
#include "platform/parties/host_shell.h"
#include "platform/parties/status_display.h"

namespace host {

/// The host without a window: messages go to two streams, questions are answered from the command line.
///
/// Information is written and work goes on. An exclamation or critical box makes the command a refused one.
/// A Yes/No question is answered Yes where the user said so beforehand, else with its default. A letter with
/// placeholders that may not go out makes the command a refused one, too.
///
/// What may be why the work is not done goes to `reasons`, everything else to `notices`: information,
/// questions that were answered Yes, and until AskingBegins everything but critical boxes.
class WindowlessShell : public platform::HostShell, public platform::StatusDisplay {
 public:
  struct Answers {
    bool yes = false;                      ///< to every question but the next one
    bool allow_unfilled = false;           ///< to whether a letter with placeholders goes out
    std::optional<std::string> save_file;  ///< where AskSaveFile saves; nothing cancels
    std::optional<std::string> printer;    ///< what AskPrint takes; nothing takes what is proposed
  };
  /// Answers one kind of form: returns whether it knew the form. It works the form's controls and closes it.
  using FormAnswerer = std::function<bool(platform::Form& form)>;

  /// Where messages are written. Both streams outlive the shell and may be one.
  struct Streams {
    std::ostream& reasons;
    std::ostream& notices;
  };
  WindowlessShell(EventLoop& loop, Streams streams, Answers answers)
      : loop_(loop), streams_(streams), answers_(std::move(answers)) {}

  /// Whether a box has refused what was asked for.
  bool refused() const { return refused_ || warned_; }
  /// The program has started. The exclamation boxes so far were about something else than what will be asked
  /// for.
  void AskingBegins() {
    warned_ = false;
    is_starting_ = false;
  }
  /// Where AskSaveFile saves from here on.
  void SaveTo(std::string file) { answers_.save_file = std::move(file); }
  void AnswerFormsWith(FormAnswerer answerer) { form_answerers_.push_back(std::move(answerer)); }
  /// Told every status text that differs from the one before.
  std::function<void(const std::string& text)> status_listener;

  std::string Caption() const override { return "Correspondence"; }
  std::string Tag() const override { return "zemlo-letters"; }
  void SetMousePointer(platform::MousePointer) override {}
  platform::MessageAnswer ShowMessage(const platform::Message& message) override;
  /// A form nobody answers is closed as its close box would: that is cancelling it.
  void ShowModal(platform::Form& form) override;
  void Show(platform::Form& form) override;
  void RunPendingEvents() override {}
  void Beep() override {}
  std::string ClipboardText() override { return ""; }
  std::optional<std::string> AskSaveFile(const std::string& suggested_name) override;
  std::optional<platform::PrintChoice> AskPrint(const platform::PrintQuestion& question) override;

  void CommandBegins() override {}
  void ShowStatus(std::string_view text) override;
  /// A reason is written like an exclamation: it belongs to one.
  void ShowReason(std::string_view text) override;
  void SetReady(bool ready) override { ready_ = ready; }
  void EnableToolbarButton(int, bool, std::string_view) override {}
  /// False while the workspace waits for a letter's data.
  bool ready() const { return ready_; }

 private:
  std::ostream& StreamFor(platform::MessageIcon icon) const;
  void Write(std::ostream& stream, std::string_view text) const;

  EventLoop& loop_;
  const Streams streams_;
  Answers answers_;
  std::vector<FormAnswerer> form_answerers_;
  std::string status_;
  bool ready_ = true;
  bool is_starting_ = true;
  bool warned_ = false;   // by an exclamation box
  bool refused_ = false;  // by a critical one
};

}  // namespace host
