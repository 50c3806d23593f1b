#include "server/history/letter_search.h"

#include "platform/agreed/record_layouts.h"
#include "server/context/stored_context.h"
#include "tests/server/server_world.h"

namespace {

using platform::KeyItem;
using platform::Value;
using testing::HasSubstr;
using tests::Question;
using tests::Record;

struct StoredLetter {
  const char* type;
  const char* customer;
  const char* form;  // "" or its type and number: "C3100004"
  const char* status;
  const char* printed;  // "" for never
  const char* processed;
  int batch;          // 0 for a letter made on line
  const char* troop;  // and its district
};

constexpr auto kLetters = std::to_array<StoredLetter>({
    /* 1 */ {"110", "100001", "C3100004", "S", "2026-03-01 00.00.00", "2026-02-28 23.59.58", 7, "A1"},
    /* 2 */ {"110", "100002", "C3100008", "F", "", "2026-03-01 01.00.00", 7, "A2"},
    /* 3 */ {"109", "100001", "W3100005", "R", "2026-03-02 23.59.59", "2026-03-02 23.59.00", 8, "A1"},
    /* 4 */ {"101", "100002", "", "P", "2026-02-28 23.59.59", "2026-02-28 23.59.00", 0, "B1"},
    /* 5 */ {"101", "100001", "", "V", "", "2026-03-02 08.00.00", 0, "A1"},
    /* 6 */ {"101", "100003", "", "M", "2026-03-03 00.00.00", "2026-03-01 10.00.00", 0, "B1"},
});

class LetterSearch : public tests::ServerTest {
 protected:
  LetterSearch() {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    std::int64_t number = 0;
    for (const auto& letter : kLetters) {
      const std::string form = letter.form;
      database.Change(
          "INSERT INTO letter_history (LTR_TYP_ID, CUST_ID, FORM_TYP_CD, FORM_NBR, FORM_CK_DGT_NBR, "
          "PRNT_STTS_CD,"
          " PRNT_TS, LST_PRCS_TS, FLS_BTCH_NBR, TRP_ID, TRP_DIST_ID) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
          "?)",
          {letter.type, letter.customer, OrNull(form.substr(0, 1)),
           OrNull(form.empty() ? "" : form.substr(1)), form.empty() ? Value() : Value("X"), letter.status,
           OrNull(letter.printed), letter.processed, letter.batch == 0 ? Value() : Value(letter.batch),
           std::string(letter.troop, 1), letter.troop + 1});
      ++number;
      server::StoreContext(database, number, letter.type, ContextOf(number));
    }
  }
  static Value OrNull(const std::string& text) { return text.empty() ? Value() : Value(text); }
  static std::string ContextOf(std::int64_t number) {
    return "<XML_CONTEXT><A>" + std::to_string(number) + "</A></XML_CONTEXT>";
  }

  static Question Search(std::vector<KeyItem> keys) {
    keys.push_back(platform::Criterion("key:THIN", "YES"));
    return {.type = 79, .key_items = std::move(keys)};
  }
  static KeyItem Key(const std::string& name, const std::string& value, const std::string& comparison = "=") {
    auto key = platform::Criterion("key:" + name, value);
    key.Operator = comparison;
    return key;
  }

