#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

#include "server/wire/field_flags.h"
#include "tests/server/server_world.h"
#include "tests/support/field_flags.h"

// docs/demo-data.md lists which demo customer and letter type shows what; the list is walked here, so that it
// stays true.
namespace {

using platform::XmlElement;
using server::FlagWord;
using testing::HasSubstr;

/// A line of the list: cells between bars.
struct Shown {
  std::string letter_type;
  std::string customer;
  std::string form;    ///< "C 3100004", or "" for a letter to a customer
  std::string status;  ///< "P", "V" or "E"
  std::string shows;   ///< flags as "FIELD Word.Flag, FIELD Word.Flag"
};

std::string Cell(std::istringstream& line) {
  std::string cell;
  std::getline(line, cell, '|');
  return platform::ReplaceAll(std::string(platform::Trim(cell)), "`", "");
}

std::vector<Shown> ReadList() {
  std::ifstream stream(std::filesystem::path(ZEMLO_SOURCE_DIR) / "docs" / "demo-data.md");
  std::vector<Shown> list;
  bool inside = false;
  for (std::string text; std::getline(stream, text);) {
    if (text.starts_with("| letter | customer |")) inside = true;
    if (text.empty()) inside = false;
    if (!inside || !text.starts_with("| 1")) continue;
    std::istringstream line(text.substr(1));
    Shown shown;
    for (auto* cell : {&shown.letter_type, &shown.customer, &shown.form, &shown.status}) *cell = Cell(line);
    static_cast<void>(Cell(line));  // the words for a reader
    shown.shows = Cell(line);
    list.push_back(shown);
  }
  return list;
}

class DemoLetters : public tests::ServerTest {
 protected:
  server::Reply Letter(const Shown& shown) {
    if (shown.form.empty()) return Ask(ContextOf(shown.letter_type, {{"CUST_ID", shown.customer}}));
    return Ask(ContextOf(shown.letter_type,
                         {{"FORM_TYP_CD", shown.form.substr(0, 1)}, {"FORM_NBR", shown.form.substr(2, 7)}}));
  }

  static FlagWord Word(const XmlElement& field, const char* attribute) {
    return platform::ReadFlagWord(field, attribute);
  }

  /// Every "FIELD flag" of the list's last column; what was seen is noted.
  void ExpectShown(const Shown& shown, const platform::XmlDocument& context) {
    std::istringstream list(platform::ReplaceAll(shown.shows, ",", " "));
    for (std::string name, flag; list >> name >> flag;) {
      SCOPED_TRACE(name + " " + flag);
      const auto field = context.FirstByTagName(name);
      ASSERT_TRUE(field);
      const auto known = std::ranges::find(tests::kFieldFlags, flag, &tests::FieldFlag::name);
      ASSERT_NE(known, tests::kFieldFlags.end()) << "no such flag";
      EXPECT_EQ(Word(field, known->word) & known->bits, known->bits)
          << field.Attribute(known->word).value_or("nothing");
      seen_.insert(flag);
    }
  }

