#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/grid_listing.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/listing.h"
#include "apps/letters/page_user.h"
#include "apps/letters/search_criteria.h"
#include "apps/letters/standard_streams.h"
#include "tracking/frm_batch_stat.h"

namespace apps {
namespace {

using workspace::BatchPage;

struct Status {
  std::string_view name;
  std::size_t option;
};
constexpr auto kStatuses = std::to_array<Status>({{"all", BatchPage::kAll},
                                                  {"successful", BatchPage::kSuccessful},
                                                  {"incomplete", BatchPage::kIncomplete},
                                                  {"failure", BatchPage::kFailure}});

const Status* FindStatus(const CommandLine& line) {
  const auto name = line.IsSet("status") ? line.Value("status") : "all";
  const auto* status = std::ranges::find(kStatuses, std::string_view(name), &Status::name);
  return status == kStatuses.end() ? nullptr : status;
}

/// Without a day the runs of last night are meant.
void FillCriteria(BatchPage& page, const CommandLine& line) {
  const bool by_range = line.IsSet("from") || line.IsSet("to");
  page.OptBatchDate[by_range ? BatchPage::kDateRange : BatchPage::kLastNight].UserClicks();
  if (by_range) {
    const auto day = [&](const char* option) {
      return line.IsSet(option) ? platform::ParseDate(line.Value(option)) : std::nullopt;
    };
    page.start_date.SetValue(day("from"));
    page.end_date.SetValue(day("to"));
  }
  page.OptBatchStatus[FindStatus(line)->option].UserClicks();
}

/// Searches; whether the page lists any run.
bool SearchRuns(HeadlessOffice& office) {
  auto& page = office.workspace().pages().batch;
  RequireEnabled(page.cmdBatch[BatchPage::kSearch]);
  page.cmdBatch[BatchPage::kSearch].UserClicks();
  office.RunUntilIdle();
  return !office.refused() && page.sdgGrid.rows() && !page.sdgGrid.rows()->IsEmpty();
}

}  // namespace

int RunBatches(const QStringList& words) {
  CommandLine line("batches", "Finds nightly batch runs");
  line.DataOption()
      .JsonOption()
      .Option("from", "DAY",
              "Runs of that day, or of the days from it to the one of --to (default: last night's).")
      .Option("to", "DAY", "The last day.")
      .Option("status", "STATUS", "all (default), successful, incomplete or failure.");
  if (const auto status = line.Parse(words)) return *status;
  if (FindStatus(line) == nullptr) {
    return line.WrongUsage("--status takes all, successful, incomplete or failure, not \"" +
                           line.Value("status") + "\".");
  }
  if (const auto fault = DayFault(line)) return line.WrongUsage(*fault);
  HeadlessOffice office(line.Data(), {});
  office.Start();
  if (office.refused()) return kRefused;
  auto& pages = office.workspace().pages();
  pages.tabs.Select(workspace::PageIndex::kBatch);
  FillCriteria(pages.batch, line);
  const bool any = SearchRuns(office);
  if (office.refused()) return kRefused;
  if (!any) Notices() << "No batch record found\n";
  PrintGrid(pages.batch.sdgGrid, line.IsSet("json"));
  return kDone;
}

int RunBatchStatistics(const QStringList& words) {
  CommandLine line("batch-stat", "Shows a batch run's letters by letter type", "SEQ");
  line.DataOption().JsonOption();
  if (const auto status = line.Parse(words, 1, 1)) return *status;
  HeadlessOffice office(line.Data(), {});
  office.Start();
  if (office.refused()) return kRefused;
  const auto title = office.shell().Caption();
  workspace::PendingRequest pending;
  tracking::frmBatchStat form(office.office().services(), title, pending);
  form.Load();
  form.Batch_SeqNbr(line.Argument(0));
  form.SendBatchStatInq();
  office.RunUntilIdle();
  if (office.refused()) return kRefused;
  if (!form.sdgGrid.rows() || form.sdgGrid.rows()->IsEmpty()) Notices() << "No statistics data found\n";
  PrintGrid(form.sdgGrid, line.IsSet("json"));
  return kDone;
}

}  // namespace apps
