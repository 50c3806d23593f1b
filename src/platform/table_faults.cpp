#include "platform/table_faults.h"

#include "platform/failure.h"

namespace platform {
namespace {

constexpr std::size_t kMostTold = 20;

}  // namespace

void TableFaults::Add(std::string_view place, std::string_view what) {
  if (++count_ > kMostTold) return;
  told_.push_back(std::string(place) + ": " + std::string(what));
}

void TableFaults::OrFail(std::string_view consequence) const {
  if (IsEmpty()) return;
  std::string text;
  for (const auto& fault : told_) text += fault + "\n";
  if (count_ > told_.size()) text += "There are " + std::to_string(count_ - told_.size()) + " more.\n";
  throw Failure(Failure::Kind::kDamaged, text + std::string(consequence));
}

}  // namespace platform
