#include "platform/parties/request_record.h"

#include <string>
#include <vector>

#include "platform/agreed/record_layouts.h"
#include "platform/failure.h"
#include "platform/text.h"

namespace platform {

void RequestRecord::Open() {
  constexpr std::string_view kSelect = "SELECT ";
  if (EqualsIgnoringCase(FirstCharacters(source_, kSelect.size()), kSelect)) {
    if (reference_ == nullptr)
      throw Failure(Failure::Kind::kInternal, "A reply's record cannot run a statement.");
    rows_ = reference_->Select(source_);
    return;
  }
  const auto layout = FindRecordLayout(source_);
  if (!layout) throw Failure(Failure::Kind::kNotFound, "There is no record layout \"" + source_ + "\".");
  rows_ =
      std::make_shared<RecordSet>(std::vector<std::string>(layout->columns.begin(), layout->columns.end()));
}

RecordSet& RequestRecord::Rows() const {
  if (!rows_) throw Failure(Failure::Kind::kInternal, "The record \"" + source_ + "\" has not been opened.");
  return *rows_;
}

}  // namespace platform
