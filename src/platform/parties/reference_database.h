#pragma once

#include <memory>
#include <string>

#include "platform/record_set.h"

namespace platform {

/// The local reference database: code tables, letter definitions, template versions. Read only.
class ReferenceDatabase {
 public:
  virtual ~ReferenceDatabase() = default;

  /// Runs one SELECT as it is given; the set holds all its rows, the first one current.
  ///
  /// The dialect writes dates as #yyyy-mm-dd#, knows date() as the local day, and compares texts without
  /// regard to case. Throws Failure kRefused for a statement that is no SELECT or is wrong, kNotFound or
  /// kDamaged naming the database file.
  virtual std::shared_ptr<RecordSet> Select(const std::string& statement) = 0;
};

}  // namespace platform
