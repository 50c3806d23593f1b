#include "tracking/batch_submission.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "platform/agreed/letter_record.h"
#include "platform/agreed/requests.h"
#include "platform/text.h"

namespace tracking {

namespace {

namespace batch_action = platform::batch_action;
namespace item_outcome = platform::item_outcome;

constexpr const char* kSubmitBatch = "ZEMLO_Corresp.SubmitBatch";
constexpr std::size_t kMostReasons = 5;

std::string Letters(std::size_t count, const char* one, const char* several) {
  return std::to_string(count) + (count == 1 ? one : several);
}

/// "3 letters wait for the batch run now, 1 was waiting already, 2 were refused."
std::string Sentence(bool takes_back, std::size_t taken, std::size_t already, std::size_t refused) {
  std::string sentence;
  const auto add = [&](std::size_t count, const char* one, const char* several, const char* first,
                       const char* next) {
    if (count == 0) return;
    const bool is_first = sentence.empty();
    sentence += is_first ? Letters(count, " letter", " letters") : ", " + std::to_string(count);
    sentence.append(count == 1 ? one : several).append(is_first ? first : next);
  };
  if (takes_back)
    add(taken, " waits", " wait", " for the batch run no longer", " no longer");
  else
    add(taken, " waits", " wait", " for the batch run now", "");
  add(already, " was", " were", " waiting for the batch run already", " waiting already");
  add(refused, " was", " were", " refused", " refused");
  return sentence + ".";
}

}  // namespace

bool BatchSubmission::SubmitBatch(const std::string& action) {
  return platform::Trap(uses_.services, kSubmitBatch, [&] {
    outcome_.reset();
    outcomes_.reset();
    page_ = uses_.pages.tabs.current();
    takes_back_ = action == batch_action::kCancel;
    uses_.envelope.Send({.type = platform::message_type::kChange,
                         .name = "LetterAU",
                         .records = {Items(action)},
                         .status = "Submit batch request."});
  });
}

workspace::RecordDescription BatchSubmission::Items(const std::string& action) const {
  const auto& letters = uses_.pages.sdgGrid(*page_);
  workspace::RecordDescription items{platform::record_name::kBatchItems, {}};
  items.rows.reserve(letters.selected_rows().size());
  for (const auto row : letters.selected_rows()) {
    const auto& rows = *letters.rows();
    items.rows.push_back(
        {{"ACTION", action == "RESUBMIT" ? platform::ResubmissionOf(rows.Text(row, "PRNT_STTS_CD"))
                                         : std::string_view(action)},
         {"SEQ_NBR", rows.Get(row, "SEQ_NBR")}});
  }
  return items;
}

void BatchSubmission::Replied(const workspace::Reply& reply) {
  const auto page = std::exchange(page_, std::nullopt);
  platform::Trap(uses_.services, kSubmitBatch, [&] {
    const auto outcomes = RowsOf(uses_.services, reply, platform::record_name::kBatchItemOutcomes);
    if (!outcomes) return;
    Outcome outcome;
    for (std::size_t row = 0; row < outcomes->RecordCount(); ++row) {
      const auto came = outcomes->Text(row, "OUTCOME");
      const bool is_refused = came == item_outcome::kRefused;
      ++(is_refused ? outcome.refused : came == item_outcome::kAlready ? outcome.already : outcome.taken);
      if (is_refused && outcome.reasons.size() < kMostReasons) {
        outcome.reasons.push_back(outcomes->Text(row, "MEMO"));
      }
    }
    outcome_ = std::move(outcome);
    outcomes_ = outcomes;
    if (page) UpdateRows(*page, *outcomes);
  });
}

void BatchSubmission::UpdateRows(workspace::PageIndex page, const platform::RecordSet& outcomes) const {
  const auto listed = uses_.pages.sdgGrid(page).rows();
  if (!listed) return;
  std::unordered_map<std::string, std::size_t> came;
  for (std::size_t row = 0; row < outcomes.RecordCount(); ++row) came[outcomes.Text(row, "SEQ_NBR")] = row;
  {
    const platform::RecordSet::Edit edit(*listed);
    for (std::size_t row = 0; row < listed->RecordCount(); ++row) {
      const auto found = came.find(listed->Text(row, "SEQ_NBR"));
      if (found == came.end()) continue;
      for (const auto* column : {"BTCH_ACTN_CD", "PRNT_STTS_CD"}) {
        if (listed->HasColumn(column)) listed->Set(row, column, outcomes.Get(found->second, column));
      }
      uses_.row_format.DressAgain(page, row);
    }
  }
  if (uses_.rows_changed) uses_.rows_changed();
}

// Whether an answer that never came has been acted on is not known; a refusal of all leaves all as it was.
void BatchSubmission::Failed() {
  const bool was_under_way = std::exchange(page_, std::nullopt).has_value();
  if (!was_under_way || !uses_.pending.timed_out()) return;
  uses_.services.status.ShowReason(
      "It is not known whether the letters wait for the batch run. Submit them again: none is taken twice.");
}

void BatchSubmission::ReplyHandled() {
  if (!outcome_ || uses_.pending.IsAwaited()) return;
  platform::Trap(uses_.services, kSubmitBatch, [&] {
    const auto outcome = *std::exchange(outcome_, std::nullopt);
    uses_.services.status.ShowReason(Sentence(takes_back_, outcome.taken, outcome.already, outcome.refused));
    if (outcome.refused > 0) TellRefused(outcome);
  });
}

void BatchSubmission::TellRefused(const Outcome& outcome) const {
  const auto asked = outcome.taken + outcome.already + outcome.refused;
  if (asked == 1) return Warn(outcome.reasons.front());
  auto text = std::to_string(outcome.refused) + " of " + Letters(asked, " letter", " letters") +
              (outcome.refused == 1 ? " was refused:" : " were refused:");
  text.append(platform::kLineBreak);
  for (const auto& reason : outcome.reasons) text.append(platform::kLineBreak).append(reason);
  const auto more = outcome.refused - outcome.reasons.size();
  if (more > 0) {
    text.append(platform::kLineBreak)
        .append("And ")
        .append(std::to_string(more))
        .append(" more, not named here.");
  }
  Warn(text);
}

void BatchSubmission::Warn(const std::string& text) const {
  uses_.services.host.ShowMessage({text, platform::MessageIcon::kExclamation, uses_.message_title});
}

}  // namespace tracking
