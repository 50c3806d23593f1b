#include "customers/select_cust_form_inq.h"

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"

namespace customers {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const fakes::Row kNotice = {
    {"FORM_NBR", "1234"},  {"FORM_CK_DGT_NBR", "5"},     {"STP_DT", "2024-03-01"},
    {"CTTN_STTS_CD", "O"}, {"ASSMT_DUE_AMT", "1045.50"}, {"ORIG_ASSMT_AMT", "2000.00"},
    {"FORM_TYP_CD", "C"},  {"BAL_DUE", "12045.50"},      {"LST_PYMT_DT", "2024-02-29"}};
const fakes::Row kOlder = {{"FORM_NBR", "3100004"}, {"FORM_CK_DGT_NBR", "X"}, {"STP_DT", "2023-01-01"}};

class SelectCustFormInq : public testing::Test {
 protected:
  SelectCustFormInq() {
    fakes_.reference.AnswersWhatContains(
        "CORDOC", fakes::RowsOf("", {{{"CD_TBL_CD", ""}, {"CD_TBL_DES", ""}},
                                     {{"CD_TBL_CD", "C"}, {"CD_TBL_DES", "Notice"}},
                                     {{"CD_TBL_CD", "W"}, {"CD_TBL_DES", "Warrant"}}}));
    fakes_.utilities.descriptions = {{{"CSTATUS", "O"}, "Open "}};
  }
  /// As its caller opens it.
  void GivenItIsOpenFor(const std::string& account_type = "C") {
    form_.Load();
    form_.skip_next_type_change = true;
    form_.mKvcboDocType.Code(account_type);
    form_.Activate();
  }
  void UserTypesType(const std::string& text) {
    form_.mKvcboDocType.UserEditsText(text);
    form_.mKvcboDocType.UserLeaves();
  }
  void UserChoosesCustomer(const std::string& id, const std::string& name) {
    form_.ZEMLO_CustSelect1.txtFind.SetText(id);
    form_.ZEMLO_CustSelect1.UserPressesEnter();
    fakes_.server.ReplyWith("CUSTOMER", {{{"Cust_Id", id}, {"CUST_BSNS_NM", name}}});
    fakes_.RunEvents();
  }
  void ServerFindsForms(const std::vector<fakes::Row>& forms) {
    fakes_.server.ReplyWith("CUSTOMERFORM", forms);
    fakes_.RunEvents();
  }
  std::vector<std::string> ShownRow(std::size_t row) {
    form_.mSdgGrid.EnsureRowLoaded(row);
    std::vector<std::string> cells;
    for (const auto& column : form_.mSdgGrid.columns)
      if (!column.hidden) cells.push_back(column.Heading() + "=" + form_.mSdgGrid.CellText(row, column));
    return cells;
  }
  platform::Command& Ok() { return form_.mCmdButton[ZEMLO_SelectCustFormInq::kOk]; }
  platform::Command& Cancel() { return form_.mCmdButton[ZEMLO_SelectCustFormInq::kCancel]; }

  fakes::FakeServices fakes_;
  const std::string message_title_ = "Letters";
  ZEMLO_SelectCustFormInq form_{fakes_.services(), message_title_, {}};
};

TEST_F(SelectCustFormInq, AsksForTheChosenCustomersFormsOfTheType) {
  GivenItIsOpenFor();
  EXPECT_THAT(fakes_.server.requests, IsEmpty()) << "the set-up's type change asks for nothing";
  EXPECT_FALSE(form_.skip_next_type_change);
  EXPECT_FALSE(form_.ZEMLO_CustSelect1.AlertsOn);
  EXPECT_THAT(fakes_.utilities.registered_forms, ElementsAre(&form_));

  UserChoosesCustomer("4711", "A & B");
  const auto& request = fakes_.server.LastRequest();
  EXPECT_EQ(request.application, "ZEMLO_Corresp.CustFormInq");
  EXPECT_EQ(request.version, "1.0");
  EXPECT_EQ(request.type, 50);
  EXPECT_EQ(request.user_id, "OFFICER1");
  EXPECT_THAT(request.Keys(), ElementsAre("KORVADSK|key:CUST_ID|=|4711", "KORVADSK|key:REF_TYP_CD|=|C"));
  EXPECT_EQ(form_.status_bar.caption(), "Requesting Notice for A && B");
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kHourglass);

  ServerFindsForms({kNotice});
  EXPECT_EQ(form_.status_bar.caption(), "Displaying Notices for A && B");
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
  EXPECT_EQ(fakes_.server.error_askers.back(), "SelectCustFormInq.mVemtMessage_DataReady");

