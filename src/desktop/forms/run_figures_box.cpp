#include "desktop/forms/run_figures_box.h"

#include <QGridLayout>
#include <QLabel>

#include "desktop/binders/command_binding.h"

namespace desktop {

QGroupBox* MakeFiguresBox(tracking::RunFigures& figures, QWidget* parent) {
  constexpr std::size_t kLines = 3;
  auto* box = new QGroupBox(parent);
  Bind(figures.frame, *box);
  auto* layout = new QGridLayout(box);
  for (std::size_t place = 0; place < figures.values.size(); ++place) {
    const auto caption = QString::fromUtf8(tracking::RunFigures::kFigures[place].caption.data());
    auto* value = new QLabel(box);
    Bind(figures.values[place], *value, caption);
    const int row = static_cast<int>(place % kLines);
    const int column = static_cast<int>(place / kLines) * 2;
    layout->addWidget(new QLabel(caption, box), row, column);
    layout->addWidget(value, row, column + 1);
    layout->setColumnStretch(column + 1, 1);
  }
  return box;
}

}  // namespace desktop
