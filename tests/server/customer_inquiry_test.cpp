#include "server/customers/customer_inquiry.h"

#include <optional>

#include "server/customers/customer_words.h"
#include "server/schema/schema.h"

#include "tests/server/server_world.h"

namespace {

using platform::Criterion;
using platform::RecordSet;
using testing::ElementsAre;
using testing::HasSubstr;
using tests::Question;
using tests::Record;

class CustomerInquiry : public tests::ServerTest {
 protected:
  /// As the panel asks.
  static Question Asking(const std::string& customer) {
    return {.type = 7,
            .key_items = {Criterion("key:CUST_ID", customer), {"CUSTOMER", "key:ExclCols", "=", "OT_BAL"}}};
  }
  static Question Searching(const std::string& text) {
    return {.type = 7, .key_items = {Criterion("key:CUST_FIND", text, "like")}};
  }
  std::shared_ptr<RecordSet> Customer(const std::string& id) {
    const auto reply = Ask(Asking(id));
    EXPECT_EQ(reply.error, "");
    return reply.records.at(0).rows;
  }
  static Question SearchingRows(const std::string& text, const std::string& first, const std::string& last) {
    auto question = Searching(text);
    question.keys = {{"key:START", first}, {"key:END", last}};
    return question;
  }
  std::vector<std::string> Found(const std::string& text) { return FoundBy(Searching(text)); }
  std::vector<std::string> FoundBy(const Question& question) {
    const auto reply = Ask(question);
    EXPECT_EQ(reply.error, "");
    std::vector<std::string> ids;
    const auto* customers = Record(reply, "CUSTOMER");
    for (std::size_t row = 0; row < customers->RecordCount(); ++row) {
      ids.push_back(customers->Text(row, "Cust_Id"));
    }
    return ids;
  }
  std::string HasMore(const std::string& text) {
    return Record(Ask(Searching(text)), "CUSTOMER_SEARCH")->Text("MORE");
  }
  /// Copies of one customer under ids that begin with a letter.
  void GivenCopies(char first_letter, int count) {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    for (int copy = 0; copy < count; ++copy) {
      database.Change(
          "INSERT INTO customer (CUST_ID, CUST_BSNS_NM, FIRST_NM, LAST_NM, MAIL_ADDR_1, MAIL_ADDR_2, "
          "MAIL_CITY,"
          " MAIL_ST, MAIL_ZIP_CD, MAIL_BAD_FLG, MAIL_VRFY_CD, RES_ADDR_1, RES_ADDR_2, RES_CITY, RES_ST,"
          " RES_ZIP_CD, RES_BAD_FLG, RES_VRFY_CD, PHN_NBR, ACCNT_NBR, OT_BAL, QZ_CNTY_NBR)"
          " SELECT ?, CUST_BSNS_NM, FIRST_NM, LAST_NM, MAIL_ADDR_1, MAIL_ADDR_2,"
          " MAIL_CITY, MAIL_ST, MAIL_ZIP_CD, MAIL_BAD_FLG, MAIL_VRFY_CD, RES_ADDR_1, RES_ADDR_2, RES_CITY,"
          " RES_ST, RES_ZIP_CD, RES_BAD_FLG, RES_VRFY_CD, PHN_NBR, ACCNT_NBR, OT_BAL, QZ_CNTY_NBR"
          " FROM customer WHERE CUST_ID = '100001'",
          {first_letter + std::to_string(copy)});
    }
  }
};

TEST_F(CustomerInquiry, ListsCustomersInTheOrderAskedForWithoutThoseThatAreGone) {
  const auto reply = Ask({.type = 7, .key_items = {Criterion("key:CUST_IDS", "100003, 4,100001")}});
  const auto* customers = Record(reply, "CUSTOMER");
  ASSERT_EQ(customers->RecordCount(), 2u);
  EXPECT_EQ(customers->Text(0, "Cust_Id"), "100003");
  EXPECT_EQ(customers->Text(1, "Cust_Id"), "100001");
  EXPECT_FALSE(customers->HasColumn("OT_BAL"));

  std::string many = "1";
  for (int id = 0; id < 100; ++id) many += ",1";
  EXPECT_THAT(Ask({.type = 7, .key_items = {Criterion("key:CUST_IDS", many)}}).error, HasSubstr("100"));
}

TEST_F(CustomerInquiry, BringsWhatIsStoredAndLeavesNullsNull) {
  using Stored = std::optional<std::string>;
  struct Case {
    const char* customer;
    const char* column;
    Stored stored;
  };
  const Case cases[] = {
      {"100001", "mail_zip_cd", "883120431"},
      {"100002", "CUST_BSNS_NM", Stored()},
      {"100003", "CUST_BSNS_NM", "Barlow & Sons <Haulage> Co."},
      {"100003", "RES_ADDR_1", Stored()},
      {"100004", "mail_addr_1", "15 Rue des Érables"},
      {"100006", "mail_city", Stored()},
      {"100007", "mail_addr_2", "Suite 4"},
      {"100010", "PHN_NBR", "+44 20 7946 0958"},
      {"100018", "PHN_NBR", Stored()},
      {"100019", "mail_zip_cd", "01234"},
  };
  for (const auto& [customer, column, stored] : cases) {
    const auto value = Customer(customer)->Get(column);
    EXPECT_EQ(value, stored ? platform::Value(*stored) : platform::Value::Null())
        << customer << " " << column;
  }
}

TEST_F(CustomerInquiry, LeavesOutTheColumnsItIsAskedToLeaveOut) {
  EXPECT_FALSE(Customer("100001")->HasColumn("OT_BAL"));

  const auto whole = Ask({.type = 7, .keys = {{"key:CUST_ID", "100001"}}});
  const auto& balance = Record(whole, "CUSTOMER")->Get("OT_BAL").held();
  ASSERT_TRUE(std::holds_alternative<platform::Money>(balance));
  EXPECT_GT(std::get<platform::Money>(balance).cents(), 0);

  const auto without_two =
      Ask({.type = 7, .keys = {{"key:CUST_ID", "100001"}, {"key:ExclCols", "ot_bal, PHN_NBR"}}});
  EXPECT_FALSE(Record(without_two, "CUSTOMER")->HasColumn("PHN_NBR"));
  EXPECT_FALSE(Record(without_two, "CUSTOMER")->HasColumn("OT_BAL"));
}

TEST_F(CustomerInquiry, BringsAllThatMaintainingTakes) {
  const auto whole = [&](const std::string& customer) {
    const auto reply = Ask({.type = 7,
                            .keys = {{"key:ELEMENT_NAME", "CUSTOMERS"},
                                     {"key:START", "1"},
                                     {"key:END", "20"},
                                     {"key:SINGLECUSTCRED", "NO"},
                                     {"key:CUST_ID", customer}}});
    EXPECT_EQ(reply.error, "");
    return reply.records.empty() ? nullptr : reply.records.front().rows;
  };
  const auto values = [&](const std::string& customer, std::initializer_list<const char*> columns) {
    std::string joined;
    for (const auto* column : columns) joined += whole(customer)->Text(column) + "|";
    return joined;
  };
  EXPECT_EQ(values("100001", {"CUST_TYP_CD", "CO_CNTCT_NM", "MAIL_CNTY_CD", "MAIL_COUNTY", "UPDT_NBR"}),
            "1|Marion Dale|13|Hartsfield|1|");
  EXPECT_EQ(values("100005", {"CUST_TYP_CD", "MID_NM", "SUFX_NM", "RES_COUNTY"}), "0|Ellis|Jr|Heronslake|");
  EXPECT_EQ(values("100013", {"MAIL_RTND_IND", "RES_RTND_IND", "DRVR_LIC_IND", "DRVR_LIC_NBR", "DLR_IND"}),
            "Y|N|Y|D44101372|N|");
  EXPECT_EQ(values("100020", {"CUST_TYP_CD"}), "0|") << "business and person";
  EXPECT_TRUE(whole("100019")->Get("MAIL_COUNTY").IsNull()) << "in another state";
  EXPECT_EQ(whole("7"), nullptr);
}

TEST_F(CustomerInquiry, BringsTheFormsOfOneType) {
  const auto forms = [&](const std::string& customer, const std::string& type) {
    return Ask({.type = 50, .keys = {{"key:CUST_ID", customer}, {"key:REF_TYP_CD", type}}});
  };
  const auto reply = forms("100001", "C");
  const auto* record = Record(reply, "CUSTOMERFORM");
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(record->RecordCount(), 1u);
  for (const auto& [column, text] : {std::pair{"FORM_NBR", "3100004"},
                                     {"FORM_CK_DGT_NBR", "9"},
                                     {"FORM_TYP_CD", "C"},
                                     {"CTTN_STTS_CD", "O"},
                                     {"FORM_NUMBER", ""},
                                     {"CTTN_STTS_TXT", ""}})
    EXPECT_EQ(record->Text(column), text) << column;
  EXPECT_TRUE(platform::ParseDate(record->Text("STP_DT")));
  const auto amount = [&](const char* column) {
    return std::get<platform::Money>(record->Get(column).held());
  };
  EXPECT_LT(amount("ORIG_ASSMT_AMT"), amount("ASSMT_DUE_AMT"));
  EXPECT_LT(amount("ASSMT_DUE_AMT"), amount("BAL_DUE"));

  EXPECT_EQ(Record(forms("100027", "C"), "CUSTOMERFORM")->Text("BAL_DUE"), "0.00")
      << "an assessment of nothing";
  EXPECT_EQ(Record(forms("100028", "C"), "CUSTOMERFORM")->Text("BAL_DUE"), "0.00") << "without tax periods";
  EXPECT_EQ(Record(forms("100001", "M"), "CUSTOMERFORM"), nullptr) << "none of that type";
  EXPECT_EQ(Record(forms("7", "C"), "CUSTOMERFORM"), nullptr);
}

TEST_F(CustomerInquiry, BringsNoRecordOfACustomerThatIsNotThere) {
  for (const auto* id : {"7", "", "100001' OR '1'='1"}) {
    const auto reply = Ask(Asking(id));
    EXPECT_EQ(reply.error, "") << id;
    EXPECT_EQ(Record(reply, "CUSTOMER"), nullptr) << id;
  }
}

TEST_F(CustomerInquiry, AnswersWrongInputWithAClearText) {
  struct Case {
    Question question;
    const char* error;
  };
  const Case cases[] = {
      {{.type = 7}, "cannot tell what this request of type 7 asks for"},
      {{.type = 7, .keys = {{"key:CUST_ID", "100001"}, {"key:ExclCols", "SHOE_SIZE"}}}, "\"SHOE_SIZE\""},
      {{.type = 7, .keys = {{"key:CUST_ID", "100001"}, {"key:ExclCols", "Cust_Id"}}}, "\"Cust_Id\""},
      {{.type = 7, .keys = {{"key:ELEMENT_NAME", "DEALERS"}, {"key:CUST_ID", "1"}}}, "\"DEALERS\""},
      {{.type = 7, .keys = {{"key:ELEMENT_NAME", "CUSTOMERS"}, {"key:START", "2"}}}, "only the first"},
      {{.type = 50, .keys = {{"key:CUST_ID", "100001"}}}, "without a REF_TYP_CD"},
      {{.type = 7, .keys = {{"key:CUST_FIND", "acme"}}}, "send \"like\""},
      {{.type = 7, .key_items = {Criterion("key:CUST_ID", "1000", "like")}}, "send \"=\""},
  };
  for (const auto& [question, error] : cases) EXPECT_THAT(Ask(question).error, HasSubstr(error));
}

TEST_F(CustomerInquiry, FindsByIdNameCityAndAccountWithoutRegardToCase) {
  EXPECT_THAT(Found("100004"), ElementsAre("100004"));
  EXPECT_THAT(Found("  o'MARCH  "), ElementsAre("100005"));
  EXPECT_THAT(Found("CAFÉ ÉLAN"), ElementsAre("100004"));
  EXPECT_THAT(Found("truck stop"), ElementsAre("100004", "100020"));
  EXPECT_THAT(Found("Kestrel"), ElementsAre("100006"));
  EXPECT_THAT(Found("62000100012010"), ElementsAre("100012"));
  for (const auto* nobody : {"nobody", "%", "_", "\\", "'; DROP TABLE customer; --"})
    EXPECT_THAT(Found(nobody), ElementsAre()) << nobody;
}

// "cafe elan" did not find Café Élan, nor did the account as every letter shows it, nor the last name first.
TEST_F(CustomerInquiry, FindsAsPeopleWrite) {
  const std::pair<const char*, const char*> cases[] = {
      {"cafe elan", "100004"},
      {"Cafe\xCC\x81  E\xCC\x81lan", "100004"},
      {"62-000100004-01", "100004"},
      {" 62 000100004 01 ", "100004"},
      {"6200010000401", "100004"},
      {"62000100004-01", "100004"},
      {"000100004-01", "100004"},
      {"62-00010000401", "100004"},
      {"62.000100004.01", "100004"},
      {"Merriweather, Hattie", "100002"},
      {"hattie MERRI", "100002"},
      {"O\u2019Marchbanks", "100005"},
      {"omarchbanks", "100005"},
      {"barlow and sons", "100003"},
      {"barlow & sons", "100003"},
      {"marchb", "100005"},
      {"10000401", ""},
      {"Elan, Wickton", "100004"},
  };
  for (const auto& [text, customer] : cases) {
    const auto expected = *customer == '\0' ? std::vector<std::string>() : std::vector<std::string>{customer};
    EXPECT_EQ(Found(text), expected) << text;
  }
}

TEST_F(CustomerInquiry, FindsWhomAnotherProgramPutIntoTheTablesOrChanged) {
  GivenCopies('A', 2);
  {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    database.Change("UPDATE customer SET LAST_NM = 'Zeno' WHERE CUST_ID = 'A1'");
    server::PrepareSchema(database);  // what every program does when it opens the data
    EXPECT_THAT(Found("zeno"), ElementsAre("A1"));
    EXPECT_THAT(Found("prairie"), ElementsAre("100001", "A0", "A1"));
    database.Change("UPDATE customer SET LAST_NM = 'Zorn' WHERE CUST_ID = 'A1'");
    database.Change("DELETE FROM customer WHERE CUST_ID = 'A0'");
  }
  server::CreateServerData(tests::DemoOptions(folder_.path()));
  EXPECT_THAT(Found("zeno"), ElementsAre());
  EXPECT_THAT(Found("zorn"), ElementsAre("A1"));
  EXPECT_THAT(Found("prairie"), ElementsAre("100001", "A1"));
}

TEST_F(CustomerInquiry, FindsACustomerByWhatWasSavedAMomentAgo) {
  server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
  const auto save = [&](const std::string& statement, bool committed) {
    server::Transaction transaction(database, server::Transaction::Purpose::kChanging);
    database.Change(statement);
    server::IndexCustomer(database, "100002");
    if (committed) transaction.Commit();
  };
  save("UPDATE customer SET LAST_NM = 'Zorn' WHERE CUST_ID = '100002'", true);
  EXPECT_THAT(Found("hattie zorn"), ElementsAre("100002"));
  EXPECT_THAT(Found("hattie merriweather"), ElementsAre());
  save("UPDATE customer SET LAST_NM = 'Zeno' WHERE CUST_ID = '100002'", false);
  EXPECT_THAT(Found("hattie zorn"), ElementsAre("100002"));
  EXPECT_THAT(Found("hattie zeno"), ElementsAre());
}

TEST_F(CustomerInquiry, BringsTheRowsThatAreAskedFor) {
  const auto all = Found("hartsfield");
  ASSERT_EQ(all.size(), 10u);
  std::vector<std::string> paged;
  for (const int first : {1, 5, 9, 13}) {
    const auto question = SearchingRows("hartsfield", std::to_string(first), std::to_string(first + 3));
    const auto page = FoundBy(question);
    paged.insert(paged.end(), page.begin(), page.end());
    const auto end = Ask(question);
    EXPECT_EQ(Record(end, "CUSTOMER_SEARCH")->Text("MORE"), first + 3 < 10 ? "Y" : "N") << first;
    EXPECT_EQ(Record(end, "CUSTOMER_SEARCH")->Text("TOTAL"), "10") << first;
  }
  EXPECT_EQ(paged, all);
  for (const auto& [first, last] :
       {std::pair{"0", "20"}, {"-1", "20"}, {"20", "1"}, {"1", "201"}, {"1", "9223372036854775807"}}) {
    EXPECT_THAT(Ask(SearchingRows("hartsfield", first, last)).error, HasSubstr("cannot be asked for"))
        << last;
  }
}

TEST_F(CustomerInquiry, SaysWhenThereAreMoreThanItBrings) {
  GivenCopies('A', 170);
  EXPECT_EQ(Found("").size(), 200u);
  EXPECT_EQ(HasMore(""), "N");
  GivenCopies('B', 1);
  EXPECT_EQ(Found("").size(), 200u);
  EXPECT_EQ(HasMore(""), "Y");
  EXPECT_EQ(HasMore("100001"), "N");
}

}  // namespace
