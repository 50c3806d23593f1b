#include "customers/frm_cust_select.h"

#include <utility>

namespace customers {

frmCustSelect::frmCustSelect(const platform::Services& services, CustomerMaintenance maintenance)
    : Form("Select Customer"), ZEMLO_CustSelect1(services, std::move(maintenance)), services_(services) {
  const auto run = [this](auto work) {
    RunHandler([&] { platform::Trap(services_, "frmCustSelect.mCmdOk_Click", work); });
  };
  ok_clicked_ = cmdOk.Click.Connect([this, run] {
    ZEMLO_CustSelect1.OnceSavedIsThere([this, run] {
      run([this] {
        ZEMLO_CustSelect1.UserLeavesList();
        ZEMLO_CustSelect1.Leave();
        Hide();
      });
    });
  });
  cancel_clicked_ = cmdCancel.Click.Connect([this, run] { run([this] { Dismiss(); }); });
}

void frmCustSelect::OnLoad() {
  platform::Trap(services_, "frmHstyAlerts.Form_Load", [&] {  // another form's name, as given
    ZEMLO_CustSelect1.AlertsOn = false;
    services_.utilities.RegisterForm(*this);
    services_.host.SetMousePointer(platform::MousePointer::kNormal);
    ZEMLO_CustSelect1.Start();
  });
}

void frmCustSelect::Dismiss() {
  is_dismissed_ = true;
  Close();
}

bool frmCustSelect::OnQueryUnload() {
  return is_dismissed_;
}

void frmCustSelect::OnUnload() {
  platform::Trap(services_, "frmCustSelect.Form_Unload", [&] { ZEMLO_CustSelect1.Reset(); });
}

}  // namespace customers
