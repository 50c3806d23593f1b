#include "postal/address_words.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace postal {
namespace {

struct Spellings {
  std::string_view standard;
  std::string_view others;  // parted by blanks
};

constexpr auto kDirectionals = std::to_array<Spellings>({
    {"N", "NORTH"},
    {"S", "SOUTH"},
    {"E", "EAST"},
    {"W", "WEST"},
    {"NE", "NORTHEAST"},
    {"NW", "NORTHWEST"},
    {"SE", "SOUTHEAST"},
    {"SW", "SOUTHWEST"},
});

constexpr auto kSuffixes = std::to_array<Spellings>({
    {"ALY", "ALLEY ALLEE ALLY"},
    {"ANX", "ANNEX ANEX ANNX"},
    {"ARC", "ARCADE"},
    {"AVE", "AVENUE AV AVEN AVENU AVN AVNUE"},
    {"BCH", "BEACH"},
    {"BG", "BURG"},
    {"BLF", "BLUFF BLUF"},
    {"BLVD", "BOULEVARD BOUL BOULV BLV"},
    {"BND", "BEND"},
    {"BR", "BRANCH BRNCH"},
    {"BRG", "BRIDGE BRDGE"},
    {"BRK", "BROOK"},
    {"BTM", "BOTTOM BOT BOTTM"},
    {"BYP", "BYPASS BYPA BYPAS BYPS"},
    {"BYU", "BAYOU BAYOO"},
    {"CIR", "CIRCLE CIRC CIRCL CRCL CRCLE"},
    {"CLB", "CLUB"},
    {"CLF", "CLIFF"},
    {"CLFS", "CLIFFS"},
    {"CMN", "COMMON"},
    {"COR", "CORNER"},
    {"CORS", "CORNERS"},
    {"CP", "CAMP CMP"},
    {"CPE", "CAPE"},
    {"CRES", "CRESCENT CRSENT CRSNT"},
    {"CRK", "CREEK"},
    {"CRSE", "COURSE"},
    {"CRST", "CREST"},
    {"CSWY", "CAUSEWAY CAUSWA"},
    {"CT", "COURT"},
    {"CTR", "CENTER CENT CENTR CENTRE CNTER CNTR"},
    {"CTS", "COURTS"},
    {"CURV", "CURVE"},
    {"CV", "COVE"},
    {"CYN", "CANYON CANYN CNYN"},
    {"DL", "DALE"},
    {"DM", "DAM"},
    {"DR", "DRIVE DRIV DRV"},
    {"DV", "DIVIDE DIV DVD"},
    {"EST", "ESTATE"},
    {"ESTS", "ESTATES"},
    {"EXPY", "EXPRESSWAY EXP EXPR EXPRESS EXPW"},
    {"EXT", "EXTENSION EXTN EXTNSN"},
    {"FALL", ""},
    {"FLD", "FIELD"},
    {"FLDS", "FIELDS"},
    {"FLS", "FALLS"},
    {"FLT", "FLAT"},
    {"FLTS", "FLATS"},
    {"FRD", "FORD"},
    {"FRG", "FORGE FORG"},
    {"FRK", "FORK"},
    {"FRKS", "FORKS"},
    {"FRST", "FOREST FORESTS"},
    {"FRY", "FERRY FRRY"},
    {"FT", "FORT FRT"},
    {"FWY", "FREEWAY FREEWY FRWAY FRWY"},
    {"GDN", "GARDEN GARDN GRDEN GRDN"},
    {"GDNS", "GARDENS GRDNS"},
    {"GLN", "GLEN"},
    {"GRN", "GREEN"},
    {"GRV", "GROVE GROV"},
    {"GTWY", "GATEWAY GATEWY GATWAY GTWAY"},
    {"HBR", "HARBOR HARB HARBR HRBOR"},
    {"HL", "HILL"},
    {"HLS", "HILLS"},
    {"HOLW", "HOLLOW HLLW HOLLOWS HOLWS"},
    {"HTS", "HEIGHTS HT"},
    {"HVN", "HAVEN"},
    {"HWY", "HIGHWAY HIGHWY HIWAY HIWY HWAY"},
    {"INLT", "INLET"},
    {"IS", "ISLAND ISLND"},
    {"ISLE", "ISLES"},
    {"JCT", "JUNCTION JCTION JCTN JUNCTN JUNCTON"},
    {"KNL", "KNOLL KNOL"},
    {"KNLS", "KNOLLS"},
    {"KY", "KEY"},
    {"LAND", ""},
    {"LCK", "LOCK"},
    {"LDG", "LODGE LDGE LODG"},
    {"LGT", "LIGHT"},
    {"LK", "LAKE"},
    {"LKS", "LAKES"},
    {"LN", "LANE"},
    {"LNDG", "LANDING LNDNG"},
    {"LOOP", "LOOPS"},
    {"MALL", ""},
    {"MDW", "MEADOW"},
    {"MDWS", "MEADOWS MEDOWS"},
    {"MEWS", ""},
    {"ML", "MILL"},
    {"MLS", "MILLS"},
    {"MNR", "MANOR"},
    {"MSN", "MISSION MISSN"},
    {"MT", "MOUNT MNT"},
    {"MTN", "MOUNTAIN MNTAIN MNTN MOUNTIN MTIN"},
    {"NCK", "NECK"},
    {"ORCH", "ORCHARD ORCHRD"},
    {"OVAL", "OVL"},
    {"PARK", "PRK"},
    {"PASS", ""},
    {"PATH", "PATHS"},
    {"PIKE", "PIKES"},
    {"PKWY", "PARKWAY PARKWY PKWAY PKY"},
    {"PL", "PLACE"},
    {"PLN", "PLAIN"},
    {"PLNS", "PLAINS"},
    {"PLZ", "PLAZA PLZA"},
    {"PNE", "PINE"},
    {"PNES", "PINES"},
    {"PR", "PRAIRIE PRR"},
    {"PRT", "PORT"},
    {"PSGE", "PASSAGE"},
    {"PT", "POINT"},
    {"PTS", "POINTS"},
    {"RADL", "RADIAL RAD RADIEL"},
    {"RAMP", ""},
    {"RD", "ROAD"},
    {"RDG", "RIDGE RDGE"},
    {"RDS", "ROADS"},
    {"RIV", "RIVER RVR RIVR"},
    {"RNCH", "RANCH RANCHES RNCHS"},
    {"ROW", ""},
    {"RST", "REST"},
    {"RTE", "ROUTE"},
    {"RUN", ""},
    {"SHL", "SHOAL"},
    {"SHR", "SHORE SHOAR"},
    {"SHRS", "SHORES SHOARS"},
    {"SKWY", "SKYWAY"},
    {"SMT", "SUMMIT SUMIT SUMITT"},
    {"SPG", "SPRING SPNG SPRNG"},
    {"SPGS", "SPRINGS SPNGS SPRNGS"},
    {"SPUR", "SPURS"},
    {"SQ", "SQUARE SQR SQRE SQU"},
    {"ST", "STREET STRT STR"},
    {"STA", "STATION STATN STN"},
    {"STRM", "STREAM STREME"},
    {"TER", "TERRACE TERR"},
    {"TPKE", "TURNPIKE TRNPK TURNPK"},
    {"TRAK", "TRACK TRK TRKS TRACKS"},
    {"TRCE", "TRACE TRACES"},
    {"TRL", "TRAIL TRAILS TRLS"},
    {"TUNL", "TUNNEL TUNEL TUNLS TUNNELS TUNNL"},
    {"UN", "UNION"},
    {"VIA", "VIADUCT VDCT VIADCT"},
    {"VIS", "VISTA VIST VST VSTA"},
    {"VL", "VILLE"},
    {"VLG", "VILLAGE VILL VILLAG VILLG VILLIAGE"},
    {"VLY", "VALLEY VALLY VLLY"},
    {"VW", "VIEW"},
    {"WALK", "WALKS"},
    {"WAY", "WY"},
    {"WL", "WELL"},
    {"WLS", "WELLS"},
    {"XING", "CROSSING CRSSNG"},
    {"XRD", "CROSSROAD"},
});

constexpr auto kUnitsWithNumber = std::to_array<Spellings>({
    {"APT", "APARTMENT APMT"},
    {"BLDG", "BUILDING BLD"},
    {"DEPT", "DEPARTMENT"},
    {"FL", "FLOOR FLR"},
    {"HNGR", "HANGAR HANGER"},
    {"LOT", ""},
    {"RM", "ROOM"},
    {"SLIP", ""},
    {"SPC", "SPACE"},
    {"STE", "SUITE SUIT"},
    {"STOP", ""},
    {"TRLR", "TRAILER"},
    {"UNIT", ""},
    {"#", ""},
});
constexpr auto kUnitsAlone = std::to_array<Spellings>({
    {"BSMT", "BASEMENT"},
    {"FRNT", "FRONT"},
    {"LBBY", "LOBBY"},
    {"LOWR", "LOWER"},
    {"OFC", "OFFICE"},
    {"PH", "PENTHOUSE"},
    {"REAR", ""},
    {"SIDE", ""},
    {"UPPR", "UPPER"},
});

/// Names that are spelled both ways: the post writes them as the street's own file has them.
constexpr auto kNames = std::to_array<Spellings>({
    {"ST", "SAINT"},
    {"1ST", "FIRST"},
    {"2ND", "SECOND"},
    {"3RD", "THIRD"},
    {"4TH", "FOURTH"},
    {"5TH", "FIFTH"},
    {"6TH", "SIXTH"},
    {"7TH", "SEVENTH"},
    {"8TH", "EIGHTH"},
    {"9TH", "NINTH"},
    {"10TH", "TENTH"},
    {"11TH", "ELEVENTH"},
    {"12TH", "TWELFTH"},
    {"AND", "&"},
});

constexpr auto kRoadNames = std::to_array<RoadName>({
    {"COUNTY HIGHWAY", "COUNTY HIGHWAY"},
    {"COUNTY HWY", "COUNTY HIGHWAY"},
    {"CO HIGHWAY", "COUNTY HIGHWAY"},
    {"CO HWY", "COUNTY HIGHWAY"},
    {"COUNTY ROAD", "COUNTY ROAD"},
    {"COUNTY RD", "COUNTY ROAD"},
    {"CNTY ROAD", "COUNTY ROAD"},
    {"CNTY RD", "COUNTY ROAD"},
    {"CO ROAD", "COUNTY ROAD"},
    {"CO RD", "COUNTY ROAD"},
    {"STATE HIGHWAY", "STATE HIGHWAY"},
    {"STATE HWY", "STATE HIGHWAY"},
    {"ST HIGHWAY", "STATE HIGHWAY"},
    {"ST HWY", "STATE HIGHWAY"},
    {"STATE ROUTE", "STATE ROUTE"},
    {"STATE RTE", "STATE ROUTE"},
    {"STATE RT", "STATE ROUTE"},
    {"ST ROUTE", "STATE ROUTE"},
    {"ST RTE", "STATE ROUTE"},
    {"ST RT", "STATE ROUTE"},
    {"STATE ROAD", "STATE ROAD"},
    {"STATE RD", "STATE ROAD"},
    {"ST ROAD", "STATE ROAD"},
    {"ST RD", "STATE ROAD"},
    {"TOWNSHIP ROAD", "TOWNSHIP ROAD"},
    {"TOWNSHIP RD", "TOWNSHIP ROAD"},
    {"TWP RD", "TOWNSHIP ROAD"},
    {"U S HIGHWAY", "US HIGHWAY"},
    {"U S HWY", "US HIGHWAY"},
    {"US HIGHWAY", "US HIGHWAY"},
    {"US HWY", "US HIGHWAY"},
    {"INTERSTATE HIGHWAY", "INTERSTATE"},
    {"INTERSTATE HWY", "INTERSTATE"},
    {"CR", "COUNTY ROAD"},
    {"SR", "STATE ROUTE"},
    {"US", "US HIGHWAY"},
    {"INTERSTATE", "INTERSTATE"},
    {"HIGHWAY", "HIGHWAY"},
    {"HWY", "HIGHWAY"},
    {"ROUTE", "ROUTE"},
    {"RTE", "ROUTE"},
    {"RT", "ROUTE"},
});

class WordTable {
 public:
  explicit WordTable(std::initializer_list<std::span<const Spellings>> tables) {
    for (const auto& table : tables) Add(table);
  }
  std::string_view Standard(std::string_view word) const {
    const auto found = standard_.find(word);
    return found == standard_.end() ? std::string_view() : found->second;
  }

