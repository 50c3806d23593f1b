#include <algorithm>
#include <filesystem>
#include <fstream>

#include "postal/address_list.h"
#include "postal/standard_address.h"
#include "postal/street_file_verifier.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

using Kind = platform::AddressVerdict::Kind;

/// Streets that are hard to tell from one another.
postal::StreetFileVerifier& Verifier() {
  static const auto folder = [] {
    auto made = std::filesystem::temp_directory_path() / "address_fuzz";
    std::filesystem::create_directories(made);
    std::ofstream(made / "cities.tsv") << "ZIP_CD\tCITY_NM\tCITY_USE\tST\tCNTY_CD\tCNTY_NM\n"
                                          "88312\tHartsfield\tP\tKV\t13\tHartsfield\n"
                                          "88321\tSt Clair\tP\tKV\t13\tHartsfield\n";
    std::ofstream ranges(made / "ranges.tsv");
    ranges << "ZIP_CD\tKIND\tPRE_DIR\tSTREET_NM\tSUFFIX\tPOST_DIR\tLOW_NBR\tHIGH_NBR\tPARITY\tPLUS4\n";
    for (const auto* street :
         {"\tN\tSt\t", "\tNorth\tSt\t", "\tAvenue E\t\t", "\tAvenue\t\tE", "\tEast\tAve\t", "N\tBend\tRd\t",
          "\tNorth Bend\tRd\t", "\tCounty Road S\t\t", "\tCounty\tRd\tS", "\tSaint John\tSt\t",
          "\tSt John\tSt\t", "\t5th\tSt\t", "\tFifth\tSt\t", "\tSpring Lake\tDr\t", "\tLake\tDr\tW",
          "\tLake West\tDr\t", "NW\tMill\tSt\tSE", "\tHighway 9\t\t", "\tSaint Christophers\tBlvd\t"})
      ranges << "88312\tS\t" << street << "\t1\t99\tB\t1234\n";
    ranges << "88321\tS\t\tMain\tSt\t\t1\t99\tO\t\n88321\tP\t\t\t\t\t1\t999\tB\tBOX\n"
              "88321\tR\t\t2\t\t\t1\t90\tB\tBOX\n88321\tH\t\t68\t\t\t1\t90\tB\t\n88321\tG\t\t\t\t\t\t\t\t\n";
    return made;
  }();
  static postal::StreetFileVerifier verifier(folder);
  return verifier;
}

/// Its parts are lines: line 1, line 2, city, state, zip.
platform::PostalAddress AddressOf(std::string_view text) {
  platform::PostalAddress address;
  for (auto* part : {&address.line1, &address.line2, &address.city, &address.state, &address.zip}) {
    const auto end = std::min(text.find('\n'), text.size());
    *part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return address;
}

}  // namespace

// What is standardised settles; what passes is the same address, fits, and passes again; what is
// suggested passes once it is accepted.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto text = fuzz::TextOf(data, size);
  const auto address = AddressOf(text);
  constexpr std::size_t kLongest = 25;  // bytes: what a window lets in
  if (std::max({address.line1.size(), address.line2.size(), address.city.size()}) <= kLongest) {
    // A second time "APT W", which was WEST, is read as the unit that it looks like.
    const auto standard = postal::Standardised(postal::Standardised(address));
    fuzz::Require(postal::Standardised(standard) == standard, "what is standardised is settled");
  }
  const auto verdict = Verifier().Verify(address);
  if (verdict.kind == Kind::kPassed)
    fuzz::Require(postal::IsSameButForForm(address, verdict.address), "what passes is the same address");
  if (verdict.kind != Kind::kUnknown) {
    const auto again = Verifier().Verify(verdict.address);
    fuzz::Require(again.kind == Kind::kPassed && again.address == verdict.address,
                  "what is passed or suggested passes as it is");
  }
  fuzz::Answered(
      [&] { VerifyAddressList(text, Verifier(), {.take = [](const auto&) {}, .tell = [](const auto&) {}}); });
  return 0;
}
