#include "customers/cust_select.h"

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"

namespace customers {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

fakes::Row CustomerRow(const std::string& id, const std::string& name) {
  return {{"Cust_Id", id},           {"CUST_BSNS_NM", name},
          {"mail_city", "OAKHAVEN"}, {"mail_zip_cd", "892141234"},
          {"PHN_NBR", "4055212485"}, {"ACCNT_NBR", "6200010000101"}};
}

std::vector<fakes::Row> RowsNumbered(int first, int last) {
  std::vector<fakes::Row> rows;
  for (int number = first; number <= last; ++number)
    rows.push_back(CustomerRow(std::to_string(number), "ACME " + std::to_string(number)));
  return rows;
}

class CustSelect : public testing::Test {
 protected:
  CustSelect() {
    changed_ =
        select_.SelectionChanged.Connect([this] { happened_.push_back("chosen " + select_.CustID()); });
    alerted_ = select_.HasAlerts.Connect([this] { happened_.push_back("alert"); });
  }
  void UserTypes(const std::string& text) {
    select_.txtFind.SetText(text);
    select_.TypingRests();
  }
  static fakes::ScriptedReply Found(const std::vector<fakes::Row>& rows, const char* more = "N",
                                    int total = 0) {
    return fakes::ScriptedReply::With("CUSTOMER", rows)
        .And("CUSTOMER_SEARCH", {{{"MORE", more}, {"TOTAL", total}}});
  }
  void ServerFinds(const std::vector<fakes::Row>& rows, const char* more = "N", int total = 0) {
    fakes_.server.Reply(Found(rows, more, total));
    fakes_.RunEvents();
  }
  std::vector<std::string> Ids() {
    std::vector<std::string> ids;
    for (const auto& row : select_.rows()) ids.push_back(row.values.CustID);
    return ids;
  }
  std::size_t Requests() { return fakes_.server.requests.size(); }

