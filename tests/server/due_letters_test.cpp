#include "server/batch/due_letters.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "server/batch/night_letters.h"
#include "server/batch/night_record.h"
#include "tests/server/batch_world.h"
#include "tests/support/failing.h"

namespace server {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kHeader = "RULE_NM\tLTR_TYP_ID\tFORM_TYP_CD\tCONDITION\tAGAIN_AFTER\tRULE_DES\n";

class ANight : public tests::BatchTest {
 protected:
  ANight() {
    // One account that everything is known of.
    database_.Change("UPDATE form SET FORM_STTS_CD = 'C'");
    const auto form =
        database_.Select("SELECT FORM_NBR, CUST_ID FROM form WHERE FORM_TYP_CD = 'C' ORDER BY FORM_NBR");
    form_ = form->Text("FORM_NBR");
    customer_ = form->Text("CUST_ID");
    database_.Change(
        "UPDATE form SET FORM_STTS_CD = 'O', ISS_DT = '2026-09-23', STP_DT = '2026-10-23' WHERE FORM_NBR = ?",
        {form_});
    database_.Change("DELETE FROM tax_period WHERE FORM_NBR = ?", {form_});
    database_.Change("INSERT INTO tax_period VALUES ('C', ?, 1, 'August 2026', '2026-09-20', 10000, 250, 50)",
                     {form_});
  }
  std::vector<BatchRule> Rules(const std::string& rows, platform::Date day = tests::kToday) {
    tests::WriteFile(folder_ / "rules.tsv", kHeader + rows);
    platform::TableFaults faults;
    auto rules = ReadBatchRules(folder_ / "rules.tsv", database_, day, faults);
    faults.OrFail("");
    return rules;
  }
  std::vector<std::string> Due(const std::string& condition, const std::string& again = "",
                               platform::Date day = tests::kToday) {
    std::vector<std::string> forms;
    for (const auto& item :
         FindDueLetters(database_, Rules("one\t110\tC\t" + condition + "\t" + again + "\t\n", day), day))
      forms.push_back(item.form_number);
    return forms;
  }
  RunItem OfAccount() const {
    return {
        .source = "RUL", .letter_type = "110", .customer = customer_, .form_type = "C", .form_number = form_};
  }
  NightLetter Prepared(const RunItem& item) {
    return NightLetters(database_, tests::kToday).Prepare(1, item);
  }
  /// Works off one letter as a run does; returns its number.
  std::int64_t Made(const RunItem& item, const NightOutcome& outcome) {
    const auto run = CreateRun(database_, {item}, clock_.Now(), "a test");
    const auto letter = RecordNightLetter(database_, run, Prepared(item), outcome, clock_.Now());
    EndRun(database_, run, clock_.Now());
    ExpectCountsOfLetters();
    return letter;
  }
  std::string Of(std::int64_t letter, const std::string& column) {
    return database_.Select("SELECT " + column + " FROM letter_history WHERE SEQ_NBR = ?", {letter})
        ->FirstText();
  }

