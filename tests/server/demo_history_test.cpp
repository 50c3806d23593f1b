#include "server/setup/demo_history.h"

#include <map>
#include <set>

#include "tests/server/server_world.h"

namespace {

using platform::RecordSet;
using tests::kToday;

constexpr int kCount = 1500;

/// A history of its own, made once for the whole program.
class DemoHistory : public testing::Test {
 protected:
  static const tests::TemporaryFolder& Folder() {
    static const tests::TemporaryFolder folder;
    static const bool made = [] {
      auto options = tests::DemoOptions(folder.path());
      options.customers = 60;
      options.letters = kCount;
      server::CreateServerData(options);
      return true;
    }();
    static_cast<void>(made);
    return folder;
  }
  static std::shared_ptr<RecordSet> Letters(const std::string& rest = "") {
    server::Database database(server::DatabaseFile(Folder().path()), server::Database::Opening::kExisting);
    return database.Select("SELECT * FROM letter_history " + rest);
  }
  static std::map<std::string, int> CountsOf(const std::string& column) {
    std::map<std::string, int> counts;
    const auto letters = Letters();
    for (std::size_t row = 0; row < letters->RecordCount(); ++row) ++counts[letters->Text(row, column)];
    return counts;
  }
};

TEST_F(DemoHistory, HasLettersOfEveryStatusTypeAndKindOverThreeYears) {
  EXPECT_EQ(Letters()->RecordCount(), static_cast<std::size_t>(kCount));
  for (const auto* status : {"P", "S", "W", "F", "R", "M", "V", "E"})
    EXPECT_GT(CountsOf("PRNT_STTS_CD")[status], 0) << status;
  EXPECT_EQ(CountsOf("PRNT_STTS_CD").size(), 8U);
  EXPECT_GT(Letters("WHERE SEQ_NBR IN (SELECT SEQ_NBR FROM returned_mail)")->RecordCount(), 0U);
  EXPECT_GT(CountsOf("SYS_RFRNC_CD")["O"], kCount / 4);
  EXPECT_GT(CountsOf("SYS_RFRNC_CD")["B"], kCount / 4);
  EXPECT_EQ(CountsOf("LTR_TYP_ID").size(), 15U);
  EXPECT_GE(CountsOf("LST_UPDT_INSP_ID").size(), 5U);
  EXPECT_GE(CountsOf("QZ_CNTY_DESC").size(), 15U);
  EXPECT_LT(Letters("ORDER BY SEQ_NBR")->Text("LST_PRCS_TS"), "2023-11-25");
  EXPECT_EQ(Letters("ORDER BY SEQ_NBR DESC")->Text("LST_PRCS_TS").substr(0, 10), "2026-11-22");
}

TEST_F(DemoHistory, IsTrueToItself) {
  struct Never {
    const char* what;
    const char* condition;
  };
  for (const auto& [what, condition] : std::initializer_list<Never>{
           {"printed before it was processed", "PRNT_TS < LST_PRCS_TS"},
           {"printed again before it was printed", "LST_PRNT_TS < PRNT_TS"},
           {"of tomorrow", "LST_PRNT_TS >= '2026-11-23' OR LST_PRCS_TS >= '2026-11-23'"},
           {"printed and not printed", "(PRNT_TS IS NULL) <> (PRNT_STTS_CD IN ('V', 'E', 'W', 'F', 'M'))"},
           {"waiting without an item, or not waiting with one",
            "(PRNT_STTS_CD = 'W') <> (SEQ_NBR IN (SELECT SEQ_NBR FROM batch_item))"},
           {"returned from an address without a mark",
            "SEQ_NBR IN (SELECT SEQ_NBR FROM returned_mail JOIN customer USING (CUST_ID)"
            " WHERE CASE ADDR_TYP_CD WHEN 1 THEN MAIL_BAD_FLG ELSE RES_BAD_FLG END = 'N')"},
           {"failed without saying why", "PRNT_STTS_CD IN ('F', 'R', 'V', 'E') AND PRCS_ERR_TXT IS NULL"},
           {"of the batch without a run",
            "PRNT_STTS_CD <> 'W' AND (SYS_RFRNC_CD = 'B') <> (FLS_BTCH_NBR IS NOT NULL)"},
           {"of a run whose counts are not its letters'",
            "EXISTS (SELECT 1 FROM batch_run WHERE LTR_SCS_CNT <> (SELECT COUNT(*) FROM batch_letter WHERE"
            " batch_letter.BTCH_SEQ_NBR = batch_run.BTCH_SEQ_NBR AND RSLT_CD = 'S'))"},
           {"on line with a batch action", "SYS_RFRNC_CD = 'O' AND BTCH_ACTN_CD IS NOT NULL"},
           {"waiting though last night's run came to it",
            "PRNT_STTS_CD = 'W' AND SEQ_NBR NOT IN (SELECT SEQ_NBR FROM batch_letter WHERE RSLT_CD IS NULL "
            "AND"
            " BTCH_SEQ_NBR = (SELECT MAX(BTCH_SEQ_NBR) FROM batch_run WHERE BTCH_STATUS = 'INCOMPLETE'))"},
           {"about another customer's form",
            "FORM_NBR IS NOT NULL AND CUST_ID <> (SELECT form.CUST_ID FROM form WHERE form.FORM_NBR ="
            " letter_history.FORM_NBR AND form.FORM_TYP_CD = letter_history.FORM_TYP_CD)"},
           {"later than the next one",
            "EXISTS (SELECT 1 FROM letter_history AS next WHERE next.SEQ_NBR = letter_history.SEQ_NBR + 1"
            " AND next.LST_PRCS_TS < letter_history.LST_PRCS_TS)"},
           {"without a context", "SEQ_NBR NOT IN (SELECT SEQ_NBR FROM letter_context)"},
           {"from a template that was not valid yet",
            "DCMT_FILE_TXT = 'CTL110_2407.docx' AND LST_PRCS_TS < '2024-07-01'"},
       }) {
    EXPECT_EQ(Letters(std::string("WHERE ") + condition)->RecordCount(), 0U) << what;
  }
}

TEST_F(DemoHistory, EveryStoredContextIsThatLettersOwn) {
  fakes::ManualClock clock;
  const fakes::FakeRights rights;
  fakes::FakeVerifier verifier;
  clock.SetToday(kToday);
  server::RequestProcessor processor(Folder().path(), {clock, rights, verifier});
  const auto letters = Letters("WHERE SEQ_NBR % 7 = 0");
  ASSERT_GT(letters->RecordCount(), 100U);
  for (std::size_t row = 0; row < letters->RecordCount(); ++row) {
    const auto number = letters->Text(row, "SEQ_NBR");
    const auto reply = server::ReadReply(processor.Answer(tests::WireText(
        {.type = 83, .keys = {{"key:FetchContext", number}, {"key:EmitFieldDescriptors", "Y"}}})));
    ASSERT_EQ(reply.error, "") << number;
    const auto context = tests::Record(reply, "XML_CONTEXT")->FirstText();
    const auto document = platform::XmlDocument::Parse(context).OrFail();
    EXPECT_EQ(document.Root().Name(), "XML_CONTEXT");
    EXPECT_THAT(context, testing::HasSubstr(">" + letters->Text(row, "CUST_ID") + "</CUST_ID>")) << number;
    EXPECT_THAT(context, testing::HasSubstr("RawValue=\"" + letters->Text(row, "LST_PRCS_TS").substr(0, 10)))
        << number;
    const auto form = letters->Text(row, "FORM_NBR");
    if (!form.empty()) {
      EXPECT_THAT(context, testing::HasSubstr(">" + form + "</FORM_NBR>")) << number;
    }
    EXPECT_THAT(context, testing::Not(testing::HasSubstr("'"))) << number;
  }
}

TEST_F(DemoHistory, IsTheSameEveryTime) {
  const tests::TemporaryFolder again;
  auto options = tests::DemoOptions(again.path());
  options.letters = 100;
  server::CreateServerData(options);
  const tests::TemporaryFolder other;
  options.data_folder = other.path();
  server::CreateServerData(options);
  const auto contents = [](const tests::TemporaryFolder& folder) {
    server::Database database(server::DatabaseFile(folder.path()), server::Database::Opening::kExisting);
    return database
        .Select(
            "SELECT GROUP_CONCAT(LTR_TYP_ID || CUST_ID || LST_PRCS_TS || PRNT_STTS_CD || HEX(CNTXT)) FROM"
            " letter_history JOIN letter_context USING (SEQ_NBR)")
        ->FirstText();
  };
  EXPECT_EQ(contents(again), contents(other));
}

}  // namespace
