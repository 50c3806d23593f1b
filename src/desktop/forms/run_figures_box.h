#pragma once

#include <QGroupBox>

#include "tracking/run_figures.h"

namespace desktop {

/// The figures of a batch run, to be read and copied. `figures` outlives the box.
QGroupBox* MakeFiguresBox(tracking::RunFigures& figures, QWidget* parent);

}  // namespace desktop
