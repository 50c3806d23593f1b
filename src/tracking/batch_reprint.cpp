#include "tracking/batch_reprint.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "platform/agreed/letter_types.h"
#include "platform/agreed/requests.h"
#include "platform/key_item.h"
#include "workspace/messaging/counting.h"

namespace tracking {

namespace {

using workspace::RecordDescription;
using workspace::RequestDescription;

struct ReprintKind {
  std::string_view letter_type;
  std::string_view request_name;
  const char* total_column;
  const char* printed_column;
};
constexpr auto kKinds = std::to_array<ReprintKind>({
    {platform::letter_type::kTaxLiability, "RePrint_CTL", "CTL_TOT", "CTL_PRNTD"},
    {platform::letter_type::kTaxWarrant, "RePrint_Tax_Warrant", "TW_TOT", "TW_PRNTD"},
});
constexpr const char* kLayout = platform::record_name::kLettersPrinted;

const ReprintKind* KindOf(std::string_view letter_type) {
  const auto kind = std::ranges::find(kKinds, letter_type, &ReprintKind::letter_type);
  return kind == kKinds.end() ? nullptr : &*kind;
}

}  // namespace

bool BatchReprint::IsReprint(std::string_view request_name) {
  return std::ranges::find(kKinds, request_name, &ReprintKind::request_name) != kKinds.end();
}

void BatchReprint::Prepare(Letters letters) {
  constexpr std::size_t kMost = std::numeric_limits<std::int16_t>::max();
  letters_ = std::move(letters);
  count_ = static_cast<std::int16_t>(std::min(letters_.sequence_numbers.size(), kMost));
  printed_ = {};
  progress_.Begin();
}

std::int32_t BatchReprint::TakeNext(std::string_view request_name) {
  const auto* kind = KindOf(letters_.letter_type);
  auto& numbers = letters_.sequence_numbers;
  if (kind == nullptr || kind->request_name != request_name || numbers.empty()) return 0;
  const auto next = numbers.front();
  numbers.pop_front();
  return next;
}

bool BatchReprint::HasLettersToReprint(std::string_view letter_type) const {
  return letter_type == letters_.letter_type && printed_ < count_ && !progress_.is_cancelled();
}

void BatchReprint::LetterPrinted(RequestDescription& message) {
  const auto* kind = KindOf(letters_.letter_type);
  if (kind == nullptr)
    throw platform::Failure(platform::Failure::Kind::kInternal, "No batch reprint is running.");
  workspace::CountUp(services_, printed_, "printed letters", "ZEMLO_Corresp.PrintDoc");
  // The letters print on where their progress cannot be shown.
  platform::Trap(services_, "ZEMLO_Corresp.PrintDoc", [&] { ShowProgress(); });
  message.name = std::string(kind->request_name);
  if (HasLettersToReprint(letters_.letter_type)) {
    message.letter = {.sequence_number = TakeNext(kind->request_name)};
    message.keys.push_back(platform::Criterion(platform::KeyNamed(platform::request_key::kFetchContext),
                                               std::to_string(message.letter.sequence_number)));
    message.status = Progress("Printing");
  } else {
    progress_.Close();
  }
}

void BatchReprint::ShowProgress() {
  const bool comes_up = !progress_.TakeCancellation() && !progress_.IsShown();
  if (comes_up) services_.host.SetMousePointer(platform::MousePointer::kNormal);
  progress_.Show(Progress("Printed"));
}

std::string BatchReprint::Progress(const char* word) const {
  return std::string(word) + " letter " + std::to_string(printed_.value()) + " of " +
         std::to_string(count_.value());
}

void BatchReprint::Stop(const std::string& /*reason*/) {
  progress_.Cancel();
  SendBatchCount("Saving batch");
}

void BatchReprint::SendBatchCount(std::string_view status) {
  progress_.Close();
  RequestDescription message{
      .type = platform::message_type::kCountPrinted, .name = "BatchCount", .status = std::string(status)};
  SendBatchCountUpd(message);
  platform::Trap(services_, "ZEMLO_Corresp.SendBatchCountUpd", [&] { envelope_.Send(message); });
}

void BatchReprint::SendBatchCountUpd(RequestDescription& message) const {
  platform::Trap(services_, "ZEMLO_Corresp.SendBatchCountUpd", [&] {
    RecordDescription::Row row = {{"ACTION", "ADD"}, {"STATION_ID", letters_.station}};
    const auto* kind = KindOf(letters_.letter_type);
    if (kind != nullptr && count_.value() > 0) {
      row.emplace_back(kind->total_column, letters_.total);
      row.emplace_back(kind->printed_column, printed_.value());
    }
    message.records.push_back({kLayout, {std::move(row)}});
  });
}

}  // namespace tracking
