#include "postal/spelling.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace postal {
namespace {

constexpr std::size_t kLongest = 64;  // no street and no city has a longer name

using Row = std::array<int, kLongest + 1>;

}  // namespace

int SpellingDistance(std::string_view left, std::string_view right, int limit) {
  if (left == right) return 0;
  while (!left.empty() && !right.empty() && left.front() == right.front()) {
    left.remove_prefix(1);
    right.remove_prefix(1);
  }
  while (!left.empty() && !right.empty() && left.back() == right.back()) {
    left.remove_suffix(1);
    right.remove_suffix(1);
  }
  const auto too_far = limit + 1;
  if (std::abs(static_cast<int>(left.size()) - static_cast<int>(right.size())) > limit) return too_far;
  if (left.size() > kLongest || right.size() > kLongest) return too_far;
  std::array<Row, 3> rows;
  for (std::size_t column = 0; column <= right.size(); ++column) rows[0][column] = static_cast<int>(column);
  for (std::size_t line = 1; line <= left.size(); ++line) {
    auto& row = rows[line % 3];
    const auto& above = rows[(line - 1) % 3];
    const auto& two_above = rows[(line + 1) % 3];
    row[0] = static_cast<int>(line);
    int least = row[0];
    for (std::size_t column = 1; column <= right.size(); ++column) {
      const bool same = left[line - 1] == right[column - 1];
      row[column] = std::min({above[column] + 1, row[column - 1] + 1, above[column - 1] + (same ? 0 : 1)});
      if (line > 1 && column > 1 && left[line - 1] == right[column - 2] &&
          left[line - 2] == right[column - 1])
        row[column] = std::min(row[column], two_above[column - 2] + 1);
      least = std::min(least, row[column]);
    }
    if (least > limit) return too_far;
  }
  return std::min(rows[left.size() % 3][right.size()], too_far);
}

}  // namespace postal
