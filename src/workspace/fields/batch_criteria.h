#pragma once

#include <cstddef>
#include <optional>

#include "platform/parties/services.h"
#include "workspace/fields/field_check.h"
#include "workspace/pages/pages.h"

namespace workspace {

/// What the nightly batch runs are searched by, on the batch page.
class BatchCriteria {
 public:
  /// All outlive this.
  BatchCriteria(const platform::Services& services, BatchPage& page, FieldCheck& field_check)
      : services_(services), page_(page), field_check_(field_check) {}

  /// "Last Night" empties the dates, "Date/Date Range" starts them with today; then the page is checked.
  void OptBatchDate_Click(std::size_t option);
  void OptBatchStatus_Click();
  /// "Clear": no criteria, no runs, nothing to do with one.
  void Clear();

 private:
  void SetDates(std::optional<platform::Date> day);

  const platform::Services& services_;
  BatchPage& page_;
  FieldCheck& field_check_;
};

}  // namespace workspace
