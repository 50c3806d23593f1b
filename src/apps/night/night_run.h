#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/data_folder.h"
#include "platform/value.h"
#include "server/batch/batch_rules.h"
#include "server/batch/batch_runs.h"
#include "server/storage/database.h"

namespace apps {

struct NightWishes {
  std::optional<platform::Date> day = {};  ///< the letters' day; nothing for today
  int workers = 1;
  std::optional<std::size_t> limit = {};  ///< make no more letters than that; the rest waits
  std::function<bool()> stop = {};        ///< asked before each letter: true begins no further one
};

/// What came of a run.
struct NightReport {
  std::int64_t run = 0;
  std::size_t due = 0;
  std::size_t made = 0;
  std::size_t failed = 0;
  std::optional<std::string> ended_early = {};  ///< why letters were left for the next run
};

/// The nightly run of one data folder: what is due is made, recorded letter by letter, and filed. Ended at
/// any moment it has lost nothing: a letter is either recorded with its pages, or due again. Decision
/// [night].
class Night {
 public:
  /// `tell` gets sentences for the log. Throws Failure where the folder's data cannot be used.
  Night(const host::DataFolder& folder, std::function<void(const std::string&)> tell);

  /// What a run of that day would make. Throws Failure kDamaged with all that is wrong in the table of rules,
  /// letter types without a template too.
  std::vector<server::RunItem> Due(platform::Date day);
  /// Throws Failure kUnavailable where a run is under way already, kDamaged as Due; nothing has begun then.
  NightReport Run(const NightWishes& wishes);
  /// Ends a run that its program has left behind; what it did not come to is due again. Throws Failure
  /// kUnavailable where the program is still at work, kNotFound where no such run is running.
  void Abandon(std::int64_t run);

  server::Database& database() { return database_; }

 private:
  class Shift;
  std::vector<server::BatchRule> Rules(platform::Date day);
  void RequireTemplates(const std::vector<server::BatchRule>& rules, platform::Date day,
                        platform::TableFaults& faults) const;
  void EndLeftBehind();

  const host::DataFolder folder_;
  const std::function<void(const std::string&)> tell_;
  server::Database database_;
};

}  // namespace apps
