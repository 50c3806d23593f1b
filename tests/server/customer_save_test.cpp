#include "server/customers/customer_save.h"

#include <thread>

#include "tests/server/server_world.h"

namespace {

using platform::AddressVerdict;
using platform::PostalAddress;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using tests::Question;
using tests::Record;

class CustomerSave : public tests::ServerTest {
 protected:
  /// A change of Hattie Merriweather's as the dialog sends it, made from `version`.
  Question Change(const std::string& key, fakes::Row changes, const std::string& version = "1",
                  const std::string& customer = "100002") {
    fakes::Row row = {{"CUST_ID", customer}, {"ACTION", "UPD"}};
    for (auto& cell : changes) {
      std::erase_if(row, [&](const auto& other) { return other.first == cell.first; });
      row.push_back(cell);
    }
    Question question{.type = 8, .records = {{"Customer", {row}}}, .message_key = key};
    if (!version.empty()) question.keys = {{"key:UPDT_NBR", version}};
    return question;
  }
  static fakes::Row NewBusiness() {
    return {{"ACTION", "ADD"},
            {"CUST_TYP_CD", "1"},
            {"CUST_BSNS_NM", "Tall Pine Fuel"},
            {"CO_CNTCT_NM", ""},
            {"PHN_NBR", "5552345678"},
            {"ACCNT_NBR", "6200099999901"},
            {"MAIL_ADDR_1", "12 Main St"},
            {"MAIL_CITY", "Oakhaven"},
            {"MAIL_ST", "KV"},
            {"MAIL_ZIP_CD", "89214"},
            {"FUEL_TAX_IND", "Y"}};
  }
  static fakes::Row NewAddress(const std::string& line = "9 Main St") {
    return {{"ACTION", "UPDF"},          {"FINALIST_IND", -1},     {"MAIL_ADDR_1", line}, {"MAIL_ADDR_2", ""},
            {"MAIL_CITY", "Hartsfield"}, {"MAIL_ZIP_CD", "88312"}, {"MAIL_ST", "KV"}};
  }
  std::string Stored(const std::string& columns, const std::string& customer = "100002") {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    const auto rows =
        database.Select("SELECT " + columns + " AS TEXT FROM customer WHERE CUST_ID = ?", {customer});
    return rows->IsEmpty() ? "nobody" : rows->Text("TEXT");
  }
  std::vector<std::string> History(const std::string& customer = "100002") {
    const auto reply = Ask({.type = 7, .keys = {{"key:CUST_ID", customer}, {"key:CUST_CHANGES", "Y"}}});
    EXPECT_EQ(reply.error, "");
    std::vector<std::string> lines;
    const auto* rows = Record(reply, "CUSTOMER_CHANGE");
    for (std::size_t row = 0; rows != nullptr && row < rows->RecordCount(); ++row) {
      lines.push_back(rows->Text(row, "UPDT_NBR") + " " + rows->Text(row, "UPDT_USER_ID") + " " +
                      rows->Text(row, "COL_NM") + ": " + rows->Text(row, "OLD_TXT") + " > " +
                      rows->Text(row, "NEW_TXT"));
    }
    return lines;
  }
  void Execute(const std::string& statement) {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    database.Change(statement);
  }
  static std::string Count(const server::Reply& reply) {
    const auto* rows = Record(reply, "XML_ROW");
    return rows == nullptr ? "none" : rows->Text("MEMO");
  }
  std::string Found(const std::string& text) {
    const auto reply = Ask({.type = 7, .key_items = {platform::Criterion("key:CUST_FIND", text, "like")}});
    const auto* rows = Record(reply, "CUSTOMER");
    return rows == nullptr || rows->IsEmpty() ? "" : rows->Text("Cust_Id");
  }
};

TEST_F(CustomerSave, StoresWhatIsChangedAndKeepsItsHistory) {
  const auto reply = Ask(Change("m-1", {{"CUST_TYP_CD", "0"},
                                        {"PHN_NBR", "(555) 234-5678"},
                                        {"LAST_NM", "Merriweather-Lund"},
                                        {"MAIL_ADDR_1", "77 Orchard Rd"}}));
  ASSERT_EQ(reply.error, "");
  EXPECT_EQ(Record(reply, "Customer")->Text("CUST_ID"), "100002");
  EXPECT_EQ(Record(reply, "Customer")->Text("FINALIST_IND"), "0");
  EXPECT_EQ(Count(reply), "<XML_ROW><XML_COL>0</XML_COL></XML_ROW>");
  EXPECT_EQ(Stored("LAST_NM || PHN_NBR || UPDT_NBR || MID_NM"), "Merriweather-Lund55523456782Rose");
  EXPECT_THAT(History(), ElementsAre("2 DEMO01 LAST_NM: Merriweather > Merriweather-Lund",
                                     "2 DEMO01 PHN_NBR: 5550117722 > 5552345678"));
  EXPECT_THAT(verifier_.asked, IsEmpty()) << "no address was changed";
  EXPECT_EQ(Found("merriweather-lund"), "100002");

  EXPECT_EQ(Ask(Change("m-2", {{"MID_NM", ""}}, "2")).error, "");
  EXPECT_EQ(Stored("MID_NM IS NULL"), "1");
  EXPECT_EQ(Ask(Change("m-3", {{"MID_NM", ""}}, "3")).error, "") << "changes nothing";
  EXPECT_EQ(Stored("UPDT_NBR"), "3");
}

TEST_F(CustomerSave, GivesANewCustomerAnIdThatNobodyHad) {
  const auto add = [&](const std::string& key) {
    return Ask({.type = 8, .records = {{"Customer", {NewBusiness()}}}, .message_key = key});
  };
  const auto reply = add("m-1");
  ASSERT_EQ(reply.error, "");
  EXPECT_EQ(Record(reply, "Customer")->Text("CUST_ID"), "100031");
  EXPECT_EQ(Stored("CUST_BSNS_NM || FUEL_TAX_IND || MAIL_ADDR_1 || MAIL_VRFY_CD || QZ_CNTY_NBR || UPDT_NBR",
                   "100031"),
            "Tall Pine FuelY12 MAIN STV221");
  EXPECT_THAT(History("100031"), testing::Contains("1 DEMO01 CUST_BSNS_NM:  > Tall Pine Fuel"));
  EXPECT_EQ(Found("tall pine"), "100031");
  EXPECT_EQ(Record(add("m-1"), "Customer")->Text("CUST_ID"), "100031") << "sent twice";
  EXPECT_EQ(Stored("1", "100032"), "nobody");
  Execute("DELETE FROM customer WHERE CUST_ID = '100031'");
  EXPECT_EQ(Record(add("m-2"), "Customer")->Text("CUST_ID"), "100032");
}

TEST_F(CustomerSave, GoesOnBehindTheHistoryOfThoseWhoHaveGone) {
  const auto gone = [&](const char* id) {
    Execute("INSERT INTO customer_change VALUES ('" + std::string(id) +
            "', 2, 'PHN_NBR', '2026-01-01 09.00.00', 'DEMO01', NULL, '5552345678')");
  };
  gone("100040");
  gone("100002");
  const auto add = [&](const std::string& key) {
    return Record(Ask({.type = 8, .records = {{"Customer", {NewBusiness()}}}, .message_key = key}),
                  "Customer")
        ->Text("CUST_ID");
  };
  EXPECT_EQ(add("m-1"), "100041") << "the last customer was deleted before the first one was added";
  gone("100042");
  EXPECT_EQ(add("m-2"), "100043");
  ASSERT_EQ(Ask(Change("m-3", {{"PHN_NBR", "5558765432"}})).error, "") << "put back under its id";
  EXPECT_EQ(Stored("UPDT_NBR"), "3");
}

TEST_F(CustomerSave, RefusesWhoHasNoRight) {
  rights_.withheld = {{"DEMO01", "CustomerEdit"}, {"DEMO01", "CustomerAdd"}};
  EXPECT_THAT(Ask(Change("m-1", NewAddress())).error,
              AllOf(HasSubstr("\"DEMO01\""), HasSubstr("CustomerEdit")));
  EXPECT_THAT(Ask({.type = 8, .records = {{"Customer", {NewBusiness()}}}, .message_key = "m-2"}).error,
              HasSubstr("CustomerAdd"));
  EXPECT_EQ(Stored("MAIL_ADDR_1 || UPDT_NBR"), "77 Orchard Rd1");
  EXPECT_EQ(Stored("1", "100031"), "nobody");
  EXPECT_THAT(verifier_.asked, IsEmpty());
}

TEST_F(CustomerSave, RefusesTheLaterOfTwoAndSaysWhoChangedWhat) {
  ASSERT_EQ(Ask(Change("m-1", {{"PHN_NBR", "5552345678"}})).error, "");
  const auto later = Ask(Change("m-2", {{"PHN_NBR", "5558765432"}}));
  EXPECT_THAT(later.error, AllOf(HasSubstr("by DEMO01 on 2026-11-22"),
                                 HasSubstr("telephone from \"5550117722\" to \"5552345678\""),
                                 HasSubstr("Nothing of yours was saved")));
  EXPECT_THAT(Ask(Change("m-3", {{"PHN_NBR", "5558765432"}}, "")).error, HasSubstr("UPDT_NBR"));
  EXPECT_THAT(Ask(Change("m-4", {}, "1", "7")).error, HasSubstr("There is no customer \"7\" any more"));
  EXPECT_EQ(Stored("PHN_NBR"), "5552345678");
  for (const char* number : {"3", "4", "5", "6"})
    Execute("INSERT INTO customer_change VALUES ('100002', " + std::string(number) +
            ", 'MAIL_VRFY_CD', '2026-11-22 10.00.00', 'DEMO02', 'F', 'V')");
  EXPECT_THAT(
      Ask(Change("m-5", {}, "1")).error,
      HasSubstr("by DEMO02 on 2026-11-22 10.00.00; DEMO02 on 2026-11-22 10.00.00; DEMO02 on 2026-11-22 "
                "10.00.00; and 2 times before. Nothing"));
  Execute("UPDATE customer SET UPDT_NBR = 2 WHERE CUST_ID = '100003'");
  EXPECT_THAT(Ask(Change("m-6", {}, "1", "100003")).error, HasSubstr("by a program that keeps no history."));
}

TEST_F(CustomerSave, OfTwoAtOnceTakesOne) {
  std::atomic<int> saved = 0;
  const auto save = [&](const std::string& key) {
    fakes::FakeVerifier verifier;
    server::RequestProcessor processor(folder_.path(), {clock_, rights_, verifier});
    const auto reply =
        server::ReadReply(processor.Answer(tests::WireText(Change(key, NewAddress("9 Main St " + key)))));
    if (reply.error.empty()) ++saved;
  };
  std::thread other([&] { save("A"); });
  save("B");
  other.join();
  EXPECT_EQ(saved, 1);
  EXPECT_EQ(Stored("UPDT_NBR"), "2");
}

TEST_F(CustomerSave, StoresAPassedAddressAsItWasStandardised) {
  Execute("UPDATE customer SET MAIL_BAD_FLG = 'Y', RES_BAD_FLG = 'Y' WHERE CUST_ID = '100002'");
  ASSERT_EQ(Ask(Change("m-1", NewAddress())).error, "");
  EXPECT_EQ(Stored("MAIL_ADDR_1 || '/' || MAIL_CITY || MAIL_ZIP_CD || MAIL_VRFY_CD || MAIL_CNTY_CD"),
            "9 MAIN ST/HARTSFIELD88312V13");
  EXPECT_EQ(Stored("MAIL_BAD_FLG || RES_BAD_FLG"), "NY") << "mail came back from the place before";
  EXPECT_EQ(Stored("QZ_CNTY_NBR"), "22") << "of the residential address";
  EXPECT_THAT(verifier_.asked, SizeIs(1));
  ASSERT_EQ(Ask(Change("m-2", {{"RES_RTND_IND", "N"}, {"MAIL_RTND_IND", "Y"}}, "2")).error, "");
  EXPECT_EQ(Stored("MAIL_BAD_FLG || RES_BAD_FLG"), "YN");
}

TEST_F(CustomerSave, BringsBackWhatIsSuggestedAndStoresNothing) {
  using Kind = AddressVerdict::Kind;
  const PostalAddress suggested{.line1 = "9 MAINE ST",
                                .city = "HARTSFIELD",
                                .state = "KV",
                                .zip = "883120001",
                                .county_code = "13",
                                .county = "Hartsfield"};
  verifier_.verdicts = {{"9 Main St", {Kind::kSuggested, suggested}}, {"4 Lost Rd", {Kind::kUnknown, {}}}};
  auto both = NewAddress();
  for (const auto& [column, value] : fakes::Row{{"RES_ADDR_1", "4 Lost Rd"}, {"RES_CITY", "Oakhaven"}})
    both.emplace_back(column, value);
  struct Case {
    const char* what;
    fakes::Row row;
    const char* verdict;
    const char* mail;
    const char* residential;
  };
  auto second = both;
  for (auto& [column, value] : second)
    if (column == "MAIL_ADDR_1") value = "12 Main St";
  const Case cases[] = {
      {"one", NewAddress(), "1", "9 MAINE ST/883120001/13/Hartsfield", "77 Orchard Rd/89214/22/Oakhaven"},
      {"the other", second, "2", "12 MAIN ST/88312/13/Hartsfield", "///"},
      {"both", both, "3", "9 MAINE ST/883120001/13/Hartsfield", "///"}};
  int key = 0;
  for (const auto& one : cases) {
    SCOPED_TRACE(one.what);
    const auto reply = Ask(Change("m-" + std::to_string(++key), one.row));
    ASSERT_EQ(reply.error, "");
    const auto& row = *Record(reply, "Customer");
    const auto address = [&](const std::string& prefix) {
      return row.Text(prefix + "ADDR_1") + "/" + row.Text(prefix + "ZIP_CD") + "/" +
             row.Text(prefix + "CNTY_CD") + "/" + row.Text(prefix + "COUNTY");
    };
    EXPECT_EQ(row.Text("FINALIST_IND"), one.verdict);
    EXPECT_EQ(address("MAIL_"), one.mail);
    EXPECT_EQ(address("RES_"), one.residential);
    EXPECT_EQ(Count(reply), "none");
  }
  EXPECT_EQ(Stored("MAIL_ADDR_1 || RES_ADDR_1 || UPDT_NBR"), "77 Orchard Rd77 Orchard Rd1");
  EXPECT_THAT(History(), IsEmpty());
}

TEST_F(CustomerSave, MarksAnAddressThatTheClerkSavesAllTheSame) {
  verifier_.verdicts = {{"9 Main St", {AddressVerdict::Kind::kUnknown, {}}}};
  auto anyway = NewAddress();
  anyway[0].second = "UPD";
  anyway[1].second = 0;
  auto accepted = Change("m-0", anyway);
  accepted.keys.emplace_back("key:FINALIST_ACCEPT", "3");
  EXPECT_THAT(Ask(accepted).error, HasSubstr("\"9 Main St\" does not pass")) << "it was not seen so";
  ASSERT_EQ(Ask(Change("m-1", anyway)).error, "");
  EXPECT_EQ(Stored("MAIL_ADDR_1 || MAIL_VRFY_CD || MAIL_CNTY_CD"), "9 Main StF13");
}

TEST_F(CustomerSave, WithoutAVerdictStoresNothing) {
  verifier_.fault = "The postal program has ended.";
  EXPECT_THAT(Ask(Change("m-1", NewAddress())).error, HasSubstr("The postal program has ended."));
  EXPECT_EQ(Stored("MAIL_ADDR_1"), "77 Orchard Rd");
  verifier_.fault.clear();
  EXPECT_EQ(Ask(Change("m-1", NewAddress())).error, "") << "the same request may be sent again";
  verifier_.fault = "asked again";
  EXPECT_EQ(Ask(Change("m-1", NewAddress())).error, "") << "answered before: nothing is verified";
}

TEST_F(CustomerSave, RefusesAWrongValueWithItsName) {
  const std::pair<fakes::Row, const char*> cases[] = {
      {{{"ACTION", "DEL"}}, "\"DEL\""},
      {{{"FIRST_NM", ""}}, "FIRST_NM"},
      {{{"LAST_NM", ""}}, "LAST_NM"},
      {{{"LAST_NM", "A\r\nB"}}, "LAST_NM"},
      {{{"LAST_NM", std::string(26, 'x')}}, "LAST_NM"},
      {{{"MID_NM", "R2"}}, "MID_NM"},
      {{{"SUFX_NM", "Esqu"}}, "SUFX_NM"},
      {{{"CUST_TYP_CD", "1"}}, "CUST_TYP_CD"},
      {{{"CUST_BSNS_NM", "Merriweather Fuel"}}, "CUST_BSNS_NM"},
      {{{"CUST_TYP_CD", "B"}}, "CUST_TYP_CD"},
      {{{"PHN_NBR", "555"}}, "PHN_NBR"},
      {{{"ACCNT_NBR", "62"}}, "ACCNT_NBR"},
      {{{"MAIL_ADDR_1", "    "}}, "MAIL_ADDR_1"},
      {{{"MAIL_CITY", "Oak7"}}, "MAIL_CITY"},
      {{{"MAIL_ST", "K"}}, "MAIL_ST"},
      {{{"MAIL_ST", "ZZ"}}, "MAIL_ST"},
      {{{"MAIL_ZIP_CD", "8921A"}}, "MAIL_ZIP_CD"},
      {{{"MAIL_ZIP_CD", "892145"}}, "MAIL_ZIP_CD"},
      {{{"MAIL_ADDR_1", "9 Main\u2028St"}}, "MAIL_ADDR_1"},
      {{{"MAIL_ADDR_2", "Apt \u202E4"}}, "MAIL_ADDR_2"},
      {{{"MAIL_ADDR_1", "9 Main St"}, {"MAIL_CNTY_CD", "99"}}, "MAIL_CNTY_CD"},
      {{{"RES_ADDR_1", ""}}, "RES_ADDR_1"},
      {{{"MAIL_RTND_IND", "1"}}, "MAIL_RTND_IND"},
      {{{"RES_RTND_IND", ""}}, "RES_RTND_IND"},
  };
  int key = 0;
  for (const auto& [row, name] : cases) {
    EXPECT_THAT(Ask(Change("m-" + std::to_string(++key), row)).error, HasSubstr(name));
  }
  EXPECT_EQ(Stored("UPDT_NBR"), "1");
  EXPECT_THAT(Ask(Change("m-a", {{"FIRST_NM", "Vera"}}, "1", "100013")).error, HasSubstr("DRVR_LIC_IND"));
  EXPECT_THAT(Ask({.type = 8, .message_key = "m-b"}).error, HasSubstr("type 8"));
}

TEST_F(CustomerSave, LeavesWhatIsStoredAgainstARuleUntilItIsChanged) {
  EXPECT_EQ(
      Ask(Change("m-1", {{"CUST_BSNS_NM", "Ilves Freight"}, {"PHN_NBR", "+44 20 7946 0958"}}, "1", "100010"))
          .error,
      "");
  EXPECT_EQ(Stored("PHN_NBR", "100010"), "+44 20 7946 0958");
  Execute("UPDATE customer SET MAIL_CNTY_CD = '99', MAIL_ST = 'kv' WHERE CUST_ID = '100010'");
  EXPECT_EQ(Ask(Change("m-2", {{"MAIL_CNTY_CD", "99"}, {"MAIL_ST", "KV"}}, "2", "100010")).error, "");
  EXPECT_EQ(Stored("MAIL_CNTY_CD || MAIL_ST", "100010"), "99kv");
}

TEST_F(CustomerSave, KeepsTheBusinessNameOfAPersonWhoHasOne) {
  const auto save = [&](const std::string& key, fakes::Row row, const std::string& version) {
    row.emplace_back("CUST_TYP_CD", "0");
    return Ask(Change(key, row, version, "100020")).error;
  };
  EXPECT_EQ(save("m-1", {{"FIRST_NM", "Rufina"}}, "1"), "");
  EXPECT_EQ(Stored("FIRST_NM || CUST_BSNS_NM", "100020"), "RufinaHalfway House Truck Stop");
}

TEST_F(CustomerSave, TakesNoCountyOfTheAddressBefore) {
  using Kind = AddressVerdict::Kind;
  verifier_.verdicts = {{"9 Main St", {Kind::kUnknown, {}}}};
  Execute(
      "UPDATE county SET ZIP_PRFX = CASE QZ_CNTY_NBR WHEN '13' THEN '8' WHEN '22' THEN '8831' ELSE '' END");
  auto elsewhere = NewAddress();
  elsewhere[0].second = "UPD";
  elsewhere[1].second = 0;
  elsewhere.emplace_back("MAIL_CNTY_CD", "22");  // still that of 77 Orchard Rd
  ASSERT_EQ(Ask(Change("m-1", elsewhere)).error, "");
  EXPECT_EQ(Stored("MAIL_CNTY_CD"), "22") << "the longest beginning";
  for (auto& [column, value] : elsewhere)
    if (column == "MAIL_ZIP_CD") value = "10001";
  ASSERT_EQ(Ask(Change("m-2", elsewhere, "2")).error, "");
  EXPECT_EQ(Stored("MAIL_CNTY_CD IS NULL"), "1");
}

TEST_F(CustomerSave, SchedulesLettersAgainWhoseAddressIsCorrected) {
  const auto letter = [&](const char* status, const char* type, const char* address_type) {
    Execute(std::string(
                "INSERT INTO letter_history (LTR_TYP_ID, CUST_ID, PRNT_STTS_CD, ADDR_TYP_CD, PRCS_ERR_TXT)"
                " VALUES ('") +
            type + "', '100016', '" + status + "', " + address_type + ", 'No address.')");
  };
  // The mailing address failed its verification, the other one as well, and it is marked bad.
  letter("V", "101", "NULL");  // 1: no address could be used
  letter("P", "101", "1");     // 2: came back from the mailing address
  letter("P", "101", "2");     // 3: from the other one
  letter("F", "101", "1");     // 4: the printer failed
  letter("E", "110", "NULL");  // 5
  letter("V", "107",
         "NULL");  // 6: has to go where the customer lives, or to the mailing address in this state
  const auto came_back = [&](const char* letters) {
    Execute(std::string("INSERT INTO returned_mail SELECT SEQ_NBR, CUST_ID, COALESCE(ADDR_TYP_CD, 1),"
                        " '2026-11-20', 'DEMO02', NULL FROM letter_history WHERE SEQ_NBR IN (") +
            letters + ")");
  };
  came_back("2, 3");
  const auto states = [&] {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    const auto rows =
        database.Select("SELECT PRNT_STTS_CD || COALESCE(BTCH_ACTN_CD, '') AS TEXT FROM letter_history");
    std::string text;
    for (std::size_t row = 0; row < rows->RecordCount(); ++row) text += rows->Text(row, "TEXT") + " ";
    return text;
  };
  EXPECT_EQ(Count(Ask(Change("m-1", {{"PHN_NBR", "5552345678"}}, "1", "100016"))),
            "<XML_ROW><XML_COL>0</XML_COL></XML_ROW>");
  EXPECT_EQ(states(), "V P P F E V ");
  const auto reply = Ask(Change("m-2", NewAddress(), "2", "100016"));
  EXPECT_EQ(reply.error, "");
  EXPECT_EQ(Count(reply), "<XML_ROW><XML_COL>4</XML_COL></XML_ROW>");
  EXPECT_EQ(states(), "WREB WREB P F WREB WREB ");

  const auto returned = [&](const std::string& what) {
    Execute("UPDATE letter_history SET PRNT_STTS_CD = 'P', BTCH_ACTN_CD = NULL");
    for (const auto* table : {"batch_item", "returned_mail"}) Execute(std::string("DELETE FROM ") + table);
    came_back("1, 2, 3, 4, 5, 6");
    Execute("UPDATE customer SET " + what + " WHERE CUST_ID = '100016'");
  };
  const auto save = [&](const std::string& key, fakes::Row row, const std::string& version) {
    EXPECT_EQ(Ask(Change(key, std::move(row), version, "100016")).error, "");
    return states();
  };
  returned("RES_BAD_FLG = 'N', RES_VRFY_CD = 'V'");
  verifier_.verdicts = {{"4 Lost Rd", {AddressVerdict::Kind::kUnknown, {}}}};
  auto failed = NewAddress("4 Lost Rd");
  failed[0].second = "UPD";
  failed[1].second = 0;
  EXPECT_EQ(save("m-3", failed, "3"), "P P P P P P ") << "changed, but not corrected";
  returned("MAIL_ADDR_1 = '9 Main St', MAIL_ZIP_CD = '883120001', MAIL_VRFY_CD = 'V'");
  EXPECT_EQ(save("m-4", NewAddress("9 MAIN ST"), "4"), "P P P P P P ") << "the same place";
  returned("MAIL_BAD_FLG = 'Y'");
  auto still_marked = NewAddress("10 Main St");
  still_marked.emplace_back("MAIL_RTND_IND", "Y");
  EXPECT_EQ(save("m-5", still_marked, "5"), "P P P P P P ");
  EXPECT_EQ(save("m-6", {{"MAIL_RTND_IND", "N"}}, "6"), "WREB WREB P WREB WREB WREB ");
}

TEST_F(CustomerSave, LeavesTheMarkOfReturnedMailWithThePlaceItCameBackFrom) {
  auto failed = NewAddress("4 Lost Rd");
  failed[0].second = "UPD";
  failed[1].second = 0;
  verifier_.verdicts = {{"4 Lost Rd", {AddressVerdict::Kind::kUnknown, {}}}};
  const std::pair<fakes::Row, const char*> cases[] = {{NewAddress("9 MAIN ST"), "Y"},
                                                      {failed, "Y"},
                                                      {NewAddress("77 Other Way"), "Y"},
                                                      {NewAddress("10 Main St"), "N"}};
  int version = 0;
  for (const auto& [change, mark] : cases) {
    SCOPED_TRACE(++version);
    Execute(
        "UPDATE customer SET MAIL_ADDR_1 = '9 Main St', MAIL_ZIP_CD = '88312', RES_ADDR_1 = '77 OTHER WAY',"
        " RES_ZIP_CD = '88312', MAIL_BAD_FLG = 'Y', RES_BAD_FLG = 'Y' WHERE CUST_ID = '100002'");
    const auto number = std::to_string(version);
    ASSERT_EQ(Ask(Change("m-" + number, change, number)).error, "");
    EXPECT_EQ(Stored("MAIL_BAD_FLG || RES_BAD_FLG"), std::string(mark) + "Y");
  }
}

}  // namespace
