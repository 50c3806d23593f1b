#include "apps/letters/letters_left_behind.h"

#include <algorithm>

namespace apps {
namespace {

const char* StateOf(platform::PrintStage stage) {
  switch (stage) {
    case platform::PrintStage::kHandingOver:
      return "perhaps printed";
    case platform::PrintStage::kPrinted:
      return "printed";
    case platform::PrintStage::kRecording:
      break;
  }
  return "sent";
}

}  // namespace

LettersLeftBehind::LettersLeftBehind(const host::DataFolder& folder)
    : journal_(folder.Unrecorded(), damages_), letters_(journal_.LeftBehind()) {}

std::vector<std::string> LettersLeftBehind::Row(const platform::PrintJournal::Left& letter) {
  return {letter.note.message_key, letter.note.letter, StateOf(letter.stage), letter.user};
}

std::vector<std::vector<std::string>> LettersLeftBehind::Others() const {
  std::vector<std::vector<std::string>> rows;
  for (const auto& [user, letters] : journal_.ClosedNotes()) {
    rows.insert(rows.end(), std::max<std::size_t>(letters, 1), {"", "", "closed", user});
  }
  for (const auto& description : damages_.descriptions) rows.push_back({"", description, "damaged", ""});
  return rows;
}

}  // namespace apps
