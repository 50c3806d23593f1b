#include <gmock/gmock.h>

#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// Letters 1 to 3, printed for customer 100001 today; the third one's printer failed since.
class LetterActions : public PreparedOffice {
 protected:
  LetterActions() {
    for (int letter = 0; letter < 3; ++letter) EXPECT_EQ(PrintLetterFor("100001").status, 0);
    ServerSql("UPDATE letter_history SET PRNT_STTS_CD = 'F', PRCS_ERR_TXT = 'No paper.' WHERE SEQ_NBR = 3");
  }
  std::string Items() { return ServerSql("SELECT SEQ_NBR || ACTN_CD FROM batch_item ORDER BY SEQ_NBR"); }
};

TEST_F(LetterActions, GiveLettersToTheBatchAndTakeThemBack) {
  const std::vector<std::string> failed = {"--from-search", "--status", "failure", "--customer", "100001"};
  auto dry = failed;
  dry.emplace_back("--dry-run");
  const auto plan = Letters("resubmit", dry);
  EXPECT_EQ(plan.status, 0) << plan.err;
  EXPECT_THAT(plan.out, AllOf(HasSubstr("3 "), HasSubstr("100001"), HasSubstr("yes")));
  EXPECT_EQ(Items(), "");

  EXPECT_EQ(Letters("resubmit", failed).status, 0);
  const auto again = Letters("resubmit", failed);
  EXPECT_EQ(again.status, 0) << again.err;
  EXPECT_THAT(again.out, HasSubstr("waiting already"));
  EXPECT_EQ(Letters("resubmit", {"--letter", "1", "--letter", "1"}).status, 0);
  EXPECT_EQ(Letters("batch-reprint", {"--letter", "2", "--json"}).status, 0);
  EXPECT_EQ(Items(), "1REB\n2REP\n3REP\n");
  EXPECT_THAT(Letters("waiting", {}).out, AllOf(HasSubstr("REB"), HasSubstr("100001")));

  ServerSql("UPDATE batch_item SET BTCH_SEQ_NBR = 2097 WHERE SEQ_NBR = 2");
  const auto cancelled = Letters("waiting", {"cancel", "1", "2"});
  EXPECT_EQ(cancelled.status, 1);
  EXPECT_THAT(cancelled.out, AllOf(HasSubstr("taken"), HasSubstr("is being worked on by batch run 2097")));
  EXPECT_EQ(Items(), "2REP\n3REP\n");
  EXPECT_EQ(History("PRNT_STTS_CD || COALESCE(BTCH_ACTN_CD, '')"), "P\nPREP\nFREP\n");
}

TEST_F(LetterActions, DoNothingWhereALetterIsNotThereOrDoesNotAllowIt) {
  const std::pair<std::string, std::vector<std::string>> refused[] = {
      {"resubmit", {"--letter", "1", "--letter", "99"}},
      {"reprint", {"--letter", "99"}},
      {"return-mail", {"--letter", "3"}},
      {"waiting", {"cancel", "99"}},
      {"save", {"--letter", "1", "--folder", (data_ / "nowhere").string()}}};
  for (const auto& [command, words] : refused) {
    const auto run = Letters(command, words);
    EXPECT_EQ(run.status, 1) << command;
    EXPECT_THAT(run.err, Not(IsEmpty())) << command;
  }
  for (const auto& words : std::vector<std::vector<std::string>>{{},
                                                                 {"--letter", "first"},
                                                                 {"--letter", "1", "--from-search"},
                                                                 {"--letter", "1", "--status", "failure"}})
    EXPECT_EQ(Letters("resubmit", words).status, 2);
  EXPECT_EQ(Items(), "");
  EXPECT_THAT(Printed(), SizeIs(3));
}

TEST_F(LetterActions, PrintAndSaveLettersAgain) {
  const auto run = Letters("reprint", {"--from-search", "--customer", "100001"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(Printed(), SizeIs(6));
  EXPECT_EQ(Letters("reprint", {"--letter", "2"}).status, 0);
  EXPECT_THAT(Printed(), SizeIs(7));
  const TemporaryFolder folder;
  const auto saved = Letters("save", {"--letter", "1", "--letter", "2", "--folder", folder.path().string()});
  EXPECT_EQ(saved.status, 0) << saved.err;
  EXPECT_THAT(PdfText(folder / "letter-2.pdf"), HasSubstr("Your motor fuel tax registration is confirmed"));
  EXPECT_EQ(Letters("save", {"--letter", "1", "--out", (folder / "one.docx").string()}).status, 0);
  EXPECT_THAT(FilesIn(folder.path()), SizeIs(3));
}

TEST_F(LetterActions, MarkTheAddressThatALetterCameBackFrom) {
  for (int time = 0; time < 2; ++time) {
    const auto run = Letters("return-mail", {"--letter", "1"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("mailing address of customer 100001"));
  }
  EXPECT_EQ(ServerSql("SELECT MAIL_BAD_FLG || RES_BAD_FLG FROM customer WHERE CUST_ID = '100001'"), "YN\n");
  EXPECT_EQ(ServerSql("SELECT SEQ_NBR FROM returned_mail"), "1\n");
}

}  // namespace
}  // namespace tests
