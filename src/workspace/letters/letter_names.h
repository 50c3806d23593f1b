#pragma once

#include <map>
#include <optional>
#include <string>

#include "platform/parties/services.h"

namespace workspace {

/// What people call the letter types, as the reference database has it for the office's region. Read once a
/// day.
class LetterNames {
 public:
  /// `services` outlives this.
  explicit LetterNames(const platform::Services& services) : services_(services) {}

  /// The type itself where it has no name. Throws Failure where the database cannot be read.
  std::string NameOf(const std::string& letter_type);

 private:
  void Read();

  const platform::Services& services_;
  std::map<std::string, std::string> names_;
  std::optional<platform::Date> read_on_;
};

}  // namespace workspace
