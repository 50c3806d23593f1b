#include "server/link/server_message_component.h"

#include "server/storage/database.h"
#include "server/wire/reply_store.h"
#include "tests/fakes/fake_rights.h"
#include "tests/fakes/fake_verifier.h"
#include "tests/server/server_world.h"
#include "tests/support/waiting_event_queue.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using namespace std::chrono_literals;

/// A listener and what it heard.
struct Hearer {
  Hearer(platform::MessageComponent& component, std::vector<std::string>& heard, const std::string& name)
      : listener(component.NewListener()),
        ready(listener->DataReady.Connect([&heard, name](const std::string& application) {
          heard.push_back(name + " ready " + application);
        })),
        timed_out(listener->MsgTimeout.Connect([&heard, name] { heard.push_back(name + " timed out"); })) {}
  std::unique_ptr<platform::ReplyListener> listener;
  platform::Connection ready;
  platform::Connection timed_out;
};

class MessageComponent : public testing::Test {
 protected:
  MessageComponent() {
    tests::PrepareData(folder_.path());
    clock_.SetToday(tests::kToday);
    component_ = std::make_unique<server::ServerMessageComponent>(
        events_, downloads_, folder_.path(), server::ServerParties{clock_, rights_, verifier_});
    workspace_ = std::make_unique<Hearer>(*component_, heard_, "workspace");
  }

  std::unique_ptr<platform::RequestMessage> Fetch(Hearer& hearer, const std::string& letter,
                                                  const std::string& application = "ZEMLO_Corresp") {
    auto message = hearer.listener->NewMessage();
    message->Application(application);
    message->MessageType(83);
    message->AddKey(platform::Criterion("key:FetchContext", letter));
    return message;
  }
  std::unique_ptr<platform::RequestMessage> TemplateFolderInquiry() {
    auto message = workspace_->listener->NewMessage();
    message->Application("ZEMLO_Corresp");
    message->MessageType(83);
    message->AddInquiryXml("<XML_CONTEXT_INQUIRY><L_TEMPLATE_PATH/></XML_CONTEXT_INQUIRY>");
    return message;
  }
  static std::unique_ptr<platform::RequestMessage> Recording(Hearer& hearer, const fakes::Row& letter) {
    auto message = hearer.listener->NewMessage();
    message->Application("ZEMLO_Corresp");
    message->MessageType(82);
    message->AddRecord(std::make_shared<platform::RequestRecord>(fakes::RowsOf("CORRHIST", {letter})),
                       "CORRHIST");
    return message;
  }
  int LettersRecorded() const {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    return std::stoi(database.Select("SELECT COUNT(*) FROM letter_history")->FirstText());
  }
  void WaitForAll() {
    events_.RunUntil([this] { return !component_->HasWorkUnderWay(); });
  }
  std::string Error(const std::string& message_key) {
    return component_->GetReplyError("ZEMLO_Corresp", "", message_key);
  }

  tests::TemporaryFolder folder_;
  fakes::ManualClock clock_;
  fakes::FakeRights rights_;
  fakes::FakeVerifier verifier_;
  tests::WaitingEventQueue events_;
  server::CommunicationsClientProvider downloads_{events_, folder_.path()};
  std::unique_ptr<server::ServerMessageComponent> component_;
  std::vector<std::string> heard_;
  std::unique_ptr<Hearer> workspace_;
};

const fakes::Row kLetter = {{"ACTION", "ADD"},
                            {"LTR_TYP_ID", "101"},
                            {"CUST_ID", "100001"},
                            {"PRNT_STTS_CD", "F"},
                            {"XML_CONTEXT", "<XML_CONTEXT/>"}};

/// Keeps the server from answering changing requests for as long as it lives.
class BusyData {
 public:
  explicit BusyData(const std::filesystem::path& folder)
      : database_(server::DatabaseFile(folder), server::Database::Opening::kExisting),
        transaction_(database_, server::Transaction::Purpose::kChanging) {}

 private:
  server::Database database_;
  server::Transaction transaction_;
};

TEST_F(MessageComponent, AReplyComesFromTheEventLoopAndCanBeReadByItsKey) {
  const auto message = TemplateFolderInquiry();
  message->BuildMessage();
  message->Send();
  EXPECT_TRUE(component_->HasWorkUnderWay());
  EXPECT_THAT(heard_, ElementsAre());
  EXPECT_FALSE(component_->HasReply(message->MessageKey()));
  WaitForAll();
  EXPECT_THAT(heard_, ElementsAre("workspace ready ZEMLO_Corresp"));
  EXPECT_TRUE(component_->HasReply(message->MessageKey()));
  EXPECT_EQ(Error(message->MessageKey()), "");
  const auto record = component_->GetRecord("ZEMLO_Corresp", "XML_CONTEXT", message->MessageKey());
  ASSERT_NE(record, nullptr);
  EXPECT_THAT(record->Recordset()->FirstText(), HasSubstr("/server/templates</L_TEMPLATE_PATH>"));
  EXPECT_EQ(component_->GetRecord("ZEMLO_Corresp", "CORRHIST", message->MessageKey()), nullptr);
}

