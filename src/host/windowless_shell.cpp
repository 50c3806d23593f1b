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
  auto text = platform::ReplaceAll(message.text, platform::kLineBreak, "\n");
  if (!text.ends_with('\n')) text += '\n';
  messages_ << text << std::flush;
  if (is_about_placeholders) {
    refused_ = true;
    return MessageAnswer::kNo;
  }
  if (message.buttons == platform::MessageButtons::kYesNo) {
    return answers_.yes ? MessageAnswer::kYes : message.default_answer;
  }
  if (message.icon == MessageIcon::kExclamation) warned_ = true;
  if (message.icon == MessageIcon::kCritical) refused_ = true;
  return MessageAnswer::kOk;
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
  if (!answered) form.Close();
}

std::optional<std::string> WindowlessShell::AskSaveFile(const std::string&) {
  return answers_.save_file;
}

std::optional<std::string> WindowlessShell::AskPrinter(const std::vector<std::string>&,
                                                       const std::string& current) {
  return answers_.printer.value_or(current);
}

void WindowlessShell::ShowStatus(std::string_view text) {
  if (text == status_) return;
  status_ = text;
  if (status_listener) status_listener(status_);
}

void WindowlessShell::ShowReason(std::string_view text) {
  messages_ << text << '\n' << std::flush;
}

}  // namespace host
