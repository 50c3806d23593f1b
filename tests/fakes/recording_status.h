#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/parties/status_display.h"
#include "tests/fakes/journal.h"

namespace fakes {

/// A status bar and toolbar that remember what they showed.
class RecordingStatus : public platform::StatusDisplay {
 public:
  explicit RecordingStatus(Journal* journal = nullptr) : journal_(journal) {}

  std::vector<std::string> texts;
  std::string reason;  ///< the one that stands beside the last text
  bool ready = false;
  int commands = 0;  ///< the user began
  std::map<int, bool> buttons;
  std::vector<int> button_calls;  ///< toolbar buttons in the order they were set
  std::string host_tag;           ///< as given with the last button

  std::string LastText() const { return texts.empty() ? "" : texts.back(); }

  void CommandBegins() override {
    ++commands;
    Note("command");
  }
  void ShowStatus(std::string_view text) override {
    texts.emplace_back(text);
    reason.clear();
    Note("status " + texts.back());
  }
  void ShowReason(std::string_view text) override {
    reason = text;
    Note("reason " + reason);
  }
  void SetReady(bool is_ready) override {
    ready = is_ready;
    Note(is_ready ? "ready" : "not ready");
  }
  void EnableToolbarButton(int button_index, bool enabled, std::string_view tag) override {
    buttons[button_index] = enabled;
    button_calls.push_back(button_index);
    host_tag = tag;
    Note("toolbar " + std::to_string(button_index) + (enabled ? " on" : " off"));
  }

 private:
  void Note(std::string line) {
    if (journal_ != nullptr) journal_->Add(std::move(line));
  }

  Journal* journal_;
};

}  // namespace fakes