  fakes::FakeServices fakes_;
  CustomerMaintenance::Saved saved_;
  std::vector<std::string> happened_;
  ZEMLO_CustSelect select_{fakes_.services(),
                           {.edit =
                                [this](const std::string& id, CustomerMaintenance::Saved saved) {
                                  happened_.push_back("edit " + id);
                                  saved_ = std::move(saved);
                                },
                            .add =
                                [this](const std::string& typed, CustomerMaintenance::Saved saved) {
                                  happened_.push_back("new " + typed);
                                  saved_ = std::move(saved);
                                }}};
  platform::Connection changed_;
  platform::Connection alerted_;
};

TEST_F(CustSelect, AsksUnderANameOfItsOwnAndLeavesPointerAndStatusAlone) {
  fakes_.journal.Clear();
  UserTypes("  O'March\r\noak ");
  const auto& request = fakes_.server.LastRequest();
  EXPECT_EQ(request.application, "ZEMLO_Corresp.CustSelect");
  EXPECT_EQ(request.type, 7);
  EXPECT_EQ(request.user_id, "OFFICER1");
  EXPECT_THAT(request.Keys(), ElementsAre("KORVADSK|key:CUST_FIND|like|O'March oak", "KORVADSK|key:START|=|1",
                                          "KORVADSK|key:END|=|20"));
  EXPECT_THAT(fakes_.journal.lines(), ElementsAre("send type 7"));

  select_.TypingRests();
  UserTypes("O'March oak");
  EXPECT_EQ(Requests(), 1u) << "the same text is not asked for twice";
}

TEST_F(CustSelect, DropsTheAnswersThatANewerQuestionHasReplacedInWhateverOrderTheyCome) {
  UserTypes("a");
  const auto first = fakes_.server.LastRequest().message_key;
  UserTypes("ac");
  const auto second = fakes_.server.LastRequest().message_key;
  fakes_.server.Reply(Found({CustomerRow("2", "ACME")}), second);
  fakes_.server.Reply(Found({CustomerRow("1", "ABEL")}), first);
  fakes_.RunEvents();
  EXPECT_THAT(Ids(), ElementsAre("2"));

  UserTypes("acm");
  const auto third = fakes_.server.LastRequest().message_key;
  UserTypes("acme");
  fakes_.server.Reply(Found({CustomerRow("1", "ABEL")}), third);
  fakes_.RunEvents();
  EXPECT_THAT(Ids(), ElementsAre("2")) << "the list stands until its text is answered";
  UserTypes("");
  ServerFinds({CustomerRow("3", "ACME")});
  EXPECT_THAT(Ids(), IsEmpty()) << "nothing is typed any more";
}

TEST_F(CustSelect, BringsTwentyMoreWhenTheEndIsInSight) {
  UserTypes("acme");
  ServerFinds(RowsNumbered(1, 20), "Y", 1234);
  EXPECT_EQ(select_.status.caption(), "20 of 1,234 customers. Scroll for more, or type more to find fewer.");
  select_.EndInSight();
  select_.EndInSight();
  EXPECT_EQ(Requests(), 2u) << "one question at a time";
  EXPECT_THAT(
      fakes_.server.LastRequest().Keys(),
      ElementsAre("KORVADSK|key:CUST_FIND|like|acme", "KORVADSK|key:START|=|21", "KORVADSK|key:END|=|40"));
  ServerFinds(RowsNumbered(20, 25), "N", 25);  // one has moved on meanwhile
  EXPECT_EQ(select_.rows().size(), 25u);
  EXPECT_EQ(select_.status.caption(), "25 customers match.");
  select_.EndInSight();
  EXPECT_EQ(Requests(), 2u);

  UserTypes("acme i");
  ServerFinds(RowsNumbered(1, 20), "Y", 40);
  EXPECT_EQ(select_.status.caption(), "20 of 40 customers. Scroll for more, or type more to find fewer.");
  select_.UserMovesBy(30);
  EXPECT_EQ(Requests(), 4u) << "the arrows reach the end too";
  fakes_.server.ReplyWithError("The server is closed.");
  fakes_.RunEvents();
  EXPECT_EQ(select_.rows().size(), 20u) << "what is there stays";
  EXPECT_EQ(select_.status.caption(), "The server is closed.");
}

TEST_F(CustSelect, TellsWhatMatchedInEachRow) {
  UserTypes("oak 405521");
  ServerFinds({CustomerRow("1", "Caf\u00e9 Oak & Sons")});
  EXPECT_EQ(select_.Cell(0, FoundColumn::kName).met, (std::vector<platform::TextRange>{{6, 3}}));
  EXPECT_EQ(select_.Cell(0, FoundColumn::kCity).met, (std::vector<platform::TextRange>{{0, 3}}));
  EXPECT_EQ(select_.Cell(0, FoundColumn::kPhone).text, "(405) 521-2485");
  EXPECT_EQ(select_.Cell(0, FoundColumn::kPhone).met, (std::vector<platform::TextRange>{{1, 8}}));
  EXPECT_EQ(select_.Cell(0, FoundColumn::kAccount).text, "62-000100001-01");
  EXPECT_THAT(select_.Cell(0, FoundColumn::kAccount).met, IsEmpty());
}

TEST_F(CustSelect, IsWorkedWithArrowsAndEnter) {
  UserTypes("acme");
  ServerFinds(RowsNumbered(1, 3));
  EXPECT_EQ(select_.current_row(), 0u);
  select_.UserMovesBy(1);
  select_.UserMovesBy(5);
  select_.UserMovesBy(-1);
  EXPECT_TRUE(select_.UserPressesEnter());
  EXPECT_FALSE(select_.UserPressesEnter()) << "the dialog may take it";
  select_.UserChooses(1);
  EXPECT_THAT(happened_, ElementsAre("chosen 2"));
  EXPECT_EQ(select_.CUSTNAME(), "ACME 2");
  EXPECT_EQ(select_.chosen().MailZip, "89214-1234");
  EXPECT_EQ(select_.chosen_text.caption(), "Chosen: 2 ACME 2, OAKHAVEN, 62-000100001-01, (405) 521-2485");

  EXPECT_TRUE(select_.UserGoesBack()) << "takes the text back";
  EXPECT_TRUE(select_.txtFind.IsEmpty());
  EXPECT_FALSE(select_.UserGoesBack());
  EXPECT_EQ(select_.CustID(), "2") << "still chosen";
}

TEST_F(CustSelect, ChoosesWhomEnterMeantWhenItComesBeforeTheAnswer) {
  struct Case {
    std::string typed;
    std::vector<fakes::Row> found;
    std::string chosen;
  };
  const Case cases[] = {
      {"acme", RowsNumbered(7, 7), "7"},
      {"8", RowsNumbered(7, 9), "8"},
      {"acm", RowsNumbered(7, 9), ""},
      {"nobody", {}, ""},
  };
  for (const auto& [typed, found, chosen] : cases) {
    select_.Reset();
    select_.txtFind.SetText(typed);
    EXPECT_TRUE(select_.UserPressesEnter()) << "without waiting for the typing to rest";
    EXPECT_TRUE(select_.UserPressesEnter()) << "still awaited";
    ServerFinds(found);
    EXPECT_EQ(select_.CustID(), chosen) << typed;
  }

  UserTypes("acme");
  ServerFinds(RowsNumbered(1, 2));
  select_.txtFind.SetText("acme x");
  select_.UserPressesEnter();
  select_.UserChooses(1);
  ServerFinds(RowsNumbered(3, 3));
  EXPECT_EQ(select_.CustID(), "2") << "a row that was clicked since is meant";
}

// The first row of the text before was chosen.
TEST_F(CustSelect, ChoosesNobodyWithEnterOnceTheTextIsEmptied) {
  UserTypes("acme");
  ServerFinds(RowsNumbered(1, 2));
  select_.UserChooses(1);
  for (const char* emptied_by : {"the user", "Esc"}) {
    UserTypes("acm");
    ServerFinds(RowsNumbered(1, 2));
    select_.txtFind.SetText(emptied_by == std::string("Esc") ? "acm" : "");
    select_.UserGoesBack();
    EXPECT_FALSE(select_.UserPressesEnter()) << emptied_by;
    ServerFinds(RowsNumbered(2, 2));
    EXPECT_EQ(select_.CustID(), "2");
  }
}

TEST_F(CustSelect, SaysWhatWentWrongInWordsAndMayBeAskedAgain) {
  UserTypes("a & b");
  ServerFinds({});
  EXPECT_EQ(select_.status.caption(), "No customer matches \"a && b\".");
  UserTypes("a");
  fakes_.server.TimesOut("The server did not answer in time. Try again.");
  fakes_.RunEvents();
  EXPECT_EQ(select_.status.caption(), "The server did not answer in time. Try again.");
  select_.UserPressesEnter();
  fakes_.server.ReplyWithNothing();
  fakes_.RunEvents();
  EXPECT_THAT(select_.status.caption(), HasSubstr("holds no list of customers"));
  fakes_.server.on_send = [](const fakes::SentRequest&) {
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "The server is gone.");
  };
  UserTypes("ab");
  EXPECT_THAT(select_.status.caption(), HasSubstr("cannot be asked"));
  fakes_.server.on_send = nullptr;
  select_.UserPressesEnter();
  ServerFinds(RowsNumbered(1, 1));
  EXPECT_EQ(select_.CustID(), "1");
  EXPECT_THAT(fakes_.host.MessageTexts(), IsEmpty());
}

