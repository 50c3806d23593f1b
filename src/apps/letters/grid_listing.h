#pragma once

#include "platform/controls/grid.h"

namespace apps {

/// Writes the rows of a grid to standard output as it shows them, all columns: aligned, or as JSON.
void PrintGrid(platform::Grid& grid, bool as_json);

}  // namespace apps
