#pragma once

#include <cstdint>

namespace tracking {

/// The counters of one letter type in a batch run, for programs outside that want to hold them.
class ZEMLO_BatchStat {
 public:
  std::int32_t LetterId = 0;
  std::int32_t Total = 0;
  std::int32_t Processs = 0;  // spelled so as given
  std::int32_t Success = 0;
  std::int32_t Failure = 0;
};

}  // namespace tracking
