#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/table_faults.h"
#include "platform/value.h"
#include "server/storage/database.h"

namespace server {

/// The table of rules of an office, and of the product for a new one.
inline constexpr std::string_view kRuleFile = "batch_rules.tsv";

/// When the night writes a letter about an account (a form) without being asked. docs/operations.md describes
/// the table for administrators.
struct BatchRule {
  std::string name;
  std::string letter_type;
  std::string form_type;
  /// A condition on the table form in SQL, and the values at its question marks; days count back from the
  /// night's.
  struct Condition {
    std::string text;
    std::vector<platform::Value> values;
  };
  Condition condition;
  int again_after_days = 0;  ///< written again that many days after the last one; 0: once for each account
  std::string description;
  std::string place;  ///< of its line, for messages
};

/// Reads the rules for a night of `today`. What is wrong is added to `faults`, each naming its line: columns
/// that are not the table's, a letter type without a definition in `database`, a condition that cannot be
/// read, two rules for one letter type and form type. Throws Failure kNotFound where the file cannot be read.
std::vector<BatchRule> ReadBatchRules(const std::filesystem::path& file, Database& database,
                                      platform::Date today, platform::TableFaults& faults);

}  // namespace server
