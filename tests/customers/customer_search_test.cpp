#include "customers/customer_search.h"

#include <functional>

#include <gmock/gmock.h>

#include "customers/customer_selection.h"
#include "tests/fakes/fake_services.h"

namespace customers {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const fakes::Row kAcme = {{"Cust_Id", "4711"},
                          {"CUST_BSNS_NM", "A & B"},
                          {"mail_addr_1", "1 MAIN ST"},
                          {"mail_city", "TULSA"},
                          {"mail_st", "OK"},
                          {"mail_zip_cd", "741031234"},
                          {"PHN_NBR", "4055212485"},
                          {"ACCNT_NBR", "1234567890123"}};
const fakes::Row kLee = {{"Cust_Id", "4712"},        {"FIRST_NM", "ANN"},  {"LAST_NM", "LEE"},
                         {"RES_ADDR_1", "2 ELM ST"}, {"RES_CITY", "ENID"}, {"RES_ST", "OK"},
                         {"RES_ZIP_CD", "73701"}};

class CustomerSearch : public testing::Test {
 protected:
  /// What the user does in the search, which opens for the page.
  void UserOpensSearch(std::function<void(frmCustSearch&)> work,
                       workspace::PageIndex page = workspace::PageIndex::kTracking) {
    fakes_.host.user_in_form = [work = std::move(work)](platform::Form& form) {
      work(static_cast<frmCustSearch&>(form));
    };
    selection_.Select("Select Customer", page, panel_);
  }
  void UserSearches(frmCustSearch& search, const std::string& text) {
    search.txtFind.SetText(text);
    search.cmdFind.UserClicks();
  }
  void ServerFinds(const std::vector<fakes::Row>& customers, const char* more = "N") {
    fakes_.server.Reply(
        fakes::ScriptedReply::With("CUSTOMER", customers).And("CUSTOMER_SEARCH", {{{"MORE", more}}}));
    fakes_.RunEvents();
  }

