#include "postal/street_file_verifier.h"

#include "platform/failure.h"
#include "platform/tab_table.h"
#include "platform/text.h"
#include "server/setup/demo_streets.h"
#include "tests/postal/street_world.h"

namespace postal {
namespace {

using platform::PostalAddress;
using Kind = platform::AddressVerdict::Kind;

class StreetFileVerifierTest : public StreetWorld {
 protected:
  /// "passed: 1200 DEPOT ST, , HARTSFIELD KV 883120431".
  std::string Verdict(const PostalAddress& address) {
    const auto verdict = verifier_.Verify(address);
    if (verdict.kind == Kind::kUnknown)
      return verdict.address == PostalAddress() ? "unknown" : "unknown with an address";
    const auto& found = verdict.address;
    return (verdict.kind == Kind::kPassed ? "passed: " : "suggested: ") + found.line1 + ", " + found.line2 +
           ", " + found.city + " " + found.state + " " + found.zip;
  }
  std::string InHartsfield(const char* line1, const char* line2 = "") {
    return Verdict({line1, line2, "Hartsfield", "KV", "88312", "", ""});
  }

  StreetFileVerifier verifier_{Folder()};
};

TEST_F(StreetFileVerifierTest, PassesWhatDiffersInFormAlone) {
  const std::string depot = "passed: 1200 DEPOT ST, , HARTSFIELD KV 883120431";
  for (const auto* line : {"1200 DEPOT ST", "1200 depot street", "01200  Depot, St."})
    EXPECT_EQ(InHartsfield(line), depot);
  EXPECT_EQ(Verdict({"1200 Depot St", "", "HARTSFIELD", "kv", "88312-0431", "", ""}), depot);
  EXPECT_EQ(InHartsfield("1200 Dépôt St"), depot);
  EXPECT_EQ(InHartsfield("1200 Depot St Suite 4"), "passed: 1200 DEPOT ST, STE 4, HARTSFIELD KV 883120431");
  EXPECT_EQ(InHartsfield("12 Saint John Street"), "passed: 12 ST JOHN ST, , HARTSFIELD KV 883122222");
  EXPECT_EQ(InHartsfield("12 St. Clair Ave"), "passed: 12 SAINT CLAIR AVE, , HARTSFIELD KV 883123333");
  EXPECT_EQ(InHartsfield("12 Fifth St"), "passed: 12 5TH ST, , HARTSFIELD KV 883126666");
  EXPECT_EQ(InHartsfield("P.O. Box 118"), "passed: PO BOX 118, , HARTSFIELD KV 883120118");
  EXPECT_EQ(InHartsfield("RFD 2 Box 18"), "passed: RR 2 BOX 18, , HARTSFIELD KV 883120018");
  EXPECT_EQ(InHartsfield("12A Mill St Northwest", "attn: Bo"),
            "passed: 12A MILL ST NW, ATTN BO, HARTSFIELD KV 883127777");
}

TEST_F(StreetFileVerifierTest, TheCountyComesWithWhatPasses) {
  const auto found =
      verifier_.Verify({"1200 Depot St", "", "Hartsfield", "KV", "88312", "99", "Elsewhere"}).address;
  EXPECT_EQ(found.county_code, "13");
  EXPECT_EQ(found.county, "Hartsfield");
}

TEST_F(StreetFileVerifierTest, KeepsAPlusFourThatTheFileDoesNotKnow) {
  EXPECT_EQ(Verdict({"12 Quarry Rd", "", "Hartsfield", "KV", "883124321", "", ""}),
            "passed: 12 QUARRY RD, , HARTSFIELD KV 883124321");
}

TEST_F(StreetFileVerifierTest, SuggestsTheOneAddressThatIsNear) {
  const std::string depot = "suggested: 1200 DEPOT ST, , HARTSFIELD KV 883120431";
  EXPECT_EQ(InHartsfield("1200 Dpeot St"), depot);
  EXPECT_EQ(InHartsfield("1200 Depot"), depot);
  EXPECT_EQ(InHartsfield("1200 Depot Ave"), depot);
  EXPECT_EQ(InHartsfield("1200 N Depot St"), depot);
  EXPECT_EQ(Verdict({"1200 Depot St", "", "Hartsfield", "KV", "88132", "", ""}), depot);
  EXPECT_EQ(Verdict({"1200 Depot St", "", "Hartsfield", "KV", "", "", ""}), depot);
  EXPECT_EQ(Verdict({"1200 Depot St", "", "Hartsfeild", "KV", "88312", "", ""}), depot);
  EXPECT_EQ(Verdict({"1200 Depot St", "", "East Hartsfield", "KV", "88312", "", ""}), depot);
  EXPECT_EQ(Verdict({"1200 Depot St", "", "Hartsfield", "NX", "88312", "", ""}), depot);
  EXPECT_EQ(Verdict({"1200 Depot St", "", "Hartsfield", "KV", "883129999", "", ""}), depot);
  EXPECT_EQ(Verdict({"1200 Depot St", "", "Hartsfield", "KV", "88312-04", "", ""}), depot);
  EXPECT_EQ(InHartsfield("", "1200 Depot St"), "passed: 1200 DEPOT ST, , HARTSFIELD KV 883120431");
  EXPECT_EQ(InHartsfield("Attn Bo", "1200 Depot St"),
            "suggested: 1200 DEPOT ST, ATTN BO, HARTSFIELD KV 883120431");
  EXPECT_EQ(InHartsfield("12 Mill St"), "suggested: 12 MILL ST NW, , HARTSFIELD KV 883127777");
  EXPECT_EQ(InHartsfield("12 NW Mill St"), "suggested: 12 MILL ST NW, , HARTSFIELD KV 883127777");
  EXPECT_EQ(InHartsfield("12 Spring Laek Dr"), "suggested: 12 SPRING LAKE DR, , HARTSFIELD KV 883128888");
  EXPECT_EQ(InHartsfield("12 Spring Lake"), "suggested: 12 SPRING LAKE DR, , HARTSFIELD KV 883128888");
}

TEST_F(StreetFileVerifierTest, ANumberOnTheOtherSideBecomesTheOnlyNeighbour) {
  EXPECT_EQ(InHartsfield("100 S Lantern Ave"), "suggested: 101 S LANTERN AVE, , HARTSFIELD KV 883121112");
  // Two neighbours.
  EXPECT_EQ(InHartsfield("150 S Lantern Ave"), "unknown");
  EXPECT_EQ(InHartsfield("1500 Depot St"), "unknown");
}

TEST_F(StreetFileVerifierTest, SaysNothingWhereSeveralAreAsNear) {
  EXPECT_EQ(InHartsfield("12 Quarry"), "unknown");  // Rd or Ln
  EXPECT_EQ(InHartsfield("12 Quarry Dr"), "unknown");
  EXPECT_EQ(Verdict({"12 Birch Ave", "", "Oakhaven", "KV", "", "", ""}), "unknown");  // both zips have it
  EXPECT_EQ(InHartsfield("51 Lantern Ave"), "suggested: 51 N LANTERN AVE, , HARTSFIELD KV 883121111");
  EXPECT_EQ(InHartsfield("12 Elm St", "PO Box 118"), "unknown");
}

TEST_F(StreetFileVerifierTest, SaysNothingWhereNoneIsNear) {
  for (const auto* line : {"12 Rue du Quai", "", "    ", "Depot St", "12", "PO Box 1000", "RR 3 Box 18",
                           "RR 2 Box 91", "Pier 0", "12 6th St", "12-34 Quarry Rd", "GENERAL DELIVERY"}) {
    EXPECT_EQ(InHartsfield(line), "unknown") << line;
  }
  EXPECT_EQ(Verdict({}), "unknown");
}

/// A street passed under the name of another one: NORTH ST as N ST.
TEST_F(StreetFileVerifierTest, StreetsThatAreSpelledAlmostAlikeAreNotOne) {
  for (const auto& [line, verdict] : {
           std::pair{"12 North St", "passed: 12 NORTH ST 0002"},
           {"12 N Street", "passed: 12 N ST 0001"},
           {"60 N St", "suggested: 60 NORTH ST 0002"},
           {"12 E St", "suggested: 12 EAST ST 0003"},
           {"12 Ave W", "suggested: 12 AVENUE W 0004"},
           {"12 Avenue West", "suggested: 12 AVENUE W 0004"},
           {"12 North Bend Road", "passed: 12 NORTH BEND RD 0005"},
           {"12 N Bend Road", "passed: 12 N BEND RD 0006"},
           {"60 N Bend Rd", "suggested: 60 NORTH BEND RD 0005"},
           {"12 Co Rd S", "passed: 12 COUNTY ROAD S 0007"},
           {"12 County Road South", "suggested: 12 COUNTY ROAD S 0007"},
           {"12 S Lake Dr", "passed: 12 SOUTH LAKE DR 0008"},
           {"12 Mnt Vernon Court", "unknown"},
           {"60 Mt Vernon Ct", "suggested: 60 MOUNT VERNON CT 0010"},
           // Where the register has no room for it.
           {"1 St Christophers Blvd", "passed: 1 SAINT CHRISTOPHERS BLVD 0011"},
           {"1234 St Christophers Blvd", "unknown"},
           {"1234 Saint Christofers Bd", "unknown"},
       }) {
    auto found = Verdict({line, "", "Moss Creek", "KV", "88321", "", ""});
    found = platform::ReplaceAll(found, ", , MOSS CREEK KV 88321", " ");
    EXPECT_EQ(found, verdict) << line;
  }
}

TEST_F(StreetFileVerifierTest, KnowsNothingOfStatesThatTheFileDoesNotCover) {
  EXPECT_EQ(Verdict({"1500 Interstate Pkwy", "", "Far Junction", "NX", "01234", "", ""}), "unknown");
  EXPECT_EQ(Verdict({"1200 Depot St", "", "Oakhaven", "NX", "01234", "", ""}), "unknown");
}

TEST_F(StreetFileVerifierTest, WithoutAGoodStreetFileNoVerdictIsGiven) {
  WriteRanges("88312 X - - - - - - - -\n");
  try {
    StreetFileVerifier(Folder()).Verify({});
    FAIL();
  } catch (const platform::Failure& failure) {
    EXPECT_EQ(failure.kind(), platform::Failure::Kind::kUnavailable);
    EXPECT_NE(failure.description().find("line 2, column KIND"), std::string::npos);
  }
}

/// The customers that the demo shows have addresses of the demo's street file, but for those that are to
/// fail.
TEST_F(StreetFileVerifierTest, VerifiedCustomersOfTheDemoPass) {
  const std::filesystem::path data = ZEMLO_SOURCE_DIR "/data";
  const auto streets = Folder() / "demo";
  server::CreateDemoStreetFile(data, streets);
  StreetFileVerifier verifier(streets);
  const auto shown = platform::TabTable::Read(data / "server" / "demo_customers.tsv");
  int passed = 0;
  for (std::size_t row = 0; row < shown.RowCount(); ++row) {
    for (const std::string prefix : {"MAIL_", "RES_"}) {
      const auto text = [&](const char* column) { return shown.Text(row, prefix + column); };
      if (text("ADDR_1").empty() || text("ST") != "KV") continue;
      const auto verdict =
          verifier.Verify({text("ADDR_1"), text("ADDR_2"), text("CITY"), text("ST"), text("ZIP_CD"), "", ""});
      EXPECT_EQ(verdict.kind == Kind::kPassed, text("VRFY_CD") != "F") << shown.Place(row, prefix + "ADDR_1");
      passed += verdict.kind == Kind::kPassed ? 1 : 0;
    }
  }
  EXPECT_GT(passed, 25);
}

}  // namespace
}  // namespace postal
