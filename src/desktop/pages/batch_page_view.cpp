#include "desktop/pages/batch_page_view.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "desktop/binders/command_binding.h"
#include "desktop/binders/date_field_edit.h"
#include "desktop/binders/field_layout.h"

namespace desktop {
namespace {

QGroupBox* MakeDate(workspace::BatchPage& page) {
  auto* box = new QGroupBox;
  Bind(page.date, *box);
  auto* layout = new QGridLayout(box);
  AddOptions(page.OptBatchDate, OptionRadio::Arrows::kChoose, *layout);
  auto* start = new DateFieldEdit;
  auto* end = new DateFieldEdit;
  AddField(*layout, 0, 1, "Sta&rt:", *start);
  AddField(*layout, 1, 1, "&End:", *end);
  Bind(page.start_date, *start);
  Bind(page.end_date, *end);
  layout->setRowStretch(2, 1);
  return box;
}

QGroupBox* MakeStatus(workspace::BatchPage& page) {
  auto* box = new QGroupBox;
  Bind(page.status, *box);
  auto* layout = new QGridLayout(box);
  AddOptions(page.OptBatchStatus, OptionRadio::Arrows::kChoose, *layout, 2);
  layout->setRowStretch(2, 1);
  return box;
}

QGroupBox* MakeActions(workspace::BatchPage& page) {
  auto* box = new QGroupBox;
  Bind(page.batch_action, *box);
  auto* layout = new QGridLayout(box);
  AddOptions(page.OptBatchAct, OptionRadio::Arrows::kMove, *layout, 2);
  auto* station = new QLabel;
  layout->addWidget(station, 3, 0, 1, 2);
  Bind(page.station, *station);
  layout->setRowStretch(4, 1);
  return box;
}

}  // namespace

BatchPageView::BatchPageView(workspace::BatchPage& page, platform::ViewSettings& settings, QWidget* parent)
    : PageView(parent) {
  auto* upper = new QHBoxLayout;
  upper->addWidget(MakeDate(page));
  upper->addWidget(MakeStatus(page));
  upper->addWidget(MakeSearch(page));
  upper->addWidget(MakeActions(page), 1);
  auto* layout = new QVBoxLayout(&content());
  layout->addLayout(upper);
  AddResults(*layout, page.sdgGrid, "Batch runs", settings);
}

QWidget* BatchPageView::MakeSearch(workspace::BatchPage& page) {
  auto* box = new QGroupBox;
  Bind(page.batch_search, *box);
  auto* layout = new QVBoxLayout(box);
  auto* search = MakeButton(page.cmdBatch[workspace::BatchPage::kSearch]);
  layout->addWidget(search);
  layout->addWidget(MakeButton(page.cmdBatch[workspace::BatchPage::kClear]));
  layout->addStretch();
  SetDefaultButton(search);
  return box;
}

}  // namespace desktop
