#include "tests/workspace/document/workspace_test.h"

namespace workspace {
namespace {

using std::chrono::year;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class StartUp : public WorkspaceTest {
 protected:
  bool IsViewBookmarkVisible() {
    return document_.pages().tracking.OptLetter[TrackingPage::kViewBookmark].visible();
  }
};

TEST_F(StartUp, GoesItsStepsInOrder) {
  document_.Initialize();
  EXPECT_THAT(
      fakes_.journal.lines(),
      ElementsAre("status Loading information", "pointer hourglass", "get client", "new listener", "connect",
                  "toolbar 7 off", "toolbar 8 off", "toolbar 9 off", "toolbar 14 off", "toolbar 12 off",
                  "ready", "send type 83", "pointer hourglass", "status Requesting Network Path."));
  EXPECT_EQ(fakes_.status.host_tag, "");
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(StartUp, DisablesEveryActionAndEmptiesTheDates) {
  document_.Initialize();
  auto& pages = document_.pages();
  for (auto& option : pages.correspondence.OptOnline) EXPECT_FALSE(option.enabled());
  for (auto& option : pages.tracking.OptLetter) EXPECT_FALSE(option.enabled()) << option.caption();
  for (auto& option : pages.batch.OptBatchAct) EXPECT_FALSE(option.enabled()) << option.caption();
  EXPECT_FALSE(pages.tracking.search.enabled());
  EXPECT_FALSE(pages.batch.cmdBatch[BatchPage::kSearch].enabled());
  for (auto* date :
       {&pages.tracking.from_date, &pages.tracking.to_date, &pages.batch.start_date, &pages.batch.end_date}) {
    EXPECT_TRUE(date->IsEmpty());
    EXPECT_EQ(date->earliest(), year(1993) / 1 / 1);
  }
}

TEST_F(StartUp, ReadsTheActionLists) {
  fakes_.utilities.values[{"LTRACTION", "PRL"}] = "FM";
  document_.Initialize();
  EXPECT_EQ(document_.action_lists().ActionPrintLocal, "FM");

  fakes_.utilities.values[{"LTRACTION", "PRL"}] = "FMR";
  fakes_.server.CompleteSynchronisation();
  fakes_.RunEvents();
  EXPECT_EQ(document_.action_lists().ActionPrintLocal, "FMR");
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
}

TEST_F(StartUp, ShowsViewBookmarkOnlyForTheExactSetting) {
  for (const auto& [value, shown] : {std::pair{"y", false}, {"N", false}, {"", false}, {"Y", true}}) {
    fakes_.settings_store.Put("DMVKorvadsk", "System", "DontPrint", value);
    document_.Initialize();
    EXPECT_EQ(IsViewBookmarkVisible(), shown) << value;
  }
}

TEST_F(StartUp, KeepsTheClientItHas) {
  document_.Initialize();
  fakes_.journal.Clear();
  document_.Initialize();
  EXPECT_THAT(fakes_.journal.lines(), testing::Not(testing::Contains("get client")));
  fakes_.comm_clients.Report("NO SPACE", "A.docx");
  EXPECT_EQ(document_.parts().downloads.failures().value(), 1);
}

TEST_F(StartUp, ShowsTheDocumentUnderTheHostsNames) {
  document_.Initialize();
  fakes_.journal.Clear();
  document_.Show();
  EXPECT_THAT(fakes_.journal.lines(), ElementsAre("pointer normal", "pending events", "status Ready"));
  auto& pages = document_.pages();
  for (const auto page : {PageIndex::kCorrespondence, PageIndex::kTracking, PageIndex::kBatch}) {
    const auto& grid = pages.sdgGrid(page);
    EXPECT_TRUE(grid.style.bold);
    EXPECT_EQ(grid.columns.at(0).cell_style, "UNBOLD");
    EXPECT_EQ(grid.columns.at(0).heading_style, "UNBOLD");
    EXPECT_FALSE(grid.style_sets.at("UNBOLD").bold);
  }
  EXPECT_FALSE(pages.correspondence.ZEMLO_FormTypeCodes.enabled());
  EXPECT_TRUE(pages.tracking.ZEMLO_FormTypeCodes.enabled());
  EXPECT_EQ(pages.tracking.ZEMLO_FormTypeCodes.rows()->RecordCount(), 5);
}

TEST_F(StartUp, TakesTheTemplateFolderAndDownloadsWhatIsMissing) {
  fakes_.reference.AnswersWhatContains("SELECT a.*", fakes::RowsOf("", {{{"DCMT_NM", "A.docx"}}}));
  GivenWorkspaceIsOpen();
  ASSERT_EQ(fakes_.server.downloads.size(), 1);
  EXPECT_EQ(fakes_.server.downloads[0].source, "srv\\A.docx");
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
}

TEST_F(StartUp, EndsWithoutHourglassOrActionsWhereItFailsOnTheWay) {
  fakes_.comm_clients.on_connect = [] {
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "no connection");
  };
  document_.Initialize();
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("UserDocument.Initialize"));
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
  for (auto& option : document_.pages().correspondence.OptOnline) EXPECT_FALSE(option.enabled());
  EXPECT_FALSE(document_.pages().tracking.search.enabled());
}

TEST_F(StartUp, ReportsWhatFailsAndGoesOnLiving) {
  fakes_.server.on_send = [](const auto&) {
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "no server");
  };
  document_.Initialize();
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.GetNetworkPath"));
  document_.Show();
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
}

}  // namespace
}  // namespace workspace
