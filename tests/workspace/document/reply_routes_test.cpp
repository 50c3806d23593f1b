#include "workspace/document/reply_routes.h"

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"
#include "workspace/messaging/request_envelope.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Walks the table with handlers that write down their names.
class ReplyRoutesTest : public testing::Test {
 protected:
  ReplyRoutesTest() {
    handlers_.CreateNewCorrespondence = Takes("CreateNewCorrespondence");
    handlers_.DecodeNetworkPath = Takes("DecodeNetworkPath");
    handlers_.CopyTemplate = Notes("CopyTemplate");
    handlers_.FillBatchHistory = Takes("FillBatchHistory");
    handlers_.ViewBookMark = Takes("ViewBookMark");
    handlers_.FillCustFromLetter = Takes("FillCustFromLetter");
    handlers_.FillCustomerInfo = Takes("FillCustomerInfo");
    handlers_.SendBatchInq = Notes("SendBatchInq");
    handlers_.FillHistory = [this](const Reply&, PageIndex page) { Note("FillHistory " + Number(page)); };
    handlers_.MergeLetter = [this](const Reply&, PageIndex page, const std::string& mode,
                                   const std::string& type) {
      Note("MergeLetter " + Number(page) + " " + mode + " '" + type + "'");
    };
    handlers_.ProcessBatchReprint = [this](const Reply&, const std::string& type) {
      Note("ProcessBatchReprint " + type);
    };
    handlers_.HasLettersToReprint = [this](const std::string& type) { return type == letters_left_; };
    handlers_.SendBatchCount = [this](std::string_view status) {
      Note("SendBatchCount '" + std::string(status) + "'");
    };
    pages_.tabs.Select(PageIndex::kTracking);
  }

  std::vector<std::string> AfterReplyTo(const std::string& request_name, const std::string& error = "") {
    envelope_.Send({.type = 79, .name = request_name});
    fakes_.status.texts.clear();
    noted_.clear();
    fakes_.server.ReplyWithError(error);
    ReplyDispatcher replies(fakes_.services(), pending_, message_title_, ReplyRoutes(handlers_, pages_), {});
    const auto ready =
        listener_->DataReady.Connect([&](const std::string& name) { replies.DataReady(name); });
    fakes_.RunEvents();
    return noted_;
  }
  std::function<void()> Notes(std::string line) {
    return [this, line] { Note(line); };
  }
  ReplyRoute::Action Takes(std::string line) {
    return [this, line](const Reply&) { Note(line); };
  }
  void Note(std::string line) { noted_.push_back(std::move(line)); }
  static std::string Number(PageIndex page) { return std::to_string(static_cast<int>(page)); }

  fakes::FakeServices fakes_;
  const std::string message_title_;
  PendingRequest pending_;
  Pages pages_{fakes_.services()};
  ReplyHandlers handlers_;
  std::unique_ptr<platform::ReplyListener> listener_ = fakes_.server.NewListener();
  RequestEnvelope envelope_{fakes_.services(), pending_, *listener_};
  std::string letters_left_;
  std::vector<std::string> noted_;
};

TEST_F(ReplyRoutesTest, GiveEveryReplyToItsHandler) {
  struct Case {
    const char* request;
    std::vector<std::string> handlers;
    const char* status;
  };
  const Case cases[] = {
      {"Letter_History", {"FillHistory 1"}, ""},
      {"Batch_History", {"FillBatchHistory"}, ""},
      {"XMLRequest", {"CreateNewCorrespondence"}, ""},
      {"GetNetworkPath", {"DecodeNetworkPath", "CopyTemplate"}, ""},
      {"LetterAU", {}, "Ready"},
      {"BatchAU", {}, "Ready"},
      {"Letter_Preview", {"MergeLetter 1 PREVIEW ''"}, "Ready"},
      {"Letter_BKView", {"ViewBookMark"}, "Ready"},
      {"Letter_Print", {"MergeLetter 1 PRINT ''"}, "Ready"},
      {"Letter_Save", {"MergeLetter 1 SAVE ''"}, "Ready"},
      {"CustomerFromLetter", {"FillCustFromLetter"}, "Ready"},
      {"CustomerInq", {"FillCustomerInfo"}, "Ready"},
      {"Batch_Reprint", {"SendBatchInq"}, ""},
      {"Batch_CTL", {"ProcessBatchReprint 110"}, ""},
      {"Batch_TaxWarrant", {"ProcessBatchReprint 109"}, ""},
      {"RePrint_CTL", {"SendBatchCount 'Saving batch'"}, ""},
      {"RePrint_Tax_Warrant", {"SendBatchCount 'Saving batch'"}, ""},
      {"BatchCount", {}, "Ready"},
      {"xmlrequest", {}, "Ready"},
  };
  for (const auto& [request, handlers, status] : cases) {
    EXPECT_EQ(AfterReplyTo(request), handlers) << request;
    EXPECT_EQ(fakes_.status.LastText(), status) << request;
  }
}

TEST_F(ReplyRoutesTest, PrintTheNextLetterOfABatchReprintWhileThereIsOne) {
  letters_left_ = "110";
  EXPECT_THAT(AfterReplyTo("RePrint_CTL"), ElementsAre("MergeLetter -1 RePrint_CTL '110'"));
  EXPECT_THAT(AfterReplyTo("RePrint_Tax_Warrant"), ElementsAre("SendBatchCount 'Saving batch'"));
  letters_left_ = "109";
  EXPECT_THAT(AfterReplyTo("RePrint_Tax_Warrant"), ElementsAre("MergeLetter -1 RePrint_Tax_Warrant '109'"));
}

// The next letter of the run shows a status of its own.
TEST_F(ReplyRoutesTest, SayReadyAfterARecordOnlyWhenNoLetterIsLeftToPrint) {
  bool is_over = false;
  handlers_.LocalReprintIsOver = [&] { return is_over; };
  AfterReplyTo("LetterAU");
  EXPECT_EQ(fakes_.status.LastText(), "");
  is_over = true;
  AfterReplyTo("LetterAU");
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
}

TEST_F(ReplyRoutesTest, RunNoHandlerForAnErrorButTheCountOfAReprint) {
  for (const auto& route : ReplyRoutes(handlers_, pages_)) {
    const bool is_reprint = route.request_name.starts_with("RePrint_");
    const auto expected =
        is_reprint ? std::vector<std::string>{"SendBatchCount ''"} : std::vector<std::string>{};
    EXPECT_EQ(AfterReplyTo(route.request_name, "broken"), expected) << route.request_name;
    EXPECT_EQ(fakes_.status.LastText(), "Search was not successful");
  }
}

TEST_F(ReplyRoutesTest, EnableTheListsAgainWhetherTheSearchSucceededOrNot) {
  for (const auto* error : {"", "broken"}) {
    pages_.tracking.sdgGrid.SetEnabled(false);
    pages_.batch.sdgGrid.SetEnabled(false);
    AfterReplyTo("Letter_History", error);
    AfterReplyTo("Batch_History", error);
    EXPECT_TRUE(pages_.tracking.sdgGrid.enabled()) << error;
    EXPECT_TRUE(pages_.batch.sdgGrid.enabled()) << error;
  }
}

TEST_F(ReplyRoutesTest, WaitForHandlersThatAreNotThereYet) {
  handlers_ = {};
  for (const auto& route : ReplyRoutes(handlers_, pages_)) {
    AfterReplyTo(route.request_name);
    EXPECT_THAT(fakes_.errors.reports, IsEmpty()) << route.request_name;
  }
}

}  // namespace
}  // namespace workspace
