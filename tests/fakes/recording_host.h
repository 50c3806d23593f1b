#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/controls/form.h"
#include "platform/parties/host_shell.h"
#include "tests/fakes/journal.h"

namespace fakes {

/// A host without a window: writes down what it shows and answers from a script.
class RecordingHost : public platform::HostShell {
 public:
  explicit RecordingHost(Journal* journal = nullptr) : journal_(journal) {}

  std::string caption = "Letters of the office";
  std::string tag = "HOST-7";
  platform::MousePointer pointer = platform::MousePointer::kNormal;
  std::vector<platform::Message> messages;
  std::deque<platform::MessageAnswer> answers;  ///< to the next questions; then the default answer
  std::vector<platform::Form*> shown_forms;     ///< forms shown, modal or not, oldest first
  /// What the user does in a form: called while it stands. Afterwards a modal form is closed if it still is
  /// shown.
  std::function<void(platform::Form&)> user_in_form;
  /// Runs while a message box stands.
  std::function<void(const platform::Message&)> user_at_message;
  std::deque<std::optional<std::string>> save_files;
  std::vector<std::string> suggested_files;              ///< what AskSaveFile was given, oldest first
  std::vector<platform::PrintQuestion> print_questions;  ///< what AskPrint was given, oldest first
  std::deque<std::optional<platform::PrintChoice>> print_choices;  ///< then what is proposed
  int beeps = 0;
  int pending_event_runs = 0;

  std::vector<std::string> MessageTexts() const {
    std::vector<std::string> texts;
    for (const auto& message : messages) texts.push_back(message.text);
    return texts;
  }

  std::string Caption() const override { return caption; }
  std::string Tag() const override { return tag; }
  void SetMousePointer(platform::MousePointer shape) override {
    pointer = shape;
    Note(shape == platform::MousePointer::kHourglass ? "pointer hourglass" : "pointer normal");
  }
  platform::MessageAnswer ShowMessage(const platform::Message& message) override {
    messages.push_back(message);
    Note("message " + message.text);
    if (user_at_message) user_at_message(message);
    return Next(answers).value_or(message.default_answer);
  }
  void ShowModal(platform::Form& form) override {
    Open(form);
    if (form.shown()) form.Close();
  }
  void Show(platform::Form& form) override { Open(form); }
  void RunPendingEvents() override {
    ++pending_event_runs;
    Note("pending events");
  }
  void Beep() override { ++beeps; }
  std::string clipboard;
  std::string ClipboardText() override { return clipboard; }
  std::optional<std::string> AskSaveFile(const std::string& suggested_name) override {
    suggested_files.push_back(suggested_name);
    return Next(save_files).value_or(std::nullopt);
  }
  std::optional<platform::PrintChoice> AskPrint(const platform::PrintQuestion& question) override {
    print_questions.push_back(question);
    return Next(print_choices).value_or(question.proposed);
  }

 private:
  template <typename Held>
  static std::optional<Held> Next(std::deque<Held>& script) {
    if (script.empty()) return std::nullopt;
    auto next = std::move(script.front());
    script.pop_front();
    return next;
  }
  void Open(platform::Form& form) {
    shown_forms.push_back(&form);
    Note("form " + form.caption());
    form.Activate();
    if (user_in_form) user_in_form(form);
  }
  void Note(std::string line) {
    if (journal_ != nullptr) journal_->Add(std::move(line));
  }

  Journal* journal_;
};

}  // namespace fakes
