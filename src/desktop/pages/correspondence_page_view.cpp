#include "desktop/pages/correspondence_page_view.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "desktop/binders/command_binding.h"
#include "desktop/binders/field_layout.h"
#include "desktop/pages/customer_panel_view.h"
#include "desktop/pages/letter_fields_view.h"

namespace desktop {
namespace {

QGroupBox* MakeLetter(workspace::CorrespondencePage& page) {
  auto* box = new QGroupBox(QStringLiteral("Letter"));
  auto* layout = new QGridLayout(box);
  AddLetterFields(page, *layout);
  layout->setRowStretch(3, 1);
  layout->setColumnStretch(1, 1);
  return box;
}

QGroupBox* MakeActions(workspace::CorrespondencePage& page, QGroupBox* box) {
  Bind(page.letter_action, *box);
  auto* layout = new QGridLayout(box);
  AddOptions(page.OptOnline, OptionRadio::Arrows::kMove, *layout);
  layout->setRowStretch(static_cast<int>(page.OptOnline.size()), 1);
  return box;
}

}  // namespace

CorrespondencePageView::CorrespondencePageView(workspace::CorrespondencePage& page,
                                               platform::ViewSettings& settings, QWidget* parent)
    : PageView(parent) {
  auto* upper = new QHBoxLayout;
  upper->addWidget(new CustomerPanelView(page.panel), 5);
  upper->addWidget(MakeLetter(page), 4);
  auto* actions = new QGroupBox;
  HandOnKeyboardOf(page.letter_action, *actions);
  upper->addWidget(MakeActions(page, actions));
  auto* layout = new QVBoxLayout(&content());
  layout->addLayout(upper);
  AddResults(*layout, page.sdgGrid, "Letters of the customer", settings);
}

}  // namespace desktop