  form_.mKvcboDocType.UserPicks(2);
  EXPECT_THAT(fakes_.server.LastRequest().Keys(),
              ElementsAre("KORVADSK|key:CUST_ID|=|4711", "KORVADSK|key:REF_TYP_CD|=|W"));
  EXPECT_EQ(form_.mSdgGrid.rows()->RecordCount(), 0u) << "the previous list is gone";
}

TEST_F(SelectCustFormInq, ListsTheFormsByTheirStopDate) {
  GivenItIsOpenFor();
  UserChoosesCustomer("4711", "ACME");
  ServerFindsForms({kNotice, kOlder});
  EXPECT_THAT(ShownRow(0),
              ElementsAre("Account #=3100004-X", "Stop Date=2023-01-01", "Status=", "Assessment=",
                          "Original Assessment=", "Amount Due=", "Last Payment Date="));
  EXPECT_THAT(ShownRow(1), ElementsAre("Account #=0001234-5", "Stop Date=2024-03-01", "Status=Open ",
                                       "Assessment=$1,045.50", "Original Assessment=2000.00",
                                       "Amount Due=$12,045.50", "Last Payment Date=2024-02-29"));
}

TEST_F(SelectCustFormInq, HandsOutTheOneFormThatIsSelected) {
  GivenItIsOpenFor();
  UserChoosesCustomer("4711", "ACME");
  ServerFindsForms({kNotice, kOlder});
  EXPECT_FALSE(Ok().enabled());
  form_.mSdgGrid.UserSelects({0, 1});
  EXPECT_FALSE(Ok().enabled());
  form_.mSdgGrid.UserSelects({1});
  Ok().UserClicks();

  EXPECT_FALSE(form_.shown());
  EXPECT_FALSE(form_.cancelled);
  EXPECT_EQ(form_.DocumentNumber(), "0001234-5");
  EXPECT_EQ(form_.DueAmount(), platform::Money::FromCents(12'045'50));
  EXPECT_EQ(form_.LastPaymentDate(), platform::ParseDate("2024-02-29"));
  EXPECT_EQ(form_.Status(), "Open");
  EXPECT_EQ(form_.StopDate(), platform::ParseDate("2024-03-01"));

  form_.mSdgGrid.UserSelects({0});
  Ok().UserClicks();
  EXPECT_EQ(form_.DocumentNumber(), "3100004-X");
  EXPECT_EQ(form_.DueAmount(), platform::Money::FromCents(12'045'50)) << "an empty value leaves it";
}

TEST_F(SelectCustFormInq, RefusesToGoOnWithoutAnAccountType) {
  GivenItIsOpenFor("");
  UserChoosesCustomer("4711", "ACME");
  EXPECT_THAT(fakes_.host.MessageTexts(), ElementsAre("Errors Found ... \r\nAccount Type is required\r\n"));
  EXPECT_EQ(fakes_.host.messages[0].icon, platform::MessageIcon::kCritical);
  EXPECT_EQ(fakes_.host.messages[0].title, "Letters");
  EXPECT_TRUE(form_.mKvcboDocType.marked_invalid());
  EXPECT_EQ(fakes_.server.requests.size(), 1u) << "the search's own";

  form_.mKvcboDocType.UserPicks(1);  // nothing that the opener has set up
  EXPECT_FALSE(form_.mKvcboDocType.marked_invalid());
  ServerFindsForms({kNotice});
  form_.mSdgGrid.UserSelects({0});
  UserTypesType("Xyz");  // no type either
  Ok().UserClicks();
  EXPECT_TRUE(form_.shown());
  EXPECT_EQ(fakes_.host.messages.size(), 2u);

  UserChoosesCustomer("4712", "LEE");
  EXPECT_EQ(fakes_.host.messages.size(), 3u);
  EXPECT_TRUE(form_.mSdgGrid.rows()->IsEmpty()) << "they are another customer's";
  EXPECT_FALSE(Ok().enabled());
  const auto sent = fakes_.server.requests.size();
  UserTypesType("Warr");
  EXPECT_EQ(fakes_.server.requests.size(), sent + 1);
}

TEST_F(SelectCustFormInq, HandsOutTheTypeOfTheListWhateverHasBeenTypedSince) {
  GivenItIsOpenFor();
  UserChoosesCustomer("4711", "ACME");
  ServerFindsForms({kNotice});
  form_.mSdgGrid.UserSelects({0});
  form_.mKvcboDocType.UserEditsText("Warrant");
  Ok().UserClicks();
  EXPECT_EQ(form_.FormType() + " " + form_.DocumentNumber(), "C 0001234-5");
}

