#pragma once

#include <string>
#include <utility>
#include <vector>

namespace fakes {

/// What several fakes were told, in one order: "status Ready", "pointer hourglass", "toolbar 7 off".
class Journal {
 public:
  void Add(std::string line) { lines_.push_back(std::move(line)); }
  const std::vector<std::string>& lines() const { return lines_; }
  void Clear() { lines_.clear(); }

 private:
  std::vector<std::string> lines_;
};

}  // namespace fakes
