#include "server/requests/request_processor.h"

#include <thread>

#include "tests/server/server_world.h"

namespace {

using testing::HasSubstr;
using tests::Question;
using tests::Record;
using tests::WireText;

class Requests : public tests::ServerTest {};

TEST_F(Requests, TheTemplateFolderIsTheServersOwn) {
  const auto reply =
      Ask({.type = 83,
           .inquiry = "<XML_CONTEXT_INQUIRY><L_TEMPLATE_PATH></L_TEMPLATE_PATH></XML_CONTEXT_INQUIRY>"});
  EXPECT_EQ(reply.error, "");
  ASSERT_NE(Record(reply, "XML_Context"), nullptr);
  EXPECT_EQ(Record(reply, "XML_Context")->FirstText(), "<XML_CONTEXT><L_TEMPLATE_PATH>" +
                                                           (folder_ / "server/templates").string() +
                                                           "</L_TEMPLATE_PATH></XML_CONTEXT>");
}

struct WrongInput {
  const char* name;
  Question question;
  const char* error;
};

std::vector<WrongInput> WrongInputs() {
  const auto context = [](std::string type, fakes::Row input) {
    return Question{
        .type = 83, .keys = {{"key: LTR_TYP_ID", type}}, .records = {{"XML_CONTEXT_INPUT", {input}}}};
  };
  const auto letter = [](fakes::Row row) { return Question{.type = 82, .records = {{"CORRHIST", {row}}}}; };
  const fakes::Row good = {
      {"ACTION", "ADD"},     {"PRNT_STTS_CD", "F"}, {"LST_PRNT_TS", "1900-01-01 01.01.01"},
      {"LTR_TYP_ID", "101"}, {"CUST_ID", "100001"}, {"XML_CONTEXT", "<XML_CONTEXT/>"}};
  const auto letter_with = [&](const std::string& column, platform::Value value) {
    auto row = good;
    std::erase_if(row, [&](const auto& cell) { return cell.first == column; });
    row.emplace_back(column, std::move(value));
    return letter(row);
  };
  return {
      {"a type nobody answers", {.type = 4711}, "does not answer requests of type 4711"},
      {"a fetch of nothing", {.type = 83}, "cannot tell what this request of type 83 asks for"},
      {"another inquiry",
       {.type = 83, .inquiry = "<XML_CONTEXT_INQUIRY><A/></XML_CONTEXT_INQUIRY>"},
       "inquiry"},
      {"an inquiry that is no XML",
       {.type = 83, .inquiry = "<XML_CONTEXT_INQUIRY>"},
       "while reading the inquiry"},
      {"an unknown key",
       {.type = 83, .keys = {{"key:FetchContext", "1"}, {"key:COLOUR", "red"}}},
       "\"key:COLOUR\""},
      {"an unknown letter", {.type = 83, .keys = {{"key:FetchContext", "12"}}}, "There is no letter \"12\""},
      {"an unknown letter type", context("999", {{"CUST_ID", "100001"}}), "There is no letter type \"999\""},
      {"no letter type", context("", {{"CUST_ID", "100001"}}), "There is no letter type \"\""},
      {"an unknown customer", context("101", {{"CUST_ID", "7"}}), "There is no customer \"7\""},
      {"an unknown form", context("110", {{"FORM_NBR", "3100005"}, {"FORM_TYP_CD", "C"}}),
       "There is no form \"3100005\" of type \"C\""},
      {"a form without its type", context("110", {{"FORM_NBR", "3100004"}}), "without a form type"},
      {"a wrong check digit",
       context("111", {{"RCPT_NBR", "3100006"}, {"RCPT_CK_DGT_NBR", "1"}, {"FORM_TYP_CD", "R"}}),
       "check digit \"1\""},
      {"another customer's form",
       context("110", {{"CUST_ID", "100002"}, {"FORM_NBR", "3100004"}, {"FORM_TYP_CD", "C"}}),
       "belongs to the customer \"100001\", Prairie Lantern Fuel Supply LLC, not to \"100002\""},
      {"neither customer nor form", context("101", {{"FORM_TYP_CD", "C"}}), "neither a customer nor a form"},
      {"an action nobody knows", letter_with("ACTION", "DEL"), "action \"DEL\""},
      {"a bad time", letter_with("LST_PRNT_TS", "2026-02-30 10.00.00"), "2026-02-30 10.00.00"},
      {"a letter of an unknown customer", letter_with("CUST_ID", "7"), "There is no customer \"7\""},
      {"a letter of an unknown type", letter_with("LTR_TYP_ID", "999"), "There is no letter type \"999\""},
      {"a letter of an unknown form", letter_with("FORM_NBR", "1"), "There is no form \"1\""},
      {"a letter without a status", letter_with("PRNT_STTS_CD", ""), "PRNT_STTS_CD"},
      {"a context cut off", letter_with("XML_CONTEXT", "<XML_CONTEXT><A>"),
       "while reading the letter's context"},
      {"a context of another kind", letter_with("XML_CONTEXT", "<LETTER/>"), "\"LETTER\""},
      {"an address type of letters", letter_with("ADDR_TYP_CD", "mail"), "while reading ADDR_TYP_CD"},
      {"a reprint of an unknown letter", letter({{"ACTION", "UPD"}, {"SEQ_NBR", 99}}),
       "There is no letter \"99\""},
      {"a reprint without a number", letter({{"ACTION", "UPD"}}), "while reading SEQ_NBR"},
      {"no letter at all", {.type = 82, .records = {{"CORRHIST", {}}}}, "came without a letter"},
  };
}

TEST_F(Requests, WrongInputIsAnsweredWithAClearTextAndChangesNothing) {
  for (const auto& wrong : WrongInputs()) {
    EXPECT_THAT(Ask(wrong.question).error, HasSubstr(wrong.error)) << wrong.name;
  }
  EXPECT_EQ(LettersRecorded(), 0);
}

TEST_F(Requests, AMessageThatCannotBeReadIsAnsweredToo) {
  const auto good = WireText(PrintedLetter("m-1"));
  for (const auto& text :
       {std::string(), std::string("garbage"), good.substr(0, good.size() / 2), good + "x"}) {
    EXPECT_THAT(server::ReadReply(processor_.Answer(text)).error, HasSubstr("cannot be read")) << text.size();
  }
  EXPECT_EQ(LettersRecorded(), 0);
}

TEST_F(Requests, WithoutDataTheAnswerNamesTheFileUntilItIsThere) {
  const tests::TemporaryFolder empty;
  server::RequestProcessor processor(empty.path(), parties_);
  EXPECT_THAT(server::ReadReply(processor.Answer(WireText(Fetch("1")))).error,
              HasSubstr(server::DatabaseFile(empty.path()).string() + "\" is missing"));
  tests::PrepareData(empty.path());
  EXPECT_THAT(server::ReadReply(processor.Answer(WireText(Fetch("1")))).error,
              HasSubstr("There is no letter"));
}

TEST_F(Requests, TheLogOfAnsweredRequestsForgetsOldOnesAtStart) {
  EXPECT_EQ(Ask(PrintedLetter("m-1")).error, "");
  clock_.Sleep(std::chrono::days(2));
  EXPECT_EQ(Ask(PrintedLetter("m-2")).error, "");
  clock_.Sleep(std::chrono::days(29));
  server::RequestProcessor next_start(folder_.path(), parties_);
  next_start.Answer(WireText(Fetch("1")));
  server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
  const auto keys = database.Select("SELECT MSG_KEY FROM request_log");
  ASSERT_EQ(keys->RecordCount(), 1U);
  EXPECT_EQ(keys->FirstText(), "m-2");
}

TEST_F(Requests, AChangeSentAgainHasItsEffectOnceAndTheSameReply) {
  const auto first = processor_.Answer(WireText(PrintedLetter("m-1")));
  clock_.Sleep(std::chrono::minutes(5));
  EXPECT_EQ(processor_.Answer(WireText(PrintedLetter("m-1"))), first);
  server::RequestProcessor reopened(folder_.path(), parties_);
  EXPECT_EQ(reopened.Answer(WireText(PrintedLetter("m-1"))), first);
  EXPECT_EQ(LettersRecorded(), 1);
}

// A note left for more than thirty days was recorded a second time, though its question said "stored once".
TEST_F(Requests, ALettersRecordAndItsReprintAreStoredOnceHoweverLateTheyComeAgain) {
  EXPECT_EQ(Ask(PrintedLetter("m-1")).error, "");
  clock_.Sleep(std::chrono::hours(1));
  const auto reprinted = Ask(Reprint("m-2", "1"));
  clock_.Sleep(std::chrono::days(400));
  server::RequestProcessor much_later(folder_.path(), parties_);
  for (const auto& question : {PrintedLetter("m-1"), Reprint("m-2", "1")}) {
    const auto reply = server::ReadReply(much_later.Answer(WireText(question)));
    EXPECT_EQ(reply.error, "");
    ASSERT_NE(Record(reply, "CORRHIST"), nullptr);
    EXPECT_EQ(Record(reply, "CORRHIST")->Text("SEQ_NBR"), "1");
    EXPECT_EQ(Record(reply, "CORRHIST")->Text("LST_PRNT_TS"),
              Record(reprinted, "CORRHIST")->Text("LST_PRNT_TS"));
  }
  EXPECT_EQ(LettersRecorded(), 1);
}

TEST_F(Requests, AChangeThatFailedHalfWayLeavesNothingAndMayBeSentAgain) {
  auto question = PrintedLetter("m-1");
  question.records[0].second.push_back({{"ACTION", "UPD"}, {"SEQ_NBR", 99}});
  EXPECT_THAT(Ask(question).error, HasSubstr("There is no letter \"99\""));
  EXPECT_EQ(Ask(PrintedLetter("m-1")).error, "");
  EXPECT_EQ(LettersRecorded(), 1);
}

TEST_F(Requests, TwoServersOnOneFolderBothRecordWhatTheyAreGiven) {
  constexpr int kEach = 25;
  const auto record = [&](const std::string& name) {
    server::RequestProcessor processor(folder_.path(), parties_);
    for (int letter = 0; letter < kEach; ++letter) {
      const auto reply =
          server::ReadReply(processor.Answer(WireText(PrintedLetter(name + std::to_string(letter)))));
      EXPECT_EQ(reply.error, "");
    }
  };
  std::thread other([&] { record("other-"); });
  record("one-");
  other.join();
  EXPECT_EQ(LettersRecorded(), 2 * kEach);
}

}  // namespace
