#include "platform/agreed/record_layouts.h"

#include "platform/text.h"

namespace platform {

std::optional<RecordLayout> FindRecordLayout(std::string_view name) {
  for (const auto& layout : kRecordLayouts) {
    if (EqualsIgnoringCase(layout.name, name)) return layout;
  }
  return std::nullopt;
}

}  // namespace platform
