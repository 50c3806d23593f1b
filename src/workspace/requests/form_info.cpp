#include "workspace/requests/form_info.h"

namespace workspace {

namespace {

// Only of what the list offers at the moment: another one would be reported as a fault.
void OfferFormType(composition::ZEMLO_LetterCombo& form_types, const std::string& code) {
  form_types.Code(form_types.DescriptionOf(code).empty() ? "" : code);
}

}  // namespace

void FillFormInfo(const platform::Services& services, const std::string& message_title, Pages& pages,
                  PageIndex index, const customers::PickedForm& form) {
  platform::Trap(services, "ZEMLO_Correspondence.FillFormInfo", [&] {
    auto& page = pages.Letter(index);
    auto& form_types = page.ZEMLO_FormTypeCodes;
    OfferFormType(form_types, form.form_type);
    page.txtFormNum.SetText(form.form_number);
    form_types.Tag = form.form_type;
    if (index != PageIndex::kCorrespondence) return;
    if (!form_types.Code().empty() || !page.ZEMLO_LetterType.Code().empty()) return;
    form_types.LookupFormType(form.form_type);
    services.host.ShowMessage({"Please select a correspondence type from the Correspondence Names list.",
                               platform::MessageIcon::kInformation, message_title});
  });
}

}  // namespace workspace
