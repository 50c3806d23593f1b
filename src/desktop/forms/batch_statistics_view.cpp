#include "desktop/forms/batch_statistics_view.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QScrollArea>
#include <QVBoxLayout>

#include "desktop/binders/command_binding.h"
#include "desktop/binders/field_layout.h"
#include "desktop/binders/grid_view.h"
#include "desktop/forms/run_figures_box.h"
#include "desktop/forms/statistics_picture.h"
#include "desktop/look/screen_fit.h"

namespace desktop {
namespace {

constexpr QSize kSmallestList(820, 170);
constexpr QSize kSmallestPicture(820, 170);

/// The list is disabled because it is for reading only: it has to be readable.
void KeepReadable(QWidget& list) {
  auto palette = list.palette();
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText, QPalette::Base})
    palette.setColor(QPalette::Disabled, role, palette.color(QPalette::Active, role));
  list.setPalette(palette);
}

}  // namespace

BatchStatisticsView::BatchStatisticsView(tracking::frmBatchStat& form, QWidget* parent) : QWidget(parent) {
  auto* scrolled = new QScrollArea(this);
  scrolled->setWidget(new StatisticsPicture(form, scrolled));
  scrolled->setWidgetResizable(true);
  scrolled->setMinimumSize(SmallestOnScreen(*this, kSmallestPicture));
  auto* list = new GridView(this);
  Bind(form.sdgGrid, *list, QStringLiteral("Batch Job Statistics"));
  list->setMinimumSize(SmallestOnScreen(*this, kSmallestList));
  list->horizontalHeader()->setStretchLastSection(true);
  KeepReadable(*list);
  auto* totals = new QLabel(this);
  Bind(form.totals, *totals, QStringLiteral("Totals"));
  auto* close = MakeButton(form.mCmdBatch, this);
  close->setDefault(true);
  auto* ends = new QHBoxLayout;
  ends->addWidget(totals, 1);
  ends->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(MakeFiguresBox(form.figures, this));
  layout->addWidget(scrolled, 1);
  layout->addWidget(list, 1);
  layout->addLayout(ends);
}

}  // namespace desktop
