#include "server/context/letter_context.h"

#include <optional>

#include "tests/server/server_world.h"

namespace {

using platform::XmlDocument;
using testing::HasSubstr;
using testing::Not;
using tests::Record;

using server::state::kErrorInChild;
using server::state::kErrorInNonAddressChild;
namespace error = server::error;
namespace state = server::state;

class LetterContext : public tests::ServerTest {
 protected:
  void GivenContext(const std::string& letter_type, fakes::Row input) {
    GivenContext(ContextOf(letter_type, std::move(input)));
  }
  void GivenContext(const tests::Question& question) {
    reply_ = Ask(question);
    ASSERT_EQ(reply_.error, "");
    document_ = XmlDocument::Parse(Record(reply_, "XML_Context")->FirstText()).OrFail();
  }

  platform::XmlElement Field(std::string_view name) const { return document_->FirstByTagName(name); }
  std::string Attribute(std::string_view field, std::string_view attribute) const {
    return Field(field).Attribute(attribute).value_or("");
  }
  server::FlagWord Flags(std::string_view field, std::string_view attribute) const {
    return platform::ReadFlagWord(Field(field), attribute);
  }
  /// Of these bits those that the field's "State" has.
  server::FlagWord State(std::string_view field, server::FlagWord bits) const {
    return Flags(field, "State") & bits;
  }
  std::string History(std::string_view column) const { return Record(reply_, "CORRHIST")->Text(column); }

