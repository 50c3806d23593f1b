#include "tests/workspace/document/workspace_test.h"
#include "workspace/requests/letter_list.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// Listed letters that are given to the batch run, or came back: what is asked, and what the reply does.
class LetterItems : public WorkspaceTest {
 protected:
  LetterItems() {
    GivenWorkspaceIsOpen();
    UserChoosesCustomer("4711", kTracking);  // so that choosing a row asks for no customer
    auto& descriptions = fakes_.utilities.descriptions;
    descriptions[{"LTRBATCH", "BNK"}] = "None";
    descriptions[{"LTRBATCH", "REP"}] = "Reprint";
    descriptions[{"LTRBATCH", "REB"}] = "Batch Again";
    descriptions[{"LTRPRNTCD", "W"}] = "Waiting";
    ShowLetters(Tracking().sdgGrid,
                fakes::RowsOf("CORRHIST", {Letter(17, "M"), Letter(18, "R"), Letter(19, "F"), Letter(20, "P"),
                                           Letter(21, "V")}));
  }

  static fakes::Row Letter(int number, const char* status) {
    return {{"SEQ_NBR", number}, {"PRNT_STTS_CD", status}, {"CUST_ID", "4711"}, {"FLS_BTCH_NBR", "70"}};
  }
  static fakes::Row Outcome(int number, const char* outcome, const char* action, const char* status,
                            const char* memo = "") {
    return {{"SEQ_NBR", number},
            {"OUTCOME", outcome},
            {"MEMO", memo},
            {"BTCH_ACTN_CD", action},
            {"PRNT_STTS_CD", status}};
  }
  TrackingPage& Tracking() { return document_.pages().tracking; }
  void UserSays(platform::MessageAnswer answer) { fakes_.host.answers = {answer}; }
  void UserActs(std::size_t option, std::vector<std::size_t> rows) {
    fakes_.host.messages.clear();
    Tracking().sdgGrid.UserSelects(std::move(rows));
    Tracking().OptLetter[option].UserClicks();
  }
  void UserSubmits(std::vector<std::size_t> rows, std::size_t option = TrackingPage::kResubmit) {
    document_.pages().tabs.Select(kTracking);
    UserSays(platform::MessageAnswer::kYes);
    UserActs(option, std::move(rows));
  }
  void ServerReplies(const char* record, const std::vector<fakes::Row>& rows) {
    fakes_.server.ReplyWith(record, rows);
    fakes_.RunEvents();
  }
  /// "REP 17", in the order they were sent.
  std::vector<std::string> Items() {
    std::vector<std::string> items;
    const auto& rows = *LastRequest().FindRecord("CORR_BITEM").rows;
    for (std::size_t row = 0; row < rows.RecordCount(); ++row) {
      items.push_back(rows.Text(row, "ACTION") + " " + rows.Text(row, "SEQ_NBR"));
    }
    return items;
  }
  std::string Shown(std::size_t row, const char* column) {
    return Tracking().sdgGrid.rows()->Text(row, column);
  }
  std::size_t Sent() const { return fakes_.server.requests.size(); }
};

TEST_F(LetterItems, AreSentInTheOrderOfTheSelectionAsTheirStatusAsks) {
  UserSubmits({3, 0, 1, 2});
  EXPECT_THAT(fakes_.host.MessageTexts(),
              ElementsAre("Should these 4 letters be resubmitted for tonight's batch?"));
  EXPECT_EQ(LastRequest().type, 82);
  EXPECT_EQ(LastRequest().user_id, "OFFICER1");
  EXPECT_THAT(LastRequest().Keys(), IsEmpty());
  EXPECT_THAT(Items(), ElementsAre("REB 20", "REP 17", "REP 18", "REP 19"));
  EXPECT_EQ(document_.pending_request().name(), "LetterAU");
  EXPECT_EQ(fakes_.status.LastText(), "Submit batch request.");
  EXPECT_FALSE(Tracking().letter_action.enabled());

  ServerReplies("CORR_BITEM_OUTCOME", {Outcome(20, "T", "REB", "W")});
  UserSubmits({3, 4}, TrackingPage::kReprintBatch);
  EXPECT_THAT(fakes_.host.MessageTexts(),
              ElementsAre("Should these 2 letters be resubmitted for batch reprint?"));
  EXPECT_THAT(Items(), ElementsAre("REP 20", "REP 21"));
}

