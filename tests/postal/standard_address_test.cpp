#include "postal/standard_address.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace postal {
namespace {

using platform::PostalAddress;

struct Case {
  const char* line1;
  const char* line2;
  const char* standard1;
  const char* standard2 = "";
};

void PrintTo(const Case& lines, std::ostream* out) {
  *out << lines.line1 << " / " << lines.line2;
}

class StandardLines : public testing::TestWithParam<Case> {};

TEST_P(StandardLines, AreWrittenAsThePostDoes) {
  const auto standard = Standardised({.line1 = GetParam().line1, .line2 = GetParam().line2});
  EXPECT_EQ(standard.line1, GetParam().standard1);
  EXPECT_EQ(standard.line2, GetParam().standard2);
}

INSTANTIATE_TEST_SUITE_P(Streets, StandardLines,
                         testing::ValuesIn(std::vector<Case>{
                             {"1200 Depot Street", "", "1200 DEPOT ST"},
                             {" 1200   north depot st. ", "", "1200 N DEPOT ST"},
                             {"12 Main St., N.W.", "", "12 MAIN ST NW"},
                             {"12 North West Oak Avenue", "", "12 NW OAK AVE"},
                             {"12 Bay West Dr", "", "12 BAY WEST DR"},
                             {"0012 Sailor\u2019s Rest", "", "12 SAILORS RST"},
                             {"15 Rue des Érables", "", "15 RUE DES ERABLES"},
                             {"12-A Elm Str", "", "12A ELM ST"},
                             {"12 1/2 Elm Str", "", "12 1/2 ELM ST"},
                             {"7 Main Street Court", "", "7 MAIN STREET CT"},
                             {"100 Mill-Pond Rd", "", "100 MILL POND RD"},
                             {"3 The Green", "", "3 THE GRN"},
                         }));
INSTANTIATE_TEST_SUITE_P(SaintAndStreet, StandardLines,
                         testing::ValuesIn(std::vector<Case>{
                             {"5 St John St", "", "5 ST JOHN ST"},
                             {"5 Saint John Street", "", "5 SAINT JOHN ST"},
                             {"123 ST CLAIR AVE", "", "123 ST CLAIR AVE"},
                             {"9 Street Road", "", "9 STREET RD"},
                             {"9 St. St.", "", "9 ST ST"},
                         }));
INSTANTIATE_TEST_SUITE_P(DirectionalOrName, StandardLines,
                         testing::ValuesIn(std::vector<Case>{
                             {"8 North St", "", "8 NORTH ST"},
                             {"8 East West Street", "", "8 E WEST ST"},
                             {"8 Avenue E", "", "8 AVENUE E"},
                             {"8 South Avenue B", "", "8 S AVENUE B"},
                             {"8 N Street", "", "8 N ST"},
                             {"8 Main St South", "", "8 MAIN ST S"},
                         }));
INSTANTIATE_TEST_SUITE_P(NumberedRoads, StandardLines,
                         testing::ValuesIn(std::vector<Case>{
                             {"8 Co Rd 12", "", "8 COUNTY ROAD 12"},
                             {"8 CR 12", "", "8 COUNTY ROAD 12"},
                             {"8 State Hwy 7 N", "", "8 STATE HIGHWAY 7 N"},
                             {"8 S Hwy 9", "", "8 S HIGHWAY 9"},
                             {"1500 Interstate Parkway", "", "1500 INTERSTATE PKWY"},
                         }));
INSTANTIATE_TEST_SUITE_P(Units, StandardLines,
                         testing::ValuesIn(std::vector<Case>{
                             {"12 Elm St Suite 4", "", "12 ELM ST", "STE 4"},
                             {"12 Elm St, Apt. #4B", "", "12 ELM ST", "APT 4B"},
                             {"12 Elm St #4", "", "12 ELM ST", "# 4"},
                             {"12 Elm St", "suite 4", "12 ELM ST", "STE 4"},
                             {"12 Elm St Building 2 Unit C", "", "12 ELM ST", "BLDG 2 UNIT C"},
                             {"12 Elm St 3rd Floor", "", "12 ELM ST", "FL 3"},
                             {"12 Elm St rear", "", "12 ELM ST", "REAR"},
                             {"12 Elm St Apt 4", "Attention Mail Room", "12 ELM ST APT 4", "ATTN MAIL ROOM"},
                             {"12 Elm St", "c/o Smith & Sons", "12 ELM ST", "C/O SMITH & SONS"},
                             {"12 Elm St", "Dock 3", "12 ELM ST", "DOCK 3"},
                             {"12 Upper Lot Rd", "", "12 UPPER LOT RD"},
                             {"Attn: Ann", "12 Elm St", "12 ELM ST", "ATTN ANN"},
                         }));
INSTANTIATE_TEST_SUITE_P(BoxesAndRoutes, StandardLines,
                         testing::ValuesIn(std::vector<Case>{
                             {"P.O. Box 118", "", "PO BOX 118"},
                             {"Post Office Box #118", "", "PO BOX 118"},
                             {"POB 118", "", "PO BOX 118"},
                             {"Box 118", "", "PO BOX 118"},
                             {"P O Drawer 7", "", "PO BOX 7"},
                             {"Rural Route 2 Box 18", "", "RR 2 BOX 18"},
                             {"RFD 2, Box #18", "", "RR 2 BOX 18"},
                             {"Rt. 2 Box 18-A", "", "RR 2 BOX 18A"},
                             {"Star Route 68 Box 23A", "", "HC 68 BOX 23A"},
                             {"Highway Contract Route 68 Box 23A", "", "HC 68 BOX 23A"},
                             {"Gen. Delivery", "", "GENERAL DELIVERY"},
                             {"Box Elder Rd", "", "BOX ELDER RD"},
                         }));

TEST(StandardAddressTest, TwoLinesThatTheCarrierCouldDeliverByAreAmbiguous) {
  EXPECT_TRUE(ReadAddress({.line1 = "12 Elm St", .line2 = "PO Box 5"}).is_ambiguous);
  EXPECT_TRUE(ReadAddress({.line1 = "12 Elm St Apt 4", .line2 = "Apt 5"}).is_ambiguous);
  EXPECT_FALSE(ReadAddress({.line1 = "12 Elm St Apt 4", .line2 = "apartment 4"}).is_ambiguous);
}

TEST(StandardAddressTest, AZipIsFiveOrNineDigits) {
  struct ZipCase {
    const char* entered;
    const char* zip;
    const char* plus_four;
    bool is_whole;
  };
  for (const auto& [entered, zip, plus_four, is_whole] : {
           ZipCase{"883120431", "88312", "0431", true},
           {"88312-0431", "88312", "0431", true},
           {"88312-", "88312", "", true},
           {"8831", "8831", "", false},
           {"88312-04", "88312", "", false},
           {"8831a", "8831", "", false},
           {"", "", "", true},
       }) {
    SCOPED_TRACE(entered);
    const auto read = ReadAddress({.zip = entered});
    EXPECT_EQ(read.zip, zip);
    EXPECT_EQ(read.plus_four, plus_four);
    EXPECT_EQ(read.is_zip_whole, is_whole);
  }
}

TEST(StandardAddressTest, StandardisingTwiceChangesNothingMore) {
  for (const auto* line :
       {"1200 North Depot Street Suite 4", "5 Saint John Street", "Rt 2 Box 18-A", "8 CR 12 Apt B",
        "12 1/2 Elm St 3rd Floor", "8 East West Street", "P O Box 0118"}) {
    SCOPED_TRACE(line);
    const auto once = Standardised({.line1 = line, .city = "Heron Bay", .zip = "88409-1122"});
    EXPECT_EQ(Standardised(once), once);
  }
}

TEST(StandardAddressTest, APlaceIsTheSameHoweverItIsWritten) {
  const PostalAddress place{
      .line1 = "12 N MAIN ST", .line2 = "APT 4", .city = "OAKHAVEN", .state = "KV", .zip = "892140001"};
  auto other = place;
  EXPECT_TRUE(IsSamePlace(place, {"12 North Main Street Apt. 4", "", "Oakhaven", "kv", "89214"}));
  other.line2 = "APT 5";
  EXPECT_FALSE(IsSamePlace(place, other));
  other = place;
  other.zip = "89215";
  EXPECT_FALSE(IsSamePlace(place, other));
}

TEST(StandardAddressTest, TakesAnyBytes) {
  std::mt19937 draw(7);
  const std::vector<std::string> pieces = {"12",  " ",  "ST", "N",        "#",   "/",    "-",   "APT",
                                           "BOX", "PO", "RR", "\xC3",     "\n",  "É",    "C/O", "\0",
                                           "%",   ".",  "FL", "99999999", "SW",  "3RD",  ",",   "&",
                                           "'",   "CO", "RD", "\xE2\x80", "HWY", "UNIT", "A"};
  for (int round = 0; round < 20'000; ++round) {
    PostalAddress address;
    for (auto* part : {&address.line1, &address.line2, &address.city, &address.zip}) {
      for (auto count = draw() % 9; count > 0; --count)
        *part += pieces[draw() % pieces.size()] + (draw() % 2 ? " " : "");
    }
    const auto standard = Standardised(address);
    EXPECT_EQ(standard.line1.find_first_of("\n,.'"), std::string::npos) << address.line1;
    EXPECT_TRUE(IsSameButForForm(standard, standard) || !ReadAddress(standard).is_zip_whole ||
                ReadAddress(standard).lines_exchanged);
  }
  Standardised({.line1 = std::string(100'000, '7'), .line2 = std::string(100'000, '#')});
}

}  // namespace
}  // namespace postal
