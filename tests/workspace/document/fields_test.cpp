#include "tests/workspace/document/workspace_test.h"

namespace workspace {
namespace {

class Fields : public WorkspaceTest {};

TEST_F(Fields, AWrongNumberThatIsPastedNeverReachesTheRequest) {
  GivenWorkspaceIsOpen();
  fakes_.utilities.form_number_rule = [](const auto&, const auto& number) {
    return platform::Utilities::FormNumberVerdict{number == "1234567", "no"};
  };
  UserPicksLetterType("120");
  UserPicksFormType("C");
  auto& field = document_.pages().correspondence.txtFormNum;
  for (const std::string pasted : {"1234567", "7654321"}) {
    field.KeyDown(platform::Key::Paste());
    field.SetText(pasted);
    field.KeyUp({});
    EXPECT_EQ(field.text(), "1234567");
    EXPECT_TRUE(CanCreateLetter());
  }
  UserTypesFormNumber("7654321");
  EXPECT_FALSE(CanCreateLetter());
}

TEST_F(Fields, KeepTheirRulesWhenTheWorkspaceStartsAgain) {
  GivenWorkspaceIsOpen();
  document_.Initialize();
  auto& tracking = document_.pages().tracking;
  ASSERT_TRUE(tracking.txtTD.key_filter);
  EXPECT_EQ(tracking.txtTD.key_filter(U'b'), U'B');
  tracking.txtTD.SetText("B");
  EXPECT_EQ(fakes_.utilities.validated_troops, std::vector<std::string>{"B"}) << "asked once";
}

TEST_F(Fields, OfTheBatchPageAreClearedByItsCommand) {
  GivenWorkspaceIsOpen();
  auto& batch = document_.pages().batch;
  batch.OptBatchDate[BatchPage::kDateRange].UserClicks();
  batch.OptBatchStatus[0].UserClicks();
  EXPECT_EQ(batch.start_date.value(), fakes_.clock.Today());
  batch.cmdBatch[BatchPage::kClear].UserClicks();
  EXPECT_FALSE(batch.OptBatchDate[BatchPage::kDateRange].selected());
  EXPECT_TRUE(batch.start_date.IsEmpty());
  EXPECT_FALSE(batch.cmdBatch[BatchPage::kSearch].enabled());
}

}  // namespace
}  // namespace workspace
