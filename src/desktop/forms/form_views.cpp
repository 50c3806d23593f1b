#include "desktop/forms/form_views.h"

#include "desktop/forms/account_dialog_view.h"
#include "desktop/forms/batch_statistics_view.h"
#include "desktop/forms/cust_maint_view.h"
#include "desktop/forms/customer_dialog_view.h"
#include "desktop/forms/letter_form_view.h"
#include "desktop/forms/letter_information_view.h"
#include "desktop/forms/print_status_view.h"
#include "desktop/forms/print_summary_view.h"

namespace desktop {

void RegisterFormViews(QtHostShell& shell) {
  shell.ShowFormsWith<customers::frmCustSelect>([](auto& form) { return new CustomerDialogView(form); });
  shell.ShowFormsWith<customers::ZEMLO_SelectCustFormInq>(
      [](auto& form) { return new AccountDialogView(form); });
  shell.ShowFormsWith<customers::ZEMLO_CustMaint>([](auto& form) { return new CustMaintView(form); });
  shell.ShowFormsWith<composition::frmBatch>([](auto& form) { return new LetterInformationView(form); });
  shell.ShowFormsWith<composition::frmLetter>([](auto& form) { return new LetterFormView(form); });
  shell.ShowFormsWith<tracking::frmBatchStat>([](auto& form) { return new BatchStatisticsView(form); });
  shell.ShowFormsWith<tracking::frmPrintStatus>([](auto& form) { return new PrintStatusView(form); });
  shell.ShowFormsWith<tracking::frmPrintSummary>([](auto& form) { return new PrintSummaryView(form); });
}

}  // namespace desktop
