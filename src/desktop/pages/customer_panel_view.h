#pragma once

#include <QGroupBox>

#include "customers/customer_panel.h"

namespace desktop {

/// The customer shown on a page, and the two ways to choose another one. The panel outlives the view.
class CustomerPanelView : public QGroupBox {
 public:
  explicit CustomerPanelView(customers::CustomerPanel& panel, QWidget* parent = nullptr);
};

}  // namespace desktop
