#include "server/history/letter_history.h"

#include "tests/server/server_world.h"

namespace {

using testing::HasSubstr;
using tests::Record;

class LetterHistory : public tests::ServerTest {
 protected:
  /// The letter as the reply to its recording shows it.
  std::shared_ptr<platform::RecordSet> Recorded(const tests::Question& question) {
    const auto reply = Ask(question);
    EXPECT_EQ(reply.error, "");
    return reply.records.at(0).rows;
  }
  void Execute(const std::string& statement) {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    database.Change(statement);
  }
};

TEST_F(LetterHistory, APrintedLetterGetsANumberTheServersTimeAndTheStatusOfAPrintedLetter) {
  const auto letter = Recorded(PrintedLetter("m-1"));
  EXPECT_EQ(letter->Text("SEQ_NBR"), "1");
  EXPECT_EQ(letter->Text("PRNT_STTS_CD"), "P");
  EXPECT_EQ(letter->Text("PRNT_TS"), "2026-11-22 09.00.00");
  EXPECT_EQ(letter->Text("LST_PRNT_TS"), "2026-11-22 09.00.00");
  EXPECT_EQ(letter->Text("LST_PRCS_TS"), "2026-11-22 08.59.00");
  EXPECT_EQ(letter->Text("LST_UPDT_INSP_ID"), "DEMO01");
  EXPECT_EQ(letter->Text("QZ_CNTY_DESC") + letter->Text("TRP_ID") + letter->Text("TRP_DIST_ID"),
            "HartsfieldC1");
  EXPECT_TRUE(letter->Get("FORM_NBR").IsNull());
  EXPECT_TRUE(letter->Get("XML_CONTEXT").IsNull());
  EXPECT_EQ(Recorded(PrintedLetter("m-2"))->Text("SEQ_NBR"), "2");
}

TEST_F(LetterHistory, AReprintMovesTheLastPrintTimeOnly) {
  Recorded(PrintedLetter("m-1"));
  clock_.Sleep(std::chrono::hours(2));
  const auto letter = Recorded(Reprint("m-2", "1"));
  EXPECT_EQ(letter->Text("PRNT_TS"), "2026-11-22 09.00.00");
  EXPECT_EQ(letter->Text("LST_PRNT_TS"), "2026-11-22 11.00.00");
  EXPECT_EQ(letter->Text("DCMT_FILE_TXT"), "REG101_2401.docx");
}

TEST_F(LetterHistory, AFailedLetterStaysFailedWhenItIsPrinted) {
  struct Case {
    const char* status;
    const char* last_print;
    const char* stored;
    const char* after_reprint;
  };
  for (const auto& [status, last_print, stored, after_reprint] : std::initializer_list<Case>{
           {"F", "2026-11-20 02.00.00", "F", "F"},  // failed in the batch: no time is asked for
           {"R", "1900-01-01 01.01.01", "R", "R"},
           {"V", "", "V", "P"},
           {"S", "2026-11-20 02.00.00", "S", "P"},
           {"F", "1900-01-01 01.01.01", "P", "P"}}) {
    const std::string name = std::string(status) + last_print;
    const auto letter =
        Recorded(PrintedLetter(name, {{"PRNT_STTS_CD", status}, {"LST_PRNT_TS", last_print}}));
    EXPECT_EQ(letter->Text("PRNT_STTS_CD"), stored) << name;
    EXPECT_EQ(Recorded(Reprint(name + "again", letter->Text("SEQ_NBR")))->Text("PRNT_STTS_CD"), after_reprint)
        << name;
  }
}

TEST_F(LetterHistory, ALetterThatWasNeverPrintedGetsItsFirstTimeFromItsReprint) {
  EXPECT_TRUE(
      Recorded(PrintedLetter("m-1", {{"PRNT_STTS_CD", "V"}, {"LST_PRNT_TS", {}}}))->Get("PRNT_TS").IsNull());
  EXPECT_EQ(Recorded(Reprint("m-2", "1"))->Text("PRNT_TS"), "2026-11-22 09.00.00");
}

TEST_F(LetterHistory, TheContextComesBackAsItWasRecorded) {
  const std::string context =
      "<XML_CONTEXT State=\"8\"><PARA_A>O`Neill &amp; Co\nx</PARA_A><B> </B></XML_CONTEXT>";
  Recorded(PrintedLetter("m-1", {{"XML_CONTEXT", context}}));
  EXPECT_EQ(Record(Ask(Fetch("1")), "XML_CONTEXT")->FirstText(), context);
}

TEST_F(LetterHistory, ReturnedMailComesBesideAContextAsItIsToday) {
  Recorded(PrintedLetter("m-1"));
  const auto marks = [&] {
    const auto reply = Ask(Fetch("1"));
    const auto* customer = Record(reply, "CUSTOMER");
    return customer->Text("CUST_ID") + customer->Text("MAIL_RTND_IND") + customer->Text("RES_RTND_IND");
  };
  EXPECT_EQ(marks(), "100001NN");
  Execute("UPDATE customer SET RES_BAD_FLG = 'Y' WHERE CUST_ID = '100001'");
  EXPECT_EQ(marks(), "100001NY");
}

TEST_F(LetterHistory, TheKeysDecideWhichExplanationsComeWithAStoredContext) {
  Recorded(
      PrintedLetter("m-1", {{"XML_CONTEXT",
                             "<XML_CONTEXT State=\"800000\"><LTR_DT State=\"2202\" RawValue=\"2026-11-22\""
                             " V_EnglishDesc=\"Its day\" V_ExplainState=\"As it was.\">x</LTR_DT>"
                             "<CUST_ID State=\"40804\" Err=\"80\">100001</CUST_ID><A Err=\"4\" "
                             "V_ExplainErr=\"The query failed. Why.\"/></XML_CONTEXT>"}}));
  const auto stored = [&](const char* descriptors, const char* states) {
    auto question = Fetch("1");
    question.keys.insert(question.keys.end(),
                         {{"key:EmitFieldDescriptors", descriptors}, {"key: ExplainState", states}});
    return Record(Ask(question), "XML_CONTEXT")->FirstText();
  };
  EXPECT_EQ(stored("N", "N"),
            "<XML_CONTEXT State=\"800000\"><LTR_DT State=\"2202\">x</LTR_DT>"
            "<CUST_ID State=\"40804\" Err=\"80\">100001</CUST_ID><A Err=\"4\"/></XML_CONTEXT>");
  EXPECT_THAT(stored("Y", "N"),
              testing::AllOf(HasSubstr("\"Its day\""), HasSubstr("\"Customer number\""),
                             HasSubstr("RawValue"), testing::Not(HasSubstr("V_ExplainState"))));
  EXPECT_THAT(stored("N", "Y"),
              testing::AllOf(HasSubstr("Changes from day to day."), HasSubstr("left out by the user"),
                             HasSubstr("The input is not one"), HasSubstr("\"The query failed. Why.\""),
                             testing::Not(HasSubstr("V_EnglishDesc"))));
}

// A warrant against one customer could be recorded for another one.
TEST_F(LetterHistory, ALetterIsRecordedForItsOwnCustomerOnly) {
  const fakes::Row about_a_form = {{"FORM_NBR", "3100004"}, {"FORM_TYP_CD", "C"}};  // of 100001
  auto of_another = about_a_form;
  of_another.emplace_back("CUST_ID", "100002");
  of_another.emplace_back("XML_CONTEXT", "<XML_CONTEXT><CUST_ID>100002</CUST_ID></XML_CONTEXT>");
  EXPECT_THAT(
      Ask(PrintedLetter("m-1", of_another)).error,
      HasSubstr("\"3100004\" belongs to the customer \"100001\", Prairie Lantern Fuel Supply LLC, not "
                "to \"100002\", Hattie Merriweather."));
  EXPECT_THAT(Ask(PrintedLetter("m-2", {{"CUST_ID", "100002"}})).error,
              HasSubstr("is that of the customer \"100001\", the letter is recorded for \"100002\""));
  EXPECT_EQ(LettersRecorded(), 0);
  EXPECT_EQ(Recorded(PrintedLetter("m-3", about_a_form))->Text("FORM_NBR"), "3100004");
}

TEST_F(LetterHistory, AnUpdateBringsTheNextLettersContext) {
  Recorded(PrintedLetter("m-1"));
  Recorded(PrintedLetter("m-2", {{"XML_CONTEXT", "<XML_CONTEXT><NEXT/></XML_CONTEXT>"}}));
  auto question = Reprint("m-3", "1");
  question.keys = {{"key:FetchContext", "2"}};
  const auto reply = Ask(question);
  EXPECT_EQ(Record(reply, "XML_CONTEXT")->FirstText(), "<XML_CONTEXT><NEXT/></XML_CONTEXT>");
  EXPECT_EQ(Record(reply, "CORRHIST")->Text("SEQ_NBR"), "1");
}

TEST_F(LetterHistory, AnUpdateIsKeptThoughTheNextLetterIsNotThere) {
  Recorded(PrintedLetter("m-1"));
  clock_.Sleep(std::chrono::hours(1));
  auto question = Reprint("m-2", "1");
  question.keys = {{"key:FetchContext", "77"}};
  EXPECT_THAT(Ask(question).error, HasSubstr("There is no letter \"77\""));
  clock_.Sleep(std::chrono::hours(1));
  EXPECT_THAT(Ask(question).error, HasSubstr("There is no letter \"77\"")) << "sent again";
  auto unchanged = Reprint("m-3", "1");
  unchanged.records[0].second[0][3].second = platform::Value();
  EXPECT_EQ(Recorded(unchanged)->Text("LST_PRNT_TS"), "2026-11-22 10.00.00");
}

}  // namespace
