#include "workspace/letters/bookmark_view.h"

#include <optional>
#include <string_view>

#include "platform/failure.h"
#include "workspace/letters/address_status.h"

namespace workspace {
namespace {

using platform::Failure;

constexpr const char* kAddressFailedText =
    "Address Validation Error: Finalist verification for residential/mailing address failed";

}  // namespace

void BookmarkView::ViewBookMark(const Reply& reply) {
  platform::Trap(uses_.services, "ZEMLO_Corresp.ViewBookMark", [&] {
    LetterInformation letter{.context = ContextOf(reply)};
    uses_.services.status.ShowStatus("Ready");
    AddRow(reply, letter);
    uses_.forms.ShowLetterInformation(letter);
  });
}

std::string BookmarkView::ContextOf(const Reply& reply) const {
  if (const auto context = RowsOf(uses_.services, reply, "XML_Context")) return context->FirstText();
  throw Failure(Failure::Kind::kNotFound, "The server's reply brought no data of the letter.");
}

void BookmarkView::AddRow(const Reply& reply, LetterInformation& letter) const {
  const auto listed = IsBatchBrowserOpen() ? std::nullopt : std::optional(RowOf(reply.letter));
  const auto text = [&](std::string_view column) {
    return listed ? uses_.letters.rows()->Text(*listed, column) : uses_.batch_browser->CurrentText(column);
  };
  const auto status = text("PRNT_STTS_CD");
  const auto error = text("PRCS_ERR_TXT");
  letter.first_printed = text("PRNT_TS");
  letter.last_printed = text("LST_PRNT_TS");
  letter.print_status = uses_.services.utilities.GetCodeDescription("LTRPRNTCD", status);
  letter.print_error = status == kAddressFailed ? kAddressFailedText : error;
  if (IsBatchBrowserOpen() && uses_.with_diagnostics) letter.batch_error = error;
}

std::size_t BookmarkView::RowOf(const LetterData& letter) const {
  const auto& letters = uses_.letters.rows();
  const auto number = std::to_string(letter.sequence_number);
  const auto row =
      letters ? letters->Find("SEQ_NBR", platform::RecordSet::Match::kEquals, number) : std::nullopt;
  if (row) return *row;
  throw Failure(Failure::Kind::kNotFound,
                "Letter " + number + " is not listed any more. Search for it again to see its information.");
}

bool BookmarkView::IsBatchBrowserOpen() const {
  return uses_.batch_browser != nullptr && uses_.batch_browser->IsOpen();
}

}  // namespace workspace
