#include "postal/address_list.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/failure.h"

namespace postal {
namespace {

using platform::AddressVerdict;

/// Passes what it gets, in capitals of its own.
class Echo : public platform::AddressVerifier {
 public:
  std::vector<platform::PostalAddress> asked;

 private:
  AddressVerdict Judge(const platform::PostalAddress& address, const std::stop_token&) override {
    asked.push_back(address);
    if (address.line1 == "fails") throw platform::Failure(platform::Failure::Kind::kTimedOut, "Too slow.");
    if (address.line1 == "none") return {};
    return {address.line1 == "near" ? AddressVerdict::Kind::kSuggested : AddressVerdict::Kind::kPassed,
            address};
  }
  bool IsSamePlace(const platform::PostalAddress&, const platform::PostalAddress&) const override {
    return false;
  }
};

class AddressListTest : public testing::Test {
 protected:
  void Verify(std::string_view list) {
    counts_ = VerifyAddressList(list, echo_,
                                {.take = [this](const std::string& record) { result_ += record; },
                                 .tell = [this](const std::string& fault) { faults_.push_back(fault); }});
  }
  std::string Refusal(std::string_view list) {
    try {
      Verify(list);
      return "";
    } catch (const platform::Failure& failure) {
      return failure.description();
    }
  }

  Echo echo_;
  AddressCounts counts_;
  std::string result_;
  std::vector<std::string> faults_;
};

TEST_F(AddressListTest, ReadsQuotesLineBreaksAndTheMarkAtTheStart) {
  Verify(
      "\xEF\xBB\xBFzip,Line_1,\"line 2\",City,STATE,Note\r\n"
      "88312,\"12, \"\"Elm\"\" St\",,Hartsfield,KV,\"two\r\nlines\"\r\n"
      "\n"
      "88313,none,,Hartsfield,KV,");
  ASSERT_EQ(echo_.asked.size(), 2U);
  EXPECT_EQ(echo_.asked[0].line1, "12, \"Elm\" St");
  EXPECT_EQ(echo_.asked[1].zip, "88313");
  EXPECT_EQ(counts_.passed, 1U);
  EXPECT_EQ(counts_.none, 1U);
  EXPECT_EQ(
      result_,
      "zip,Line_1,line 2,City,STATE,Note,verdict,verified_line1,verified_line2,verified_city,verified_state,"
      "verified_zip,verified_county_code,verified_county\n"
      "88312,\"12, \"\"Elm\"\" St\",,Hartsfield,KV,\"two\r\nlines\",passed,\"12, \"\"Elm\"\" "
      "St\",,Hartsfield,KV,88312,,\n"
      "88313,none,,Hartsfield,KV,,none,,,,,,,\n");
}

TEST_F(AddressListTest, NamesBadLinesAndGoesOn) {
  Verify(
      "line1,city,state,zip\n"
      "1 A,B,KV,1\n"
      "2 A,B,KV\n"
      "\"3 A,B,KV,1\n"
      "4 \"A\",B,KV,1\n"
      "\"5\" A,B,KV,1\n"
      "6 \xFF,B,KV,1\n"
      "\"7\nA\",B,KV,1\n"
      "fails,B,KV,1\n"
      "near,B,KV,1\n");
  EXPECT_EQ(counts_.passed, 2U);
  EXPECT_EQ(counts_.suggested, 1U);
  EXPECT_EQ(counts_.bad_lines, 6U);
  const std::vector<std::string> expected = {
      "Line 3 of the list has 3 fields for 4 columns. It is left out.",
      "Line 4 of the list has text behind a closing quotation mark. It is left out.",
      "Line 5 of the list has a quotation mark inside a field that is not quoted. It is left out.",
      "Line 6 of the list has text behind a closing quotation mark. It is left out.",
      "Line 7 of the list is not written in UTF-8. It is left out.",
      "Line 10 of the list was not verified: Too slow. It is left out."};
  EXPECT_EQ(faults_, expected);
}

TEST_F(AddressListTest, AQuotationMarkThatIsNeverClosedCostsItsLineAlone) {
  Verify("line1,city,state,zip\n\"1 A,B,KV,1\n2 A,B,KV,1\n");
  EXPECT_EQ(counts_.passed, 1U);
  ASSERT_EQ(faults_.size(), 1U);
  EXPECT_EQ(faults_[0], "Line 2 of the list has a quotation mark that is not closed. It is left out.");
}

TEST_F(AddressListTest, WantsTheColumnsNamed) {
  EXPECT_EQ(Refusal("").substr(0, 37), "The list's first line is missing. It ");
  EXPECT_NE(Refusal("line1,city,zip\n").find("has no column state."), std::string::npos);
  EXPECT_NE(Refusal("line1,LINE 1,city,state,zip\n").find("names the column line1 twice."),
            std::string::npos);
}

TEST_F(AddressListTest, AVerifierThatKeepsFailingEndsTheList) {
  EXPECT_EQ(Refusal("line1,city,state,zip\nfails,B,KV,1\nfails,B,KV,1\nfails,B,KV,1\nnear,B,KV,1\n"),
            "Too slow., while verifying line 4 of the list");
  EXPECT_EQ(echo_.asked.size(), 3U);
}

}  // namespace
}  // namespace postal
