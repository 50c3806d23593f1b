#include "host/windowless_shell.h"

#include <algorithm>
#include <ostream>

#include "platform/controls/form.h"
#include "platform/text.h"

namespace host {

using platform::MessageAnswer;
using platform::MessageIcon;

MessageAnswer WindowlessShell::ShowMessage(const platform::Message& message) {
  const bool is_about_placeholders = message.topic == platform::MessageTopic::kUnfilledLetter;
  if (is_about_placeholders && answers_.allow_unfilled) return MessageAnswer::kYes;
  const auto text = platform::ReplaceAll(message.text, platform::kLineBreak, "\n");
  if (is_about_placeholders) {
    Write(streams_.reasons, text);
    refused_ = true;
    return MessageAnswer::kNo;
  }
  if (message.buttons != platform::MessageButtons::kOk) {
    const auto answer = answers_.yes ? MessageAnswer::kYes : message.default_answer;
    Write(answer == MessageAnswer::kYes ? streams_.notices : streams_.reasons, text);
    return answer;
  }
  Write(StreamFor(message.icon), text);
  if (message.icon == MessageIcon::kExclamation) warned_ = true;
  if (message.icon == MessageIcon::kCritical) refused_ = true;
  return MessageAnswer::kOk;
}

std::ostream& WindowlessShell::StreamFor(MessageIcon icon) const {
  const bool is_reason =
      icon == MessageIcon::kCritical || (icon == MessageIcon::kExclamation && !is_starting_);
  return is_reason ? streams_.reasons : streams_.notices;
}

void WindowlessShell::Write(std::ostream& stream, std::string_view text) const {
  stream << text << (text.ends_with('\n') ? "" : "\n") << std::flush;
}

void WindowlessShell::ShowModal(platform::Form& form) {
  Show(form);
  loop_.RunUntil([&form] { return !form.shown(); });
}

void WindowlessShell::Show(platform::Form& form) {
  form.Load();
  form.Activate();
  const bool answered =
      std::ranges::any_of(form_answerers_, [&form](const FormAnswerer& answerer) { return answerer(form); });
  if (!answered && !form.Close()) form.Hide();  // nobody is there to leave it otherwise
}

std::optional<std::string> WindowlessShell::AskSaveFile(const std::string&) {
  return answers_.save_file;
}

std::optional<platform::PrintChoice> WindowlessShell::AskPrint(const platform::PrintQuestion& question) {
  auto choice = question.proposed;
  if (answers_.printer) choice.printer = *answers_.printer;
  return choice;
}

void WindowlessShell::ShowStatus(std::string_view text) {
  if (text == status_) return;
  status_ = text;
  if (status_listener) status_listener(status_);
}

void WindowlessShell::ShowReason(std::string_view text) {
  Write(StreamFor(MessageIcon::kExclamation), text);
}

}  // namespace host