  std::set<std::string> seen_;
};

TEST_F(DemoLetters, ShowWhatTheListSaysAndTogetherEveryFlagThereIs) {
  const auto list = ReadList();
  ASSERT_GE(list.size(), 25U) << "the list has another form";
  for (const auto& shown : list) {
    SCOPED_TRACE(shown.letter_type + " for " + shown.customer + " " + shown.form);
    const auto reply = Letter(shown);
    ASSERT_EQ(reply.error, "");
    const auto* history = tests::Record(reply, "CORRHIST");
    EXPECT_EQ(history->Text("PRNT_STTS_CD"), shown.status);
    EXPECT_EQ(history->Text("CUST_ID"), shown.customer);
    const auto context =
        platform::XmlDocument::Parse(tests::Record(reply, "XML_Context")->FirstText()).OrFail();
    const auto erroneous = Word(context.Root(), "State") & server::state::kSummaries;
    EXPECT_EQ(erroneous == 0, shown.status == "P") << context.Root().Xml();
    ExpectShown(shown, context);
  }
  for (const auto& flag : tests::kFieldFlags) {
    if (flag.bits == platform::field_state::kUnselected) continue;  // the user's, not the server's
    EXPECT_TRUE(seen_.contains(flag.name)) << "nothing shows \"" << flag.name << "\"";
  }
}

TEST_F(DemoLetters, ComputeWhatTheLetterStates) {
  const auto reply = Ask(ContextOf("119", {{"FORM_TYP_CD", "C"}, {"FORM_NBR", "3100004"}}));
  const auto context =
      platform::XmlDocument::Parse(tests::Record(reply, "XML_Context")->FirstText()).OrFail();
  const auto cents = [&](const char* field) {
    return platform::Money::Parse(context.FirstByTagName(field).Attribute("RawValue").value_or(""))
        .value()
        .cents();
  };
  EXPECT_EQ(context.FirstByTagName("PENALTY_PCT").Text(), "10 percent");
  EXPECT_EQ(cents("RELIEF_AMT") + cents("PENALTY_REST"), cents("PENALTY_TOTAL"));
  const auto count = std::stoi(context.FirstByTagName("PERIOD_COUNT").Text());
  EXPECT_NEAR(static_cast<double>(cents("PENALTY_AVG")) * count, static_cast<double>(cents("PENALTY_TOTAL")),
              count);
  const auto issued =
      platform::ParseDate(context.FirstByTagName("ISS_DT").Attribute("RawValue").value_or(""));
  EXPECT_EQ(std::chrono::sys_days(*issued) +
                std::chrono::days(std::stoi(context.FirstByTagName("DAYS_OPEN").Text())),
            std::chrono::sys_days(tests::kToday));
}

TEST_F(DemoLetters, AFunctionThatFailsSaysWhyAndLeavesTheOtherFieldsTheirValues) {
  struct Case {
    const char* form;
    const char* call;
    const char* reason;
  };
  constexpr auto kZero = "3100108";
  for (const auto& [form, call, reason] :
       std::initializer_list<Case>{{kZero, "percent(PENALTY_TOTAL, TAX_TOTAL)",
                                    "The function failed. Field \"PENALTY_PCT\" (letter_fields"},
                                   {kZero, "percent(PENALTY_TOTAL, TAX_TOTAL)",
                                    "): \"TAX_TOTAL\" is zero, and nothing can be divided"},
                                   {"3100112", "percent(PENALTY_TOTAL, TAX_TOTAL)",
                                    "): \"PENALTY_TOTAL\" has no value to make it from."}}) {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    database.Change("UPDATE letter_field SET FLD_SRC = ? WHERE FLD_NM = 'PENALTY_PCT'", {call});
    const auto reply = Ask(ContextOf("119", {{"FORM_TYP_CD", "C"}, {"FORM_NBR", form}}));
    const auto context =
        platform::XmlDocument::Parse(tests::Record(reply, "XML_Context")->FirstText()).OrFail();
    EXPECT_EQ(context.FirstByTagName("PENALTY_PCT").Text(), "") << call;
    EXPECT_THAT(context.FirstByTagName("PENALTY_PCT").Attribute("V_ExplainErr").value_or(""),
                HasSubstr(reason));
    EXPECT_NE(context.FirstByTagName("CUSTOMER_NAME").Text(), "") << call;
  }
}

// ISS_DT has no value here, though a text stands in its place in the letter.
TEST_F(DemoLetters, AFunctionOfAFieldWithoutAValueFollowsItsOwnNeedAndDefault) {
  struct Case {
    const char* call;
    const char* need;
    const char* default_text;
    const char* rule;
    const char* text;
    FlagWord error;
  };
  for (const auto& [call, need, default_text, rule, text, error] : std::initializer_list<Case>{
           {"join(CUSTOMER_NAME, ISS_DT)", "Y", "", "", "", server::error::kPopulateValue},
           {"join(CUSTOMER_NAME, ISS_DT)", "N", "", "", "", 0},
           {"join(CUSTOMER_NAME, ISS_DT)", "N", "to be told", "", "to be told", 0},
           {"join(CUSTOMER_NAME, ISS_DT)", "Y", "to be told", "", "to be told", 0},
           {"join(CUSTOMER_NAME, ISS_DT)", "I", "", "", "", server::error::kLetterIgnored},
           {"join(FORM_NBR, ISS_DT)", "Y", "", "REF_OPTIONAL", "3100004", 0},
           {"days_since(ISS_DT)", "Y", "", "REF_OPTIONAL", "", server::error::kPopulateValue},
           {"days_since(ISS_DT)", "N", "unknown", "REF_OPTIONAL", "unknown", 0},
           {"days_since(FORM_NBR)", "N", "unknown", "", "", server::error::kExecuteFunction}}) {
    SCOPED_TRACE(std::string(call) + " " + need + " " + rule);
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    database.Change(
        "UPDATE letter_field SET FLD_SRC = 'SELECT NULL', FLD_REQ = 'N', FLD_DFLT = 'not issued'"
        " WHERE FLD_NM = 'ISS_DT'");
    database.Change(
        "UPDATE letter_field SET FLD_SRC = ?, FLD_REQ = ?, FLD_DFLT = ?, FLD_RULE = ?"
        " WHERE FLD_NM = 'DAYS_OPEN'",
        {call, need, default_text, rule});
    const auto reply = Ask(ContextOf("119", {{"FORM_TYP_CD", "C"}, {"FORM_NBR", "3100004"}}));
    const auto context =
        platform::XmlDocument::Parse(tests::Record(reply, "XML_Context")->FirstText()).OrFail();
    EXPECT_EQ(context.FirstByTagName("ISS_DT").Text(), "not issued");
    EXPECT_EQ(context.FirstByTagName("DAYS_OPEN").Text(), text);
    EXPECT_EQ(Word(context.FirstByTagName("DAYS_OPEN"), "Err"), error);
  }
}

}  // namespace
