#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// What is wrong with the tables that an author writes, gathered so that all of it is learned at once. A
/// fault names file, line and column, and says what to do.
class TableFaults {
 public:
  /// "`place`: `what`".
  void Add(std::string_view place, std::string_view what);

  /// How many there are, also those beyond what is told.
  std::size_t Count() const { return count_; }
  bool IsEmpty() const { return count_ == 0; }

  /// Throws Failure kDamaged where there are any: the first twenty, a line each, how many more there are, and
  /// `consequence`, a sentence.
  void OrFail(std::string_view consequence) const;

 private:
  std::vector<std::string> told_;
  std::size_t count_ = 0;
};

}  // namespace platform