 private:
  void Add(std::span<const Spellings> table) {
    for (const auto& [standard, others] : table) {
      standard_.try_emplace(standard, standard);
      for (auto rest = others; !rest.empty();) {
        const auto end = std::min(rest.find(' '), rest.size());
        standard_.try_emplace(rest.substr(0, end), standard);
        rest.remove_prefix(std::min(end + 1, rest.size()));
      }
    }
  }

  std::unordered_map<std::string_view, std::string_view> standard_;
};

}  // namespace

std::string_view Directional(std::string_view word) {
  static const WordTable kTable({kDirectionals});
  return kTable.Standard(word);
}

std::string_view Suffix(std::string_view word) {
  static const WordTable kTable({kSuffixes});
  return kTable.Standard(word);
}

std::string_view UnitWord(std::string_view word) {
  static const WordTable kTable({kUnitsWithNumber, kUnitsAlone});
  return kTable.Standard(word);
}

bool UnitHasNumber(std::string_view unit_word) {
  return std::ranges::find(kUnitsWithNumber, unit_word, &Spellings::standard) != kUnitsWithNumber.end();
}

std::string_view CommonForm(std::string_view word) {
  static const WordTable kTable({kDirectionals, kSuffixes, kNames});
  const auto standard = kTable.Standard(word);
  return standard.empty() ? word : standard;
}

std::span<const RoadName> RoadNames() {
  return kRoadNames;
}

}  // namespace postal
