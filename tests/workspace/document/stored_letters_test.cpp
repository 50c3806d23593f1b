#include "composition/frm_batch.h"
#include "tests/workspace/document/workspace_test.h"

namespace workspace {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

constexpr const char* kContext = "<XML_CONTEXT><NAME>ACME</NAME></XML_CONTEXT>";

/// Letters listed on the tracking page of a workspace that was opened, worked by the user.
class StoredLetters : public WorkspaceTest {
 protected:
  StoredLetters() {
    GivenWorkspaceIsOpen();
    UserChoosesCustomer("4711", kTracking);  // so that choosing a row asks for no customer
    for (const auto* name : {"TAX110.DOCX", "TW109.DOCX"}) {
      fakes_.files.content[std::string("templates/") + name] = "document";
    }
    fakes_.host.user_in_form = [this](platform::Form& form) { UserReads(form); };
    GivenListed({{"17", "TAX110.DOCX", "P"}, {"18", "TW109.DOCX", "V"}, {"19", "TAX110.DOCX", "P"}});
  }

  struct Letter {
    std::string number;
    std::string template_name;
    std::string status;
  };
  void GivenListed(const std::vector<Letter>& letters, PageIndex page = kTracking) {
    std::vector<fakes::Row> rows;
    for (const auto& [number, template_name, status] : letters) {
      rows.push_back({{"SEQ_NBR", number}, {"DCMT_FILE_TXT", template_name}, {"PRNT_STTS_CD", status}});
    }
    document_.pages().sdgGrid(page).Bind(fakes::RowsOf("CORRHIST", rows));
  }
  void UserSelects(std::vector<std::size_t> rows) { Tracking().sdgGrid.UserSelects(std::move(rows)); }
  void UserActs(std::size_t option) { Tracking().OptLetter[option].UserClicks(); }
  void UserReprints(std::vector<std::size_t> rows) {
    fakes_.host.answers = {platform::MessageAnswer::kYes};
    UserSelects(std::move(rows));
    UserActs(TrackingPage::kReprintLocal);
  }
  tracking::frmPrintStatus& PrintStatus() {
    return dynamic_cast<tracking::frmPrintStatus&>(*fakes_.host.shown_forms.back());
  }
  void ServerBringsLetter() {
    fakes_.server.ReplyWith("XML_CONTEXT", {{{"XML_CONTEXT", kContext}}});
    fakes_.RunEvents();
  }
  /// An error, of the letter that is asked for or of the record of the one before.
  void ServerRefuses(const std::string& error, bool is_recorded) {
    fakes::ScriptedReply reply{{}, error, false};
    if (is_recorded) reply.records = {{"CORRHIST", fakes::RowsOf("CORRHIST", {{{"SEQ_NBR", 17}}})}};
    fakes_.server.Reply(reply);
    fakes_.RunEvents();
  }
  void ServerConfirms() {
    fakes_.server.ReplyWithNothing();
    fakes_.RunEvents();
  }
  /// The user reads the summary of a run, and may have what failed printed again.
  void UserReads(platform::Form& form) {
    auto* const summary = dynamic_cast<tracking::frmPrintSummary*>(&form);
    if (summary == nullptr) return;
    const auto& rows = *summary->letters.rows();
    told_.push_back(summary->outcome.caption());
    for (std::size_t row = 0; row < rows.RecordCount(); ++row) {
      told_.push_back(rows.Text(row, "LETTER") + " " + rows.Text(row, "SEQ_NBR") + ": " +
                      rows.Text(row, "REASON"));
    }
    if (!summary->again.enabled()) told_.push_back("nothing to print again");
    if (print_again_) summary->again.UserClicks();
  }
  TrackingPage& Tracking() { return document_.pages().tracking; }
  std::vector<std::string> Record() { return LastRequest().FindRecord("CORRHIST").Assigned(); }
  std::size_t Sent() const { return fakes_.server.requests.size(); }