TEST_F(LetterItems, AreNotSentAndNoMailIsMarkedWhereTheUserDeclines) {
  const auto sent = Sent();
  for (const auto option :
       {TrackingPage::kReturnMail, TrackingPage::kResubmit, TrackingPage::kReprintBatch}) {
    UserSays(platform::MessageAnswer::kNo);
    UserActs(option, {1});
    ASSERT_THAT(fakes_.host.messages, SizeIs(1));
    const auto& question = fakes_.host.messages.front();
    EXPECT_EQ(question.buttons, platform::MessageButtons::kYesNo);
    EXPECT_EQ(question.default_answer, platform::MessageAnswer::kNo);
    EXPECT_EQ(question.icon, platform::MessageIcon::kQuestion);
    EXPECT_TRUE(Tracking().letter_action.enabled());
    EXPECT_TRUE(Tracking().OptLetter[option].selected());
  }
  EXPECT_EQ(Sent(), sent);
  UserSays(platform::MessageAnswer::kYes);
  Tracking().OptLetter[TrackingPage::kReprintBatch].UserClicks();
  EXPECT_EQ(Sent(), sent + 1) << "clicking the selected option repeats it";
}

TEST_F(LetterItems, ShowInTheirRowsWhatCameOfThem) {
  fakes_.utilities.values[{"LTRACTION", "RES"}] = "MRFPV";
  fakes_.server.CompleteSynchronisation();
  fakes_.RunEvents();
  Tracking().sdgGrid.LoadAllRows();
  UserSubmits({3});
  ServerReplies("CORR_BITEM_OUTCOME", {Outcome(20, "T", "REB", "W"), Outcome(99, "T", "REB", "W")});
  EXPECT_EQ(Shown(3, "BTCH_ACTN_CD") + Shown(3, "BTCH_ACTN_DESC"), "REBBatch Again");
  EXPECT_EQ(Shown(3, "PRNT_STTS_CD") + Shown(3, "PRNT_STTS_DESC"), "WWaiting");
  EXPECT_EQ(Shown(2, "BTCH_ACTN_DESC"), "None");
  EXPECT_TRUE(Tracking().letter_action.enabled());
  EXPECT_THAT(Tracking().sdgGrid.selected_rows(), ElementsAre(3));
  EXPECT_FALSE(Tracking().OptLetter[TrackingPage::kResubmit].enabled()) << "by its new status";
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(LetterItems, AreToldOfInOneSentenceAndInABoxWhereSomeWereRefused) {
  struct Case {
    const char* outcomes;  ///< a letter each
    const char* sentence;
    const char* box;  ///< "" for none
  };
  const Case cases[] = {
      {"T", "1 letter waits for the batch run now.", ""},
      {"A", "1 letter was waiting for the batch run already.", ""},
      {"R", "1 letter was refused.", "busy 1"},
      {"TTT", "3 letters wait for the batch run now.", ""},
      {"AAR", "2 letters were waiting for the batch run already, 1 was refused.",
       "1 of 3 letters was refused:\r\n\r\nbusy 3"},
      {"TAA", "1 letter waits for the batch run now, 2 were waiting already.", ""},
      {"TRAR", "1 letter waits for the batch run now, 1 was waiting already, 2 were refused.",
       "2 of 4 letters were refused:\r\n\r\nbusy 2\r\nbusy 4"},
      {"RRRRRRR", "7 letters were refused.",
       "7 of 7 letters were refused:\r\n\r\nbusy 1\r\nbusy 2\r\nbusy 3\r\nbusy 4\r\nbusy 5\r\n"
       "And 2 more, not named here."},
  };
  for (const auto& [outcomes, sentence, box] : cases) {
    UserSubmits({0});
    std::vector<fakes::Row> rows;
    for (int number = 1; number <= static_cast<int>(std::string_view(outcomes).size()); ++number) {
      const std::string outcome(1, outcomes[number - 1]);
      rows.push_back(
          Outcome(number, outcome.c_str(), "REP", "M", ("busy " + std::to_string(number)).c_str()));
    }
    fakes_.host.messages.clear();
    ServerReplies("CORR_BITEM_OUTCOME", rows);
    EXPECT_EQ(fakes_.status.reason, sentence) << outcomes;
    EXPECT_EQ(fakes_.host.messages.empty() ? "" : fakes_.host.messages.front().text, box) << outcomes;
  }
}

TEST_F(LetterItems, AreNotKnownToBeTakenWhereNoReplyCame) {
  UserSubmits({0});
  fakes_.server.ReplyWithError("The database is locked.");
  fakes_.RunEvents();
  EXPECT_EQ(fakes_.status.reason, "");
  UserSubmits({0});
  fakes_.server.TimesOut();
  fakes_.RunEvents();
  EXPECT_THAT(fakes_.status.reason, HasSubstr("It is not known whether"));
  EXPECT_EQ(Shown(0, "BTCH_ACTN_CD"), "");
  EXPECT_TRUE(Tracking().letter_action.enabled());
}

TEST_F(LetterItems, OfALetterThatCameBackGoUnderTheNameOfTheRequestBefore) {
  UserSubmits({0, 1});
  ServerReplies("CORR_BITEM_OUTCOME", {});
  UserSubmits({1}, TrackingPage::kReturnMail);
  EXPECT_THAT(fakes_.host.MessageTexts(), ElementsAre("Should this customer be marked as return mail?"));
  EXPECT_EQ(LastRequest().type, 82);
  EXPECT_THAT(LastRequest().Keys(), ElementsAre("KORVADSK|key:ReturnMail|=|18"));
  EXPECT_EQ(fakes_.status.LastText(), "Submit Return Mail Request");
  EXPECT_FALSE(Tracking().letter_action.enabled());

  const auto sent = Sent();
  const auto reply = [](const char* outcome, const char* memo) -> fakes::Row {
    return {{"SEQ_NBR", 18}, {"CUST_ID", "4711"}, {"ADDR_TYP_CD", 1}, {"OUTCOME", outcome}, {"MEMO", memo}};
  };
  fakes_.host.messages.clear();
  ServerReplies("RETURN_MAIL", {reply("T", "The mailing address of 4711 is marked.")});
  EXPECT_EQ(fakes_.status.LastText() + ": " + fakes_.status.reason,
            "Ready: The mailing address of 4711 is marked.");
  EXPECT_THAT(fakes_.host.messages, IsEmpty());
  EXPECT_TRUE(Tracking().letter_action.enabled());
  EXPECT_EQ(Tracking().panel.returned_mail.caption(), "Mail came back from the mailing address.");
  EXPECT_EQ(document_.pages().correspondence.panel.returned_mail.caption(), "") << "another customer";

  UserSubmits({1}, TrackingPage::kReturnMail);
  fakes_.host.messages.clear();
  ServerReplies("RETURN_MAIL", {reply("R", "The address was changed on 2024-02-03.")});
  EXPECT_THAT(fakes_.host.MessageTexts(), ElementsAre("The address was changed on 2024-02-03."));
  EXPECT_EQ(Sent(), sent + 1);
}

// Nothing is selected, but the action stays: it goes with the letter that was selected last.
TEST_F(LetterItems, OfALetterThatCameBackSayWhichOneIsMeant) {
  Tracking().sdgGrid.UserSelects({2});
  fakes_.host.user_at_message = [&](const platform::Message&) {
    EXPECT_EQ(fakes_.status.reason, "It is about letter 19, to customer 4711.");
  };
  UserActs(TrackingPage::kReturnMail, {});
  EXPECT_THAT(fakes_.host.messages, SizeIs(1));
  EXPECT_EQ(fakes_.status.reason, "") << "declined";
}

}  // namespace
}  // namespace workspace
