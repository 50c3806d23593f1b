#include "tracking/local_reprint.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <numeric>
#include <optional>
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
  const auto letters = uses_.pages.tracking.sdgGrid.selected_rows().size();
  if (!IsConfirmed(letters) || !uses_.fetch.AreMeant(kRequest, PageIndex::kTracking)) return false;
  Positions all(letters);
  std::iota(all.begin(), all.end(), std::size_t{0});
  return Begin(std::move(all));
}

bool LocalReprint::Begin(Positions positions) {
  auto& grid = uses_.pages.tracking.sdgGrid;
  ListedLetters(grid).MakeSelectedCurrent(positions.empty() ? 0 : positions.front());
  if (!IsPrinterChosen(positions.size())) return false;
  Count(std::move(positions));
  if (wanted_ > 1) ShowProgress("Printing " + std::to_string(wanted_) + " letters");
  const bool is_under_way = uses_.fetch.Fetch(kRequest, PageIndex::kTracking);
  if (is_under_way) {
    grid.SetEnabled(false);
  } else {
    Stop("");
    end_.clear();  // the failure has been told
  }
  return is_under_way;
}

bool LocalReprint::StartSingle(PageIndex page) {
  if (!uses_.fetch.AreMeant(kRequest, page) || !IsPrinterChosen(1)) return false;
  Count({0});
  const bool is_under_way = uses_.fetch.Fetch(kRequest, page);
  if (!is_under_way) Stop("");
  return is_under_way;
}

