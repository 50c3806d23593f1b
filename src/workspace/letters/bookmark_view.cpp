#include "workspace/letters/bookmark_view.h"

#include "platform/agreed/letter_record.h"
#include "platform/agreed/requests.h"
#include "platform/failure.h"

namespace workspace {
namespace {

constexpr const char* kAddressFailedText =
    "Address Validation Error: Finalist verification for residential/mailing address failed";

}  // namespace

void BookmarkView::ViewBookMark(const Reply& reply) {
  platform::Trap(services_, "ZEMLO_Corresp.ViewBookMark", [&] {
    const auto& letter = reply.letter;
    LetterInformation shown{
        .context = ContextOf(reply),
        .first_printed = letter.first_printed,
        .last_printed = letter.last_printed,
        .print_status = services_.utilities.GetCodeDescription("LTRPRNTCD", letter.print_status),
        .print_error = letter.print_status == platform::print_status::kAddressNotVerified
                           ? kAddressFailedText
                           : letter.print_error};
    if (letter.from_batch_browser && with_diagnostics_) shown.batch_error = letter.print_error;
    services_.status.ShowStatus("Ready");
    forms_.ShowLetterInformation(shown);
  });
}

std::string BookmarkView::ContextOf(const Reply& reply) const {
  if (const auto context = RowsOf(services_, reply, platform::record_name::kContext))
    return context->FirstText();
  throw platform::Failure(platform::Failure::Kind::kNotFound,
                          "The server's reply brought no data of the letter.");
}

}  // namespace workspace
