#include "tracking/frm_batch_stat.h"

#include <array>
#include <utility>

#include "platform/agreed/requests.h"
#include "platform/identity.h"
#include "platform/parties/request_record.h"
#include "platform/text.h"
#include "workspace/messaging/at_exit.h"

namespace tracking {

namespace {

constexpr const char* kRequest = "Batch_Stat";
constexpr const char* kGroup = "Batch Job Statistics";
constexpr const char* kDataReady = "frmBatchStat.mVEMTMessage_DataReady";

struct Column {
  const char* key;
  const char* caption;
  bool hidden = false;
  bool derived = false;
};
constexpr auto kStatisticsColumns = std::to_array<Column>({
    {"LTR_NM", "Letter Type", false, /*derived=*/true},
    {"LETTER_COUNT", "No. of Letters"},
    {"PROCESS_COUNT", "No. Processed"},
    {"SUCCESS_COUNT", "No. Successful"},
    {"FAILURE_COUNT", "No. Failure"},
    {"LTR_TYP_ID", "", /*hidden=*/true},
    {"PAID_COUNT", "No. Paid"},
    {"UNPAID_COUNT", "No. Outstanding"},
});

struct Total {
  const char* column;
  const char* words;
};
constexpr auto kTotals = std::to_array<Total>({{"LETTER_COUNT", " letters"},
                                               {"PROCESS_COUNT", " processed"},
                                               {"SUCCESS_COUNT", " successful"},
                                               {"FAILURE_COUNT", " failed"},
                                               {"PAID_COUNT", " accounts paid"},
                                               {"UNPAID_COUNT", " accounts outstanding"}});

std::string StatisticsApplication() {
  return std::string(platform::kApplicationName) + "frmBatchStat";
}

std::shared_ptr<platform::RecordSet> NoStatistics(const platform::Services& services) {
  platform::RequestRecord nothing(services.reference);
  nothing.Source(platform::record_name::kBatchStatistics);
  nothing.Open();
  return nothing.Recordset();
}

}  // namespace

frmBatchStat::frmBatchStat(const platform::Services& services, const std::string& message_title,
                           workspace::PendingRequest& pending)
    : Form("Batch Statistics"),
      services_(services),
      message_title_(message_title),
      pending_(pending),
      mVemtMessage_(services.messages.NewListener()),
      envelope_(services, pending, *mVemtMessage_, StatisticsApplication()) {
  for (const auto& [key, caption, hidden, derived] : kStatisticsColumns)
    sdgGrid.columns.push_back({key, caption, kGroup, hidden, "", "", derived});
  connections_.push_back(mCmdBatch.Click.Connect([this] {
    RunHandler([&] { platform::Trap(services_, "frmBatchStat.mCmdBatch_Click", [&] { Close(); }); });
  }));
  connections_.push_back(sdgGrid.RowLoaded.Connect([this](std::size_t row) { RowLoaded(row); }));
}

frmBatchStat::~frmBatchStat() {
  Leave();
}

void frmBatchStat::OnLoad() {
  platform::Trap(services_, "frmBatchStat.Form_Load", [&] {
    connections_.push_back(
        mVemtMessage_->DataReady.Connect([this](const std::string& application) { DataReady(application); }));
    connections_.push_back(mVemtMessage_->MsgTimeout.Connect([this] { pending_.TimedOut(); }));
    connection_text_ = services_.settings.ProviderString() +
                       "Data Source=" + services_.settings.LocalDatabasePath() +
                       ";Persist Security Info=False";
  });
}

void frmBatchStat::OnUnload() {
  Leave();
}

// A reply that comes later comes to nobody: nothing must go on waiting for it.
void frmBatchStat::Leave() {
  if (pending_.name() != kRequest || !pending_.IsAwaited()) return;
  pending_.Forget();
  services_.host.SetMousePointer(platform::MousePointer::kNormal);
  services_.status.ShowStatus("Ready");
}

void frmBatchStat::SendBatchStatInq() {
  platform::Trap(services_, "ZEMLO_Corresp.SendBatchStatInq", [&] {
    using platform::Criterion;
    using platform::KeyNamed;
    namespace request_key = platform::request_key;
    envelope_.Send({.type = platform::message_type::kSearch,
                    .name = kRequest,
                    .keys = {Criterion(KeyNamed(request_key::kBatch), batch_number_),
                             Criterion(KeyNamed(request_key::kBatchStatistics), "Y"),
                             Criterion(KeyNamed(request_key::kThin), "YES")},
                    .status = "Requesting batch statistics",
                    .status_when = workspace::RequestDescription::Status::kBeforeSending,
                    .mode = workspace::RequestDescription::SendMode::kSendAndWait});
  });
}

void frmBatchStat::DataReady(const std::string& application) {
  if (application != StatisticsApplication()) return;
  RunHandler([&] {
    platform::Trap(services_, kDataReady, [&] {
      const auto reply = pending_.TakeReply(services_.messages);
      if (!reply) return;
      services_.host.SetMousePointer(platform::MousePointer::kHourglass);
      const workspace::AtExit normal(
          services_, kDataReady, [this] { services_.host.SetMousePointer(platform::MousePointer::kNormal); });
      services_.status.SetReady(true);
      const auto error =
          services_.messages.GetReplyError(StatisticsApplication(), kDataReady, reply->message_key);
      if (!error.empty()) {
        services_.host.ShowMessage({error, platform::MessageIcon::kCritical, message_title_});
        services_.status.ShowStatus(reply->timed_out ? "Search timed out" : "Search was not successful");
        return;
      }
      if (reply->request_name != kRequest) return;
      FillBatchStat(*reply);
      sdgGrid.SetEnabled(false);
    });
  });
}

void frmBatchStat::FillBatchStat(const workspace::Reply& reply) {
  platform::Trap(services_, "frmBatchStat.FillBatchStat", [&] {
    services_.host.SetMousePointer(platform::MousePointer::kNormal);
    const auto record = services_.messages.GetRecord(
        StatisticsApplication(), platform::record_name::kBatchStatistics, reply.message_key);
    if (!record || record->Recordset()->IsEmpty()) {
      sdgGrid.Bind(NoStatistics(services_));
      services_.status.ShowStatus("No statistics data found");
      return;
    }
    const auto rows = record->Recordset();
    rows->AddColumns({"LTR_NM"});
    rows->MoveFirst();
    sdgGrid.Bind(rows);
    sdgGrid.LoadAllRows();  // the picture names all types
    ShowTotals();
    services_.status.ShowStatus("Displaying statistics history");
  });
}

void frmBatchStat::RowLoaded(std::size_t row) {
  platform::Trap(services_, "frmBatchStat.sdgGrid_RowLoaded", [&] {
    auto& rows = *sdgGrid.rows();
    if (rows.Text(row, "LTR_TYP_ID").empty()) throw platform::AbandonStep();
    rows.Set(row, "LTR_NM",
             GetLetterType(static_cast<std::int32_t>(rows.Get(row, "LTR_TYP_ID").AsInteger())));
  });
}

std::string frmBatchStat::GetLetterType(std::int32_t id) {
  std::string name;
  platform::Trap(services_, "frmBatchStat.GetLetterType", [&] {
    const auto region = platform::UpperCase(platform::Trim(services_.settings.Region()));
    const auto found = services_.reference.Select("select LTR_NM from FLS_LETTER where LTR_TYP_ID='" +
                                                  std::to_string(id) + "' and " + "REGION" + "='" +
                                                  platform::ReplaceAll(region, "'", "''") + "' ");
    if (!found->IsEmpty()) name = found->FirstText();
  });
  return name;
}

void frmBatchStat::ShowTotals() {
  std::string text;
  for (const auto& [column, words] : kTotals) {
    std::int64_t sum = 0;
    for (std::size_t row = 0; row < sdgGrid.rows()->RecordCount(); ++row) {
      if (const auto& count = sdgGrid.rows()->Get(row, column); !count.IsNull()) sum += count.AsInteger();
    }
    text += (text.empty() ? "" : ", ") + std::to_string(sum) + words;
  }
  totals.SetCaption(text + ".");
}

}  // namespace tracking
