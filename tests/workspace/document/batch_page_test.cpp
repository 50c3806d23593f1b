#include "tests/workspace/document/workspace_test.h"
#include "tracking/frm_batch_stat.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// The batch page: what it asks the server, and what can be done with the runs that come.
class TheBatchPage : public WorkspaceTest {
 protected:
  TheBatchPage() {
    GivenWorkspaceIsOpen();
    document_.pages().tabs.Select(PageIndex::kBatch);
  }
  BatchPage& Page() { return document_.pages().batch; }
  static fakes::Row Run(int number, const char* status = "SUCCESSFUL") {
    return {{"BTCH_SEQ_NBR", number}, {"BTCH_STATUS", status}, {"BTCH_CRTE_TS", "2004-03-15 01.00.00"},
            {"BTCH_LTR_CNT", 12},     {"LTR_PRCS_CNT", 10},    {"LTR_SCS_CNT", 7},
            {"LTR_FAIL_CNT", 99}};
  }
  void UserSearches(std::size_t date, std::size_t status) {
    Page().OptBatchDate[date].UserClicks();
    Page().OptBatchStatus[status].UserClicks();
    Page().cmdBatch[BatchPage::kSearch].UserClicks();
  }
  void ServerReplies(const char* record, const std::vector<fakes::Row>& rows) {
    fakes_.server.ReplyWith(record, rows);
    fakes_.RunEvents();
  }
  void GivenRuns(const std::vector<fakes::Row>& runs) {
    UserSearches(BatchPage::kLastNight, BatchPage::kAll);
    ServerReplies("CORRBATCH", runs);
  }
  std::vector<bool> ActionsEnabled() {
    std::vector<bool> enabled;
    for (const auto option : {BatchPage::kResubmitBatch, BatchPage::kBatchStatistics})
      enabled.push_back(Page().OptBatchAct[option].enabled());
    return enabled;
  }
};

TEST_F(TheBatchPage, AsksForRunsByDayAndStatus) {
  const auto day = [](int number) {
    return std::optional(std::chrono::year(2004) / 3 / std::chrono::day(unsigned(number)));
  };
  struct Case {
    std::size_t date;
    std::optional<platform::Date> start;
    std::optional<platform::Date> end;
    std::size_t status;
    std::vector<std::string> keys;
  };
  const std::string days = "KORVADSK|key:BATCH_START_DT|";
  const std::string thin = "KORVADSK|key:THIN|=|YES";
  for (const auto& [date, start, end, status, keys] :
       std::vector<Case>{{BatchPage::kLastNight,
                          {},
                          {},
                          BatchPage::kFailure,
                          {days + "=|2004-03-15", "KORVADSK|key:STATUS|=|F", thin}},
                         {BatchPage::kDateRange,
                          day(1),
                          day(5),
                          BatchPage::kIncomplete,
                          {days + "between|2004-03-01 and 2004-03-05", "KORVADSK|key:STATUS|=|P", thin}},
                         {BatchPage::kDateRange,
                          day(1),
                          {},
                          BatchPage::kSuccessful,
                          {days + "=|2004-03-01", "KORVADSK|key:STATUS|=|S", thin}},
                         {BatchPage::kDateRange,
                          day(2),
                          day(2),
                          BatchPage::kAll,
                          {days + "=|2004-03-02", "KORVADSK|key:STATUS|=|A", thin}}}) {
    Page().OptBatchDate[date].UserClicks();
    if (date == BatchPage::kDateRange) {
      Page().start_date.SetValue(start);
      Page().end_date.SetValue(end);
    }
    Page().OptBatchStatus[status].UserClicks();
    Page().cmdBatch[BatchPage::kSearch].UserClicks();
    EXPECT_EQ(LastRequest().Keys(), keys);
    EXPECT_EQ(LastRequest().type, 79);
    EXPECT_EQ(document_.pending_request().name(), "Batch_History");
    EXPECT_EQ(fakes_.status.LastText(), "Requesting batch history");
    EXPECT_FALSE(Page().sdgGrid.enabled());
    ServerReplies("CORRBATCH", {Run(7)});
    EXPECT_TRUE(Page().sdgGrid.enabled());
    EXPECT_EQ(fakes_.status.LastText(), "Displaying batch history");
  }
  Page().OptBatchDate[BatchPage::kDateRange].UserClicks();
  Page().start_date.SetValue(std::nullopt);
  EXPECT_FALSE(Page().cmdBatch[BatchPage::kSearch].enabled());
  EXPECT_THAT(Page().cmdBatch[BatchPage::kSearch].why_disabled(),
              HasSubstr("Date is required if date range is selected"));
}

