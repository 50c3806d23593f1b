#pragma once

#include <QMenu>

namespace desktop {

class GridView;

/// What can be done with the rows and columns of a list. `section` is the column the user points at.
void FillRowMenu(QMenu& menu, GridView& view, const QModelIndex& cell);
void FillHeadingMenu(QMenu& menu, GridView& view, int section);

}  // namespace desktop
