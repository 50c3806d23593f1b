#include "customers/customer_inquiry.h"

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"

namespace customers {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CustomerInquiryTest : public testing::Test {
 protected:
  /// The panel and the members show a customer from before.
  void GivenCustomerIsShown() {
    customer_ = {.CustomerId = "1",
                 .CustomerName = "OLD",
                 .CustomerAddr1 = "OLD ST",
                 .CustomerAddr2 = "OLD APT",
                 .CustomerCityLine = "OLD CITY",
                 .CustomerPhone = "OLD PHONE",
                 .CustomerFuelTaxAcct = "OLD ACCOUNT"};
    panel_.name.SetCaption("OLD");
    panel_.address.SetCaption("OLD ST");
    panel_.city_line.SetCaption("OLD CITY");
    panel_.phone.SetCaption("OLD PHONE");
    panel_.fuel_tax_account.SetCaption("OLD ACCOUNT");
    panel_.customer_id.SetCaption("1");
  }
  void ServerRepliesWithCustomer(fakes::Row row) {
    row.emplace_back("Cust_Id", "4711");
    ServerReplies({fakes::ScriptedReply::With("CUSTOMER", {std::move(row)})});
  }
  void ServerReplies(fakes::ScriptedReply reply) {
    inquiry_.SendCustPI("4711");
    fakes_.server.Reply(std::move(reply));
    inquiry_.FillCustomerInfo(TakeReply());
  }
  void ServerRepliesWithLetter(fakes::ScriptedReply reply) {
    envelope_.Send({.type = 83, .name = "CustomerFromLetter"});
    fakes_.server.Reply(std::move(reply));
    inquiry_.FillCustFromLetter(TakeReply());
  }
  workspace::Reply TakeReply() {
    fakes_.RunEvents();
    return pending_.TakeReply(fakes_.server).value();
  }
  void ServerRepliesWithContext(const std::string& context) {
    ServerRepliesWithLetter(fakes::ScriptedReply::With("XML_CONTEXT", {{{"XML_CONTEXT", context}}}));
  }
  /// Name, address, city line, phone, account, id.
  std::vector<std::string> Shown() const {
    return {panel_.name.caption(),  panel_.address.caption(),          panel_.city_line.caption(),
            panel_.phone.caption(), panel_.fuel_tax_account.caption(), panel_.customer_id.caption()};
  }
  bool HasAskedServer() const { return pending_.name() == "CustomerInq"; }

