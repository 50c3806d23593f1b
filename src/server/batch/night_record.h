#pragma once

#include <cstdint>
#include <string>

#include "platform/value.h"
#include "server/batch/night_letters.h"

namespace server {

/// What came of a letter of a run.
struct NightOutcome {
  std::string template_file = {};
  /// kPrinted or kMerged; not asked for where it failed.
  std::string print_status = {};
  std::string failure = {};  ///< a sentence for a clerk; "" where it was made
};

/// Puts a letter of a run, made or failed, into the history, new or as it is there, and records it in the
/// run. Returns its number. Within a transaction: all of it or nothing. A letter that failed and has been in
/// the history before keeps the data it had.
std::int64_t RecordNightLetter(Database& database, std::int64_t run, const NightLetter& letter,
                               const NightOutcome& outcome, platform::Timestamp now);

}  // namespace server
