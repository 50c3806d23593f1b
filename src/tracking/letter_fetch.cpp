#include "tracking/letter_fetch.h"

#include <cstdint>
#include <utility>

#include "platform/failure.h"

namespace tracking {

using platform::Criterion;
using platform::Failure;

bool LetterFetch::RePrintLetter(const std::string& action, workspace::PageIndex grid) {
  return platform::Trap(services_, "ZEMLO_Corresp.RePrintLetter", [&] {
    letter_.sequence_number = CurrentSequenceNumber(grid);
    workspace::RequestDescription request{
        .type = 83,
        .name = action,
        .keys = {Criterion("key:FetchContext", std::to_string(letter_.sequence_number))},
        .status = "Requesting Letter History",
        .status_when = workspace::RequestDescription::Status::kBeforeSending,
    };
    if (action == "Letter_BKView") {
      request.keys.push_back(Criterion("key:EmitFieldDescriptors", "Y"));
      request.keys.push_back(Criterion("key: ExplainState", "Y"));
    }
    envelope_.Send(request);
  });
}

std::int32_t LetterFetch::CurrentSequenceNumber(workspace::PageIndex grid) {
  const auto& letters = pages_.sdgGrid(grid).rows();
  if (!letters) throw Failure(Failure::Kind::kNotFound, "No letters are listed.");
  const auto number = platform::While("reading SEQ_NBR", [&] { return letters->Get("SEQ_NBR").AsInteger(); });
  if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
  throw Failure(Failure::Kind::kRefused,
                "The letter number \"" + std::to_string(number) + "\" is too large to be asked for.");
}

}  // namespace tracking
