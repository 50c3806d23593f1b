#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/parties/print_choice.h"

namespace platform {

class Form;

enum class MousePointer { kNormal, kHourglass };
enum class MessageIcon { kNone, kInformation, kExclamation, kQuestion, kCritical };
enum class MessageButtons { kOk, kYesNo, kYesNoCancel };
enum class MessageAnswer { kOk, kYes, kNo, kCancel };

/// What a question is about, for a host that was told its answer before it was asked.
enum class MessageTopic { kAnything, kUnfilledLetter };

/// A modal message box, written down.
struct Message {
  std::string text;
  MessageIcon icon = MessageIcon::kNone;
  std::string title;
  MessageButtons buttons = MessageButtons::kOk;
  MessageAnswer default_answer = MessageAnswer::kOk;
  MessageTopic topic = MessageTopic::kAnything;
};

/// The window the workspace lives in. User-interface thread only.
class HostShell {
 public:
  virtual ~HostShell() = default;

  virtual std::string Caption() const = 0;
  virtual std::string Tag() const = 0;
  virtual void SetMousePointer(MousePointer pointer) = 0;
  /// Modal; replies are held back until it is answered.
  virtual MessageAnswer ShowMessage(const Message& message) = 0;
  /// Shows the form and returns when it has been closed. Replies are let in meanwhile.
  virtual void ShowModal(Form& form) = 0;
  /// Shows the form and returns at once.
  virtual void Show(Form& form) = 0;
  /// Lets the window events that are waiting run once.
  virtual void RunPendingEvents() = 0;
  virtual void Beep() = 0;
  /// What the clipboard holds as text; "" where it holds none, and in a host without one.
  virtual std::string ClipboardText() = 0;
  /// Asks where to save; nothing when the user cancels. `suggested_name` ends in ".docx" or ".pdf".
  virtual std::optional<std::string> AskSaveFile(const std::string& suggested_name) = 0;
  /// Asks where and how letters are printed; nothing when the user cancels. A host that remembers what was
  /// chosen last prefers it to what the question proposes.
  virtual std::optional<PrintChoice> AskPrint(const PrintQuestion& question) = 0;
};

/// Runs work on the user-interface thread.
class EventQueue {
 public:
  virtual ~EventQueue() = default;
  /// From any thread. The work runs later, from the event loop, in the order posted, never inside this call.
  virtual void Post(std::function<void()> work) = 0;
};

}  // namespace platform
