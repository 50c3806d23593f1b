#include <chrono>
#include <string>
#include <utility>

#include "platform/identity.h"
#include "workspace/document/command_reasons.h"
#include "workspace/document/wiring.h"
#include "workspace/document/zemlo_corresp.h"
#include "workspace/messaging/diagnostic_mode.h"
#include "workspace/pages/grid_style.h"

namespace workspace {

using platform::MousePointer;
using platform::Trap;

namespace {

constexpr platform::Date kEarliestDay = std::chrono::year(1993) / 1 / 1;
constexpr const char* kTrackingFormTypes = "CMOV";

template <typename Options>
void Disable(Options& options) {
  for (auto& option : options) option.SetEnabled(false);
}

}  // namespace

void ZEMLO_Corresp::Initialize() {
  constexpr std::string_view kProcedure = "UserDocument.Initialize";
  const bool is_started = Trap(services_, kProcedure, [&] {
    services_.status.ShowStatus("Loading information");
    services_.host.SetMousePointer(MousePointer::kHourglass);
    if (!moClient_) moClient_ = services_.comm_clients.GetClient();
    data_.dont_print = IsDiagnosticMode(services_.settings_store);
    ConnectOutside();
    EmptyDates();
    DisableActions();
    ConnectUser();
    tracking::GetLetterAction(services_, data_.action_lists);
    parts_->templates.GetNetworkPath();
    if (data_.dont_print) data_.pages.tracking.OptLetter[TrackingPage::kViewBookmark].SetVisible(true);
  });
  if (!is_started) Trap(services_, kProcedure, [&] { EndStartThatFailed(); });
}

// Nothing is under way, and no action looks as if it did something.
void ZEMLO_Corresp::EndStartThatFailed() {
  services_.host.SetMousePointer(MousePointer::kNormal);
  services_.status.ShowStatus("Ready");
  DisableActions();
}

void ZEMLO_Corresp::ConnectOutside() {
  connections_.clear();
  parts_.reset();
  data_.pending.Forget();  // the listener that would have heard the reply goes
  mVemtMessage_ = services_.messages.NewListener();
  parts_ = std::make_unique<Parts>(services_, data_, *mVemtMessage_);
  const auto keep = [this](platform::Connection connection) {
    connections_.push_back(std::move(connection));
  };
  keep(mVemtMessage_->DataReady.Connect([this](const std::string& name) {
    parts_->unrecorded_letters.ReplyCame();
    parts_->replies.DataReady(name);
    parts_->unrecorded_letters.ReplyHandled();
  }));
  keep(mVemtMessage_->MsgTimeout.Connect([this] { parts_->replies.MsgTimeout(); }));
  keep(mVemtMessage_->DataSyncComplete.Connect([this] { DataSyncComplete(); }));
  keep(moClient_->MessageReceived.Connect([this](const std::string& message, const std::string&) {
    parts_->downloads.MessageReceived(message);
  }));
  services_.comm_clients.Connect();
}

// The controls have what they start with: from here on a change is the user's.
void ZEMLO_Corresp::ConnectUser() {
  ExplainCommands(services_, data_.pages, parts_->field_check, data_.action_lists, data_.pending);
  for (auto& connection : ConnectControls(data_.pages, *parts_))
    connections_.push_back(std::move(connection));
}

void ZEMLO_Corresp::EmptyDates() {
  auto& tracking = data_.pages.tracking;
  auto& batch = data_.pages.batch;
  for (auto* date : {&tracking.from_date, &tracking.to_date, &batch.start_date, &batch.end_date}) {
    date->SetValue(services_.clock.Today());
    date->SetValue(std::nullopt);
    date->SetEarliest(kEarliestDay);
  }
}

void ZEMLO_Corresp::DisableActions() {
  auto& pages = data_.pages;
  Disable(pages.correspondence.OptOnline);
  pages.tracking.search.SetEnabled(false);
  data_.customer.TrackingCustomerFixed = false;
  Disable(pages.batch.OptBatchAct);
  ConfigureToolbar(false);
  services_.status.SetReady(true);
  pages.batch.cmdBatch[BatchPage::kSearch].SetEnabled(false);
  Disable(pages.tracking.OptLetter);
}

void ZEMLO_Corresp::Show() {
  Trap(services_, "UserDocument.Show", [&] {
    host_tag_ = services_.host.Tag();
    data_.message_title = services_.host.Caption();
    services_.host.SetMousePointer(MousePointer::kNormal);
    application_file_path_ =
        services_.settings.ConfigFolder() + std::string(platform::kApplicationName) + ".xml";
    for (const auto page : {PageIndex::kCorrespondence, PageIndex::kTracking, PageIndex::kBatch}) {
      SetGridBolding(services_, data_.pages.sdgGrid(page));
    }
    services_.host.RunPendingEvents();
    RequireParts().form_types.FilterFormType("", PageIndex::kCorrespondence);
    RequireParts().form_types.FilterFormType(kTrackingFormTypes, PageIndex::kTracking);
    services_.status.ShowStatus("Ready");
  });
}

void ZEMLO_Corresp::DataSyncComplete() {
  Trap(services_, "ZEMLO_Corresp.mVEMTMessage_DataSyncComplete", [&] {
    tracking::GetLetterAction(services_, data_.action_lists);
    if (parts_) parts_->letter_grid.EnableActions();
    services_.host.SetMousePointer(MousePointer::kNormal);
    services_.status.ShowStatus("Ready");
  });
}

}  // namespace workspace
