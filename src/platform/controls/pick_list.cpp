#include "platform/controls/pick_list.h"

#include "platform/search_text.h"

namespace platform {

std::vector<std::size_t> PickList::RowsWith(std::string_view text) const {
  std::vector<std::size_t> found;
  if (!rows_) return found;
  const auto words = SearchWords(text);
  const auto column = DescriptionColumn();
  for (std::size_t row = 0; row < rows_->RecordCount(); ++row) {
    if (words.empty() || HoldsWords(FoldForSearch(rows_->Text(row, column)), words)) found.push_back(row);
  }
  return found;
}

}  // namespace platform