bool LocalReprint::IsPrinterChosen(std::size_t letters) const {
  bool is_chosen = false;
  platform::Trap(uses_.services, kStart, [&] { is_chosen = uses_.services.print.AskHow(letters); });
  return is_chosen;
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

void LocalReprint::Count(Positions positions) {
  constexpr std::size_t kMost = std::numeric_limits<std::int16_t>::max();
  const auto letters = positions.size();
  if (letters > kMost) positions.resize(kMost);
  progress_.Begin();
  positions_ = std::move(positions);
  at_ = 0;
  printed_ = {};
  wanted_ = static_cast<std::int16_t>(positions_.size());
  with_record_ = false;
  last_error_.clear();
  failed_.clear();
  if (letters <= kMost) return;
  uses_.services.errors.ReportError("Of the " + std::to_string(letters) + " selected letters the first " +
                                        std::to_string(kMost) +
                                        " are printed. Select the others and print them next.",
                                    platform::kComponentTitle, kStart);
}

void LocalReprint::LetterPrinted(workspace::RequestDescription& message) {
  workspace::CountUp(uses_.services, printed_, "printed letters", kProcedure);
  ++at_;
  if (IsOver() || !GoesOn()) return Stop("");
  message.letter = MakeCurrent(positions_[at_]);
  message.name = kRequest;
  message.keys.push_back(platform::Criterion(platform::KeyNamed(platform::request_key::kFetchContext),
                                             std::to_string(message.letter.sequence_number)));
  with_record_ = true;
  ShowProgress("Printed" + Reached());
  uses_.services.status.ShowStatus("Printing" + Reached());
}

void LocalReprint::LetterFailed(const platform::PrintFault& fault) {
  if (IsOver()) return;
  NoteFailure(fault.reason);
  ++at_;
  if (!fault.is_letters_own) return Stop(fault.reason);
  FetchNext();
}

bool LocalReprint::TakesError(const workspace::Reply& reply, const std::string& error) {
  if (wanted_ <= 1 || IsOver()) return false;
  // The server says the same of two letters: it is not they.
  const bool is_server_gone = reply.timed_out || error == last_error_;
  last_error_ = error;
  const bool is_of_record =
      with_record_ && !reply.timed_out &&
      RowsOf(uses_.services, reply, std::string(platform::record_name::kHistory)) == nullptr;
  if (is_of_record) {
    const auto before = positions_[at_ - 1];
    failed_.push_back({before, NameOf(before), TextOf(before, "SEQ_NBR"),
                       "The letter was printed, but not recorded. " + error, /*is_printed=*/true});
  } else {
    NoteFailure(error);
    ++at_;
  }
  if (is_server_gone) {
    Stop(error);
    return false;
  }
  FetchNext();
  return true;
}

// No letter before it is to be recorded.
void LocalReprint::FetchNext() {
  if (IsOver() || !GoesOn()) return Stop("");
  std::optional<platform::PrintFault> fault;
  const bool is_under_way = platform::Trap(uses_.services, kProcedure, [&] {
    platform::KeepFault(fault, [&] {
      with_record_ = false;
      uses_.fetch.Send(kRequest, MakeCurrent(positions_[at_]));
      ShowProgress("Printed" + Reached());
      uses_.services.status.ShowStatus("Printing" + Reached());
    });
  });
  if (!is_under_way) Stop(fault ? fault->reason : "The next letter could not be had.");
}

std::string LocalReprint::Reached() const {
  const auto failed = at_ - static_cast<std::size_t>(printed_.value());
  return " letter " + std::to_string(printed_.value()) + " of " + std::to_string(wanted_) +
         (failed == 0 ? "" : ", " + std::to_string(failed) + " failed");
}

void LocalReprint::NoteFailure(std::string reason) {
  const auto position = positions_[at_];
  if (wanted_ > 1)
    failed_.push_back({position, NameOf(position), TextOf(position, "SEQ_NBR"), std::move(reason)});
}

std::string LocalReprint::TextOf(std::size_t position, std::string_view column) const {
  const auto& grid = uses_.pages.tracking.sdgGrid;
  const auto& selected = grid.selected_rows();
  const bool is_there = position < selected.size() && grid.rows() && grid.rows()->HasColumn(column);
  return is_there ? grid.rows()->Text(selected[position], column) : "";
}

/// How a person knows the letter.
std::string LocalReprint::NameOf(std::size_t position) {
  std::string name;
  platform::Trap(uses_.services, kProcedure, [&] {
    const auto type = TextOf(position, "LTR_TYP_ID");
    if (!type.empty()) name = uses_.names.NameOf(type);
  });
  if (name.empty()) name = TextOf(position, "DCMT_FILE_TXT");
  return name;
}

// The letters print on where their progress cannot be shown.
void LocalReprint::ShowProgress(const std::string& text) {
  platform::Trap(uses_.services, kProcedure, [&] {
    const auto position = positions_[at_];
    progress_.Show(text, "Now: " + NameOf(position) + ", number " + TextOf(position, "SEQ_NBR"));
  });
}

workspace::LetterData LocalReprint::MakeCurrent(std::size_t position) {
  const auto make_current = [&](auto& letters) {
    letters.MakeSelectedCurrent(position);
    return workspace::CurrentLetter(letters);
  };
  if (uses_.batch_browser != nullptr && uses_.batch_browser->IsOpen()) {
    return make_current(*uses_.batch_browser);
  }
  ListedLetters letters(uses_.pages.tracking.sdgGrid);
  return make_current(letters);
}

void LocalReprint::Stop(const std::string& reason) {
  progress_.Close();
  if (!reason.empty()) {
    for (; !IsOver(); ++at_) NoteFailure("It was not tried any more, because the run had ended.");
  }
  if (wanted_ > 1) end_ = Outcome();
  wanted_ = 0;
  positions_.clear();
  uses_.pages.tracking.sdgGrid.SetEnabled(true);
}

std::string LocalReprint::Outcome() const {
  const int printed = printed_.value();
  return printed == wanted_
             ? "All " + std::to_string(wanted_) + " letters were printed."
             : std::to_string(printed) + " of " + std::to_string(wanted_) + " letters were printed.";
}

// Beside the status that the last reply leaves.
void LocalReprint::ReplyHandled() {
  if (end_.empty() || uses_.pending.IsAwaited()) return;
  uses_.services.status.ShowReason(end_);
  platform::Trap(uses_.services, kProcedure, [&] { ShowSummary(); });
}

void LocalReprint::ShowSummary() {
  const auto outcome = std::exchange(end_, {});
  const auto failed = std::exchange(failed_, {});
  if (failed.empty()) return;
  frmPrintSummary summary(outcome, failed);
  uses_.services.host.ShowModal(summary);
  if (!summary.PrintAgain) return;
  Positions again;
  for (const auto& letter : failed) {
    if (!letter.is_printed) again.push_back(letter.position);
  }
  if (Begin(std::move(again))) uses_.pages.tracking.letter_action.SetEnabled(false);
}

}  // namespace tracking
