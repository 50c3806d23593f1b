#include "workspace/document/zemlo_corresp.h"

#include <array>
#include <utility>

#include "workspace/letters/whole_number.h"
#include "workspace/messaging/at_exit.h"

namespace workspace {

using platform::Trap;

namespace {

// The host's buttons that have no use while the workspace is open.
constexpr auto kToolbarButtons = std::to_array({7, 8, 9, 14, 12});

}  // namespace

ZEMLO_Corresp::ZEMLO_Corresp(const platform::Services& services) : services_(services), data_(services) {}

ZEMLO_Corresp::~ZEMLO_Corresp() {
  Terminate();
}

bool ZEMLO_Corresp::DataChanged() {
  Trap(services_, "ZEMLO_Corresp.DataChanged",
       [&] { services_.status.ShowStatus("Checking for data changes"); });
  return false;
}

void ZEMLO_Corresp::BeforeUnload() {
  ConfigureToolbar(true);
}

void ZEMLO_Corresp::SaveData() {
  constexpr std::string_view kProcedure = "ZEMLO_Corresp.SaveData";
  const AtExit normal_pointer(services_, kProcedure,
                              [&] { services_.host.SetMousePointer(platform::MousePointer::kNormal); });
  Trap(services_, kProcedure, [&] {
    if (DataChanged()) return;
    services_.status.ShowStatus("Information did not change.  Save request canceled");
    throw platform::CancelSave();
  });
}

void ZEMLO_Corresp::CheckEdit(PageIndex page) {
  Trap(services_, "ZEMLO_Corresp.CheckEdit", [&] { RequireParts().field_check.CheckEdit(page); });
}

void ZEMLO_Corresp::ClearEdit() {
  Trap(services_, "ZEMLO_Corresp.ClearEdit", [&] { RequireParts().field_check.ClearEdit(); });
}

void ZEMLO_Corresp::SelectNewType() {
  Trap(services_, "ZEMLO_Corresp.SelectNewType", [&] {
    auto& parts = RequireParts();
    parts.gate.Run([&parts] { parts.SelectNewType(); });
  });
}

bool ZEMLO_Corresp::CloseDocument() {
  constexpr std::string_view kProcedure = "ZEMLO_IssueMC.CloseDocument";  // another object's name, as given
  const AtExit buttons(services_, kProcedure, [&] { ConfigureToolbar(true); });
  Trap(services_, kProcedure, [&] { services_.files.DeleteFile(application_file_path_); });
  return true;
}

bool ZEMLO_Corresp::NeedSave() {
  Trap(services_, "ZEMLO_Corresp.NeedSave", [&] { DataChanged(); });
  return false;
}

void ZEMLO_Corresp::ConfigureToolbar(bool enabled) {
  Trap(services_, "ZEMLO_Corresp.ConfigureToolbar", [&] {
    for (const int button : kToolbarButtons) {
      services_.status.EnableToolbarButton(button, enabled, host_tag_);
    }
  });
}

std::vector<std::string> ZEMLO_Corresp::CheckMessages(PageIndex page) {
  return parts_ ? parts_->field_check.messages(page) : std::vector<std::string>();
}

void ZEMLO_Corresp::TryTemplate(TemplateInForce tried) {
  RequireParts().generation.TryTemplate(std::move(tried));
  RequireParts().field_check.TakeEveryLetter();
}

TemplateInForce ZEMLO_Corresp::TemplateOf(const std::string& letter_type) {
  TemplateInForce found;
  Trap(services_, "ZEMLO_Corresp.TemplateOf", [&] {
    found = RequireParts().templates.InForce(WholeNumber<std::int32_t>("letter type", letter_type));
  });
  return found;
}

void ZEMLO_Corresp::FillCustomerField(const customers::SelectedCustomer& chosen, PageIndex page) {
  Trap(services_, "ZEMLO_Corresp.FillCustomerField", [&] {
    customers::FillCustomerField(services_, chosen, page, data_.customer, data_.pages.Letter(page).panel);
  });
}

void ZEMLO_Corresp::Terminate() {
  connections_.clear();
  if (parts_) parts_->printing.ReleasePreview();
}

Parts& ZEMLO_Corresp::RequireParts() const {
  if (parts_) return *parts_;
  throw platform::Failure(platform::Failure::Kind::kInternal, "The workspace has not been initialised.");
}

}  // namespace workspace