  /// The numbers of the letters found, in their order: "1 3".
  std::string Found(std::vector<KeyItem> keys) {
    const auto reply = Ask(Search(std::move(keys)));
    EXPECT_EQ(reply.error, "");
    const auto* letters = Record(reply, "CORRHIST");
    std::string found;
    for (std::size_t row = 0; letters != nullptr && row < letters->RecordCount(); ++row)
      found += (found.empty() ? "" : " ") + letters->Text(row, "SEQ_NBR");
    return found;
  }
};

TEST_F(LetterSearch, BringsTheCustomersNames) {
  {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    database.Change("UPDATE customer SET CUST_BSNS_NM = 'Meadow & Sons' WHERE CUST_ID = '100001'", {});
    database.Change(
        "UPDATE customer SET CUST_BSNS_NM = ' ', FIRST_NM = 'Zoë', LAST_NM = 'Lee' WHERE CUST_ID = '100002'",
        {});
  }
  const auto reply = Ask(Search({Key("START_DT", "2026-03-01")}));
  const auto* letters = Record(reply, "CORRHIST");
  ASSERT_NE(letters, nullptr);
  EXPECT_EQ(letters->Text(0, "CUST_NM"), "Meadow & Sons");
  EXPECT_EQ(letters->Text(1, "CUST_NM"), "Zoë Lee");
}

TEST_F(LetterSearch, EachCriterionAloneAndTogetherWithOthers) {
  struct Case {
    std::vector<KeyItem> keys;
    const char* found;
  };
  for (const auto& [keys, found] : std::initializer_list<Case>{
           {{Key("LETTER_TYPE", "All")}, "4 1 2 5 3 6"},
           {{Key("LETTER_TYPE", "Succeeded")}, "4 1 5 6"},
           {{Key("LETTER_TYPE", "FAILED")}, "2 3"},
           {{Key(" LTR_TYP_ID", "101")}, "4 5 6"},
           {{Key("cust_id", " 100001 ")}, "1 5 3"},
           {{Key("FORM_NBR", "3100005")}, "3"},
           {{Key("FORM_NBR", "3100004"), Key("FORM_CK_DGT_NBR", "x"), Key("FORM_TYP_CD", "C")}, "1"},
           {{Key("FORM_NBR", "3100004"), Key("FORM_CK_DGT_NBR", "9")}, ""},
           {{Key("FORM_TYP_CD", "C")}, "1 2"},
           {{Key("TRP_ID", "A")}, "1 2 5 3"},
           {{Key("TRP_ID", "A"), Key("TRP_DIST_ID", "1")}, "1 5 3"},
           {{Key("TRP_DIST_ID", "2")}, "2"},
           {{Key("BATCH_NBR", "7")}, "1 2"},
           {{Key("BATCH_NBR", "9")}, ""},
           {{Key("BATCH_NBR", "7"), Key("LETTER_TYPE", "Failed"), Key("TRP_ID", "A")}, "2"},
           {{Key("BATCH_NBR", "7"), Key("LTR_TYP_ID", "110"), Key("CUST_ID", "100001")}, "1"},
           {{Key("CUST_ID", "")}, "4 1 2 5 3 6"},
           {{Key("CUST_ID", "999999")}, ""},
           {{Key("CUST_ID", "' OR 1=1 --")}, ""},
           // Whole days, both ends included; a letter that was never printed by when it was processed.
           {{Key("START_DT", "2026-02-28")}, "4"},
           {{Key("START_DT", "2026-03-01")}, "1 2"},
           {{Key("START_DT", "2026-03-02")}, "5 3"},
           {{Key("START_DT", "2026-03-01 and 2026-03-02", "between")}, "1 2 5 3"},
           {{Key("START_DT", "2026-03-03 and 2026-03-03", "between")}, "6"},
           {{Key("START_DT", "0001-01-01 and 9999-12-31", "between"), Key("CUST_ID", "100002")}, "4 2"},
       }) {
    std::string asked;
    for (const auto& key : keys) asked += key.Key + " " + key.Operator + " " + key.Value + ", ";
    EXPECT_EQ(Found(keys), found) << asked;
  }
}

TEST_F(LetterSearch, WrongInputIsAnsweredWithAClearText) {
  const std::pair<KeyItem, const char*> cases[] = {
      {Key("START_DT", "2026-02-29"), "which is no day"},
      {Key("BATCH_NBR", "7a"), "BATCH_NBR"},
      {Key("LETTER_TYPE", "Lost"), "send \"All\", \"Succeeded\" or \"Failed\""},
      {Key("COLOUR", "red"), "\"key:COLOUR\""},
  };
  for (const auto& [key, error] : cases)
    EXPECT_THAT(Ask(Search({Key("LTR_TYP_ID", "110"), key})).error, HasSubstr(error)) << key.Key << key.Value;
  EXPECT_THAT(Ask({.type = 79, .keys = {{"key:CUST_ID", "100001"}, {"key:THIN", "SLIM"}}}).error,
              HasSubstr("send \"YES\" or \"NO\""));
}

TEST_F(LetterSearch, ARowHasEveryColumnOfTheHistoryAndTheContextOnlyWhenItIsWanted) {
  const auto thin = Ask(Search({Key("BATCH_NBR", "8")}));
  const auto* letter = Record(thin, "CORRHIST");
  ASSERT_NE(letter, nullptr);
  EXPECT_THAT(letter->columns(), testing::IsSupersetOf(platform::kHistoryColumns));
  EXPECT_EQ(letter->Text("LTR_TYP_ID") + letter->Text("FORM_TYP_CD") + letter->Text("PRNT_TS"),
            "109W2026-03-02 23.59.59");
  EXPECT_TRUE(letter->Get("XML_CONTEXT").IsNull());
  const auto whole = Ask({.type = 79, .keys = {{"key:CUST_ID", "100001"}}});
  EXPECT_EQ(Record(whole, "CORRHIST")->Text(1, "XML_CONTEXT"), ContextOf(5));
}

TEST_F(LetterSearch, ALetterIsFoundAsSoonAsItIsRecordedAndMovesToTheDayOfItsFirstPrint) {
  EXPECT_EQ(
      Ask(PrintedLetter("m-1",
                        {{"PRNT_STTS_CD", "V"}, {"LST_PRNT_TS", {}}, {"LST_PRCS_TS", "2026-11-20 10.00.00"}}))
          .error,
      "");
  EXPECT_EQ(Found({Key("START_DT", "2026-11-20")}), "7");
  EXPECT_EQ(Ask(Reprint("m-2", "7")).error, "");
  EXPECT_EQ(Found({Key("START_DT", "2026-11-20")}), "");
  EXPECT_EQ(Found({Key("START_DT", "2026-11-22"), Key("TRP_ID", "C")}), "7");
}

}  // namespace