  fakes::FakeServices fakes_;
  workspace::PendingRequest pending_;
  CurrentCustomer customer_;
  CustomerPanel panel_;
  std::unique_ptr<platform::ReplyListener> listener_ = fakes_.server.NewListener();
  workspace::RequestEnvelope envelope_{fakes_.services(), pending_, *listener_};
  CustomerInquiry inquiry_{{fakes_.services(), envelope_, customer_, panel_}};
};

TEST_F(CustomerInquiryTest, AsksForTheCustomerWithoutTheBalance) {
  pending_.TimedOut();
  inquiry_.SendCustPI("4711");
  const auto& request = fakes_.server.LastRequest();
  EXPECT_EQ(request.application, "ZEMLO_Corresp");
  EXPECT_EQ(request.version, "1.0");
  EXPECT_EQ(request.type, 7);
  EXPECT_EQ(request.user_id, "OFFICER1");
  EXPECT_THAT(request.Keys(), ElementsAre("KORVADSK|key:CUST_ID|=|4711", "CUSTOMER|key:ExclCols|=|OT_BAL"));
  EXPECT_THAT(request.records, IsEmpty());
  EXPECT_EQ(pending_.name(), "CustomerInq");
  EXPECT_EQ(pending_.message_key(), request.message_key);
  EXPECT_EQ(fakes_.status.LastText(), "Requesting customer information.");
  EXPECT_FALSE(pending_.timed_out());
}

TEST_F(CustomerInquiryTest, ShowsTheCustomerAsThePageWritesIt) {
  GivenCustomerIsShown();
  ServerRepliesWithCustomer({{"CUST_BSNS_NM", "ACME"},
                             {"mail_addr_1", " 1 MAIN ST "},
                             {"mail_addr_2", " SUITE 4 "},
                             {"mail_city", " TULSA "},
                             {"mail_st", "OK "},
                             {"mail_zip_cd", " 741031234 "},
                             {"PHN_NBR", " 4055212485 "},
                             {"ACCNT_NBR", " 1234567890123 "}});
  EXPECT_THAT(Shown(), ElementsAre("ACME", "1 MAIN ST, SUITE 4", "TULSA, OK 74103-1234", "(405) 521-2485",
                                   "12-345678901-23", "4711"));
  EXPECT_EQ(customer_.CustomerId, "4711");
  EXPECT_EQ(customer_.CustomerAddr2, "SUITE 4");
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(CustomerInquiryTest, ShowsWhichAddressMailCameBackFrom) {
  ServerRepliesWithCustomer({{"MAIL_RTND_IND", "Y"}, {"RES_RTND_IND", "N"}});
  EXPECT_EQ(panel_.returned_mail.caption(), "Mail came back from the mailing address.");
  panel_.AddReturnedMail({.residential = true});
  EXPECT_EQ(panel_.returned_mail.caption(), "Mail came back from both addresses.");
  ServerRepliesWithCustomer({});
  EXPECT_EQ(panel_.returned_mail.caption(), "");

  // A stored letter's data are as old as the letter: the marks come beside them.
  const auto letter = fakes::ScriptedReply::With(
      "XML_CONTEXT", {{{"XML_CONTEXT", "<X><CUSTOMER_ADDR>1 MAIN ST</CUSTOMER_ADDR></X>"}}});
  ServerRepliesWithLetter(fakes::ScriptedReply(letter).And("CUSTOMER", {{{"RES_RTND_IND", "Y"}}}));
  EXPECT_EQ(panel_.returned_mail.caption(), "Mail came back from the residential address.");
  panel_.ClearFields();
  EXPECT_EQ(panel_.returned_mail.caption(), "");
}

TEST_F(CustomerInquiryTest, PutsTheNameTogether) {
  struct Case {
    fakes::Row row;
    const char* name;
  };
  const Case cases[] = {
      {{{"CUST_BSNS_NM", "A & B && C"}}, "A && B &&&& C"},
      {{{"CUST_BSNS_NM", " ACME "}, {"FIRST_NM", "ANN"}, {"LAST_NM", "LEE"}}, " ACME "},
      {{{"FIRST_NM", "ANN"}, {"LAST_NM", "LEE"}}, "ANN LEE"},
      {{{"FIRST_NM", " ANN "}, {"LAST_NM", "L&E"}}, " ANN  L&&E"},
      {{{"CUST_BSNS_NM", ""}, {"FIRST_NM", "ANN"}, {"LAST_NM", "LEE"}}, "ANN LEE"},
      {{{"CUST_BSNS_NM", "   "}, {"FIRST_NM", "ANN"}}, "   "},
      {{{"FIRST_NM", "ANN"}}, ""},
      {{}, ""},
  };
  for (const auto& [row, name] : cases) {
    GivenCustomerIsShown();
    ServerRepliesWithCustomer(row);
    EXPECT_EQ(panel_.name.caption(), name);
    EXPECT_EQ(customer_.CustomerName, name);
  }
}

TEST_F(CustomerInquiryTest, FallsBackToTheResidentialAddressPartByPart) {
  struct Case {
    const char* what;
    fakes::Row row;
    const char* address;
    const char* city_line;
  };
  const fakes::Row mail_city = {{"mail_city", "TULSA"}, {"mail_st", "OK"}, {"mail_zip_cd", "74103"}};
  const auto with_mail_city = [&](fakes::Row row) {
    row.insert(row.end(), mail_city.begin(), mail_city.end());
    return row;
  };
  const Case cases[] = {
      {"a second mailing line survives",
       {{"mail_addr_2", "SUITE 4"}, {"RES_ADDR_1", "12 MAIN ST"}},
       "12 MAIN ST, SUITE 4",
       ""},
      {"a second residential line replaces it",
       {{"mail_addr_2", "SUITE 4"}, {"RES_ADDR_1", "12 MAIN ST"}, {"RES_ADDR_2", "APT 9"}},
       "12 MAIN ST, APT 9",
       ""},
      {"a blank first mailing line counts as missing",
       with_mail_city({{"mail_addr_1", "  "},
                       {"RES_ADDR_1", "12 MAIN ST"},
                       {"RES_CITY", "ENID"},
                       {"RES_ST", "OK"},
                       {"RES_ZIP_CD", "737011234"}}),
       "12 MAIN ST", "ENID, OK 73701-1234"},
      {"the mailing city stays without a whole residential one",
       with_mail_city({{"RES_ADDR_1", "12 MAIN ST"}, {"RES_CITY", "ENID"}, {"RES_ST", "OK"}}), "12 MAIN ST",
       "TULSA, OK 74103"},
      {"the residential address waits for a missing mailing line",
       with_mail_city({{"mail_addr_1", "1 ELM"},
                       {"RES_ADDR_1", "12 MAIN ST"},
                       {"RES_CITY", "ENID"},
                       {"RES_ST", "OK"},
                       {"RES_ZIP_CD", "73701"}}),
       "1 ELM", "TULSA, OK 74103"},
      {"second lines only", {{"mail_addr_2", "SUITE 4"}}, ", SUITE 4", ""},
      {"a city without its state", {{"mail_addr_1", "1 ELM"}, {"mail_city", "TULSA"}}, "1 ELM", ""},
      {"an address that is there but empty",
       {{"mail_addr_1", "1 ELM"}, {"mail_city", ""}, {"mail_st", ""}, {"mail_zip_cd", ""}},
       "1 ELM",
       ",  "},
      {"nothing at all", {}, "", ""},
  };
  for (const auto& [what, row, address, city_line] : cases) {
    GivenCustomerIsShown();
    ServerRepliesWithCustomer(row);
    EXPECT_EQ(panel_.address.caption(), address) << what;
    EXPECT_EQ(customer_.CustomerAddr1, address) << what;
    EXPECT_EQ(panel_.city_line.caption(), city_line) << what;
  }
}

TEST_F(CustomerInquiryTest, EmptiesThePanelWithoutARecord) {
  const std::vector<fakes::ScriptedReply> replies = {{}, fakes::ScriptedReply::With("CUSTOMER", {})};
  for (const auto& reply : replies) {
    GivenCustomerIsShown();
    ServerReplies(reply);
    EXPECT_THAT(Shown(), ElementsAre("", "", "", "", "", ""));
    EXPECT_EQ(customer_.CustomerId, "");
    EXPECT_EQ(customer_.CustomerFuelTaxAcct, "");
  }
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(CustomerInquiryTest, ReportsACustomerThatCannotBeRead) {
  ServerReplies(fakes::ScriptedReply{
      {{"CUSTOMER", std::make_shared<platform::RecordSet>(std::vector<std::string>{"NAME"})}}, "", false});
  EXPECT_THAT(fakes_.errors.Procedures(), IsEmpty());  // no row, no customer
  const auto strange = fakes::RowsOf("", {{{"NAME", "ACME"}}});
  ServerReplies(fakes::ScriptedReply{{{"CUSTOMER", strange}}, "", false});
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.FillCustomerInfo"));
}

TEST_F(CustomerInquiryTest, ShowsTheCustomerOfALetter) {
  GivenCustomerIsShown();
  ServerRepliesWithContext(
      "<XML_CONTEXT><CUST_ID>4711</CUST_ID><CUSTOMER_NAME>B &amp; S</CUSTOMER_NAME>"
      "<CUSTOMER_ADDR>1 MAIN ST\nSUITE 4\nTULSA, OK 74103</CUSTOMER_ADDR>"
      "<CUSTOMER_NAME>SECOND</CUSTOMER_NAME></XML_CONTEXT>");
  EXPECT_THAT(Shown(), ElementsAre("B & S", "1 MAIN ST\nSUITE 4", "TULSA, OK 74103", "OLD PHONE",
                                   "OLD ACCOUNT", "4711"));
  EXPECT_EQ(customer_.CustomerId, "4711");
  EXPECT_EQ(customer_.CustomerAddr1, "1 MAIN ST\nSUITE 4");
  EXPECT_EQ(customer_.CustomerCityLine, "TULSA, OK 74103");
  EXPECT_FALSE(HasAskedServer());
}

TEST_F(CustomerInquiryTest, SplitsTheAddressOfALetterAtItsLastLineFeed) {
  struct Case {
    const char* value;
    const char* address;
    const char* city_line;
  };
  const Case cases[] = {{"1 MAIN ST", "1 MAIN ST", "OLD CITY"},
                        {"", "", "OLD CITY"},
                        {"1 MAIN ST&#10;", "1 MAIN ST", ""},
                        {"&#10;TULSA", "", "TULSA"},
                        {"1 MAIN ST&#13;&#10;TULSA", "1 MAIN ST\r", "TULSA"}};
  for (const auto& [value, address, city_line] : cases) {
    GivenCustomerIsShown();
    ServerRepliesWithContext("<X><CUSTOMER_ADDR>" + std::string(value) + "</CUSTOMER_ADDR></X>");
    EXPECT_EQ(panel_.address.caption(), address) << value;
    EXPECT_EQ(panel_.city_line.caption(), city_line) << value;
    EXPECT_EQ(panel_.name.caption(), "OLD") << value;
    EXPECT_EQ(panel_.customer_id.caption(), "1") << value;
  }
}

TEST_F(CustomerInquiryTest, AsksTheServerWhereTheLetterHasNoAddress) {
  GivenCustomerIsShown();
  ServerRepliesWithContext("<X><CUST_ID>4711</CUST_ID><CUSTOMER_NAME>ACME</CUSTOMER_NAME></X>");
  EXPECT_THAT(Shown(), ElementsAre("", "", "", "OLD PHONE", "OLD ACCOUNT", "4711"));
  EXPECT_EQ(customer_.CustomerName, "ACME");
  EXPECT_TRUE(HasAskedServer());
  EXPECT_EQ(fakes_.server.LastRequest().keys.at(0).Value, "4711");

  fakes_.server.ReplyWith("CUSTOMER", {{{"Cust_Id", "4711"}, {"CUST_BSNS_NM", "ACME"}}});
  inquiry_.FillCustomerInfo(TakeReply());
  EXPECT_THAT(Shown(), ElementsAre("ACME", "", "", "", "", "4711"));
}

TEST_F(CustomerInquiryTest, AsksTheServerWhereTheLetterCannotBeRead) {
  struct Case {
    fakes::ScriptedReply reply;
    std::vector<std::string> reported;
  };
  const Case cases[] = {
      {{}, {}},
      {fakes::ScriptedReply::With("XML_CONTEXT", {}), {}},
      {fakes::ScriptedReply::With("XML_CONTEXT", {{{"XML_CONTEXT", "<X><CUST_ID>9</CUST_ID>"}}}),
       {"ZEMLO_Corresp.FillCustFromLetter"}},
  };
  for (const auto& [reply, reported] : cases) {
    GivenCustomerIsShown();
    fakes_.errors.reports.clear();
    ServerRepliesWithLetter(reply);
    EXPECT_THAT(Shown(), ElementsAre("", "", "", "OLD PHONE", "OLD ACCOUNT", "1"));
    EXPECT_EQ(fakes_.server.LastRequest().keys.at(0).Value, "1");
    EXPECT_TRUE(HasAskedServer());
    EXPECT_EQ(fakes_.errors.Procedures(), reported);
  }
}

TEST_F(CustomerInquiryTest, ReportsARequestThatCannotBeSent) {
  fakes_.server.on_send = [](const fakes::SentRequest& request) {
    if (request.type == 7)
      throw platform::Failure(platform::Failure::Kind::kUnavailable, "The server is gone.");
  };
  ServerRepliesWithContext("<X/>");
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.SendCustPI"));
}

}  // namespace
}  // namespace customers
