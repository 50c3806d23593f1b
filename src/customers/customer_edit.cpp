#include "customers/customer_edit.h"

#include <utility>

#include "customers/maintenance/customer_fill.h"
#include "platform/agreed/requests.h"
#include "platform/agreed/rights.h"
#include "platform/identity.h"
#include "platform/text.h"
#include "workspace/messaging/at_exit.h"

namespace customers {

namespace {

constexpr const char* kNoRight = "Insufficient privileges to Edit customers.";
constexpr const char* kNoRightToAdd = "Insufficient privileges to Add customers.";

constexpr const char* kNoCustomer = "The customer is no longer in the register. Choose the customer again.";

std::string MaintenanceApplication() {
  return std::string(platform::kApplicationName) + ".CustEdit";
}

/// "I" for an individual, "B" for a business; "" for a customer without a name.
std::string TypeOf(const platform::RecordSet& rows) {
  const auto has = [&](const char* column) { return !platform::IsBlank(rows.Text(column)); };
  if (has("LAST_NM")) return "I";
  return has("CUST_BSNS_NM") ? "B" : "";
}

}  // namespace

CustomerEdit::CustomerEdit(const platform::Services& services, std::string message_title)
    : services_(services),
      message_title_(std::move(message_title)),
      mVemtMessage_(services.messages.NewListener()),
      envelope_(services, pending_, *mVemtMessage_, MaintenanceApplication()) {
  connections_.push_back(
      mVemtMessage_->DataReady.Connect([this](const std::string& name) { DataReady(name); }));
  connections_.push_back(mVemtMessage_->MsgTimeout.Connect([this] { pending_.TimedOut(); }));
}

bool CustomerEdit::MayEdit() const {
  return services_.utilities.IsAuthorized(platform::right::kEditCustomer) || MayAdd();
}

bool CustomerEdit::MayAdd() const {
  return services_.utilities.IsAuthorized(platform::right::kAddCustomer);
}

void CustomerEdit::Edit(const std::string& customer_id) {
  if (is_under_way_) return;
  is_under_way_ = true;
  const bool sent = platform::Trap(services_, "frmBatchData.SendCustInq", [&] {
    namespace request_key = platform::request_key;
    const auto is = [](std::string_view key, std::string value) {
      return platform::Criterion(platform::KeyNamed(key), std::move(value));
    };
    envelope_.Send(
        {.type = platform::message_type::kCustomer,
         .name = "CustomerInq",
         .keys = {is(request_key::kElementName, std::string(request_key::kCustomers)),
                  is(request_key::kFirstRow, "1"), is(request_key::kLastRow, "20"),
                  is(request_key::kSingleCredential, "NO"), is(request_key::kCustomer, customer_id)},
         .status = "Requesting Customer Information"});
  });
  if (!sent) End("");
}

void CustomerEdit::Forget() {
  if (!pending_.IsAwaited()) return;
  pending_.Forget();
  services_.host.SetMousePointer(platform::MousePointer::kNormal);
  services_.status.ShowStatus("Ready");
  End("");
}

void CustomerEdit::DataReady(const std::string& application) {
  if (application != MaintenanceApplication()) return;
  platform::Trap(services_, "CustomerEdit.DataReady", [&] {
    const auto reply = pending_.TakeReply(services_.messages);
    if (!reply) return;
    const workspace::AtExit over(services_, "CustomerEdit.DataReady", [&] {
      services_.host.SetMousePointer(platform::MousePointer::kNormal);
      if (is_under_way_) End("");
    });
    const auto error =
        services_.messages.GetReplyError(application, "CustomerEdit.DataReady", reply->message_key);
    if (error.empty()) {
      std::string saved_id;
      platform::Trap(services_, "frmBatchData.CustomerMaint", [&] { saved_id = CustomerMaint(*reply); });
      services_.status.ShowStatus("Ready");  // after the dialog, whose saves leave the status empty
      return End(saved_id);
    }
    ShowRefusal(error);
    services_.status.ShowStatus(reply->timed_out ? "Search timed out" : "Search was not successful");
  });
}

std::string CustomerEdit::CustomerMaint(const workspace::Reply& reply) {
  const auto record = services_.messages.GetRecord(MaintenanceApplication(), "Customer", reply.message_key);
  const bool is_there = record && record->RecordCount() > 0;
  if (!is_there || !MayEdit()) {
    ShowRefusal(is_there ? kNoRight : kNoCustomer);
    return "";
  }
  const auto& rows = *record->Recordset();
  ZEMLO_CustMaint form(services_, message_title_);
  form.SetCustomerType(TypeOf(rows));
  form.SetCustomerType();
  platform::Trap(services_, "frmBatchData.ProcessCustomerEdit", [&] { ProcessCustomerEdit(form, rows); });
  return form.saved() ? form.CustID : "";
}

void CustomerEdit::ProcessCustomerEdit(ZEMLO_CustMaint& form, const platform::RecordSet& row) {
  const bool filled = platform::Trap(services_, "frmBatchData.MoveCustomerEditInfo",
                                     [&] { MoveCustomerEditInfo(services_, row, form); });
  if (!filled) return;  // a dialog with half of a customer would store it so
  form.SetCustomerMode("UPD");
  services_.host.SetMousePointer(platform::MousePointer::kNormal);
  services_.host.ShowModal(form);
  form.Close();
}

void CustomerEdit::AddBusiness(const std::vector<std::string>& seeds) {
  Add("B", seeds);
}

void CustomerEdit::AddIndividual(const std::vector<std::string>& seeds) {
  Add("I", seeds);
}

void CustomerEdit::Add(const char* type, const std::vector<std::string>& seeds) {
  if (is_under_way_) return;
  is_under_way_ = true;
  std::string saved_id;
  platform::Trap(services_, "CustomerEdit.Add", [&] {
    if (!MayAdd()) return ShowRefusal(kNoRightToAdd);
    ZEMLO_CustMaint form(services_, message_title_);
    form.SetCustomerType(type);
    const bool is_business = form.SetCustomerType() == "B";
    if (is_business) {
      form.SetupCustomerForm(seeds);
    } else {
      form.FillIndividualAdd(seeds);
    }
    form.SetCustomerMode("ADD");
    services_.host.ShowModal(form);
    form.Close();
    if (form.saved()) saved_id = form.CustID;
  });
  End(saved_id);
}

void CustomerEdit::ShowRefusal(const std::string& text) {
  services_.host.SetMousePointer(platform::MousePointer::kNormal);
  services_.host.ShowMessage({text, platform::MessageIcon::kCritical, message_title_});
}

void CustomerEdit::End(const std::string& saved_id) {
  is_under_way_ = false;
  if (!saved_id.empty()) Saved(saved_id);
  Ended();
}

}  // namespace customers
