#include "tracking/batch_reprint.h"

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"

namespace tracking {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workspace::RequestDescription;

class BatchReprintTest : public testing::Test {
 protected:
  void GivenCertificates(std::deque<std::int32_t> numbers) {
    run_.Prepare({"110", "A12", std::move(numbers), /*total=*/9});
  }
  /// What the print step does after a letter.
  void LetterIsPrinted() {
    message_ = {.type = 82, .name = "LetterAU", .status = "Saving letter history"};
    run_.LetterPrinted(message_);
  }
  std::vector<std::string> Keys() const {
    std::vector<std::string> texts;
    for (const auto& key : message_.keys) texts.push_back(key.Key + key.Operator + key.Value);
    return texts;
  }
  frmPrintStatus& Form() { return dynamic_cast<frmPrintStatus&>(*fakes_.host.shown_forms.back()); }
  std::vector<std::string> Count() {
    return fakes_.server.LastRequest().FindRecord("BATCH_LTRS_PRINTED").Assigned();
  }

  fakes::FakeServices fakes_;
  workspace::PendingRequest pending_;
  std::unique_ptr<platform::ReplyListener> listener_ = fakes_.server.NewListener();
  workspace::RequestEnvelope envelope_{fakes_.services(), pending_, *listener_};
  BatchReprint run_{fakes_.services(), envelope_};
  RequestDescription message_;
};

TEST_F(BatchReprintTest, FetchesTheLettersInTheirOrder) {
  GivenCertificates({21, 22, 23});
  EXPECT_EQ(run_.TakeNext("RePrint_Tax_Warrant"), 0);
  EXPECT_EQ(run_.TakeNext("RePrint_CTL"), 21);

  LetterIsPrinted();
  EXPECT_THAT(Keys(), ElementsAre("key:FetchContext=22"));
  EXPECT_EQ(message_.letter.sequence_number, 22);
  EXPECT_EQ(message_.name, "RePrint_CTL");
  EXPECT_EQ(message_.status, "Printing letter 1 of 3");
  EXPECT_EQ(Form().progress.caption(), "Printed letter 1 of 3");
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);

  LetterIsPrinted();
  EXPECT_EQ(Form().progress.caption(), "Printed letter 2 of 3");
  EXPECT_TRUE(run_.HasLettersToReprint("110"));
  LetterIsPrinted();
  EXPECT_THAT(Keys(), IsEmpty());
  EXPECT_EQ(message_.name, "RePrint_CTL");
  EXPECT_FALSE(Form().shown());
  EXPECT_FALSE(run_.HasLettersToReprint("110"));
  EXPECT_THAT(fakes_.host.shown_forms, testing::SizeIs(1));

  run_.SendBatchCount("Saving batch");
  EXPECT_EQ(fakes_.server.LastRequest().type, 78);
  EXPECT_EQ(pending_.name(), "BatchCount");
  EXPECT_EQ(fakes_.status.LastText(), "Saving batch");
  EXPECT_THAT(Count(), ElementsAre("ACTION=ADD", "STATION_ID=A12", "CTL_TOT=9", "CTL_PRNTD=3"));
}

TEST_F(BatchReprintTest, EndsAfterTheLetterDuringWhichTheUserCancels) {
  GivenCertificates({21, 22, 23, 24, 25});
  run_.TakeNext("RePrint_CTL");
  LetterIsPrinted();
  Form().cancel.UserClicks();
  EXPECT_TRUE(run_.HasLettersToReprint("110"));
  LetterIsPrinted();
  EXPECT_THAT(Keys(), IsEmpty());
  EXPECT_FALSE(Form().shown());
  EXPECT_FALSE(run_.HasLettersToReprint("110"));
  run_.SendBatchCount("Saving batch");
  EXPECT_THAT(Count(), testing::IsSupersetOf({"CTL_TOT=9", "CTL_PRNTD=2"}));
}

TEST_F(BatchReprintTest, ReportsWhatItReachedWhenALetterFails) {
  run_.Prepare({"109", "B", {31, 32}, /*total=*/2});
  run_.TakeNext("RePrint_Tax_Warrant");
  LetterIsPrinted();
  run_.Stop("");
  EXPECT_THAT(Count(), ElementsAre("ACTION=ADD", "STATION_ID=B", "TW_TOT=2", "TW_PRNTD=1"));
  EXPECT_FALSE(run_.HasLettersToReprint("109"));
  EXPECT_FALSE(Form().shown());
}

}  // namespace
}  // namespace tracking
