#include "workspace/letters/listed_letters.h"

#include <cstdint>

#include "platform/failure.h"
#include "workspace/letters/whole_number.h"

namespace workspace {

using platform::Failure;

std::string ListedLetters::CurrentText(std::string_view column) const {
  if (grid_.rows()) return grid_.rows()->Text(column);
  throw Failure(Failure::Kind::kNotFound, "No letters are listed.");
}

void ListedLetters::MakeSelectedCurrent(std::size_t n) {
  const auto& selected = grid_.selected_rows();
  if (n < selected.size()) return grid_.MakeCurrent(selected[n]);
  throw Failure(Failure::Kind::kNotFound,
                "Of the letters to print only " + std::to_string(selected.size()) + " are still selected.");
}

LetterData CurrentLetter(const LetterSource& letters) {
  const auto number = platform::While("reading SEQ_NBR", [&] {
    return WholeNumber<std::int32_t>("letter number", letters.CurrentText("SEQ_NBR"));
  });
  return {.template_name = letters.CurrentText("DCMT_FILE_TXT"),
          .print_status = letters.CurrentText("PRNT_STTS_CD"),
          .sequence_number = number,
          .first_printed = letters.CurrentText("PRNT_TS"),
          .last_printed = letters.CurrentText("LST_PRNT_TS"),
          .print_error = letters.CurrentText("PRCS_ERR_TXT"),
          .from_batch_browser = letters.IsBatchBrowser()};
}

}  // namespace workspace