TEST_F(SelectCustFormInq, TakesAnAccountWithoutTheValuesThatCannotBeRead) {
  GivenItIsOpenFor();
  UserChoosesCustomer("4711", "ACME");
  ServerFindsForms({{{"FORM_NBR", "1234"},
                     {"FORM_CK_DGT_NBR", "5"},
                     {"STP_DT", "2024-13-01"},
                     {"BAL_DUE", "1,5"},
                     {"LST_PYMT_DT", "2024-02-29 10.15.00"}},
                    {{"FORM_CK_DGT_NBR", "5"}, {"STP_DT", "2025-01-01"}}});
  EXPECT_EQ(ShownRow(1).front(), "Account #=") << "a check digit of nothing";
  form_.mSdgGrid.UserSelects({0});
  Ok().UserClicks();
  EXPECT_EQ(form_.DocumentNumber(), "0001234-5");
  EXPECT_EQ(form_.DueAmount(), std::nullopt);
  EXPECT_EQ(form_.LastPaymentDate(), platform::ParseDate("2024-02-29"));
  EXPECT_EQ(fakes_.errors.reports.size(), 2u);
  EXPECT_FALSE(form_.shown());
}

TEST_F(SelectCustFormInq, IgnoresTheTypeChangeOfItsOpenerOnceOnly) {
  GivenItIsOpenFor();
  UserChoosesCustomer("4711", "ACME");
  const auto sent = fakes_.server.requests.size();
  form_.skip_next_type_change = true;
  form_.mKvcboDocType.UserPicks(2);
  EXPECT_EQ(fakes_.server.requests.size(), sent);
  form_.mKvcboDocType.UserPicks(1);
  EXPECT_EQ(fakes_.server.requests.size(), sent + 1);
}

TEST_F(SelectCustFormInq, SaysWhatCameOfTheInquiry) {
  GivenItIsOpenFor();
  UserChoosesCustomer("4711", "ACME");
  fakes_.server.ReplyWithNothing();
  fakes_.RunEvents();
  EXPECT_EQ(form_.status_bar.caption(), "No Notices returned for ACME");
  form_.mKvcboDocType.UserPicks(1);
  fakes_.host.user_at_message = [&](const platform::Message&) {
    EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
  };
  fakes_.server.ReplyWithError("The server is closed on Sundays.");
  fakes_.RunEvents();
  EXPECT_EQ(form_.status_bar.caption(), "Search was not successful");
  EXPECT_TRUE(form_.ZEMLO_CustSelect1.UserPressesEnter()) << "the same customer may be chosen again";
  fakes_.server.TimesOut();
  fakes_.RunEvents();
  EXPECT_EQ(form_.status_bar.caption(), "Search timed out");
  EXPECT_THAT(fakes_.host.MessageTexts(),
              ElementsAre("The server is closed on Sundays.", "The server did not answer."));
  fakes_.server.on_send = [](const fakes::SentRequest&) {
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "The server is gone.");
  };
  form_.mKvcboDocType.UserPicks(1);
  EXPECT_EQ(form_.status_bar.caption(), "Search was not successful");
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
}

TEST_F(SelectCustFormInq, ShowsTheLastInquirysReplyOnly) {
  GivenItIsOpenFor();
  UserChoosesCustomer("4711", "ACME");
  const auto first = fakes_.server.LastRequest().message_key;
  form_.mKvcboDocType.UserPicks(2);
  fakes_.server.Reply(fakes::ScriptedReply::With("CUSTOMERFORM", {kNotice}), first);
  fakes_.server.ReplyForApplication("ZEMLO_Corresp");
  fakes_.RunEvents();
  EXPECT_TRUE(form_.mSdgGrid.rows()->IsEmpty());
  EXPECT_EQ(form_.status_bar.caption(), "Requesting Warrant for ACME");
  ServerFindsForms({kOlder});
  EXPECT_EQ(form_.mSdgGrid.rows()->RecordCount(), 1u);
}

TEST_F(SelectCustFormInq, IsCancelledByItsCommandAndByItsCloseBox) {
  GivenItIsOpenFor();
  UserChoosesCustomer("4711", "ACME");
  Cancel().UserClicks();
  EXPECT_TRUE(form_.cancelled);
  EXPECT_FALSE(form_.shown());
  EXPECT_EQ(form_.DocumentNumber(), "");
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal) << "the reply would come to nobody";

  form_.cancelled = false;
  form_.Activate();
  form_.mKvcboDocType.UserPicks(2);
  EXPECT_TRUE(form_.Close());
  EXPECT_TRUE(form_.cancelled);
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
}

}  // namespace
}  // namespace customers
