#include "workspace/letters/bookmark_view.h"

#include "tests/workspace/workspace_room_test.h"
#include "workspace/letters/listed_letters.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kFinalistText =
    "Address Validation Error: Finalist verification for residential/mailing address failed";

/// The batch letter browser, with one row.
struct BrowserOfOneLetter : LetterSource {
  std::map<std::string, std::string, std::less<>> row;

  bool IsOpen() const override { return true; }
  bool IsBatchBrowser() const override { return true; }
  std::string CurrentText(std::string_view column) const override { return row.find(column)->second; }
  std::size_t SelectedCount() const override { return 1; }
  void MakeSelectedCurrent(std::size_t) override {}
};

class ABookmarkView : public WorkspaceRoomTest {
 protected:
  ABookmarkView() {
    fakes_.utilities.descriptions[{"LTRPRNTCD", "F"}] = "Printing Failed";
    fakes_.utilities.descriptions[{"LTRPRNTCD", "V"}] = "Address Not Verified";
  }
  static LetterData Letter(const std::string& status, const std::string& error) {
    return {.print_status = status,
            .sequence_number = 8,
            .first_printed = "2024-01-02 03.04.05",
            .print_error = error};
  }
  void BrowserShows(const std::string& number, const std::string& status, const std::string& error) {
    browser_.row = {{"SEQ_NBR", number},
                    {"DCMT_FILE_TXT", "A.DOCX"},
                    {"PRNT_TS", "2025-01-01 00.00.00"},
                    {"LST_PRNT_TS", "2025-02-02 00.00.00"},
                    {"PRNT_STTS_CD", status},
                    {"PRCS_ERR_TXT", error}};
  }
  void AskFor(const LetterData& letter) {
    envelope_.Send({.type = 83, .name = "Letter_BKView", .letter = letter});
  }
  /// What the form is given for the reply.
  LetterInformation Shown(bool with_diagnostics = false) {
    fakes_.server.Reply(fakes::ScriptedReply::With("XML_CONTEXT", {{{"XML_CONTEXT", "<C/>"}}}));
    BookmarkView(fakes_.services(), with_diagnostics, forms_).ViewBookMark(TakeReply());
    EXPECT_THAT(forms_.information, SizeIs(1));
    EXPECT_EQ(fakes_.status.LastText(), "Ready");
    return std::exchange(forms_.information, {}).at(0);
  }

  BrowserOfOneLetter browser_;
};

TEST_F(ABookmarkView, ShowsTheFieldsOfTheLetterAndHowItWasPrinted) {
  AskFor(Letter("F", "Out of paper"));
  const auto letter = Shown();
  EXPECT_EQ(letter.context, "<C/>");
  EXPECT_EQ(letter.first_printed, "2024-01-02 03.04.05");
  EXPECT_EQ(letter.last_printed, "");
  EXPECT_EQ(letter.print_status, "Printing Failed");
  EXPECT_EQ(letter.print_error, "Out of paper");
  EXPECT_EQ(letter.batch_error, std::nullopt);
}

// The row that the browser showed at the reply used to be told of.
TEST_F(ABookmarkView, TellsOfTheLetterThatWasAskedForWhateverRowTheBrowserIsOnByThen) {
  BrowserShows("8", "V", "FINALIST 12");
  AskFor(CurrentLetter(browser_));
  BrowserShows("9", "F", "Out of paper");
  const auto letter = Shown();
  EXPECT_EQ(letter.first_printed, "2025-01-01 00.00.00");
  EXPECT_EQ(letter.last_printed, "2025-02-02 00.00.00");
  EXPECT_EQ(letter.print_status, "Address Not Verified");
  EXPECT_EQ(letter.print_error, kFinalistText);
}

TEST_F(ABookmarkView, ShowsTheErrorOfABatchRunOnlyForDiagnosticsAndALetterFromTheBrowser) {
  BrowserShows("8", "V", "FINALIST 12");
  for (const bool with_diagnostics : {true, false}) {
    AskFor(CurrentLetter(browser_));
    EXPECT_EQ(Shown(with_diagnostics).batch_error.value_or("none"),
              with_diagnostics ? "FINALIST 12" : "none");
    AskFor(Letter("V", "FINALIST 12"));
    EXPECT_EQ(Shown(with_diagnostics).batch_error, std::nullopt);
  }
}

TEST_F(ABookmarkView, ReportsAReplyWithoutALetter) {
  BookmarkView(fakes_.services(), /*with_diagnostics=*/false, forms_).ViewBookMark({});
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.ViewBookMark"));
  EXPECT_THAT(forms_.information, IsEmpty());
}

}  // namespace
}  // namespace workspace
