#pragma once

#include <array>
#include <cstddef>

#include "platform/controls/command.h"
#include "platform/controls/date_field.h"
#include "platform/controls/grid.h"
#include "platform/controls/label.h"
#include "platform/controls/option_button.h"
#include "workspace/pages/grid_columns.h"

namespace workspace {

/// "&Track Batch Files": the nightly batch runs are found and acted upon.
struct BatchPage {
  // Commands of cmdBatch.
  static constexpr std::size_t kSearch = 0;
  static constexpr std::size_t kClear = 1;
  // Options of OptBatchDate.
  static constexpr std::size_t kLastNight = 0;
  static constexpr std::size_t kDateRange = 1;
  // Options of OptBatchStatus.
  static constexpr std::size_t kAll = 0;
  static constexpr std::size_t kSuccessful = 1;
  static constexpr std::size_t kIncomplete = 2;
  static constexpr std::size_t kFailure = 3;
  // Options of OptBatchAct.
  static constexpr std::size_t kPrintTaxLiability = 0;
  static constexpr std::size_t kPrintTaxWarrant = 1;
  static constexpr std::size_t kResubmitBatch = 2;
  static constexpr std::size_t kBatchDetails = 3;
  static constexpr std::size_t kBatchStatistics = 4;

  BatchPage() { sdgGrid.columns = ColumnsOf(kBatchRunColumns); }

  platform::Frame date{"Date"};
  platform::OptionGroup<2> OptBatchDate{{"Last Night", "Date/Date Range"}};
  platform::DateField start_date;  ///< date field 3
  platform::DateField end_date;    ///< date field 4
  platform::Frame status{"Status"};
  platform::OptionGroup<4> OptBatchStatus{{"All", "Successful", "Incomplete", "Failure"}};
  platform::Frame batch_search{"Batch Search:"};
  std::array<platform::Command, 2> cmdBatch{platform::Command("Search"), platform::Command("Clear")};

  platform::Frame batch_action{"Batch Action"};
  platform::OptionGroup<5> OptBatchAct{{"Print Certificate of Tax Liability", "Print Tax Warrant",
                                        "Resubmit Batch", "Batch Details", "Batch Statistics"}};
  platform::Label station;  ///< Troop/District of the current batch reprint
  platform::Grid sdgGrid;
};

}  // namespace workspace
