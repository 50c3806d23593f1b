#include "desktop/pages/tracking_page_view.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "desktop/binders/command_binding.h"
#include "desktop/binders/date_field_edit.h"
#include "desktop/binders/field_layout.h"
#include "desktop/binders/text_field_binding.h"
#include "desktop/pages/customer_panel_view.h"
#include "desktop/pages/letter_fields_view.h"

namespace desktop {
namespace {

template <typename Field, typename Control>
void AddBound(QGridLayout& layout, int row, int column, const char* caption, Control& control) {
  auto* field = new Field;
  AddField(layout, row, column, caption, *field);
  Bind(control, *field);
}

QGroupBox* MakeStatus(workspace::TrackingPage& page) {
  auto* box = new QGroupBox(QStringLiteral("Letter Status"));
  auto* layout = new QGridLayout(box);
  AddOptions(page.OptLetterStatus, OptionRadio::Arrows::kChoose, *layout,
             static_cast<int>(page.OptLetterStatus.size()));
  return box;
}

QGroupBox* MakeActions(workspace::TrackingPage& page, QGroupBox* box) {
  Bind(page.letter_action, *box);
  auto* layout = new QGridLayout(box);
  AddOptions(page.OptLetter, OptionRadio::Arrows::kMove, *layout);
  layout->setRowStretch(static_cast<int>(page.OptLetter.size()), 1);
  return box;
}

}  // namespace

TrackingPageView::TrackingPageView(workspace::TrackingPage& page, platform::ViewSettings& settings,
                                   QWidget* parent)
    : PageView(parent) {
  auto* left = new QVBoxLayout;
  left->addWidget(new CustomerPanelView(page.panel));
  left->addWidget(MakeCriteria(page));
  auto* upper = new QHBoxLayout;
  upper->addLayout(left, 1);
  auto* actions = new QGroupBox;
  HandOnKeyboardOf(page.letter_action, *actions);
  upper->addWidget(MakeActions(page, actions));
  auto* layout = new QVBoxLayout(&content());
  layout->addLayout(upper);
  AddResults(*layout, page.sdgGrid, "Letters found", settings);
}

QWidget* TrackingPageView::MakeCriteria(workspace::TrackingPage& page) {
  auto* box = new QGroupBox(QStringLiteral("Search Criteria"));
  auto* layout = new QGridLayout(box);
  AddLetterFields(page, *layout);
  AddBound<QLineEdit>(*layout, 0, 2, "Troop/&District:", page.txtTD);
  AddBound<QLineEdit>(*layout, 1, 2, "&Batch No.:", page.txtBatch);
  AddBound<DateFieldEdit>(*layout, 0, 4, "F&rom:", page.from_date);
  AddBound<DateFieldEdit>(*layout, 1, 4, "T&o:", page.to_date);

  auto* buttons = new QHBoxLayout;
  auto* search = MakeButton(page.search);
  buttons->addStretch();
  buttons->addWidget(search);
  buttons->addWidget(MakeButton(page.clear));
  layout->addWidget(MakeStatus(page), 2, 2, 2, 2);
  layout->addLayout(buttons, 2, 4, 2, 2, Qt::AlignBottom);
  layout->setRowStretch(3, 1);
  layout->setColumnStretch(1, 3);
  layout->setColumnStretch(3, 1);
  SetDefaultButton(search);
  return box;
}

}  // namespace desktop
