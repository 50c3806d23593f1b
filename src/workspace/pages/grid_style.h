#pragma once

#include "platform/controls/grid.h"
#include "platform/parties/services.h"

namespace workspace {

/// Makes the grid's own font bold and every cell and heading plain.
void SetGridBolding(const platform::Services& services, platform::Grid& grid);

}  // namespace workspace
