#include "workspace/letters/bookmark_view.h"

#include "platform/failure.h"
#include "workspace/letters/address_status.h"

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
        .print_error = letter.print_status == kAddressFailed ? kAddressFailedText : letter.print_error};
    if (letter.from_batch_browser && with_diagnostics_) shown.batch_error = letter.print_error;
    services_.status.ShowStatus("Ready");
    forms_.ShowLetterInformation(shown);
  });
}

std::string BookmarkView::ContextOf(const Reply& reply) const {
  if (const auto context = RowsOf(services_, reply, "XML_Context")) return context->FirstText();
  throw platform::Failure(platform::Failure::Kind::kNotFound,
                          "The server's reply brought no data of the letter.");
}

}  // namespace workspace
