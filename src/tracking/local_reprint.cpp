#include "tracking/local_reprint.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <utility>
#include <vector>

#include "platform/agreed/requests.h"
#include "platform/text.h"
#include "workspace/letters/listed_letters.h"
#include "workspace/messaging/counting.h"

namespace tracking {

namespace {

using workspace::ListedLetters;
using workspace::PageIndex;

constexpr const char* kRequest = "Letter_Print";
constexpr const char* kProcedure = "ZEMLO_Corresp.PrintDoc";
constexpr const char* kStart = "ZEMLO_Correspondence.LetterActClick";

// A selection of more letters than this may be more than is seen of it: what it holds is told.
constexpr std::size_t kMostWithoutTypes = 10;

}  // namespace

bool LocalReprint::Start() {
  auto& grid = uses_.pages.tracking.sdgGrid;
  ListedLetters letters(grid);
  if (!IsConfirmed(letters.SelectedCount())) return false;
  Count(letters.SelectedCount());
  letters.MakeSelectedCurrent(0);
  if (letters.SelectedCount() > 1) {
    ShowProgress("Printing " + std::to_string(letters.SelectedCount()) + " letters");
  }
  const bool is_under_way = uses_.fetch.RePrintLetter(kRequest, PageIndex::kTracking);
  if (is_under_way) {
    grid.SetEnabled(false);
  } else {
    Stop();
  }
  return is_under_way;
}

bool LocalReprint::StartSingle(PageIndex page) {
  Count(1);
  const bool is_under_way = uses_.fetch.RePrintLetter(kRequest, page);
  if (!is_under_way) Stop();
  return is_under_way;
}

bool LocalReprint::IsConfirmed(std::size_t letters) {
  using platform::MessageAnswer;
  if (letters <= 1) return true;
  auto text = "Should these " + std::to_string(letters) + " letters be printed?";
  if (letters > kMostWithoutTypes) {
    platform::Trap(uses_.services, kStart, [&] { text += TypesOfSelected(); });
  }
  return uses_.services.host.ShowMessage({text, platform::MessageIcon::kQuestion, uses_.message_title,
                                          platform::MessageButtons::kYesNo, MessageAnswer::kNo}) ==
         MessageAnswer::kYes;
}

/// An empty line, and one for each letter type, the most frequent one first.
std::string LocalReprint::TypesOfSelected() {
  const auto& grid = uses_.pages.tracking.sdgGrid;
  std::map<std::string, std::size_t> counts;
  for (const auto row : grid.selected_rows()) {
    ++counts[uses_.names.NameOf(grid.rows()->Text(row, "LTR_TYP_ID"))];
  }
  std::vector<std::pair<std::string, std::size_t>> types(counts.begin(), counts.end());
  std::ranges::stable_sort(types, std::greater{}, [](const auto& type) { return type.second; });
  std::string lines(platform::kLineBreak);
  for (const auto& [name, count] : types) {
    lines.append(platform::kLineBreak).append(std::to_string(count)).append("  ").append(name);
  }
  return lines;
}

void LocalReprint::Count(std::size_t letters) {
  constexpr std::size_t kMost = std::numeric_limits<std::int16_t>::max();
  progress_.Begin();
  printed_ = {};
  to_print_ = static_cast<std::int16_t>(std::min(letters, kMost));
  wanted_ = to_print_.value();
  if (letters <= kMost) return;
  uses_.services.errors.ReportError("Of the " + std::to_string(letters) + " selected letters the first " +
                                        std::to_string(kMost) +
                                        " are printed. Select the others and print them next.",
                                    platform::kComponentTitle, kStart);
}

void LocalReprint::LetterPrinted(workspace::RequestDescription& message) {
  workspace::CountUp(uses_.services, printed_, "printed letters", kProcedure);
  if (IsOver() || !GoesOn()) return Stop();
  message.letter = MakeNextCurrent();
  message.name = kRequest;
  message.keys.push_back(platform::Criterion(platform::KeyNamed(platform::request_key::kFetchContext),
                                             std::to_string(message.letter.sequence_number)));
  const auto reached =
      " letter " + std::to_string(printed_.value()) + " of " + std::to_string(to_print_.value());
  ShowProgress("Printed" + reached);
  uses_.services.status.ShowStatus("Printing" + reached);
}

// The letters print on where their progress cannot be shown.
void LocalReprint::ShowProgress(const std::string& text) {
  platform::Trap(uses_.services, kProcedure, [&] { progress_.Show(text); });
}

workspace::LetterData LocalReprint::MakeNextCurrent() {
  const auto next = static_cast<std::size_t>(printed_.value());
  const auto make_current = [&](auto& letters) {
    letters.MakeSelectedCurrent(next);
    return workspace::CurrentLetter(letters);
  };
  if (uses_.batch_browser != nullptr && uses_.batch_browser->IsOpen()) {
    return make_current(*uses_.batch_browser);
  }
  ListedLetters letters(uses_.pages.tracking.sdgGrid);
  return make_current(letters);
}

void LocalReprint::Stop() {
  progress_.Close();
  const int printed = printed_.value();
  if (wanted_ > 1) {
    end_ = printed == wanted_
               ? "All " + std::to_string(wanted_) + " letters were printed."
               : std::to_string(printed) + " of " + std::to_string(wanted_) + " letters were printed.";
  }
  wanted_ = 0;
  to_print_ = printed_;
  uses_.pages.tracking.sdgGrid.SetEnabled(true);
}

// Beside the status that the last reply leaves.
void LocalReprint::ReplyHandled() {
  if (end_.empty() || uses_.pending.IsAwaited()) return;
  uses_.services.status.ShowReason(std::exchange(end_, {}));
}

}  // namespace tracking
