#include "desktop/pages/customer_panel_view.h"

#include <QGridLayout>
#include <QHBoxLayout>

#include "desktop/binders/command_binding.h"
#include "desktop/binders/field_layout.h"

namespace desktop {

CustomerPanelView::CustomerPanelView(customers::CustomerPanel& panel, QWidget* parent)
    : QGroupBox(QStringLiteral("Customer"), parent) {
  auto* layout = new QGridLayout(this);
  layout->setColumnStretch(1, 5);
  layout->setColumnStretch(3, 3);
  AddShown(*layout, 0, 0, "Name:", panel.name);
  AddShown(*layout, 1, 0, "Address:", panel.address);
  AddShown(*layout, 2, 0, "City:", panel.city_line);
  AddShown(*layout, 0, 2, "Customer ID:", panel.customer_id);
  AddShown(*layout, 1, 2, "Fuel Tax Account:", panel.fuel_tax_account);
  AddShown(*layout, 2, 2, "Phone:", panel.phone);
  layout->setVerticalSpacing(4);
  layout->setRowStretch(3, 1);

  auto* buttons = new QHBoxLayout;
  buttons->setContentsMargins(0, 6, 0, 0);
  buttons->setSpacing(6);
  buttons->addWidget(MakeButton(panel.select_customer, this, 'C'));
  buttons->addWidget(MakeButton(panel.select_account, this, 'A'));
  // Beside the buttons: its coming and going moves nothing.
  auto* returned = new QLabel(this);
  returned->setWordWrap(true);
  auto bold = returned->font();
  bold.setBold(true);
  returned->setFont(bold);
  Bind(panel.returned_mail, *returned);
  buttons->addSpacing(6);
  buttons->addWidget(returned, 1);
  layout->addLayout(buttons, 4, 0, 1, 4);
}

}  // namespace desktop
