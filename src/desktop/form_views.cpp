#include "desktop/form_views.h"

#include "desktop/customer_search_view.h"

namespace desktop {

void RegisterFormViews(QtHostShell& shell) {
  shell.ShowFormsWith<customers::frmCustSearch>([](auto& form) { return new CustomerSearchView(form); });
}

}  // namespace desktop