  server::Reply reply_;
  std::optional<XmlDocument> document_;
};

TEST_F(LetterContext, OfACustomerBeginsWithTheInputAndFollowsTheDefinition) {
  GivenContext("101", {{"CUST_ID", "100001"}});
  std::vector<std::string> names;
  for (const auto& field : document_->Root().Children()) names.push_back(field.Name());
  EXPECT_THAT(names, testing::ElementsAre("CUST_ID", "LTR_DT", "LTR_REF", "CUSTOMER_NAME", "CUSTOMER_ADDR",
                                          "ACCNT_NBR", "CNTY_NM", "PHN_NBR", "OFFICER_NAME", "OFFICE_NAME",
                                          "OFFICE_PHONE"));
  EXPECT_TRUE(State("CUST_ID", state::kInput));
  EXPECT_EQ(Field("LTR_DT").Text(), "November 22, 2026");
  EXPECT_EQ(Attribute("LTR_DT", "RawValue"), "2026-11-22");
  EXPECT_EQ(Field("CUSTOMER_ADDR").Text(), "1200 Depot St\nSuite 4\nHartsfield, KV 88312-0431");
  EXPECT_EQ(Field("ACCNT_NBR").Text(), "62-000100001-01");
  EXPECT_EQ(Field("PHN_NBR").Text(), "(555) 011-4201");
  EXPECT_EQ(Field("CNTY_NM").Text(), "Hartsfield");
  EXPECT_FALSE(State("XML_CONTEXT", state::kSummaries));
  EXPECT_EQ(History("CUST_ID") + History("PRNT_STTS_CD") + History("ADDR_TYP_CD") + History("QZ_CNTY_NBR"),
            "100001P113");
  EXPECT_EQ(History("LST_PRCS_TS"), "2026-11-22 09.00.00");
}

TEST_F(LetterContext, OfAFormHoldsItsPeriodsAsATableThatAddsUp) {
  GivenContext("110", {{"FORM_NBR", "3100056"}, {"FORM_TYP_CD", "C"}});
  EXPECT_EQ(Field("CUST_ID").Text(), "100014");
  EXPECT_FALSE(State("CUST_ID", state::kInput)) << "found through the form, not given";
  EXPECT_TRUE(State("FORM_NBR", state::kInput));
  EXPECT_EQ(Field("FORM_NBR_WITH_DGT").Text(), "3100056-X");
  EXPECT_EQ(Flags("TAX_PERIODS", "State"), state::kTable);
  const auto rows = Field("TAX_PERIODS").Children();
  ASSERT_EQ(rows.size(), 36u);
  EXPECT_EQ(platform::ReadFlagWord(rows[0], "State"), state::kTableRow);
  EXPECT_EQ(platform::ReadFlagWord(rows[0].Children()[0], "State"), state::kTableColumn);
  EXPECT_EQ(rows.back().Children()[0].Text(), "September 2026");
  EXPECT_EQ(rows.back().Children()[1].Text(), "October 20, 2026");
  auto total = platform::Money::FromCents(0);
  for (const auto& row : rows)
    total = total + *platform::Money::Parse(*row.FirstByTagName("PERIOD_TOTAL").Attribute("RawValue"));
  EXPECT_EQ(Field("AMOUNT_DUE").Text(), "$" + total.AsGroupedText());
  EXPECT_EQ(History("FORM_NBR") + History("FORM_TYP_CD") + History("FORM_CK_DGT_NBR"), "3100056CX");
}

TEST_F(LetterContext, OfAReceiptIsFoundByItsNumberAndCheckDigit) {
  GivenContext("111", {{"FORM_NBR", "3100006"},
                       {"FORM_CK_DGT_NBR", "0"},
                       {"RCPT_NBR", "3100006"},
                       {"RCPT_CK_DGT_NBR", "0"},
                       {"FORM_TYP_CD", "R"}});
  EXPECT_EQ(Field("CUST_ID").Text(), "100001");
  EXPECT_EQ(Field("FORM_TYP_DES").Text(), "Receipt");
}

TEST_F(LetterContext, SaysWhatTheUserHasToEnterAndToChoose) {
  GivenContext("103", {{"CUST_ID", "100001"}});
  EXPECT_EQ(State("XML_CONTEXT", state::kUser | state::kParagraph), state::kUser);
  EXPECT_EQ(State("U_BOND_AMT", state::kTypes), state::kUser);
  EXPECT_EQ(Attribute("U_BOND_AMT", "V_EnglishDesc"), "Amount of the bond");
  EXPECT_EQ(Field("U_BOND_AMT").Text(), "");
  GivenContext("107", {{"FORM_NBR", "3100004"}, {"FORM_TYP_CD", "C"}});
  EXPECT_TRUE(State("XML_CONTEXT", state::kParagraph));
  EXPECT_EQ(State("PARA_FREE_TEXT", state::kTypes | state::kCanDisplay),
            state::kParagraph | state::kCanDisplay);
  EXPECT_EQ(Field("PARA_FREE_TEXT").Text(), "");
  EXPECT_EQ(Field("PARA_FREE_TEXT").Attribute("OneOf"), std::nullopt) << "this letter does without";
}

TEST_F(LetterContext, SaysOfWhichParagraphsTheLetterNeedsOne) {
  GivenContext("105", {{"FORM_NBR", "3100009"}, {"FORM_TYP_CD", "M"}});
  for (const auto* name : {"PARA_LATE_CLAIM", "PARA_NO_INVOICES", "PARA_NOT_EXEMPT", "PARA_FREE_TEXT"})
    EXPECT_EQ(Attribute(name, "OneOf"), "REASON") << name;
}

TEST_F(LetterContext, NamesAreTakenAsTheyAre) {
  const std::vector<std::pair<std::string, std::string>> names = {{"100002", "Hattie Merriweather"},
                                                                  {"100003", "Barlow & Sons <Haulage> Co."},
                                                                  {"100004", "Café Élan Truck Stop"},
                                                                  {"100005", "Quentin O'Marchbanks"},
                                                                  {"100020", "Halfway House Truck Stop"}};
  for (const auto& [customer, name] : names) {
    GivenContext("101", {{"CUST_ID", customer}});
    EXPECT_EQ(Field("CUSTOMER_NAME").Text(), name);
  }
}

TEST_F(LetterContext, CarriesTheVerdictOnTheCustomersAddresses) {
  GivenContext("101", {{"CUST_ID", "100006"}});
  const auto residential =
      server::address::kMailMissing | server::address::kResidentialUsed | server::address::kInStateCustomer;
  EXPECT_EQ(History("PRNT_STTS_CD") + History("ADDR_TYP_CD"), "P2");
  EXPECT_EQ(Flags("XML_CONTEXT", "AddrState"), residential);
  EXPECT_EQ(Flags("CUSTOMER_ADDR", "AddrState"), residential);
  EXPECT_EQ(Flags("CUSTOMER_ADDR", "Err"), 0u);
  EXPECT_THAT(Attribute("XML_CONTEXT", "V_ExplainAddr"), HasSubstr("mailing address is missing"));

  GivenContext("101", {{"CUST_ID", "100015"}});
  EXPECT_EQ(History("PRNT_STTS_CD") + History("ADDR_TYP_CD"), "V");
  EXPECT_EQ(Flags("XML_CONTEXT", "AddrState"), Flags("CUSTOMER_ADDR", "AddrState"));
  EXPECT_EQ(Flags("CUSTOMER_ADDR", "Err"), server::error::kAddress);
}

TEST_F(LetterContext, AnAddressErrorAloneIsToldApartFromOthers) {
  GivenContext("101", {{"CUST_ID", "100015"}});
  EXPECT_EQ(State("XML_CONTEXT", kErrorInChild | kErrorInNonAddressChild), kErrorInChild);
  GivenContext("101", {{"CUST_ID", "100018"}});
  EXPECT_EQ(Flags("ACCNT_NBR", "Err"), error::kNull);
  EXPECT_EQ(State("XML_CONTEXT", kErrorInChild | kErrorInNonAddressChild),
            kErrorInChild | kErrorInNonAddressChild);
}

TEST_F(LetterContext, ARequiredFieldWithoutAValueIsInError) {
  GivenContext("110", {{"CUST_ID", "100001"}});  // a letter about a form, asked for without one
  EXPECT_EQ(Flags("FORM_NBR", "Err"), error::kNoRow);
  const auto absent = state::kSystem | state::kValueIsNull | state::kEof | state::kNull | state::kHasError;
  EXPECT_EQ(State("FORM_NBR", absent), absent);
  EXPECT_THAT(
      Attribute("FORM_NBR", "V_ExplainErr"),
      testing::AllOf(HasSubstr("Nothing was found, but the letter needs it. Field \"FORM_NBR\" (letter_"),
                     HasSubstr(") comes from \"form.number\".")));
  EXPECT_EQ(Flags("FORM_CK_DGT_NBR", "Err"), 0u) << "not required";
  EXPECT_TRUE(State("XML_CONTEXT", kErrorInNonAddressChild));
}

TEST_F(LetterContext, ExplainsOnlyWhenAsked) {
  const auto ask = [&](const char* descriptors, const char* states) {
    GivenContext({.type = 83,
                  .keys = {{"LTR_TYP_ID", "101"},
                           {"key:emitfielddescriptors", descriptors},
                           {"key:EXPLAINSTATE", states}},
                  .records = {{"XML_CONTEXT_INPUT", {{{"CUST_ID", "100006"}}}}}});
    return document_->Root().Xml();
  };
  EXPECT_THAT(ask("Y", "Y"), testing::AllOf(HasSubstr("V_EnglishDesc"), HasSubstr("V_ExplainAddr")));
  EXPECT_THAT(ask("Y", "N"), testing::AllOf(HasSubstr("V_EnglishDesc"), Not(HasSubstr("V_ExplainAddr"))));
  EXPECT_THAT(ask("N", "N"), testing::AllOf(Not(HasSubstr("V_")), Not(HasSubstr("RawValue"))));
}

TEST_F(LetterContext, WithoutValuesNothingIsInError) {
  GivenContext({.type = 83,
                .keys = {{"key: LTR_TYP_ID", "110"}, {"key: POPULATE_LTR_BOOKMARKS", "N"}},
                .records = {{"XML_CONTEXT_INPUT", {{{"CUST_ID", "100018"}}}}}});
  EXPECT_FALSE(State("XML_CONTEXT", kErrorInChild));
  EXPECT_EQ(Field("CUSTOMER_NAME").Text(), "");
}

}  // namespace
