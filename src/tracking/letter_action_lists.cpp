#include "tracking/letter_action_lists.h"

#include <array>

#include "platform/text.h"

namespace tracking {

namespace {

struct Action {
  const char* code;
  std::string LetterActionLists::*list;
};

constexpr auto kActions = std::to_array<Action>({
    {"VLT", &LetterActionLists::ActionViewLtr},
    {"PRL", &LetterActionLists::ActionPrintLocal},
    {"VBK", &LetterActionLists::ActionViewBK},
    {"URM", &LetterActionLists::ActionURM},
    {"REP", &LetterActionLists::ActionPrintBatch},
    {"RES", &LetterActionLists::ActionResubmit},
    {"SAV", &LetterActionLists::ActionSAV},
    {"MCU", &LetterActionLists::ActionMCU},
});

}  // namespace

void GetLetterAction(const platform::Services& services, LetterActionLists& lists) {
  platform::Trap(services, "ZEMLO_Corresp.GetLetterAction", [&] {
    for (const auto& [code, list] : kActions) {
      const auto value = services.utilities.GetCodeValue("LTRACTION", code);
      // The table answers with the code itself where it has no value; its letters are no statuses.
      lists.*list = value == code ? "" : platform::Trim(value);
    }
  });
}

}  // namespace tracking
