#pragma once

#include <cstdint>

namespace workspace {

/// The pages of the workspace in their order.
enum class PageIndex : std::int16_t {
  kBatchReprint = -1,  ///< no page: the letter belongs to a batch reprint run
  kCorrespondence = 0,
  kTracking = 1,
  kBatch = 2,
};

}  // namespace workspace
