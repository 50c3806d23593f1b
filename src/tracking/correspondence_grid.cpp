#include "tracking/correspondence_grid.h"

#include "tracking/letter_rules.h"

namespace tracking {

void CorrespondenceGrid::sdgGrid_Click() {
  using workspace::CorrespondencePage;
  platform::Trap(services_, "ZEMLO_Correspondence.sdgGrid_Click", [&] {
    const auto& selected = page_.sdgGrid.selected_rows();
    if (selected.size() == 1) page_.sdgGrid.MakeCurrent(selected.front());
    const bool is_allowed = kRuleOnline.Allows({}, page_.sdgGrid);
    for (const auto option : {CorrespondencePage::kViewLetter, CorrespondencePage::kPrintLetter}) {
      page_.OptOnline[option].SetEnabled(is_allowed);
    }
  });
}

}  // namespace tracking
