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
}

TEST_F(ShownCustomer, ThatIsNotThereIsARefusal) {
  const auto nobody = Letters("customer", {"--id", "7"});
  EXPECT_EQ(nobody.status, 1);
  EXPECT_THAT(nobody.err, HasSubstr("There is no customer \"7\"."));
  EXPECT_EQ(Letters("customer", {}).status, 2);
}

}  // namespace
}  // namespace tests