  fakes::FakeServices fakes_;
  const std::string message_title_ = "Letters";
  CurrentCustomer customer_;
  CustomerPanel panel_;
  CustomerSelection selection_{fakes_.services(), message_title_, customer_};
};

TEST_F(CustomerSearch, ShowsTheCustomerThatTheUserChose) {
  UserOpensSearch([&](frmCustSearch& search) {
    EXPECT_FALSE(panel_.select_customer.enabled());
    EXPECT_FALSE(panel_.select_account.enabled());
    UserSearches(search, "o");
    ServerFinds({kLee, kAcme});
    EXPECT_FALSE(search.cmdOk.enabled());
    search.sdgGrid.UserSelects({1});
    search.cmdOk.UserClicks();
    EXPECT_FALSE(search.shown());
  });
  EXPECT_EQ(customer_.CustomerId, "4711");
  EXPECT_EQ(panel_.name.caption(), "A & B");
  EXPECT_EQ(panel_.city_line.caption(), "TULSA, OK 74103-1234");
  EXPECT_EQ(panel_.phone.caption(), "(405) 521-2485");
  EXPECT_EQ(panel_.fuel_tax_account.caption(), "12-345678901-23");
  EXPECT_TRUE(customer_.TrackingCustomerFixed);
  EXPECT_FALSE(panel_.select_customer.enabled());  // until the page is cleared
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
}

TEST_F(CustomerSearch, LeavesThePageAsItWasWhenNobodyIsChosen) {
  const std::function<void(frmCustSearch&)> ways[] = {
      [](frmCustSearch& search) { search.cmdCancel.UserClicks(); },
      [](frmCustSearch& search) { search.Close(); },
      [this](frmCustSearch& search) {
        UserSearches(search, "acme");
        search.cmdCancel.UserClicks();
      },
      [this](frmCustSearch& search) {
        UserSearches(search, "acme");
        ServerFinds({kAcme});
        EXPECT_TRUE(search.cmdOk.enabled());
        search.cmdCancel.UserClicks();
      },
  };
  for (const auto& leaves : ways) {
    panel_.name.SetCaption("OLD");
    UserOpensSearch(leaves);
    fakes_.RunEvents();  // a reply that comes too late
    EXPECT_EQ(panel_.name.caption(), "OLD");
    EXPECT_TRUE(panel_.select_customer.enabled());
    EXPECT_TRUE(panel_.select_account.enabled());
    EXPECT_FALSE(customer_.TrackingCustomerFixed);
    EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
  }
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(CustomerSearch, AsksUnderANameOfItsOwn) {
  UserOpensSearch([&](frmCustSearch& search) { UserSearches(search, "  O'March "); });
  const auto& request = fakes_.server.LastRequest();
  EXPECT_EQ(request.application, "ZEMLO_Corresp.CustSearch");
  EXPECT_EQ(request.type, 7);
  EXPECT_EQ(request.user_id, "OFFICER1");
  EXPECT_THAT(request.Keys(), ElementsAre("KORVADSK|key:CUST_FIND|like|O'March"));
}

TEST_F(CustomerSearch, ListsWhomAPersonKnowsByNameAndCity) {
  UserOpensSearch([&](frmCustSearch& search) {
    UserSearches(search, "");
    ServerFinds({kLee, kAcme});
    const auto& found = *search.sdgGrid.rows();
    std::vector<std::string> cells;
    for (const auto& column : search.sdgGrid.columns) {
      for (std::size_t row : {0, 1}) cells.push_back(found.Text(row, column.key));
    }
    EXPECT_THAT(cells,
                ElementsAre("4712", "4711", "ANN LEE", "A & B", "ENID", "TULSA", "", "12-345678901-23"));
    EXPECT_EQ(search.status.caption(), "2 customers found.");
  });
}

TEST_F(CustomerSearch, SaysWhatWasFound) {
  struct Case {
    std::vector<fakes::Row> customers;
    const char* more;
    const char* status;
    bool can_choose;
  };
  const Case cases[] = {
      {{}, "N", "No customer matches \"a && b\".", false},
      {{kAcme}, "N", "1 customer found.", true},
      {{kAcme, kLee}, "Y", "More customers match than the 2 shown. Type more to find fewer.", false},
  };
  UserOpensSearch([&](frmCustSearch& search) {
    for (const auto& [customers, more, status, can_choose] : cases) {
      UserSearches(search, "a & b");
      ServerFinds(customers, more);
      EXPECT_EQ(search.status.caption(), status);
      EXPECT_EQ(search.cmdOk.enabled(), can_choose) << status;
    }
  });
}

TEST_F(CustomerSearch, TakesExactlyOneRow) {
  UserOpensSearch([&](frmCustSearch& search) {
    UserSearches(search, "");
    ServerFinds({kLee, kAcme});
    search.sdgGrid.UserSelects({0});
    EXPECT_TRUE(search.cmdOk.enabled());
    search.sdgGrid.UserSelects({0, 1});
    EXPECT_FALSE(search.cmdOk.enabled());
    search.cmdOk.UserClicks();
    EXPECT_TRUE(search.shown());
    search.sdgGrid.UserSelects({0});
    UserSearches(search, "acme");
    ServerFinds({kLee, kAcme});  // a new list has nothing selected
    EXPECT_FALSE(search.cmdOk.enabled());
  });
}

TEST_F(CustomerSearch, TakesTheOnlyCustomerThatItsTextHasFoundWithEnter) {
  UserOpensSearch([&](frmCustSearch& search) {
    search.txtFind.SetText("acme");
    search.UserEntersText();
    ServerFinds({kAcme});
    search.txtFind.SetText("lee");
    search.UserEntersText();
    EXPECT_EQ(fakes_.server.requests.size(), 2u) << "another text is searched for";
    ServerFinds({kLee, kAcme});
    search.UserEntersText();
    EXPECT_EQ(fakes_.server.requests.size(), 3u) << "nobody is the only one";
    ServerFinds({kLee});
    search.UserEntersText();
    EXPECT_FALSE(search.shown());
  });
  EXPECT_EQ(customer_.CustomerId, "4712");
}

TEST_F(CustomerSearch, WaitsForTheReplyBeforeItSearchesAgain) {
  UserOpensSearch([&](frmCustSearch& search) {
    UserSearches(search, "a");
    UserSearches(search, "ab");
    EXPECT_EQ(search.status.caption(), "Searching customers.");
    EXPECT_EQ(fakes_.server.requests.size(), 1u);
    fakes_.server.ReplyForApplication("ZEMLO_Corresp");
    fakes_.RunEvents();
    EXPECT_FALSE(search.cmdFind.enabled());
    ServerFinds({});
    UserSearches(search, "ab");
    EXPECT_EQ(fakes_.server.requests.size(), 2u);
  });
}

TEST_F(CustomerSearch, ShowsTheServersErrorAndMaySearchAgain) {
  UserOpensSearch([&](frmCustSearch& search) {
    UserSearches(search, "a");
    fakes_.server.ReplyWithError("The server is closed on Sundays.");
    fakes_.RunEvents();
    EXPECT_EQ(search.status.caption(), "Search was not successful");
    EXPECT_TRUE(search.cmdFind.enabled());
    EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
    UserSearches(search, "a");
    fakes_.server.TimesOut();
    fakes_.RunEvents();
    EXPECT_EQ(search.status.caption(), "Search timed out");
  });
  EXPECT_THAT(fakes_.host.MessageTexts(),
              ElementsAre("The server is closed on Sundays.", "The server did not answer."));
  EXPECT_EQ(fakes_.host.messages[0].icon, platform::MessageIcon::kCritical);
  EXPECT_EQ(fakes_.host.messages[0].title, "Letters");
}

TEST_F(CustomerSearch, MayBeTriedAgainWhenTheRequestCannotBeSent) {
  fakes_.server.on_send = [](const fakes::SentRequest&) {
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "The server is gone.");
  };
  UserOpensSearch([&](frmCustSearch& search) {
    UserSearches(search, "a");
    EXPECT_TRUE(search.cmdFind.enabled());
  });
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("frmCustSearch.cmdFind_Click"));
}

TEST_F(CustomerSearch, GivesTheCommandsBackWhenItCannotBeShown) {
  fakes_.host.user_in_form = [](platform::Form&) {
    throw platform::Failure(platform::Failure::Kind::kNotFound, "There is no such window.");
  };
  selection_.Select("Select Account", workspace::PageIndex::kCorrespondence, panel_);
  EXPECT_TRUE(panel_.select_customer.enabled());
  EXPECT_TRUE(panel_.select_account.enabled());
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Correspondence.SelectCustomer"));
}

}  // namespace
}  // namespace customers