TEST_F(TheBatchPage, ActsOnOneRunOnly) {
  GivenRuns({Run(7), Run(8)});
  EXPECT_THAT(ActionsEnabled(), ElementsAre(false, false));
  Page().sdgGrid.EnsureRowLoaded(0);
  EXPECT_EQ(Page().sdgGrid.rows()->Text(0, "LTR_FAIL_CNT"), "3") << "whatever the server sent";
  Page().sdgGrid.UserSelects({1});
  EXPECT_THAT(ActionsEnabled(), ElementsAre(true, true));
  Page().sdgGrid.UserSelects({0, 1});
  EXPECT_THAT(ActionsEnabled(), ElementsAre(false, false));
  Page().sdgGrid.UserSelects({1});
  UserSearches(BatchPage::kLastNight, BatchPage::kAll);
  EXPECT_THAT(ActionsEnabled(), ElementsAre(false, false));
  fakes_.server.ReplyWithNothing();
  fakes_.RunEvents();
  EXPECT_EQ(fakes_.status.LastText(), "No batch record found");
  EXPECT_TRUE(Page().sdgGrid.rows()->IsEmpty());
}

TEST_F(TheBatchPage, ResubmitsAWholeRunAndListsAnew) {
  GivenRuns({Run(7)});
  Page().sdgGrid.UserSelects({0});
  auto& resubmit = Page().OptBatchAct[BatchPage::kResubmitBatch];
  fakes_.host.answers = {platform::MessageAnswer::kNo, platform::MessageAnswer::kYes};
  const auto sent = fakes_.server.requests.size();
  resubmit.UserClicks();
  EXPECT_EQ(fakes_.host.messages.back().text, "Should the whole batch be resubmitted?");
  EXPECT_EQ(fakes_.host.messages.back().default_answer, platform::MessageAnswer::kNo);
  EXPECT_EQ(fakes_.server.requests.size(), sent);
  resubmit.UserClicks();
  EXPECT_EQ(LastRequest().type, 82);
  EXPECT_THAT(LastRequest().Keys(), ElementsAre("KORVADSK|key:ReprintBatch|=|7"));
  EXPECT_EQ(fakes_.status.LastText(), "Send reprint batch request");
  ServerReplies("CORR_BITEM_OUTCOME", {{{"SEQ_NBR", 1}, {"OUTCOME", "T"}}});
  EXPECT_EQ(document_.pending_request().name(), "Batch_History");
}

TEST_F(TheBatchPage, ShowsARunsStatisticsByLetterType) {
  fakes_.reference.AnswersWhatContains("LTR_TYP_ID='110'",
                                       fakes::RowsOf("", {{{"LTR_NM", "Tax liability"}}}));
  fakes_.reference.AnswersWhatContains("LTR_TYP_ID='999'", NoRows("LTR_NM"));
  GivenRuns({Run(7, "INCOMPLETE")});
  Page().sdgGrid.UserSelects({0});
  bool shown = false;
  fakes_.host.user_in_form = [&](platform::Form& form) {
    auto& statistics = dynamic_cast<tracking::frmBatchStat&>(form);
    shown = true;
    EXPECT_EQ(form.caption(),
              "Batch Statistics - Batch Sequence # 7 (Letters assigned to next batch process)");
    EXPECT_EQ(statistics.figures.values[6].caption(), "3");
    EXPECT_EQ(LastRequest().application, "ZEMLO_CorrespfrmBatchStat");
    EXPECT_THAT(LastRequest().Keys(), ElementsAre("KORVADSK|key:BATCH_NBR|=|7", "KORVADSK|key:BATCHSTAT|=|Y",
                                                  "KORVADSK|key:THIN|=|YES"));
    ServerReplies("CORRSTAT", {{{"LTR_TYP_ID", "110"}, {"LETTER_COUNT", 8}, {"SUCCESS_COUNT", 5}},
                               {{"LTR_TYP_ID", "999"}, {"LETTER_COUNT", 4}, {"SUCCESS_COUNT", 2}}});
    ASSERT_TRUE(statistics.sdgGrid.rows());
    EXPECT_EQ(statistics.sdgGrid.rows()->Text(0, "LTR_NM"), "Tax liability");
    EXPECT_EQ(statistics.sdgGrid.rows()->Text(1, "LTR_NM"), "");
    EXPECT_THAT(statistics.totals.caption(), HasSubstr("12 letters, 0 processed, 7 successful"));
    EXPECT_FALSE(statistics.sdgGrid.enabled());
    EXPECT_EQ(fakes_.status.LastText(), "Displaying statistics history");
    statistics.mCmdBatch.UserClicks();
  };
  Page().OptBatchAct[BatchPage::kBatchStatistics].UserClicks();
  EXPECT_TRUE(shown);
  EXPECT_FALSE(document_.pending_request().IsAwaited());
}

}  // namespace
}  // namespace workspace
