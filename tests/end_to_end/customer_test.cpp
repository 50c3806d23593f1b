#include <gmock/gmock.h>

#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;

class ShownCustomer : public PreparedOffice {};

TEST_F(ShownCustomer, IsAsItIsStoredWithItsHistory) {
  EXPECT_THAT(Letters("customer", {"--id", "100002"}).out,
              AllOf(ContainsRegex("LAST_NM +Merriweather"), ContainsRegex("MAIL_COUNTY +Oakhaven"),
                    ContainsRegex("CUST_TYP_CD +0")));
  EXPECT_EQ(Letters("customer", {"--id", "100002", "--history", "--json"}).out, "[\n]\n");
  ServerSql(
      "INSERT INTO customer_change VALUES"
      " ('100002', 2, 'PHN_NBR', '2026-11-22 09.00.00', 'CLERK7', '5550117722', NULL)");
  EXPECT_THAT(Letters("customer", {"--id", "100002", "--history", "--json"}).out,
              AllOf(HasSubstr("\"user\": \"CLERK7\""), HasSubstr("\"old\": \"5550117722\""),
                    HasSubstr("\"new\": \"\"")));
  ServerSql("DELETE FROM customer WHERE CUST_ID = '100002'");
  EXPECT_THAT(Letters("customer", {"--id", "100002", "--history"}).out, HasSubstr("CLERK7"));
}

TEST_F(ShownCustomer, ThatIsNotThereIsARefusal) {
  const auto nobody = Letters("customer", {"--id", "7"});
  EXPECT_EQ(nobody.status, 1);
  EXPECT_THAT(nobody.err, HasSubstr("There is no customer \"7\"."));
  EXPECT_EQ(Letters("customer", {}).status, 2);
}

/// A correction worked in the dialog's own controls.
class CorrectedCustomer : public PreparedOffice {
 protected:
  Outcome Maintain(const char* what, const std::vector<std::string>& options) {
    std::vector<std::string> words = {"customer", what, "--data", data_.path().string()};
    words.insert(words.end(), options.begin(), options.end());
    return RunLetters(words);
  }
};

TEST_F(CorrectedCustomer, IsStoredWithWhatTheVerificationSuggests) {
  const auto refused = Maintain("edit", {"--id", "100001", "--zip", "88321"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err,
              AllOf(HasSubstr("The suggested address is displayed."),
                    HasSubstr("Suggested mailing address: 1200 DEPOT ST, STE 4, HARTSFIELD KV 88312-0431\n"
                              "The customer was not stored.")));
  EXPECT_EQ(Letters("customer", {"--id", "100001", "--history", "--json"}).out, "[\n]\n");

  const auto stored = Maintain("edit", {"--id", "100001", "--zip", "88321", "--accept-suggestion"});
  EXPECT_EQ(stored.status, 0) << stored.err;
  EXPECT_EQ(stored.out, "100001\n");
  EXPECT_THAT(Letters("customer", {"--id", "100001"}).out,
              AllOf(ContainsRegex("MAIL_ADDR_1 +1200 DEPOT ST"), ContainsRegex("MAIL_ZIP_CD +883120431")));
}

TEST_F(CorrectedCustomer, IsHeldToTheDialogsRules) {
  const auto phone = Maintain("edit", {"--id", "100001", "--phone", "405"});
  EXPECT_EQ(phone.status, 1);
  EXPECT_THAT(phone.err, HasSubstr("- Phone number is invalid."));
  EXPECT_EQ(Maintain("edit", {"--id", "100001", "--phone", "405 521 2485"}).status, 0);
  EXPECT_EQ(Maintain("edit", {"--id", "7", "--phone", "405 521 2485"}).status, 1);
  EXPECT_EQ(Maintain("add", {"--zip", "88312"}).status, 2);
}

TEST_F(CorrectedCustomer, IsNotStoredWhereOneOfTwoAddressesHasNoSuggestion) {
  const auto refused = Maintain("edit", {"--id", "100002", "--address", "1 Nowhere At All", "--resident-zip",
                                         "98214", "--accept-suggestion", "--quiet"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("The mailing address did not pass, and nothing is suggested for it.\n"
                                     "Suggested resident address: "));
  EXPECT_EQ(Letters("customer", {"--id", "100002", "--history", "--json"}).out, "[\n]\n");
}

TEST_F(CorrectedCustomer, HasNoReturnedMailAnyMoreWhereThatIsSaid) {
  ServerSql("UPDATE customer SET MAIL_BAD_FLG = 'Y' WHERE CUST_ID = '100001'");
  const auto stored = RunLetters(
      {"customer", "--data", data_.path().string(), "edit", "--id", "100001", "--return-mail", "no"});
  EXPECT_EQ(stored.status, 0) << stored.err;
  EXPECT_THAT(Letters("customer", {"--id", "100001"}).out, ContainsRegex("MAIL_RTND_IND +N"));
}

}  // namespace
}  // namespace tests
