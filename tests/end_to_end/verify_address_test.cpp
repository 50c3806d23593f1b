#include <gmock/gmock.h>

#include <algorithm>

#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

class VerifyAddress : public PreparedOffice {
 protected:
  Outcome Verify(std::vector<std::string> words) { return Letters("verify-address", std::move(words)); }
  static std::vector<std::string> Depot(const std::string& line1) {
    return {"--line1", line1, "--city", "Hartsfield", "--state", "KV", "--zip", "88312"};
  }
  /// The addresses of the demo's customers with that verification, as a list; how many there are.
  std::string ListOfCustomers(const std::string& code) {
    std::string list = "line1,line2,city,state,zip\n";
    for (const std::string prefix : {"MAIL_", "RES_"})
      list += RunShell("sqlite3 -csv " + Quoted((data_ / "server/server.db").string()) + " " +
                       Quoted("SELECT " + prefix + "ADDR_1, IFNULL(" + prefix + "ADDR_2, ''), " + prefix +
                              "CITY, " + prefix + "ST, " + prefix + "ZIP_CD FROM customer WHERE " + prefix +
                              "VRFY_CD = '" + code + "' AND " + prefix + "ST = 'KV' AND " + prefix +
                              "ADDR_1 <> ''"))
                  .out;
    WriteFile(data_ / "list.csv", list);
    return std::to_string(std::count(list.begin(), list.end(), '\n') - 1);
  }
};

TEST_F(VerifyAddress, SaysOneVerdictForAPersonAndForAProgram) {
  const auto passed = Verify(Depot("1200 depot street suite 4"));
  EXPECT_EQ(passed.status, 0) << passed.err;
  EXPECT_EQ(passed.out, "passed\n1200 DEPOT ST\nSTE 4\nHARTSFIELD KV 88312-0431\nCounty: Hartsfield\n");
  auto words = Depot("1200 dpeot st");
  words.emplace_back("--json");
  EXPECT_THAT(Verify(words).out,
              AllOf(HasSubstr("\"verdict\": \"suggested\""), HasSubstr("\"line1\": \"1200 DEPOT ST\"")));
  EXPECT_EQ(Verify(Depot("Pier 0")).out, "none\n");
  EXPECT_EQ(Verify({}).status, 2);
}

/// The demo's register and its street file are made of the same lists.
TEST_F(VerifyAddress, TheDemosCustomersPassButForThoseThatFailed) {
  const auto verified = ListOfCustomers("V");
  const auto passed =
      Verify({"--csv", (data_ / "list.csv").string(), "--output", (data_ / "result.csv").string()});
  EXPECT_EQ(passed.status, 0);
  EXPECT_EQ(passed.err, verified + " addresses: " + verified + " passed, 0 suggested, 0 none.\n");
  EXPECT_THAT(ReadFile(data_ / "result.csv"), HasSubstr(",passed,"));
  ListOfCustomers("F");
  EXPECT_THAT(Verify({"--csv", (data_ / "list.csv").string()}).err, HasSubstr(": 0 passed, "));
}

TEST_F(VerifyAddress, BadLinesAreNamedAndTheRestGoesOn) {
  WriteFile(data_ / "list.csv",
            "line1,city,state,zip\n1200 Depot St,Hartsfield,KV\n1200 Depot St,Hartsfield,KV,88312\n");
  const auto run = Verify({"--csv", (data_ / "list.csv").string()});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err,
            "Line 2 of the list has 3 fields for 4 columns. It is left out.\n"
            "1 addresses: 1 passed, 0 suggested, 0 none; 1 lines are left out.\n");
  EXPECT_THAT(run.out, HasSubstr("88312,passed,1200 DEPOT ST,,HARTSFIELD,KV,883120431,13,Hartsfield\n"));
}

TEST_F(VerifyAddress, AWrongStreetFileIsNamedAtTheNextStartAndVerifiesNothing) {
  WriteFile(data_ / "server/streets/ranges.tsv", "ZIP_CD\tKIND\n88312\tS\n");
  EXPECT_THAT(Letters("letter", {"--type", "101", "--customer", "100001", "--print"}).err,
              HasSubstr("ranges.tsv\", line 1: The line of column names ends where PRE_DIR belongs."));
  const auto run = Verify(Depot("1200 Depot St"));
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("The address cannot be verified. "));
  EXPECT_THAT(run.out, IsEmpty());
}

TEST_F(VerifyAddress, AsksTheProgramThatServerIniNames) {
  const auto program = data_ / "verifier";
  WriteFile(program, "#!/bin/sh\nwhile read line; do echo '{\"id\":1,\"verdict\":\"unknown\"}'; done\n");
  std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  WriteFile(data_ / "server.ini", "[AddressVerification]\nProgram=" + program.string() + "\n");
  EXPECT_EQ(Verify(Depot("1200 Depot St")).out, "none\n");
  WriteFile(data_ / "server.ini", "[AddressVerification]\nProgram=verifier\n");
  const auto run = Verify(Depot("1200 Depot St"));
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, AllOf(HasSubstr("server.ini\", line 2"), HasSubstr("is no program that may be run")));
}

}  // namespace
}  // namespace tests
