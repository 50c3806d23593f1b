#include "workspace/fields/form_type_filter.h"

namespace workspace {

void FormTypeFilter::FilterFormType(const std::string& types, PageIndex index) {
  platform::Trap(services_, "ZEMLO_Corresp.FilterFormType", [&] {
    auto& page = pages_.Letter(index);
    page.ZEMLO_FormTypeCodes.LookupFormType(types);
    page.ZEMLO_FormTypeCodes.Enable(!types.empty());
    page.txtFormNum.SetEnabled(!types.empty());
    if (!types.empty()) return;

    TakeNoDocument(page);
    if (index != PageIndex::kCorrespondence || !LacksCustomer()) return;
    services_.status.ShowReason("This letter goes to a customer. Press Select Customer to choose one.");
    services_.host.ShowMessage({"Customer Id is needed to create/search payment plan",
                                platform::MessageIcon::kInformation, message_title_});
  });
}

void FormTypeFilter::TakeNoDocument(LetterPage& page) {
  page.ZEMLO_FormTypeCodes.Code("");
  page.ZEMLO_FormTypeCodes.SetText("");
  page.txtFormNum.SetText("");
}

// The request takes its customer from the panel only when the letter is asked for: one that is shown already
// is not missing.
bool FormTypeFilter::LacksCustomer() {
  auto& page = pages_.correspondence;
  return !page.ZEMLO_LetterType.Code().empty() && request_.customer_id.empty() &&
         page.panel.customer_id.caption().empty();
}

}  // namespace workspace
