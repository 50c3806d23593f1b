#pragma once

#include <algorithm>
#include <array>
#include <string_view>

/// The codes of a letter's record "CORRHIST".
namespace platform {

/// PRNT_STTS_CD. The code table LTRPRNTCD has their words.
namespace print_status {

inline constexpr std::string_view kPrinted = "P";
inline constexpr std::string_view kPrintedByBatch = "S";
inline constexpr std::string_view kWaitsForBatch = "W";
inline constexpr std::string_view kPrintFailed = "F";
inline constexpr std::string_view kReprintFailed = "R";
inline constexpr std::string_view kMerged = "M";  ///< waits for its print
inline constexpr std::string_view kAddressNotVerified = "V";
inline constexpr std::string_view kDataIncomplete = "E";

/// Letters whose processing failed.
inline constexpr auto kFailures = std::to_array<std::string_view>({kPrintFailed, kReprintFailed});

inline bool IsFailure(std::string_view status) {
  return std::ranges::find(kFailures, status) != kFailures.end();
}

}  // namespace print_status

/// A letter that has just been printed is sent with this status and this LST_PRNT_TS: the server puts its own
/// time and the status of a printed letter in their place.
inline constexpr std::string_view kStatusForTheServer = print_status::kPrintFailed;
inline constexpr std::string_view kTimeForTheServer = "1900-01-01 01.01.01";

/// ACTION.
namespace record_action {
inline constexpr std::string_view kAdd = "ADD";     ///< a new letter
inline constexpr std::string_view kUpdate = "UPD";  ///< printed again
}  // namespace record_action

/// ACTION of a batch item, BTCH_ACTN_CD of its letter. The code table LTRBATCH has their words.
namespace batch_action {
inline constexpr std::string_view kReprint = "REP";     ///< printed again as it is stored
inline constexpr std::string_view kBatchAgain = "REB";  ///< made again from today's data
inline constexpr std::string_view kCancel = "DEL";  ///< an item that waits is taken back; no letter has it
}  // namespace batch_action

/// What resubmitting a letter of that print status asks for: a letter whose data stand lacks its print alone.
inline std::string_view ResubmissionOf(std::string_view status) {
  constexpr auto kPrintedAgain = std::to_array<std::string_view>(
      {print_status::kMerged, print_status::kReprintFailed, print_status::kPrintFailed});
  return std::ranges::find(kPrintedAgain, status) != kPrintedAgain.end() ? batch_action::kReprint
                                                                         : batch_action::kBatchAgain;
}

/// What came of a letter that something was asked of.
namespace item_outcome {
inline constexpr std::string_view kTaken = "T";
inline constexpr std::string_view kAlready = "A";  ///< as asked for already: nothing was changed
inline constexpr std::string_view kRefused = "R";
}  // namespace item_outcome

/// ADDR_TYP_CD: which of a customer's addresses a letter went to.
namespace letter_address {
inline constexpr int kMailing = 1;
inline constexpr int kResidential = 2;
}  // namespace letter_address

/// SYS_RFRNC_CD: who produced the letter.
namespace letter_origin {
inline constexpr std::string_view kOnline = "O";
inline constexpr std::string_view kBatch = "B";
}  // namespace letter_origin

}  // namespace platform
