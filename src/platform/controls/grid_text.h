#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/controls/grid.h"

namespace platform {

/// Rows of a grid as text for another program: a line of headings, then a line for each row, cells parted by
/// tabs. A tab or line break inside a value becomes a blank, so that every value stays in its cell.
///
/// `rows` and `columns` (indexes into the grid's) are written in the order given; rows are loaded first. ""
/// where either is empty.
std::string TextOfRows(Grid& grid, const std::vector<std::size_t>& rows,
                       const std::vector<std::size_t>& columns);

}  // namespace platform
