#include "workspace/letters/letter_names.h"

#include "platform/text.h"

namespace workspace {

std::string LetterNames::NameOf(const std::string& letter_type) {
  const auto today = services_.clock.Today();
  if (read_on_ != today) {
    Read();
    read_on_ = today;
  }
  const auto found = names_.find(letter_type);
  return found == names_.end() ? letter_type : found->second;
}

void LetterNames::Read() {
  const auto region = services_.utilities.SqlQuote(platform::Trim(services_.settings.Region()));
  const auto rows =
      services_.reference.Select("SELECT LTR_TYP_ID, LTR_NM FROM FLS_LETTER WHERE REGION = " + region);
  names_.clear();
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
    names_[rows->Text(row, "LTR_TYP_ID")] = rows->Text(row, "LTR_NM");
  }
}

}  // namespace workspace
