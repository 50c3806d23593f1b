#pragma once

#include <memory>

#include "platform/controls/grid.h"
#include "platform/parties/services.h"

/// The letters of the letter history in a page's grid.
namespace workspace {

/// Lists the letters, the ones first printed earliest first, from the first one. What the grid shows beyond
/// the columns of the reply is added to the letters, empty: the row formatter fills it.
void ShowLetters(platform::Grid& grid, const std::shared_ptr<platform::RecordSet>& letters);

/// Lists no letters, under the columns of the letter history.
void ShowNoLetters(const platform::Services& services, platform::Grid& grid);

}  // namespace workspace
