#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/failure.h"
#include "platform/parties/print_journal.h"

namespace fakes {

/// Notes of printed letters, kept in memory. A step is its name and the message key: "begin MSG3".
class FakePrintJournal : public platform::PrintJournal {
 public:
  std::vector<std::string> steps;
  std::vector<Left> notes;           ///< what a program that ended now would leave behind, oldest first
  std::vector<Left> left_by_others;  ///< what LeftBehind finds
  std::vector<Closed> closed;        ///< notes that only others may read
  bool is_full = false;              ///< no note can be written

  void Expect(NoteMaker maker) override { maker_ = std::move(maker); }
  void Begin(const std::string& context) override {
    if (is_full) throw platform::Failure(platform::Failure::Kind::kUnavailable, "The disk is full.");
    const auto note = maker_ ? maker_(context) : std::nullopt;
    printing_ = note ? note->message_key : "";
    if (!note) return;
    notes.push_back({*note, platform::PrintStage::kHandingOver});
    Step("begin", printing_);
  }
  void Accept() override { Move("accept", printing_, platform::PrintStage::kPrinted); }
  void Abandon() override { Drop("abandon", std::exchange(printing_, "")); }
  std::string Record() override {
    const auto key = std::exchange(printing_, "");
    if (key.empty()) return "";
    Move("record", key, platform::PrintStage::kRecording);
    recording_.push_back(key);
    return key;
  }
  std::vector<std::string> Recording() const override { return recording_; }
  void Settle(const std::string& message_key, Outcome outcome) override {
    std::erase(recording_, message_key);
    if (outcome == Outcome::kRecorded) return Drop("recorded", message_key);
    if (outcome == Outcome::kUnanswered) return Step("unanswered", message_key);
    Move("refused", message_key, platform::PrintStage::kPrinted);
  }
  std::vector<Left> LeftBehind() override {
    auto left = std::exchange(left_by_others, {});
    notes.insert(notes.end(), left.begin(), left.end());
    return left;
  }
  std::vector<Closed> ClosedNotes() const override { return closed; }
  void RecordAgain(const std::string& message_key) override {
    Move("record again", message_key, platform::PrintStage::kRecording);
    recording_.push_back(message_key);
  }
  void Forget(const std::string& message_key) override { Drop("forget", message_key); }
  void LeaveForNextStart(const std::string& message_key) override { Step("leave", message_key); }

 private:
  void Step(const char* what, const std::string& key) { steps.push_back(std::string(what) + " " + key); }
  void Move(const char* what, const std::string& key, platform::PrintStage stage) {
    if (key.empty()) return;
    Step(what, key);
    for (auto& left : notes) {
      if (left.note.message_key == key) left.stage = stage;
    }
  }
  void Drop(const char* what, const std::string& key) {
    if (key.empty()) return;
    Step(what, key);
    std::erase_if(notes, [&](const Left& left) { return left.note.message_key == key; });
  }

  NoteMaker maker_;
  std::string printing_;
  std::vector<std::string> recording_;
};

}  // namespace fakes
