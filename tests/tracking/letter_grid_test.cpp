#include "tracking/letter_grid.h"

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"
#include "tracking/letter_rules.h"
#include "workspace/pages/pages.h"

namespace tracking {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workspace::PageIndex;
using workspace::TrackingPage;

class LetterGridTest : public testing::Test {
 protected:
  LetterGridTest() {
    GivenLetters({{"1", "4711", "P"}, {"2", "4712", "F"}, {"3", "", "S"}, {"4", "4711", "M"}});
    clicked_ = page_.sdgGrid.Click.Connect([this] { letter_grid_.sdgGrid_Click(); });
  }

  struct Letter {
    std::string number;
    std::string customer;
    std::string status;
  };
  void GivenLetters(const std::vector<Letter>& letters) {
    std::vector<fakes::Row> rows;
    for (const auto& [number, customer, status] : letters) {
      rows.push_back({{"SEQ_NBR", number}, {"CUST_ID", customer}, {"PRNT_STTS_CD", status}});
    }
    page_.sdgGrid.Bind(fakes::RowsOf("CORRHIST", rows));
  }
  void GivenPanelShows(const std::string& customer) {
    customer_.CustomerId = customer;
    page_.panel.customer_id.SetCaption(customer);
    page_.panel.phone.SetCaption("521-2485");
  }
  void UserSelects(std::vector<std::size_t> rows) { page_.sdgGrid.UserSelects(std::move(rows)); }
  void ReplyIsHandled() {
    fakes_.server.ReplyWithNothing();
    fakes_.RunEvents();
    ASSERT_TRUE(pending_.TakeReply(fakes_.server));
    letter_grid_.ReplyHandled();
  }
  /// The options that can be used, by their numbers.
  std::string Offered() {
    std::string offered;
    for (std::size_t option = 0; option < page_.OptLetter.size(); ++option) {
      if (page_.OptLetter[option].enabled()) offered += std::to_string(option);
    }
    return offered;
  }
  void GivenAllOffered() {
    for (auto& option : page_.OptLetter) option.SetEnabled(true);
  }

