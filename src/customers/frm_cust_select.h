#pragma once

#include <string>

#include "customers/cust_select.h"
#include "platform/controls/command.h"
#include "platform/controls/form.h"
#include "platform/parties/services.h"

namespace customers {

/// "Select Customer": finds a customer, nothing else.
///
/// Only its two commands leave it: the close box is refused. "OK" hides it with the choice for whoever showed
/// it, who dismisses it then; "Cancel" dismisses it, and nobody is chosen.
class frmCustSelect : public platform::Form {
 public:
  /// `services` outlives the form.
  frmCustSelect(const platform::Services& services, CustomerMaintenance maintenance);

  ZEMLO_CustSelect ZEMLO_CustSelect1;
  platform::Command cmdOk{"OK"};
  platform::Command cmdCancel{"Cancel"};

  /// Unloads the form, which has been read.
  void Dismiss();

 protected:
  void OnLoad() override;
  bool OnQueryUnload() override;
  void OnUnload() override;

 private:
  const platform::Services& services_;
  bool is_dismissed_ = false;
  platform::Connection ok_clicked_;
  platform::Connection cancel_clicked_;
};

}  // namespace customers