TEST_F(MessageComponent, RepliesComeInTheOrderOfTheirRequestsToWhoSentThem) {
  Hearer dialog(*component_, heard_, "dialog");
  Fetch(dialog, "1", "ZEMLO_Corresp")->Send();
  const auto message = Fetch(*workspace_, "2");
  message->Send();
  Fetch(dialog, "3", "ZEMLO_Corresp_BatchStat")->Send();
  WaitForAll();
  EXPECT_THAT(heard_, ElementsAre("dialog ready ZEMLO_Corresp", "workspace ready ZEMLO_Corresp",
                                  "dialog ready ZEMLO_Corresp_BatchStat"));
  EXPECT_THAT(Error(message->MessageKey()), HasSubstr("\"2\""));
}

TEST_F(MessageComponent, NobodyHearsTheReplyToAListenerThatHasGone) {
  auto dialog = std::make_unique<Hearer>(*component_, heard_, "dialog");
  const auto message = Fetch(*dialog, "1");
  message->Send();
  dialog.reset();
  WaitForAll();
  EXPECT_THAT(heard_, ElementsAre());
  EXPECT_EQ(Error(message->MessageKey()), "");
}

TEST_F(MessageComponent, AListenerMayGoWhileItHearsItsTimeOut) {
  const BusyData busy(folder_.path());
  auto dialog = std::make_unique<Hearer>(*component_, heard_, "dialog");
  const auto going = dialog->listener->MsgTimeout.Connect([&] { dialog.reset(); });
  Recording(*dialog, {{"ACTION", "ADD"}})->SendAndWait(true, 10ms, 10);
  WaitForAll();
  EXPECT_THAT(heard_, ElementsAre("dialog timed out"));
}

TEST_F(MessageComponent, ATimeOutComesFirstThenItsErrorReplyAndTheLateAnswerIsDropped) {
  auto busy = std::make_unique<BusyData>(folder_.path());
  const auto message = Recording(*workspace_, kLetter);
  message->SendAndWait(true, 30ms, 10);
  WaitForAll();
  EXPECT_THAT(heard_, ElementsAre("workspace timed out", "workspace ready ZEMLO_Corresp"));
  EXPECT_THAT(Error(message->MessageKey()), HasSubstr("did not answer in time"));

  busy.reset();
  TemplateFolderInquiry()->Send();  // answered after the late one
  WaitForAll();
  EXPECT_THAT(heard_, ElementsAre("workspace timed out", "workspace ready ZEMLO_Corresp",
                                  "workspace ready ZEMLO_Corresp"));
  EXPECT_THAT(Error(message->MessageKey()), HasSubstr("did not answer in time"));
  EXPECT_EQ(LettersRecorded(), 0) << "it was told that nothing was done, and may have asked again";
}

TEST_F(MessageComponent, MessageKeysAreUnique) {
  std::set<std::string> keys;
  for (int count = 0; count < 1000; ++count) keys.insert(workspace_->listener->NewMessage()->MessageKey());
  EXPECT_EQ(keys.size(), 1000u);
}

TEST_F(MessageComponent, OldRepliesGoButRowsThatWereHandedOutStay) {
  const auto first = TemplateFolderInquiry();
  first->Send();
  WaitForAll();
  const auto record = component_->GetRecord("ZEMLO_Corresp", "XML_Context", first->MessageKey());
  for (std::size_t count = 0; count < server::ReplyStore::kKept; ++count) TemplateFolderInquiry()->Send();
  WaitForAll();
  EXPECT_EQ(component_->GetRecord("ZEMLO_Corresp", "XML_Context", first->MessageKey()), nullptr);
  EXPECT_THAT(record->Recordset()->FirstText(), HasSubstr("L_TEMPLATE_PATH"));
}

TEST_F(MessageComponent, WhatWasSentIsDoneWhenTheComponentGoes) {
  constexpr int kRecorded = 20;
  for (int letter = 0; letter < kRecorded; ++letter) {
    Recording(*workspace_, kLetter)->Send();
  }
  workspace_.reset();
  component_.reset();
  events_.RunPending();
  EXPECT_THAT(heard_, ElementsAre());
  EXPECT_EQ(LettersRecorded(), kRecorded);
}

TEST_F(MessageComponent, DownloadsOfAListenerAreWorkUnderWay) {
  downloads_.Connect();
  workspace_->listener->DownloadFile(server::TemplateFolder(folder_.path()).string() + "\\kvcorr.dot",
                                     (folder_ / "local").string(), 0);
  EXPECT_TRUE(component_->HasWorkUnderWay());
  WaitForAll();
  EXPECT_TRUE(std::filesystem::exists(folder_ / "local/kvcorr.dot"));
}

}  // namespace
