#include "tracking/letter_fetch.h"

#include <utility>

#include "platform/agreed/requests.h"
#include "tracking/letter_owner.h"
#include "workspace/letters/listed_letters.h"

namespace tracking {

namespace request_key = platform::request_key;
using platform::Criterion;
using platform::KeyNamed;
using platform::KeyWithBlank;

namespace {

constexpr const char* kFetching = "ZEMLO_Corresp.RePrintLetter";

}  // namespace

// A letter that is only looked into, for its customer or its bookmarks, goes to nobody.
bool LetterFetch::AreMeant(const std::string& action, workspace::PageIndex grid) const {
  const bool goes_out = action == "Letter_Preview" || action == "Letter_Print" || action == "Letter_Save";
  const bool has_panel =
      grid == workspace::PageIndex::kCorrespondence || grid == workspace::PageIndex::kTracking;
  if (!goes_out || !has_panel) return true;
  bool are_meant = false;
  platform::Trap(services_, kFetching, [&] {
    are_meant = AreLettersMeant(services_, message_title_, pages_.Letter(grid).panel, pages_.sdgGrid(grid));
  });
  return are_meant;
}

bool LetterFetch::Fetch(const std::string& action, workspace::PageIndex grid) {
  return platform::Trap(services_, kFetching, [&] { Send(action, LetterOf(action, grid)); });
}

void LetterFetch::Send(const std::string& action, workspace::LetterData letter) {
  workspace::RequestDescription request{
      .type = platform::message_type::kFetch,
      .name = action,
      .letter = std::move(letter),
      .status = "Requesting Letter History",
      .status_when = workspace::RequestDescription::Status::kBeforeSending,
  };
  request.keys.push_back(
      Criterion(KeyNamed(request_key::kFetchContext), std::to_string(request.letter.sequence_number)));
  if (action == "Letter_BKView") {
    request.keys.push_back(Criterion(KeyNamed(request_key::kFieldDescriptors), "Y"));
    request.keys.push_back(Criterion(KeyWithBlank(request_key::kExplainState), "Y"));
  }
  envelope_.Send(request);
}

workspace::LetterData LetterFetch::LetterOf(const std::string& action, workspace::PageIndex grid) {
  if (grid == workspace::PageIndex::kBatchReprint) return {.sequence_number = next_of_run_(action)};
  auto& list = pages_.sdgGrid(grid);
  list.ShowCurrent();  // nothing is done to a letter that the user does not see
  auto letter = workspace::CurrentLetter(workspace::ListedLetters(list));
  const auto& row = *list.rows();
  if (row.HasColumn("LTR_TYP_ID")) letter.letter_type = row.Text("LTR_TYP_ID");
  letter.letter_name = pages_.correspondence.ZEMLO_LetterType.DescriptionOf(letter.letter_type);
  return letter;
}

}  // namespace tracking
