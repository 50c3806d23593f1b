#include "tracking/letter_fetch.h"

#include "workspace/listed_letters.h"

namespace tracking {

using platform::Criterion;

bool LetterFetch::RePrintLetter(const std::string& action, workspace::PageIndex grid) {
  return platform::Trap(services_, "ZEMLO_Corresp.RePrintLetter", [&] {
    letter_ = LetterOf(action, grid);
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

workspace::LetterData LetterFetch::LetterOf(const std::string& action, workspace::PageIndex grid) {
  if (grid == workspace::PageIndex::kBatchReprint) return {.sequence_number = next_of_run_(action)};
  auto& list = pages_.sdgGrid(grid);
  list.ShowCurrent();  // nothing is done to a letter that the user does not see
  return workspace::CurrentLetter(workspace::ListedLetters(list));
}

}  // namespace tracking
