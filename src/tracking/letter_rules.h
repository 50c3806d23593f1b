#pragma once

#include <cstddef>
#include <string>

#include "platform/controls/grid.h"
#include "platform/parties/services.h"
#include "tracking/letter_action_lists.h"

namespace tracking {

/// What a letter action asks of the letters that are selected for it. The one place that decides whether the
/// action can be used, and so the one that knows why not.
struct LetterRule {
  enum class Takes {
    kOneLetter,
    kSeveral,                 ///< where the status of each allows it
    kSeveralWhateverTheyAre,  ///< a single one by its status, several without looking: the reply tells
  };

  Takes takes = Takes::kOneLetter;
  std::string LetterActionLists::*list = nullptr;  ///< the statuses that allow it; null: all do

  /// Whether the action can be used with the letters selected in that list.
  bool Allows(const LetterActionLists& lists, const platform::Grid& letters) const;
  /// In whole sentences, by the same rule; "" where it can be used. May throw what the code tables throw.
  std::string WhyNot(const platform::Services& services, const LetterActionLists& lists,
                     const platform::Grid& letters) const;
};

/// Of an option of workspace::TrackingPage::OptLetter.
const LetterRule& RuleOf(std::size_t option);
/// Of "View Letter" and "Print Letter" of "Generate Letter (s)".
inline constexpr LetterRule kRuleOnline{};

}  // namespace tracking