  std::vector<std::string> told_;  ///< by the summaries: the outcome, then what failed
  bool print_again_ = false;
};

TEST_F(StoredLetters, AreViewedAndRecordedWhenThePreviewIsPrinted) {
  UserSelects({0});
  UserActs(TrackingPage::kViewLetter);
  EXPECT_EQ(LastRequest().type, 83);
  EXPECT_THAT(LastRequest().Keys(), ElementsAre("KORVADSK|key:FetchContext|=|17"));
  EXPECT_FALSE(Tracking().letter_action.enabled());

  ServerBringsLetter();
  EXPECT_TRUE(print_.HasCalled("OpenDocument templates/TAX110.DOCX"));
  EXPECT_THAT(print_.merged, ElementsAre(kContext));
  EXPECT_TRUE(Tracking().letter_action.enabled());
  EXPECT_EQ(fakes_.status.LastText(), "Ready");

  print_.UserPrints();
  EXPECT_EQ(LastRequest().type, 82);
  EXPECT_EQ(LastRequest().user_id, "OFFICER1");
  EXPECT_THAT(LastRequest().Keys(), IsEmpty());
  EXPECT_THAT(Record(),
              ElementsAre("ACTION=UPD", "SEQ_NBR=17", "PRNT_STTS_CD=F", "LST_PRNT_TS=1900-01-01 01.01.01"));
  EXPECT_EQ(document_.pending_request().name(), "LetterAU");
  EXPECT_EQ(fakes_.status.LastText(), "Saving letter history");
  ServerConfirms();
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

// The row and the page in front when the reply comes used to decide, not those the letter was asked from.
TEST_F(StoredLetters, AreTheOnesThatWereAskedForWhateverTheUserTurnsToMeanwhile) {
  UserSelects({0});
  UserActs(TrackingPage::kViewLetter);
  UserSelects({1});
  EXPECT_EQ(Tracking().sdgGrid.rows()->CurrentRow(), 1u);
  EXPECT_TRUE(Tracking().OptLetter[TrackingPage::kViewBookmark].enabled());
  document_.pages().tabs.Select(kPage);
  ServerBringsLetter();
  EXPECT_TRUE(print_.HasCalled("OpenDocument templates/TAX110.DOCX"));
  print_.UserPrints();
  EXPECT_THAT(Record(), Contains("SEQ_NBR=17"));
}

// The list of the moment used to be asked, and knew the letter no more or told of a later print.
TEST_F(StoredLetters, AreToldOfAsTheyWereListedWhenTheirFieldsWereAskedFor) {
  Tracking().OptLetter[TrackingPage::kViewBookmark].SetVisible(true);  // as the diagnostic setting does
  std::vector<std::string> told;
  fakes_.host.user_in_form = [&](platform::Form& form) {
    const auto& information = dynamic_cast<composition::frmBatch&>(form);
    told.push_back(information.first_printed.caption() + information.print_error.caption());
  };
  const std::vector<std::vector<fakes::Row>> lists_meanwhile = {
      {{{"SEQ_NBR", "99"}, {"PRNT_TS", "2001-01-01 00.00.00"}}},
      {{{"SEQ_NBR", "17"}, {"PRNT_TS", "2024-12-24 00.00.00"}, {"PRCS_ERR_TXT", "Paper jam"}}},
  };
  for (const auto& meanwhile : lists_meanwhile) {
    Tracking().sdgGrid.Bind(fakes::RowsOf("CORRHIST", {{{"SEQ_NBR", "17"},
                                                        {"PRNT_STTS_CD", "F"},
                                                        {"PRNT_TS", "2021-03-04 10.11.12"},
                                                        {"PRCS_ERR_TXT", "Out of paper"}}}));
    UserSelects({0});
    UserActs(TrackingPage::kViewBookmark);
    Tracking().sdgGrid.Bind(fakes::RowsOf("CORRHIST", meanwhile));
    ServerBringsLetter();
  }
  EXPECT_THAT(told, testing::Each("2021-03-04 10.11.12Out of paper"));
  EXPECT_THAT(told, SizeIs(2));
}

TEST_F(StoredLetters, AreRecordedAfterASaveOnlyWhereTheirAddressFailed) {
  struct Case {
    std::size_t row;
    bool is_cancelled;
    std::size_t records_after_save;
    std::size_t records_after_print;  ///< of the preview, where it still stands
  };
  for (const auto& [row, is_cancelled, after_save, after_print] :
       {Case{0, false, 0, 1}, Case{0, true, 0, 1}, Case{1, false, 1, 1}}) {
    UserSelects({row});
    UserActs(TrackingPage::kSave);
    print_.save_is_cancelled = is_cancelled;
    const auto sent = Sent();
    ServerBringsLetter();
    EXPECT_TRUE(print_.HasCalled("SaveToFile '' ''"));
    EXPECT_EQ(Sent() - sent, after_save) << row << is_cancelled;
    print_.UserPrints();
    EXPECT_EQ(Sent() - sent, after_print) << row << is_cancelled;
    ServerConfirms();
  }
  EXPECT_THAT(fakes_.print_journal.notes, IsEmpty());
}

TEST_F(StoredLetters, AreProposedUnderTheirOwnNameAndDayForAFile) {
  Tracking().sdgGrid.Bind(fakes::RowsOf("CORRHIST", {{{"SEQ_NBR", "17"},
                                                      {"DCMT_FILE_TXT", "TAX110.DOCX"},
                                                      {"PRNT_STTS_CD", "P"},
                                                      {"LTR_TYP_ID", "110"},
                                                      {"PRNT_TS", "2021-03-04 10.11.12"}}}));
  UserSelects({0});
  UserActs(TrackingPage::kSave);
  ServerBringsLetter();
  EXPECT_THAT(print_.proposed_names, ElementsAre("Tax liability - 2021-03-04"));
}

TEST_F(StoredLetters, ThatShowAPlaceholderStayUnprinted) {
  print_.not_filled = {"DUE_DT"};
  UserReprints({0});
  const auto sent = Sent();
  ServerBringsLetter();
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.PrintDocument"));
  EXPECT_EQ(Sent(), sent) << "nothing is recorded";
  EXPECT_THAT(told_, IsEmpty()) << "a letter alone is told of where it failed";
  EXPECT_TRUE(Tracking().sdgGrid.enabled());
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
}

TEST_F(StoredLetters, BringTheirTemplateWhereItIsMissing) {
  fakes_.files.content.erase("templates/TAX110.DOCX");
  fakes_.files.content["srv\\TAX110.DOCX"] = "of the server";
  UserSelects({0});
  UserActs(TrackingPage::kViewLetter);
  ServerBringsLetter();
  EXPECT_THAT(fakes_.host.MessageTexts(), ElementsAre("You do not have the correct template for this letter. "
                                                      "Template will be downloaded from server."));
  EXPECT_EQ(fakes_.files.content["templates/TAX110.DOCX"], "of the server");
  EXPECT_TRUE(print_.HasCalled("ShowPreview"));
}

TEST_F(StoredLetters, ArePrintedOneAfterTheOther) {
  UserReprints({2, 0, 1});
  EXPECT_THAT(LastRequest().Keys(), ElementsAre("KORVADSK|key:FetchContext|=|19"));
  fakes_.status.texts.clear();

  const char* numbers[] = {"19", "17", "18"};
  for (std::size_t printed = 1; printed <= 2; ++printed) {
    ServerBringsLetter();
    EXPECT_THAT(Record(), Contains(std::string("SEQ_NBR=") + numbers[printed - 1]));
    EXPECT_THAT(LastRequest().Keys(),
                ElementsAre(std::string("KORVADSK|key:FetchContext|=|") + numbers[printed]));
    EXPECT_THAT(fakes_.status.texts, Contains("Printing letter " + std::to_string(printed) + " of 3"));
    EXPECT_EQ(document_.pending_request().name(), "Letter_Print");
  }
  EXPECT_EQ(Tracking().sdgGrid.rows()->CurrentRow(), 1u);
  ServerBringsLetter();
  EXPECT_THAT(Record(), Contains("SEQ_NBR=18"));
  EXPECT_THAT(LastRequest().Keys(), IsEmpty());
  EXPECT_EQ(document_.pending_request().name(), "LetterAU");
  ServerConfirms();
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
  EXPECT_EQ(fakes_.status.reason, "All 3 letters were printed.");
  EXPECT_THAT(std::vector(print_.merged), SizeIs(3));
  EXPECT_TRUE(print_.HasCalled("PrintOut 1"));
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

// Ctrl+A and "Reprint (Local)" printed all that was listed, without a word.
TEST_F(StoredLetters, ArePrintedTogetherOnlyWhenTheUserSaysSo) {
  const auto sent_before = Sent();
  UserSelects({0, 1, 2});
  UserActs(TrackingPage::kReprintLocal);
  ASSERT_THAT(fakes_.host.MessageTexts(), ElementsAre("Should these 3 letters be printed?"));
  const auto& question = fakes_.host.messages.front();
  EXPECT_EQ(question.buttons, platform::MessageButtons::kYesNo);
  EXPECT_EQ(question.default_answer, platform::MessageAnswer::kNo);
  EXPECT_EQ(Sent(), sent_before);
  EXPECT_TRUE(Tracking().letter_action.enabled());
  EXPECT_TRUE(Tracking().sdgGrid.enabled());

  fakes_.host.messages.clear();
  UserReprints({1});
  EXPECT_THAT(fakes_.host.messages, IsEmpty()) << "one letter is what the user sees selected";
}

TEST_F(StoredLetters, ArePrintedWhereTheUserSaysOncePerRun) {
  print_.is_asked_in_vain = true;
  const auto sent = Sent();
  UserReprints({0, 1, 2});
  EXPECT_TRUE(print_.HasCalled("AskHow 3"));
  EXPECT_EQ(Sent(), sent);
  EXPECT_TRUE(Tracking().letter_action.enabled());
  EXPECT_TRUE(Tracking().sdgGrid.enabled());

  print_.is_asked_in_vain = false;
  print_.calls.clear();
  UserReprints({0, 1});
  ServerBringsLetter();
  ServerBringsLetter();
  ServerConfirms();
  EXPECT_EQ(std::ranges::count(print_.calls, "AskHow 2"), 1);
}

TEST_F(StoredLetters, AreCountedByTypeWhereManyArePrintedTogether) {
  fakes_.reference.AnswersWhatContains(
      "LTR_NM FROM FLS_LETTER",
      fakes::RowsOf("FLS_LETTER", {{{"LTR_TYP_ID", "109"}, {"LTR_NM", "Tax Warrant"}},
                                   {{"LTR_TYP_ID", "110"}, {"LTR_NM", "Certificate"}}}));
  std::vector<fakes::Row> rows;
  for (int number = 0; number < 11; ++number) {
    rows.push_back({{"SEQ_NBR", number + 1},
                    {"LTR_TYP_ID", number < 4    ? "110"
                                   : number < 10 ? "109"
                                                 : "777"},
                    {"PRNT_STTS_CD", "P"}});
  }
  Tracking().sdgGrid.Bind(fakes::RowsOf("CORRHIST", rows));
  UserSelects({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
  UserActs(TrackingPage::kReprintLocal);
  EXPECT_THAT(
      fakes_.host.MessageTexts(),
      ElementsAre("Should these 11 letters be printed?\r\n\r\n6  Tax Warrant\r\n4  Certificate\r\n1  777"));
}

TEST_F(StoredLetters, StopPrintingAfterTheLetterDuringWhichTheUserEndsTheRun) {
  UserReprints({0, 1, 2});
  EXPECT_EQ(PrintStatus().progress.caption(), "Printing 3 letters");
  ServerBringsLetter();
  EXPECT_EQ(PrintStatus().progress.caption(), "Printed letter 1 of 3");

  PrintStatus().cancel.UserClicks();  // while the second letter is fetched: it is not printed any more
  ServerBringsLetter();
  EXPECT_THAT(std::vector(print_.merged), SizeIs(1));
  EXPECT_FALSE(PrintStatus().shown());
  EXPECT_TRUE(document_.parts().local_reprint.IsOver());
  EXPECT_TRUE(Tracking().sdgGrid.enabled());
  EXPECT_FALSE(document_.pending_request().IsAwaited());
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
  EXPECT_EQ(fakes_.status.reason, "1 of 3 letters were printed.");

  UserReprints({0, 1, 2});
  ServerBringsLetter();
  EXPECT_THAT(std::vector(print_.merged), SizeIs(2)) << "the next run prints again";
}

TEST_F(StoredLetters, RecordTheLetterDuringWhosePrintTheUserEndsTheRun) {
  UserReprints({0, 1, 2});
  print_.while_printing = [this] { PrintStatus().cancel.UserClicks(); };
  ServerBringsLetter();
  EXPECT_THAT(Record(), Contains("SEQ_NBR=17"));
  EXPECT_THAT(LastRequest().Keys(), IsEmpty());
  EXPECT_FALSE(PrintStatus().shown());
  ServerConfirms();
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
}

TEST_F(StoredLetters, KeepTheSelectionOfARunUntilItsLastLetter) {
  UserReprints({0, 1});
  ServerBringsLetter();
  UserSelects({});
  EXPECT_THAT(Tracking().sdgGrid.selected_rows(), ElementsAre(0, 1));
  ServerBringsLetter();
  UserSelects({2});
  EXPECT_THAT(Tracking().sdgGrid.selected_rows(), ElementsAre(2));
}

// One damaged letter used to keep all that came after it from being printed.
TEST_F(StoredLetters, ArePassedOverWhereTheFaultIsTheirOwn) {
  struct Case {
    std::function<void()> fails;
    std::string reason;
  };
  const Case cases[] = {
      {[this] {
         print_.failing = {{"OpenDocument", platform::Failure::Kind::kDamaged}};
         ServerBringsLetter();
       },
       "OpenDocument has failed"},
      {[this] {
         print_.not_filled = {"DUE_DT"};
         ServerBringsLetter();
       },
       "The letter was not printed, because nothing fills \"DUE_DT\". View the letter and print it from "
       "there, or correct its template."},
      {[this] { ServerConfirms(); }, "The server's reply brought no data of the letter."},
      {[this] { ServerRefuses("no such letter", /*is_recorded=*/true); }, "no such letter"},
  };
  for (const auto& [fails, reason] : cases) {
    SCOPED_TRACE(reason);
    fakes_.host.messages.clear();
    told_.clear();
    UserReprints({0, 1, 2});
    fakes_.host.messages.clear();
    ServerBringsLetter();
    EXPECT_EQ(PrintStatus().letter.caption(), "Now: TW109.DOCX, number 18");
    fails();
    print_.failing.clear();
    print_.not_filled.clear();
    EXPECT_EQ(PrintStatus().progress.caption(), "Printed letter 1 of 3, 1 failed");
    EXPECT_THAT(LastRequest().Keys(), ElementsAre("KORVADSK|key:FetchContext|=|19"));
    ServerBringsLetter();
    EXPECT_THAT(Record(), Contains("SEQ_NBR=19"));
    EXPECT_THAT(told_, IsEmpty()) << "the last letter is not recorded yet";
    ServerConfirms();
    EXPECT_THAT(told_, ElementsAre("2 of 3 letters were printed.", "TW109.DOCX 18: " + reason));
    EXPECT_EQ(fakes_.status.reason, "2 of 3 letters were printed.");
    EXPECT_EQ(fakes_.status.LastText(), "Ready");
    EXPECT_THAT(fakes_.host.messages, IsEmpty()) << "nobody has to sit by";
    EXPECT_TRUE(Tracking().sdgGrid.enabled());
  }
}

TEST_F(StoredLetters, ArePrintedAgainWhereTheyFailedAndNoOthers) {
  UserReprints({0, 1, 2});
  ServerConfirms();
  ServerBringsLetter();
  print_again_ = true;
  ServerRefuses("no such letter", /*is_recorded=*/true);
  EXPECT_THAT(told_, SizeIs(3));
  print_again_ = false;

  EXPECT_THAT(LastRequest().Keys(), ElementsAre("KORVADSK|key:FetchContext|=|17"));
  EXPECT_FALSE(Tracking().letter_action.enabled());
  EXPECT_FALSE(Tracking().sdgGrid.enabled());
  told_.clear();
  ServerBringsLetter();
  EXPECT_THAT(LastRequest().Keys(), ElementsAre("KORVADSK|key:FetchContext|=|19"));
  ServerBringsLetter();
  ServerConfirms();
  EXPECT_EQ(fakes_.status.reason, "All 2 letters were printed.");
  EXPECT_THAT(told_, IsEmpty());
  EXPECT_THAT(Tracking().sdgGrid.selected_rows(), ElementsAre(0, 1, 2));
}

// What is recorded of the letter before is refused: the letter after it has not been looked for.
TEST_F(StoredLetters, ThatCannotBeRecordedAreToldOfAndNotPrintedAgain) {
  UserReprints({0, 1});
  ServerBringsLetter();
  ServerRefuses("deleted by another user", /*is_recorded=*/false);
  EXPECT_THAT(LastRequest().Keys(), ElementsAre("KORVADSK|key:FetchContext|=|18"));
  ServerBringsLetter();
  ServerConfirms();
  EXPECT_THAT(told_, ElementsAre("All 2 letters were printed.",
                                 "TAX110.DOCX 17: The letter was printed, but not recorded. deleted by "
                                 "another user",
                                 "nothing to print again"));
}

TEST_F(StoredLetters, EndTheirRunWherePrinterLayoutOrServerAreGone) {
  const std::string untried = "TAX110.DOCX 19: It was not tried any more, because the run had ended.";
  struct Case {
    std::function<void()> fails;
    std::vector<std::string> told;
  };
  const Case cases[] = {
      {[this] {
         print_.accepts = false;
         ServerBringsLetter();
       },
       {"1 of 3 letters were printed.", "TW109.DOCX 18: the printer is on fire", untried}},
      {[this] {
         print_.failing = {{"PrintOut", platform::Failure::Kind::kUnavailable}};
         ServerBringsLetter();
       },
       {"1 of 3 letters were printed.", "TW109.DOCX 18: PrintOut has failed", untried}},
      {[this] {
         fakes_.server.Reply({{}, "no answer", true});
         fakes_.RunEvents();
       },
       {"1 of 3 letters were printed.", "TW109.DOCX 18: no answer", untried}},
      {[this] {
         ServerRefuses("the database is gone", /*is_recorded=*/true);
         ServerRefuses("the database is gone", /*is_recorded=*/true);
       },
       {"1 of 3 letters were printed.", "TW109.DOCX 18: the database is gone",
        "TAX110.DOCX 19: the database is gone"}},
      {[this] {
         fakes_.server.on_send = [](const auto&) {
           throw platform::Failure(platform::Failure::Kind::kUnavailable, "no server");
         };
         ServerBringsLetter();
       },
       {"2 of 3 letters were printed.", untried}},
  };
  for (const auto& [fails, told] : cases) {
    SCOPED_TRACE(told[1]);
    told_.clear();
    UserReprints({0, 1, 2});
    ServerBringsLetter();
    fails();
    EXPECT_EQ(told_, told);
    EXPECT_FALSE(document_.pending_request().IsAwaited());
    EXPECT_TRUE(document_.parts().local_reprint.IsOver());
    EXPECT_TRUE(Tracking().sdgGrid.enabled());
    EXPECT_TRUE(Tracking().letter_action.enabled());
    EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
    print_.accepts = true;
    print_.failing.clear();
    fakes_.server.on_send = nullptr;
  }
}

TEST_F(StoredLetters, ArePrintedFromTheCorrespondencePageWithoutContinuingAnEarlierRun) {
  UserReprints({0, 1, 2});
  print_.accepts = false;  // the run ends at once
  ServerBringsLetter();
  print_.accepts = true;
  GivenListed({{"30", "TW109.DOCX", "P"}}, kPage);
  auto& page = document_.pages().correspondence;
  page.sdgGrid.UserSelects({0});
  page.OptOnline[CorrespondencePage::kPrintLetter].UserClicks();
  EXPECT_THAT(LastRequest().Keys(), ElementsAre("KORVADSK|key:FetchContext|=|30"));
  ServerBringsLetter();
  EXPECT_TRUE(print_.HasCalled("OpenDocument templates/TW109.DOCX"));
  EXPECT_THAT(Record(), Contains("SEQ_NBR=30"));
  EXPECT_THAT(LastRequest().Keys(), IsEmpty());

  page.sdgGrid.UserSelects({});
  EXPECT_FALSE(page.OptOnline[CorrespondencePage::kPrintLetter].enabled());
  EXPECT_FALSE(page.OptOnline[CorrespondencePage::kViewLetter].enabled());
}

TEST_F(StoredLetters, SayWhatIsWrongWithTheirContext) {
  for (const auto* context : {"<XML_CONTEXT>", "<OTHER/>"}) {
    UserSelects({0});
    UserActs(TrackingPage::kViewLetter);
    fakes_.server.ReplyWith("XML_CONTEXT", {{{"XML_CONTEXT", context}}});
    fakes_.RunEvents();
  }
  EXPECT_THAT(fakes_.errors.Procedures(),
              ElementsAre("ZEMLO_Corresp.MergeLetter", "ZEMLO_Corresp.MergeLetter"));
  EXPECT_THAT(print_.merged, IsEmpty());
}

// What a program that is killed at any moment leaves behind.
TEST_F(StoredLetters, AreNotedFromTheHandOverUntilTheServerHasRecordedThem) {
  auto& journal = fakes_.print_journal;
  UserSelects({0});
  UserActs(TrackingPage::kViewLetter);
  ServerBringsLetter();
  EXPECT_THAT(journal.steps, IsEmpty());
  print_.UserPrints();
  const auto key = LastRequest().message_key;
  EXPECT_THAT(journal.steps, ElementsAre("begin " + key, "accept " + key, "record " + key));
  ASSERT_THAT(journal.notes, SizeIs(1));
  EXPECT_THAT(journal.notes[0].note.record, Contains(std::pair<std::string, std::string>("SEQ_NBR", "17")));
  EXPECT_EQ(journal.notes[0].note.letter, "\"TAX110.DOCX\", number 17");
  ServerConfirms();
  EXPECT_THAT(journal.notes, IsEmpty());
}

TEST_F(StoredLetters, AreNotPrintedWhereTheNoteCannotBeWritten) {
  fakes_.print_journal.is_full = true;
  const auto sent = Sent();
  UserReprints({0});
  ServerBringsLetter();
  EXPECT_EQ(Sent(), sent + 1);
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.PrintDocument"));
}

TEST_F(StoredLetters, LeaveNoNoteWhereThePrinterRefuses) {
  print_.accepts = false;
  UserReprints({0});
  ServerBringsLetter();
  EXPECT_THAT(fakes_.print_journal.notes, IsEmpty());
  EXPECT_THAT(fakes_.print_journal.steps, SizeIs(2));
}

TEST_F(StoredLetters, KeepTheirNoteWhereTheServerDoesNotRecordThem) {
  struct Case {
    fakes::ScriptedReply reply;
    std::vector<platform::PrintStage> left;
  };
  using platform::PrintStage;
  const Case cases[] = {
      {{{}, "no such letter", false}, {PrintStage::kPrinted}},
      {{{}, "no answer", true}, {PrintStage::kRecording}},
      // The record is stored, the next letter of the run is not there.
      {{{{"CORRHIST", fakes::RowsOf("CORRHIST", {{{"SEQ_NBR", 17}}})}}, "no next letter", false}, {}},
  };
  for (const auto& [reply, left] : cases) {
    UserReprints({0});
    ServerBringsLetter();
    fakes_.server.Reply(reply);
    fakes_.RunEvents();
    std::vector<PrintStage> stages;
    for (const auto& note : fakes_.print_journal.notes) stages.push_back(note.stage);
    EXPECT_EQ(stages, left) << reply.error;
    fakes_.print_journal.notes.clear();
  }
}

}  // namespace
}  // namespace workspace