  std::string form_;
  std::string customer_;
};

TEST_F(ANight, AsksOfAccountsWhatTheRulesSay) {
  const auto county =
      database_.Select("SELECT QZ_CNTY_NBR FROM customer WHERE CUST_ID = ?", {customer_})->FirstText();
  const auto open = std::string("status = O and ");
  struct Case {
    std::string condition;
    bool is_due;
  };
  for (const auto& [condition, is_due] : std::vector<Case>{{"balance = 103.00", true},
                                                           {"balance > 103.00", false},
                                                           {"balance <= 102.99", false},
                                                           {"days_since_issue >= 60", true},
                                                           {"days_since_issue > 60", false},
                                                           {"days_since_stop < 31", true},
                                                           {"days_since_stop = 29", false},
                                                           {"days_since_letter(104) >= 0", false},
                                                           {"county = " + county, true},
                                                           {"county <> " + county, false},
                                                           {"troop <> Z and balance > 1", true}}) {
    EXPECT_EQ(Due(open + condition) == std::vector{form_}, is_due) << condition;
  }
}

TEST_F(ANight, WritesALetterOnceOrAgainAfterItsDays) {
  ASSERT_THAT(Due("status = O"), ElementsAre(form_));
  const auto letter = Made(OfAccount(), {.template_file = "CTL110_2407.docx", .print_status = "M"});
  EXPECT_EQ(Of(letter, "PRNT_STTS_CD || SYS_RFRNC_CD || FORM_NBR"), "MB" + form_);
  EXPECT_THAT(Due("status = O"), IsEmpty());
  EXPECT_THAT(Due("status = O", "30", std::chrono::year(2026) / 12 / 21), IsEmpty());
  EXPECT_THAT(Due("status = O", "30", std::chrono::year(2026) / 12 / 22), ElementsAre(form_));
  Ask({.type = 82,
       .records = {{"CORR_BITEM", {{{"ACTION", "REB"}, {"SEQ_NBR", letter}}}}},
       .message_key = "item"});
  EXPECT_THAT(Due("status = O", "1", std::chrono::year(2026) / 12 / 22), ElementsAre(form_))
      << "the one that waits to be made again, and no second one";
}

TEST_F(ANight, TakesWhatWaitsBeforeWhatTheRulesSayAndEachOnce) {
  const auto letter = RecordLetters(1).front();
  Ask({.type = 82,
       .records = {{"CORR_BITEM", {{{"ACTION", "REB"}, {"SEQ_NBR", letter}}}}},
       .message_key = "item"});
  const auto due = FindDueLetters(database_, Rules("one\t110\tC\tstatus = O\t\t\n"), tests::kToday);
  ASSERT_EQ(due.size(), 2U);
  EXPECT_EQ(due[0].letter, letter);
  EXPECT_EQ(due[0].source, run_source::kAgain);
  EXPECT_EQ(due[1].rule, "one");
  CreateRun(database_, due, clock_.Now(), "a test");
  EXPECT_THAT(FindDueLetters(database_, {}, tests::kToday), IsEmpty()) << "claimed";
}

TEST_F(ANight, RefusesRulesNamingEachLine) {
  const auto why = tests::WhyNot([&] {
    Rules(
        "one\t110\tC\tstatus = O\t\t\ntwo\t110\tC\tstatus = O\t\t\none\t999\tC\tshoe_size > 3\t0\t\n"
        "four\t104\tM\tbalance => 3\t\t\nfive\t113\tV\tdays_since_stop > soon\t\t\n");
  });
  EXPECT_THAT(why, AllOf(HasSubstr("line 3"), HasSubstr("two would write it twice"),
                         HasSubstr("no letter type \"999\""), HasSubstr("\"shoe_size\""), HasSubstr("\"=>\""),
                         HasSubstr("\"soon\""), HasSubstr("\"0\" is no number of days")));
}

TEST_F(ANight, SaysInWordsWhyALetterCannotBeMade) {
  const char* const marked = "UPDATE customer SET MAIL_BAD_FLG = ?, RES_BAD_FLG = ? WHERE CUST_ID = ?";
  database_.Change(marked, {"Y", "Y", customer_});
  auto letter = Prepared(OfAccount());
  EXPECT_THAT(letter.failure, HasSubstr("Mail to the customer came back"));
  const auto failed = Made(OfAccount(), {.failure = letter.failure});
  EXPECT_EQ(Of(failed, "PRNT_STTS_CD"), "F");
  EXPECT_EQ(Of(failed, "PRCS_ERR_TXT"), letter.failure);
  // Given to the next run it is made from the data of that night, though its data of this one are stored.
  database_.Change(marked, {"N", "N", customer_});
  auto again = OfAccount();
  again.source = "REP";
  again.letter = failed;
  letter = Prepared(again);
  EXPECT_EQ(letter.failure, "");
  EXPECT_FALSE(letter.as_stored);
  EXPECT_EQ(Made(again, {.template_file = "CTL110_2407.docx", .print_status = "M"}), failed);
  EXPECT_EQ(Of(failed, "PRNT_STTS_CD || COALESCE(PRCS_ERR_TXT, '')"), "M");
}

TEST_F(ANight, KeepsWhatAnOfficerHasEnteredForALetterThatIsMadeAgain) {
  const RunItem unasked = {.source = "RUL", .letter_type = "103", .customer = "100001"};
  EXPECT_THAT(Prepared(unasked).failure, HasSubstr("An officer has to enter"));
  const auto reply = Ask(PrintedLetter("bond", {{"LTR_TYP_ID", "103"},
                                                {"XML_CONTEXT",
                                                 "<XML_CONTEXT><CUST_ID>100001</CUST_ID>"
                                                 "<U_BOND_AMT State=\"0x8\">$5,000</U_BOND_AMT>"
                                                 "<U_BOND_DT State=\"0x8\">June 1</U_BOND_DT>"
                                                 "</XML_CONTEXT>"}}));
  auto again = unasked;
  again.source = "REB";
  again.letter = tests::Record(reply, "CORRHIST")->Get(0, "SEQ_NBR").AsInteger();
  const auto letter = Prepared(again);
  EXPECT_EQ(letter.failure, "");
  EXPECT_THAT(letter.context, AllOf(HasSubstr(">$5,000</U_BOND_AMT>"), HasSubstr(">June 1</U_BOND_DT>")));
}

}  // namespace
}  // namespace server
