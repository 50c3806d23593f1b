#include "customers/select_cust_form_inq.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/agreed/form_numbers.h"
#include "platform/agreed/requests.h"
#include "platform/identity.h"
#include "platform/parties/request_record.h"
#include "platform/text.h"
#include "workspace/messaging/at_exit.h"

namespace customers {

namespace {

using platform::Trim;
using Format = platform::Grid::Format;

struct FormColumn {
  std::string_view key;
  std::string_view caption;
  bool hidden = false;
  bool derived = false;
  Format format = Format::kAsItIs;
};
constexpr auto kFormColumns = std::to_array<FormColumn>({
    {"FORM_CK_DGT_NBR", "", /*hidden=*/true},
    {"FORM_NBR", "", /*hidden=*/true},
    {"FORM_NUMBER", "Account #", false, /*derived=*/true},
    {"STP_DT", "Stop Date"},
    {"CTTN_STTS_TXT", "Status", false, /*derived=*/true},
    {"ASSMT_DUE_AMT", "Assessment", false, false, Format::kCurrency},
    {"ORIG_ASSMT_AMT", "Original Assessment"},
    {"FORM_TYP_CD", "", /*hidden=*/true},
    {"CTTN_STTS_CD", "", /*hidden=*/true},
    {"BAL_DUE", "Amount Due", false, false, Format::kCurrency},
    {"LST_PYMT_DT", "Last Payment Date"},
});

std::vector<platform::Grid::Column> AccountColumns() {
  std::vector<platform::Grid::Column> columns;
  for (const auto& [key, caption, hidden, derived, format] : kFormColumns) {
    columns.push_back({std::string(key), std::string(caption), "", hidden, "", "", derived,
                       platform::Grid::AtFirst::kShown, format});
  }
  return columns;
}

constexpr const char* kNotSuccessful = "Search was not successful";
constexpr const char* kButtonClick = "ZEMLO_SelectCustFormInq.mCmdButton_Click";

std::string InquiryApplication() {
  return std::string(platform::kApplicationName) + ".CustFormInq";
}

/// "0001234-5"; the number as it is where it is none, "" where there is none.
std::string FormNumberText(const platform::RecordSet& rows, std::size_t row) {
  std::string number(Trim(rows.Text(row, "FORM_NBR")));
  if (number.empty()) return "";
  const bool is_number =
      std::ranges::all_of(number, [](char character) { return character >= '0' && character <= '9'; });
  if (is_number && number.size() < platform::kFormNumberDigits)
    number.insert(0, platform::kFormNumberDigits - number.size(), '0');
  return number + "-" + rows.Text(row, "FORM_CK_DGT_NBR");
}

/// The day of a text that may have a time of day behind it.
std::optional<platform::Date> DayOf(std::string_view text) {
  return platform::ParseDate(text.substr(0, std::min(text.find_first_of(" T"), text.size())));
}

}  // namespace

ZEMLO_SelectCustFormInq::ZEMLO_SelectCustFormInq(const platform::Services& services,
                                                 const std::string& message_title,
                                                 CustomerMaintenance maintenance)
    : Form("Select Account"),
      ZEMLO_CustSelect1(services, std::move(maintenance)),
      mKvcboDocType(services, "CORDOC"),
      services_(services),
      message_title_(message_title),
      mVemtMessage_(services.messages.NewListener()),
      envelope_(services, pending_, *mVemtMessage_, InquiryApplication()) {
  mCmdButton[kCancel].SetCaption("Cancel");
  mCmdButton[kOk].SetCaption("OK");
  mCmdButton[kOk].why_disabled = [] { return "Select one account in the list first."; };
  mSdgGrid.columns = AccountColumns();
  ConnectEvents();
}

void ZEMLO_SelectCustFormInq::ConnectEvents() {
  const auto keep = [this](platform::Connection connection) {
    connections_.push_back(std::move(connection));
  };
  keep(ZEMLO_CustSelect1.SelectionChanged.Connect([this] {
    Handle("ZEMLO_SelectCustFormInq.ZEMLO_CustSelect1_SelectionChanged", [this] { SelectionChanged(); });
  }));
  const auto type_changed = [this] {
    Handle("ZEMLO_SelectCustFormInq.mKvcboDocType_Change", [this] { DocTypeChanged(); });
  };
  keep(mKvcboDocType.Change.Connect(type_changed));
  // The list tells no change that code makes; what is set up before the form is shown is one.
  keep(mKvcboDocType.ContentChanged.Connect([this, type_changed] {
    const bool is_other = std::exchange(shown_type_, mKvcboDocType.shown_text()) != shown_type_;
    if (is_other && !shown()) type_changed();
  }));
  keep(mSdgGrid.Click.Connect([this] { GridClick(); }));
  keep(mSdgGrid.RowLoaded.Connect([this](std::size_t row) { RowLoaded(row); }));
  keep(mCmdButton[kCancel].Click.Connect([this] { Handle(kButtonClick, [this] { Cancel(); }); }));
  keep(mCmdButton[kOk].Click.Connect(
      [this] { ZEMLO_CustSelect1.OnceSavedIsThere([this] { Handle(kButtonClick, [this] { Ok(); }); }); }));
  keep(mVemtMessage_->DataReady.Connect([this](const std::string& name) { DataReady(name); }));
  keep(mVemtMessage_->MsgTimeout.Connect([this] {
    Handle("ZEMLO_SelectCustFormInq.mVemtMessage_MsgTimeout", [this] { pending_.TimedOut(); });
  }));
}

template <typename Work>
void ZEMLO_SelectCustFormInq::Handle(std::string_view procedure, Work&& work) {
  RunHandler([&] { platform::Trap(services_, procedure, std::forward<Work>(work)); });
}

void ZEMLO_SelectCustFormInq::OnLoad() {
  Handle("ZEMLO_SelectCustFormInq.Form_Load", [&] {
    ZEMLO_CustSelect1.AlertsOn = false;
    cancelled = false;
    services_.utilities.RegisterForm(*this);
    mCmdButton[kOk].SetEnabled(false);
    DefaultFieldColor();
    ZEMLO_CustSelect1.Start();
  });
}

// A type that could not be set has made no change to be ignored: the next one is the user's.
void ZEMLO_SelectCustFormInq::OnActivate() {
  skip_next_type_change = false;
}

// Also by the close box, which is "Cancel": there is nothing to take then.
void ZEMLO_SelectCustFormInq::OnUnload() {
  cancelled = true;
  document_number_.clear();
  Leave();
}

void ZEMLO_SelectCustFormInq::Leave() {
  ZEMLO_CustSelect1.Leave();
  DropInquiry();
}

void ZEMLO_SelectCustFormInq::DefaultFieldColor() {
  platform::Trap(services_, "ZEMLO_SelectCustFormInq.DefaultFieldColor",
                 [&] { services_.utilities.MarkFieldValid(mKvcboDocType); });
}

void ZEMLO_SelectCustFormInq::CheckEdit() {
  platform::Trap(services_, "ZEMLO_SelectCustFormInq.CheckEdit", [&] {
    error_list_.clear();
    DefaultFieldColor();
    const bool is_chosen = mKvcboDocType.Length() >= 1 && !mKvcboDocType.Code().empty();
    if (is_chosen) return;
    services_.utilities.MarkFieldInvalid(mKvcboDocType);
    error_list_ += "Account Type is required" + std::string(platform::kLineBreak);
  });
}

/// Runs the edit check; what it finds is shown.
bool ZEMLO_SelectCustFormInq::IsRefused() {
  CheckEdit();
  if (error_list_.empty()) return false;
  services_.host.ShowMessage({"Errors Found ... " + std::string(platform::kLineBreak) + error_list_,
                              platform::MessageIcon::kCritical, message_title_});
  return true;
}

void ZEMLO_SelectCustFormInq::SelectionChanged() {
  customer_id_ = ZEMLO_CustSelect1.CustID();
  Inquire();
}

void ZEMLO_SelectCustFormInq::DocTypeChanged() {
  if (std::exchange(skip_next_type_change, false)) return;
  Inquire();
}

void ZEMLO_SelectCustFormInq::Inquire() {
  DropAccounts();  // also where the choice is refused: they are another customer's, or of another type
  if (IsRefused()) return ZEMLO_CustSelect1.ChoiceFailed();
  if (!customer_id_.empty()) SendPI();
}

void ZEMLO_SelectCustFormInq::DropAccounts() {
  DropInquiry();
  platform::RequestRecord nothing(services_.reference);
  nothing.Source(platform::record_name::kCustomerForms);
  nothing.Open();
  mSdgGrid.Bind(nothing.Recordset());
  mCmdButton[kOk].SetEnabled(false);  // the row it would take is gone
  UpdateStatus("");
}

void ZEMLO_SelectCustFormInq::DropInquiry() {
  if (!pending_.IsAwaited()) return;
  pending_.Forget();  // the reply will come to nobody
  services_.host.SetMousePointer(platform::MousePointer::kNormal);
}

void ZEMLO_SelectCustFormInq::SendPI() {
  const bool is_sent = platform::Trap(services_, "ZEMLO_SelectCustFormInq.SendPI", [&] {
    using platform::Criterion;
    using platform::KeyNamed;
    namespace request_key = platform::request_key;
    UpdateStatus("Requesting " + mKvcboDocType.Description() + " for " + ZEMLO_CustSelect1.CUSTNAME());
    asked_type_ = mKvcboDocType.Code();
    envelope_.Send({.type = platform::message_type::kCustomerForms,
                    .name = "CustFormInq",
                    .keys = {Criterion(KeyNamed(request_key::kCustomer), customer_id_),
                             Criterion(KeyNamed(request_key::kFormTypeAsked), asked_type_)}});
  });
  if (is_sent) return;
  UpdateStatus(kNotSuccessful);
  ZEMLO_CustSelect1.ChoiceFailed();
}

void ZEMLO_SelectCustFormInq::DataReady(const std::string& application) {
  if (application != InquiryApplication()) return;
  constexpr std::string_view kProcedure = "ZEMLO_SelectCustFormInq.mVemtMessage_DataReady";
  Handle(kProcedure, [&] {
    const auto reply = pending_.TakeReply(services_.messages);
    if (!reply) return;  // to an inquiry that a newer one has replaced
    const workspace::AtExit ready(services_, kProcedure, [&] {
      mCmdButton[kOk].SetEnabled(false);
      services_.host.SetMousePointer(platform::MousePointer::kNormal);
    });
    ShowReply(*reply);
  });
}

void ZEMLO_SelectCustFormInq::ShowReply(const workspace::Reply& reply) {
  const auto error = services_.messages.GetReplyError(
      InquiryApplication(), "SelectCustFormInq.mVemtMessage_DataReady", reply.message_key);
  if (error.empty()) return ShowForms(reply);
  ZEMLO_CustSelect1.ChoiceFailed();
  services_.host.SetMousePointer(platform::MousePointer::kNormal);
  services_.host.ShowMessage({error, platform::MessageIcon::kCritical, message_title_});
  UpdateStatus(reply.timed_out ? "Search timed out" : kNotSuccessful);
}

void ZEMLO_SelectCustFormInq::ShowForms(const workspace::Reply& reply) {
  const auto forms = mKvcboDocType.Description() + "s ";
  const auto& customer = ZEMLO_CustSelect1.CUSTNAME();
  const auto record = services_.messages.GetRecord(InquiryApplication(),
                                                   platform::record_name::kCustomerForms, reply.message_key);
  if (!record) return UpdateStatus("No " + forms + "returned for " + customer);
  const auto rows = record->Recordset();
  rows->AddColumns({"FORM_NUMBER", "CTTN_STTS_TXT"});
  rows->MoveFirst();
  mSdgGrid.Bind(rows);
  mSdgGrid.SortBy("STP_DT");
  UpdateStatus("Displaying " + forms + "for " + customer);
}

void ZEMLO_SelectCustFormInq::GridClick() {
  Handle("ZEMLO_SelectCustFormInq.mSdgGrid_Click", [&] {
    const auto& selected = mSdgGrid.selected_rows();
    if (selected.size() == 1) mSdgGrid.rows()->MoveTo(selected.front());
    mCmdButton[kOk].SetEnabled(selected.size() == 1);
  });
}

void ZEMLO_SelectCustFormInq::RowLoaded(std::size_t row) {
  Handle("ZEMLO_SelectCustFormInq.mSdgDBGrid_RowLoaded", [&] {
    auto& rows = *mSdgGrid.rows();
    rows.Set(row, "FORM_NUMBER", FormNumberText(rows, row));
    rows.Set(row, "CTTN_STTS_TXT",
             services_.utilities.GetCodeDescription("CSTATUS", rows.Text(row, "CTTN_STTS_CD")));
  });
}

void ZEMLO_SelectCustFormInq::Cancel() {
  document_number_.clear();
  cancelled = true;
  Leave();
  Hide();
}

// Who was saved meanwhile may be another customer, whose accounts are being asked for.
void ZEMLO_SelectCustFormInq::Ok() {
  if (!mCmdButton[kOk].enabled() || IsRefused()) return;
  TakeForm();
  Leave();
  Hide();
}

// A value without a text leaves what was there. So does one that cannot be read: it is reported, and the
// account can be taken without it.
void ZEMLO_SelectCustFormInq::TakeForm() {
  const auto row = mSdgGrid.rows()->CurrentRow();
  if (!row) throw platform::Failure(platform::Failure::Kind::kNotFound, "No account is selected.");
  mSdgGrid.EnsureRowLoaded(*row);
  const auto& rows = *mSdgGrid.rows();
  const auto text = [&](std::string_view column) { return std::string(Trim(rows.Text(*row, column))); };
  const auto take = [&](std::string_view column, auto& into, auto&& read) {
    platform::Trap(services_, kButtonClick, [&] {
      const auto given = text(column);
      if (given.empty()) return;
      const auto value = read(given);
      if (!value) {
        throw platform::Failure(
            platform::Failure::Kind::kDamaged,
            "The account's " + std::string(column) + " cannot be read: " + platform::Quoted(given) + ".");
      }
      into = value;
    });
  };
  if (!text("FORM_NBR").empty()) document_number_ = Trim(FormNumberText(rows, *row));
  take("BAL_DUE", due_amount_, [](const std::string& due) { return platform::Money::Parse(due); });
  take("LST_PYMT_DT", last_payment_date_, DayOf);
  if (const auto status = text("CTTN_STTS_TXT"); !status.empty()) status_ = status;
  take("STP_DT", stop_date_, DayOf);
}

void ZEMLO_SelectCustFormInq::UpdateStatus(const std::string& text) {
  platform::Trap(services_, "ZEMLO_SelectCustFormInq.UpdateStatus",
                 [&] { status_bar.SetCaption(platform::ReplaceAll(text, "&", "&&")); });
}

}  // namespace customers
