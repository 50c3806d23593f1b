#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/value.h"
#include "server/storage/database.h"

/// The nightly batch runs as they are stored: what each has to make, and what became of it. Decision
/// [batch-runs].
namespace server {

/// Why a letter is in a run.
namespace run_source {
inline constexpr std::string_view kAgain = "REB";    ///< to be made again from the data of the night
inline constexpr std::string_view kReprint = "REP";  ///< to be printed again as it is stored
inline constexpr std::string_view kRule = "RUL";     ///< a rule asks for it
inline constexpr std::string_view kOnline = "ONL";   ///< made on line for the batch
}  // namespace run_source

/// A letter that a run has to make.
struct RunItem {
  std::string source;  ///< one of run_source
  std::string letter_type;
  std::string customer;
  std::string form_type = {};  ///< "" where the letter is about no form
  std::string form_number = {};
  std::optional<std::int64_t> letter = {};  ///< in the history; nothing for one that is yet to be made
  std::string rule = {};                    ///< the name of the rule that asks for it; "" for other sources
};

struct Run {
  std::int64_t number = 0;
  std::string worker;   ///< who works on it: program and machine
  std::string started;  ///< "yyyy-mm-dd hh.mm.ss"

  bool operator==(const Run&) const = default;
};

/// What became of a letter of a run.
enum class ItemResult {
  kSucceeded,
  kFailed,
};

/// Each of these changes several rows that must agree: call them within a transaction.

/// A run that has begun, with its letters numbered from 1; those that wait are claimed for it. Returns its
/// number.
std::int64_t CreateRun(Database& database, const std::vector<RunItem>& items, platform::Timestamp now,
                       const std::string& worker);
/// Item `item` of the run has become `letter` of the history; what was claimed for it is done.
void RecordItem(Database& database, std::int64_t run, std::int64_t item, std::int64_t letter,
                ItemResult result);
/// Its status follows from its letters. Claims on letters that it did not come to are given up: they wait for
/// the next run.
void EndRun(Database& database, std::int64_t run, platform::Timestamp now);

/// The run that has begun and not ended; nothing where there is none.
std::optional<Run> FindRunningRun(Database& database);

}  // namespace server
