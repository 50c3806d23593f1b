#include <gmock/gmock.h>

#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// A program that is killed between printer and letter history, and the next one on its data folder.
class KilledProgram : public PreparedOffice {
 protected:
  /// `moment` as kill_at.cpp understands it.
  void PrintsAndIsKilledAt(const std::string& moment) {
    const auto preload = std::string(ZEMLO_BINARY_DIR) + "/lib/libkill-at.so";
    const auto letter = Letters("letter", {"--type", "101", "--customer", "100001", "--print"},
                                "env ASAN_OPTIONS=verify_asan_link_order=0 LD_PRELOAD=" + preload + " " +
                                    Quoted("KILL_AT=" + moment));
    EXPECT_NE(letter.status, 0) << "nobody killed it: " << letter.err;
  }
  Outcome StartsAgain(std::vector<std::string> options) {
    options.insert(options.end(), {"--type", "101", "--customer", "100002"});
    return Letters("letter", options);
  }
  /// Without what has no name of its own yet.
  std::vector<std::filesystem::path> Whole(const std::filesystem::path& folder) {
    auto files = std::filesystem::exists(folder) ? FilesIn(folder) : std::vector<std::filesystem::path>();
    std::erase_if(files, [](const auto& file) { return file.extension() == ".part"; });
    return files;
  }
  std::vector<std::filesystem::path> Notes() { return Whole(data_ / "unrecorded"); }
};

struct Moment {
  const char* moment;
  std::size_t printed;
  const char* recorded;  ///< the customers in the letter history afterwards
  const char* question;  ///< "" where the next start has nothing to ask
};
constexpr Moment kMoments[] = {
    {"before .handing-over", 0, "", ""},
    {"after .handing-over", 0, "", "was on its way to the printer"},
    {"after REG101_2401 1.pdf", 1, "", "was on its way to the printer"},
    {"after .printed", 1, "", "was printed but not recorded"},
    {"after .recording", 1, "", "has not confirmed its record"},
    {"removing .recording", 1, "100001\n", "has not confirmed its record"},
};

TEST_F(KilledProgram, LeavesALetterThatTheNextStartRecordsOnce) {
  for (const auto& [moment, printed, recorded, question] : kMoments) {
    SCOPED_TRACE(moment);
    RunShell("rm -rf " + Quoted((data_ / "printed").string()) + "; mkdir " +
             Quoted((data_ / "printed").string()));
    RunShell("sqlite3 " + Quoted((data_ / "server/server.db").string()) + " 'DELETE FROM letter_history'");
    PrintsAndIsKilledAt(moment);
    EXPECT_THAT(Whole(data_ / "printed"), SizeIs(printed));
    EXPECT_EQ(History("CUST_ID"), recorded);

    const auto next = StartsAgain({"--yes"});
    EXPECT_EQ(next.status, 0) << next.err;
    EXPECT_THAT(next.err, HasSubstr(question));
    const bool is_asked = *question != '\0';
    if (is_asked) {
      EXPECT_THAT(next.err, HasSubstr("\"REG101_2401.docx\", for customer 100001"));
    }
    EXPECT_EQ(History("CUST_ID || DCMT_FILE_TXT || PRNT_STTS_CD"),
              is_asked ? "100001REG101_2401.docxP\n" : "");
    EXPECT_THAT(Notes(), IsEmpty());
  }
}

TEST_F(KilledProgram, KeepsTheLetterUntilSomebodyDecides) {
  PrintsAndIsKilledAt("after .printed");
  for (int start = 0; start < 2; ++start) {
    const auto next = StartsAgain({});
    EXPECT_EQ(next.status, 0) << next.err;
    EXPECT_THAT(next.err, HasSubstr("was printed but not recorded"));
    EXPECT_EQ(History("CUST_ID"), "");
    EXPECT_THAT(Notes(), SizeIs(1));
  }
}

}  // namespace
}  // namespace tests