TEST_F(CustSelect, OffersTheCustomersThatThisUserChoseLast) {
  select_.Start();
  EXPECT_EQ(Requests(), 0u) << "there are none yet";
  for (int number = 1; number <= 22; ++number) {
    UserTypes(std::to_string(number));
    ServerFinds(RowsNumbered(number, number));
    select_.UserPressesEnter();
  }
  UserTypes("5");
  ServerFinds(RowsNumbered(5, 5));
  select_.UserPressesEnter();

  ZEMLO_CustSelect next(fakes_.services(), {});
  next.Start();
  EXPECT_THAT(fakes_.server.LastRequest().Keys(),
              ElementsAre("KORVADSK|key:CUST_IDS|=|5,22,21,20,19,18,17,16,15,14,13,12,11,10,9,8,7,6,4,3"));
  fakes_.server.ReplyWith("CUSTOMER", {CustomerRow("5", "ACME"), CustomerRow("20", "LEE")});
  fakes_.RunEvents();
  EXPECT_EQ(next.rows().size(), 2u) << "those that are gone are left out";
  EXPECT_EQ(next.status.caption(), "The customers you chose last.");
  EXPECT_FALSE(next.UserPressesEnter()) << "nobody is meant yet";
  next.UserMovesBy(1);
  next.UserPressesEnter();
  EXPECT_EQ(next.CustID(), "5");

  fakes_.settings.user_id = "OFFICER2";
  ZEMLO_CustSelect others(fakes_.services(), {});
  const auto sent = Requests();
  others.Start();
  EXPECT_EQ(Requests(), sent) << "another user has chosen nobody";
}

TEST_F(CustSelect, ShowsAlertsAndRaisesThemWhileTheyAreOn) {
  auto returned = CustomerRow("1", "ACME");
  returned.emplace_back("RES_RTND_IND", "Y");
  for (const bool on : {true, false}) {
    happened_.clear();
    select_.AlertsOn = on;
    UserTypes(on ? "acme" : "acm");
    ServerFinds({returned, CustomerRow("2", "ACME")});
    EXPECT_EQ(select_.AlertOf(0), "Mail returned");
    EXPECT_EQ(select_.AlertOf(1), "");
    select_.UserChooses(0);
    EXPECT_THAT(select_.chosen_text.caption(), testing::HasSubstr("Mail came back from the residential"));
    select_.UserChooses(1);
    if (on)
      EXPECT_THAT(happened_, ElementsAre("chosen 1", "alert", "chosen 2"));
    else
      EXPECT_THAT(happened_, ElementsAre("chosen 1", "chosen 2"));
  }
}

