#include "apps/letters/item_outcomes.h"

#include <array>
#include <iostream>

#include "apps/letters/command_line.h"
#include "apps/letters/listing.h"
#include "platform/agreed/letter_record.h"

namespace apps {
namespace {

struct ItemWords {
  std::string_view outcome;
  const char* words;
};
constexpr auto kItemWords = std::to_array<ItemWords>({{platform::item_outcome::kTaken, "taken"},
                                                      {platform::item_outcome::kAlready, "waiting already"},
                                                      {platform::item_outcome::kRefused, "refused"}});

}  // namespace

int TellItemOutcomes(HeadlessOffice& office, bool as_json) {
  static constexpr std::array<Listing::Column, 5> kColumns{{{"letter", "Letter"},
                                                            {"outcome", "Outcome"},
                                                            {"action", "Batch action"},
                                                            {"status", "Status"},
                                                            {"reason", "Why"}}};
  const auto outcomes = office.workspace().parts().batch_submission.outcomes();
  if (!outcomes) return kRefused;
  Listing listing{kColumns, {}};
  bool any_refused = false;
  for (std::size_t row = 0; row < outcomes->RecordCount(); ++row) {
    const auto text = [&](const char* column) { return outcomes->Text(row, column); };
    std::string words;
    for (const auto& known : kItemWords)
      if (text("OUTCOME") == known.outcome) words = known.words;
    any_refused |= text("OUTCOME") == platform::item_outcome::kRefused;
    listing.rows.push_back(
        {text("SEQ_NBR"), words, text("BTCH_ACTN_CD"), text("PRNT_STTS_CD"), text("MEMO")});
  }
  Print(listing, as_json);
  return any_refused ? kRefused : kDone;
}

}  // namespace apps
