#include "platform/agreed/saved_letter.h"

#include "platform/text.h"

namespace platform {

std::optional<SavedAs> SavedAsOf(std::string_view ending) {
  const auto is = [&](std::string_view known) {
    return EqualsIgnoringCase(ending, known) || EqualsIgnoringCase(ending, known.substr(1));
  };
  if (is(kDocumentEnding)) return SavedAs::kDocument;
  if (is(kPdfEnding)) return SavedAs::kPdf;
  return std::nullopt;
}

}  // namespace platform
