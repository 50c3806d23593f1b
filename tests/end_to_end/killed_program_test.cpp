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
  Outcome StartsAgain() { return Letters("letter", {"--type", "101", "--customer", "100002"}); }
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
  const char* state;     ///< of the note; "" where there is none
};
constexpr Moment kMoments[] = {
    {"before .handing-over", 0, "", ""},
    {"after .handing-over", 0, "", "perhaps printed"},
    {"after REG101_2401 1.pdf", 1, "", "perhaps printed"},
    {"after .printed", 1, "", "printed"},
    {"after .recording", 1, "", "sent"},
    {"removing .recording", 1, "100001\n", "sent"},
};

TEST_F(KilledProgram, LeavesALetterThatIsRecordedOnce) {
  for (const auto& [moment, printed, recorded, state] : kMoments) {
    SCOPED_TRACE(moment);
    RunShell("rm -rf " + Quoted((data_ / "printed").string()) + "; mkdir " +
             Quoted((data_ / "printed").string()));
    ServerSql("DELETE FROM letter_history");
    PrintsAndIsKilledAt(moment);
    EXPECT_THAT(Whole(data_ / "printed"), SizeIs(printed));
    EXPECT_EQ(History("CUST_ID"), recorded);

    const auto list = Letters("unrecorded", {"--json"});
    const bool has_note = *state != '\0';
    EXPECT_THAT(Notes(), SizeIs(has_note ? 1 : 0));
    if (!has_note) continue;
    EXPECT_THAT(list.out, HasSubstr("\"state\": \"" + std::string(state) + "\""));
    EXPECT_THAT(list.out, HasSubstr("\\\"REG101_2401.docx\\\", for customer 100001"));
    const auto record = Letters("unrecorded", {"--record", Notes().front().stem().string()});
    EXPECT_EQ(record.status, 0) << record.err;
    EXPECT_EQ(History("CUST_ID || DCMT_FILE_TXT || PRNT_STTS_CD"), "100001REG101_2401.docxP\n");
    EXPECT_THAT(Notes(), IsEmpty());
  }
}

TEST_F(KilledProgram, KeepsTheLetterUntilSomebodyDecides) {
  PrintsAndIsKilledAt("after .printed");
  for (int start = 0; start < 2; ++start) {
    const auto next = StartsAgain();
    EXPECT_EQ(next.status, 0) << next.err;
    EXPECT_THAT(next.err, HasSubstr("\"zemlo-letters unrecorded\""));
    EXPECT_EQ(History("CUST_ID"), "");
    EXPECT_THAT(Notes(), SizeIs(1));
  }
}

TEST_F(KilledProgram, RecordsNothingUnnamedThatWasPerhapsNotPrinted) {
  PrintsAndIsKilledAt("after .handing-over");
  EXPECT_THAT(Letters("unrecorded", {"--record"}).out, HasSubstr("name the note to record it"));
  EXPECT_EQ(History("CUST_ID"), "");
  EXPECT_THAT(Notes(), SizeIs(1));
}

}  // namespace
}  // namespace tests
