#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/controls/label.h"
#include "platform/record_set.h"

namespace tracking {

/// What a form about one batch run shows of it beside its letters.
struct RunFigures {
  struct Figure {
    std::string_view caption;
    std::string_view column;
  };
  static constexpr auto kFigures = std::to_array<Figure>({
      {"Job Created:", "BTCH_CRTE_TS"},
      {"Letter Count:", "BTCH_LTR_CNT"},
      {"Letter Processed:", "LTR_PRCS_CNT"},
      {"Process Started:", "PRCS_STRT_TS"},
      {"Process Ended:", "PRCS_END_TS"},
      {"Successful Letters:", "LTR_SCS_CNT"},
      {"Failed Letters:", "LTR_FAIL_CNT"},
  });

  platform::Frame frame{"Batch Details"};
  std::array<platform::Label, kFigures.size()> values;

  /// Copies them from the current row of the listed runs.
  void Take(const platform::RecordSet& runs);
};

/// "`what` - Batch Sequence # 1042"; it says so where the run's letters still wait for the next one.
std::string RunCaption(std::string_view what, const platform::RecordSet& runs);

}  // namespace tracking