  fakes::FakeServices fakes_;
  const std::string message_title_ = "Letters";
  workspace::PendingRequest pending_;
  customers::CurrentCustomer customer_;
  LetterActionLists lists_;
  workspace::Pages pages_{fakes_.services()};
  TrackingPage& page_ = pages_.tracking;
  std::unique_ptr<platform::ReplyListener> listener_ = fakes_.server.NewListener();
  workspace::RequestEnvelope envelope_{fakes_.services(), pending_, *listener_};
  workspace::CommandGate gate_{fakes_.services(), pending_};
  LetterFetch fetch_{fakes_.services(), message_title_, envelope_, pages_,
                     [](const std::string&) { return 0; }};
  LetterGrid letter_grid_{{fakes_.services(), lists_, customer_, page_, fetch_, gate_}};
  platform::Connection clicked_;
};

TEST_F(LetterGridTest, AsksForTheCustomerOfALetter) {
  UserSelects({1});
  const auto& request = fakes_.server.LastRequest();
  EXPECT_EQ(request.type, 83);
  EXPECT_EQ(request.user_id, "OFFICER1");
  EXPECT_THAT(request.Keys(), ElementsAre("KORVADSK|key:FetchContext|=|2"));
  EXPECT_TRUE(request.was_built);
  EXPECT_EQ(pending_.name(), "CustomerFromLetter");
  EXPECT_EQ(pending_.message_key(), request.message_key);
  EXPECT_EQ(fakes_.status.LastText(), "Requesting Letter History");
  EXPECT_EQ(customer_.CustomerId, "4712");
  EXPECT_FALSE(page_.letter_action.enabled());
  UserSelects({3});
  fakes_.server.ReplyWithNothing();
  fakes_.RunEvents();
  EXPECT_EQ(pending_.TakeReply(fakes_.server).value().letter.sequence_number, 2);
}

// City line, phone and account of the customer before stood beside the next one's name.
TEST_F(LetterGridTest, ShowsNothingOfTheCustomerBeforeWhileAnotherOneIsAskedFor) {
  GivenPanelShows("4711");
  customer_.CustomerCityLine = "TULSA, OK";
  page_.panel.city_line.SetCaption("TULSA, OK");
  UserSelects({1});
  const auto& panel = page_.panel;
  EXPECT_EQ(panel.customer_id.caption(), "4712");
  EXPECT_EQ(panel.name.caption() + panel.city_line.caption() + panel.phone.caption(), "");
  EXPECT_EQ(customer_.CustomerCityLine, "");
}

TEST_F(LetterGridTest, KeepsWhatIsKnownOfACustomerOfSeveralLetters) {
  GivenPanelShows("4711");
  UserSelects({0});
  EXPECT_EQ(page_.panel.phone.caption(), "521-2485");
}

// A click while a reply was awaited used to do nothing: the options stayed those of another letter.
TEST_F(LetterGridTest, ChoosesAnotherLetterWhileAReplyIsAwaitedButAsksForNoCustomer) {
  lists_.ActionViewLtr = "F";
  UserSelects({1});
  UserSelects({0});
  EXPECT_THAT(fakes_.server.requests, testing::SizeIs(1));
  EXPECT_EQ(page_.sdgGrid.rows()->CurrentRow(), 0u);
  EXPECT_EQ(Offered(), "123456");
  EXPECT_EQ(customer_.CustomerId, "4712");
}

// The panel went on showing the customer of the letter chosen before.
TEST_F(LetterGridTest, AsksForTheCustomerOfTheLetterChosenMeanwhileWhenTheReplyIsThere) {
  UserSelects({1});
  UserSelects({0});
  ReplyIsHandled();
  EXPECT_THAT(fakes_.server.LastRequest().Keys(), ElementsAre("KORVADSK|key:FetchContext|=|1"));
  EXPECT_EQ(customer_.CustomerId, "4711");
  ReplyIsHandled();
  EXPECT_THAT(fakes_.server.requests, testing::SizeIs(2)) << "once";
}

TEST_F(LetterGridTest, EmptiesThePanelForALetterWithoutCustomer) {
  GivenPanelShows("4711");
  UserSelects({2});
  EXPECT_THAT(fakes_.server.requests, IsEmpty());
  EXPECT_EQ(customer_.CustomerId, "");
  EXPECT_EQ(page_.panel.customer_id.caption(), "");
  EXPECT_EQ(page_.panel.phone.caption(), "");
  EXPECT_TRUE(page_.letter_action.enabled());
  EXPECT_EQ(page_.sdgGrid.rows()->CurrentRow(), 2u);
}

TEST_F(LetterGridTest, EmptiesThePanelForNoneAndForSeveralLetters) {
  for (const auto& rows : {std::vector<std::size_t>{}, {0, 3}}) {
    GivenPanelShows("4711");
    UserSelects(rows);
    EXPECT_EQ(customer_.CustomerId, "") << rows.size();
    EXPECT_EQ(page_.panel.phone.caption(), "") << rows.size();
  }
  EXPECT_THAT(fakes_.server.requests, IsEmpty());
}

TEST_F(LetterGridTest, LeavesACustomerThatTheUserPicked) {
  GivenPanelShows("9000");
  customer_.TrackingCustomerFixed = true;
  for (const auto& rows : {std::vector<std::size_t>{0}, {2}, {}, {0, 1}}) {
    UserSelects(rows);
    EXPECT_EQ(customer_.CustomerId, "9000") << rows.size();
    EXPECT_EQ(page_.panel.customer_id.caption(), "9000") << rows.size();
  }
  EXPECT_THAT(fakes_.server.requests, IsEmpty());
  EXPECT_TRUE(page_.letter_action.enabled());
}

TEST_F(LetterGridTest, OffersTheActionsThatTheStatusAllows) {
  struct Case {
    const char* lists;  ///< of "View Letter", "Save", "Return Mail", the reprints and "Resubmit" alike
    std::size_t row;
    const char* offered;
  };
  const Case cases[] = {{"", 0, "0123456"}, {"FM", 0, "6"}, {"FM", 1, "0123456"}, {"FM", 3, "0123456"}};
  for (const auto& [list, row, offered] : cases) {
    lists_ = {.ActionViewLtr = list,
              .ActionPrintLocal = list,
              .ActionURM = list,
              .ActionPrintBatch = list,
              .ActionResubmit = list,
              .ActionSAV = list};
    UserSelects({row});
    EXPECT_EQ(Offered(), offered) << list << " row " << row;
  }
}

TEST_F(LetterGridTest, AsksEachActionsOwnList) {
  struct Case {
    LetterActionLists lists;
    const char* offered;
  };
  const Case cases[] = {
      {{.ActionViewLtr = "F"}, "123456"},  {{.ActionSAV = "F"}, "023456"},
      {{.ActionURM = "F"}, "013456"},      {{.ActionPrintLocal = "F"}, "012456"},
      {{.ActionResubmit = "F"}, "012356"}, {{.ActionPrintBatch = "F"}, "012346"},
      {{.ActionViewBK = "F"}, "0123456"},
  };
  for (const auto& [lists, offered] : cases) {
    lists_ = lists;
    UserSelects({0});
    EXPECT_EQ(Offered(), offered);
  }
}

TEST_F(LetterGridTest, OffersReturnMailStillWhenNoLetterIsSelected) {
  GivenAllOffered();
  page_.OptLetter[TrackingPage::kSave].SetSelected(true);
  UserSelects({});
  EXPECT_EQ(Offered(), "2");
  EXPECT_FALSE(page_.OptLetter[TrackingPage::kSave].selected());
}

TEST_F(LetterGridTest, ReprintsSeveralLettersWhereEveryStatusIsAllowed) {
  struct Case {
    const char* print_local;
    std::vector<std::size_t> rows;
    const char* offered;
  };
  const Case cases[] = {
      {"FM", {1, 2, 3}, "45"}, {"FM", {1, 3}, "345"}, {"", {0, 1, 2, 3}, "345"}, {"FMSP", {0, 2}, "345"}};
  for (const auto& [print_local, rows, offered] : cases) {
    GivenAllOffered();
    page_.OptLetter[TrackingPage::kReturnMail].SetSelected(true);
    lists_.ActionPrintLocal = print_local;
    UserSelects(rows);
    EXPECT_EQ(Offered(), offered) << print_local << " " << rows.size();
    EXPECT_FALSE(page_.OptLetter[TrackingPage::kReturnMail].selected());
  }
}

// A second table of what needs one letter knew the reasons, and could tell another one than the rule's.
TEST_F(LetterGridTest, SaysWhyOfExactlyTheActionsItDoesNotOffer) {
  fakes_.utilities.descriptions = {{{"LTRPRNTCD", "P"}, "Printed "}};
  lists_ = {.ActionViewLtr = "F", .ActionPrintLocal = "FM", .ActionPrintBatch = "F", .ActionResubmit = "F"};
  struct Case {
    std::vector<std::size_t> rows;
    const char* view;
    const char* print_local;
  };
  const Case cases[] = {
      {{}, "Select a letter in the list first.", "Select a letter in the list first."},
      {{1}, "", ""},
      {{0},
       "Letters with the print status \"Printed\" do not allow this.",
       "Letters with the print status \"Printed\" do not allow this."},
      {{1, 3}, "This goes with one letter only. Select one in the list.", ""},
      {{0, 1, 2, 3},
       "This goes with one letter only. Select one in the list.",
       "Letters with the print status \"Printed\", \"S\" do not allow this. That is 2 of the 4 selected."},
  };
  for (const auto& [rows, view, print_local] : cases) {
    UserSelects(rows);
    const auto why = [&](std::size_t option) {
      return RuleOf(option).WhyNot(fakes_.services(), lists_, page_.sdgGrid);
    };
    EXPECT_EQ(why(TrackingPage::kViewLetter), view);
    EXPECT_EQ(why(TrackingPage::kReprintLocal), print_local);
    for (std::size_t option = 0; option < page_.OptLetter.size(); ++option) {
      const bool is_kept = rows.empty() && option == TrackingPage::kReturnMail;
      if (!is_kept) {
        EXPECT_EQ(page_.OptLetter[option].enabled(), why(option).empty()) << option << " of " << rows.size();
      }
    }
  }
  GivenLetters({});
  EXPECT_EQ(kRuleOnline.WhyNot(fakes_.services(), lists_, page_.sdgGrid),
            "No letters are listed. Search for some first.");
}

TEST_F(LetterGridTest, KeepsTheLetterActionsWhenTheRequestCannotBeSent) {
  fakes_.server.on_send = [](const fakes::SentRequest&) {
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "The server is gone.");
  };
  UserSelects({0});
  GivenLetters({{"12a", "4711", "P"}, {"3000000000", "4711", "P"}});
  UserSelects({0});
  UserSelects({1});
  EXPECT_TRUE(page_.letter_action.enabled());
  EXPECT_THAT(fakes_.errors.Procedures(),
              ElementsAre("ZEMLO_Corresp.RePrintLetter", "ZEMLO_Corresp.RePrintLetter",
                          "ZEMLO_Corresp.RePrintLetter"));
  EXPECT_EQ(Offered(), "0123456");
}

TEST_F(LetterGridTest, AsksForTheExplanationsOfBookmarksOnly) {
  page_.sdgGrid.MakeCurrent(3);
  fetch_.RePrintLetter("Letter_BKView", PageIndex::kTracking);
  EXPECT_THAT(fakes_.server.LastRequest().Keys(),
              ElementsAre("KORVADSK|key:FetchContext|=|4", "KORVADSK|key:EmitFieldDescriptors|=|Y",
                          "KORVADSK|key: ExplainState|=|Y"));
  EXPECT_EQ(pending_.name(), "Letter_BKView");
}

}  // namespace
}  // namespace tracking
