#include "workspace/pages/grid_style.h"

namespace workspace {

void SetGridBolding(const platform::Services& services, platform::Grid& grid) {
  platform::Trap(services, "ZEMLO_Corresp.SetGridBolding", [&] {
    grid.style_sets["UNBOLD"].bold = false;
    grid.style.bold = true;
    for (auto& column : grid.columns) column.cell_style = column.heading_style = "UNBOLD";
    grid.ContentChanged();
  });
}

}  // namespace workspace