TEST_F(CustSelect, ChoosesWhatWasSavedInMaintenance) {
  EXPECT_FALSE(select_.cmdEdit.enabled());
  EXPECT_EQ(select_.cmdEdit.why_disabled(), "Choose a customer first.");
  EXPECT_TRUE(select_.cmdNew.enabled());
  UserTypes("acme");
  ServerFinds(RowsNumbered(1, 2));
  select_.UserChooses(0);
  select_.UserMovesBy(1);
  select_.cmdEdit.UserClicks();  // the row that the user has moved to
  saved_("2");
  EXPECT_THAT(fakes_.server.LastRequest().Keys(), ElementsAre("KORVADSK|key:CUST_IDS|=|2"));
  fakes_.server.ReplyWith("CUSTOMER", {CustomerRow("2", "NEW NAME")});
  fakes_.RunEvents();
  EXPECT_THAT(happened_, ElementsAre("chosen 1", "chosen 2", "edit 2", "chosen 2"));
  EXPECT_EQ(select_.CUSTNAME(), "NEW NAME");
  EXPECT_EQ(select_.rows().at(1).values.CUSTNAME, "NEW NAME");

  UserTypes("lee");  // not answered yet
  select_.cmdNew.UserClicks();
  saved_("3");
  select_.OnceSavedIsThere([this] { happened_.push_back("left with " + select_.CustID()); });
  UserTypes("lee t");
  fakes_.server.ReplyWith("CUSTOMER", {CustomerRow("3", "LEE")});
  fakes_.RunEvents();
  EXPECT_EQ(select_.CustID(), "3");
  EXPECT_EQ(happened_.back(), "left with 3");
  EXPECT_THAT(Ids(), ElementsAre("3", "1", "2"));
  EXPECT_THAT(fakes_.server.LastRequest().Keys(), Contains("KORVADSK|key:CUST_FIND|like|lee t"));
  ServerFinds({CustomerRow("3", "LEE")});

  select_.cmdEdit.UserClicks();
  saved_("3");
  fakes_.server.ReplyWith("CUSTOMER", {});  // deleted meanwhile
  fakes_.RunEvents();
  EXPECT_EQ(select_.status.caption(), "The customer that was saved is not in the register any more.");
  EXPECT_EQ(select_.CustID() + select_.chosen_text.caption(), "") << "what stood there is not stored";
}

TEST_F(CustSelect, OffersMaintenanceToThoseWhoMayDoIt) {
  fakes_.utilities.withheld_rights = {"CustomerEdit", "CustomerAdd"};
  ZEMLO_CustSelect select(fakes_.services(), {[](const std::string&, const CustomerMaintenance::Saved&) {},
                                              [](const std::string&, const CustomerMaintenance::Saved&) {}});
  select.txtFind.SetText("acme");
  select.UserPressesEnter();
  ServerFinds(RowsNumbered(1, 1));
  EXPECT_EQ(select.CustID(), "1");
  EXPECT_FALSE(select.cmdEdit.enabled());
  EXPECT_FALSE(select.cmdNew.enabled());
  EXPECT_THAT(select.cmdEdit.why_disabled(), HasSubstr("CustomerEdit"));
  EXPECT_THAT(select.cmdNew.why_disabled(), HasSubstr("CustomerAdd"));
}

TEST(CustomerSeeds, AreWhatWasTypedAsANameOrAnAccount) {
  EXPECT_THAT(BusinessSeeds("Acme Oil "), ElementsAre("Acme Oil", "", ""));
  EXPECT_THAT(BusinessSeeds("62-000100001-01"), ElementsAre("", "6200010000101", ""));
  EXPECT_THAT(BusinessSeeds("405 521"), ElementsAre("", "", ""));
  EXPECT_THAT(IndividualSeeds("Ann van Lee"), ElementsAre("Ann", "van Lee", "", ""));
  EXPECT_THAT(IndividualSeeds(""), ElementsAre("", "", "", ""));
}

TEST_F(CustSelect, HearsOfASaveNoMoreWhenItHasGone) {
  auto select = std::make_unique<ZEMLO_CustSelect>(
      fakes_.services(),
      CustomerMaintenance{
          .add = [this](const std::string&, CustomerMaintenance::Saved saved) { saved_ = saved; }});
  select->cmdNew.UserClicks();
  select.reset();
  saved_("4");
  EXPECT_EQ(Requests(), 0u);
}

}  // namespace
}  // namespace customers
