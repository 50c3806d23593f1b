#include "tracking/correspondence_grid.h"

namespace tracking {

void CorrespondenceGrid::sdgGrid_Click() {
  using workspace::CorrespondencePage;
  platform::Trap(services_, "ZEMLO_Correspondence.sdgGrid_Click", [&] {
    const auto& selected = page_.sdgGrid.selected_rows();
    const bool is_one = selected.size() == 1;
    if (is_one) page_.sdgGrid.MakeCurrent(selected.front());
    page_.OptOnline[CorrespondencePage::kViewLetter].SetEnabled(is_one);
    page_.OptOnline[CorrespondencePage::kPrintLetter].SetEnabled(is_one);
  });
}

}  // namespace tracking
