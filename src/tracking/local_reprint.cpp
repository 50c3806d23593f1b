#include "tracking/local_reprint.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "workspace/listed_letters.h"
#include "workspace/messaging/counting.h"

namespace tracking {

namespace {

using workspace::ListedLetters;
using workspace::PageIndex;

constexpr const char* kRequest = "Letter_Print";
constexpr const char* kProcedure = "ZEMLO_Corresp.PrintDoc";

}  // namespace

bool LocalReprint::Start() {
  auto& grid = uses_.pages.tracking.sdgGrid;
  ListedLetters letters(grid);
  Count(letters.SelectedCount());
  letters.MakeSelectedCurrent(0);
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

void LocalReprint::Count(std::size_t letters) {
  constexpr std::size_t kMost = std::numeric_limits<std::int16_t>::max();
  uses_.state.letters_printed = {};
  uses_.state.letters_to_print = static_cast<std::int16_t>(std::min(letters, kMost));
  if (letters <= kMost) return;
  uses_.services.errors.ReportError("Of the " + std::to_string(letters) + " selected letters the first " +
                                        std::to_string(kMost) +
                                        " are printed. Select the others and print them next.",
                                    platform::kComponentTitle, "ZEMLO_Correspondence.LetterActClick");
}

void LocalReprint::LetterPrinted(workspace::RequestDescription& message) {
  auto& state = uses_.state;
  workspace::CountUp(uses_.services, state.letters_printed, "printed letters", kProcedure);
  if (state.ReprintIsOver()) return Stop();
  MakeNextCurrent();
  message.name = kRequest;
  message.keys.push_back(
      platform::Criterion("key:FetchContext", std::to_string(uses_.letter.sequence_number)));
  uses_.services.status.ShowStatus("Printing letter " + std::to_string(state.letters_printed.value()) +
                                   " of " + std::to_string(state.letters_to_print.value()));
}

void LocalReprint::MakeNextCurrent() {
  const auto next = static_cast<std::size_t>(uses_.state.letters_printed.value());
  const auto make_current = [&](auto& letters) {
    letters.MakeSelectedCurrent(next);
    uses_.letter = workspace::CurrentLetter(letters);
  };
  if (uses_.batch_browser != nullptr && uses_.batch_browser->IsOpen()) {
    make_current(*uses_.batch_browser);
  } else {
    ListedLetters letters(uses_.pages.tracking.sdgGrid);
    make_current(letters);
  }
}

void LocalReprint::Stop() {
  uses_.state.letters_to_print = uses_.state.letters_printed;
  uses_.pages.tracking.sdgGrid.SetEnabled(true);
}

}  // namespace tracking
