#pragma once

#include <cassert>
#include <cstdint>
#include <string>
#include <vector>

namespace server {

/// Numbers that look drawn and are the same every time, on every machine (the splitmix64 sequence).
class Draw {
 public:
  explicit Draw(std::uint64_t seed) : state_(seed * 0x9e3779b97f4a7c15ULL) {}
  /// From 0 to below `limit`, which is above 0.
  int Below(int limit) {
    assert(limit > 0);
    state_ += 0x9e3779b97f4a7c15ULL;
    auto mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9ULL;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebULL;
    return static_cast<int>((mixed ^ (mixed >> 31)) % static_cast<std::uint64_t>(limit));
  }
  int Between(int least, int most) { return least + Below(most - least + 1); }
  bool OneIn(int chances) { return Below(chances) == 0; }
  const std::string& From(const std::vector<std::string>& choices) {
    return choices[static_cast<std::size_t>(Below(static_cast<int>(choices.size())))];
  }
  std::string Digits(int count) {
    std::string digits;
    while (count-- > 0) digits += static_cast<char>('0' + Below(10));
    return digits;
  }

 private:
  std::uint64_t state_;
};

}  // namespace server
