#include "workspace/letters/bookmark_view.h"

#include "tests/workspace/workspace_room_test.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kFinalistText =
    "Address Validation Error: Finalist verification for residential/mailing address failed";

/// The batch letter browser, with one row.
struct BrowserOfOneLetter : LetterSource {
  bool open = false;
  std::map<std::string, std::string, std::less<>> row;

  bool IsOpen() const override { return open; }
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
  void GivenListedLetter(const std::string& status, const std::string& error) {
    pages_.tracking.sdgGrid.Bind(fakes::RowsOf("", {{{"SEQ_NBR", 7},
                                                     {"PRNT_TS", "1999-09-09 09.09.09"},
                                                     {"LST_PRNT_TS", ""},
                                                     {"PRNT_STTS_CD", "P"},
                                                     {"PRCS_ERR_TXT", ""}},
                                                    {{"SEQ_NBR", 8},
                                                     {"PRNT_TS", "2024-01-02 03.04.05"},
                                                     {"LST_PRNT_TS", platform::Value::Null()},
                                                     {"PRNT_STTS_CD", status},
                                                     {"PRCS_ERR_TXT", error}}}));
    pages_.tracking.sdgGrid.MakeCurrent(0);  // chosen since
  }
  void GivenBrowsedLetter(const std::string& status, const std::string& error) {
    browser_.open = true;
    browser_.row = {{"PRNT_TS", "2025-01-01 00.00.00"},
                    {"LST_PRNT_TS", "2025-02-02 00.00.00"},
                    {"PRNT_STTS_CD", status},
                    {"PRCS_ERR_TXT", error}};
  }
  /// What the form is given for the reply.
  LetterInformation Shown(bool with_diagnostics = false) {
    envelope_.Send({.type = 83, .name = "Letter_BKView", .letter = {.sequence_number = 8}});
    fakes_.server.Reply(fakes::ScriptedReply::With("XML_CONTEXT", {{{"XML_CONTEXT", "<C/>"}}}));
    View(with_diagnostics).ViewBookMark(TakeReply());
    EXPECT_THAT(forms_.information, SizeIs(1));
    EXPECT_EQ(fakes_.status.LastText(), "Ready");
    return std::exchange(forms_.information, {}).at(0);
  }

  BrowserOfOneLetter browser_;
  BookmarkView View(bool with_diagnostics) {
    return BookmarkView({fakes_.services(), with_diagnostics, pages_.tracking.sdgGrid, &browser_, forms_});
  }
};

TEST_F(ABookmarkView, ShowsTheFieldsOfTheLetterAndHowItWasPrinted) {
  GivenListedLetter("F", "Out of paper");
  const auto letter = Shown();
  EXPECT_EQ(letter.context, "<C/>");
  EXPECT_EQ(letter.first_printed, "2024-01-02 03.04.05");
  EXPECT_EQ(letter.last_printed, "");
  EXPECT_EQ(letter.print_status, "Printing Failed");
  EXPECT_EQ(letter.print_error, "Out of paper");
  EXPECT_EQ(letter.batch_error, std::nullopt);
}

TEST_F(ABookmarkView, TakesTheLetterOfTheBatchLetterBrowserWhileItIsOpen) {
  GivenListedLetter("F", "Out of paper");
  GivenBrowsedLetter("V", "FINALIST 12");
  auto letter = Shown();
  EXPECT_EQ(letter.first_printed, "2025-01-01 00.00.00");
  EXPECT_EQ(letter.last_printed, "2025-02-02 00.00.00");
  EXPECT_EQ(letter.print_status, "Address Not Verified");
  EXPECT_EQ(letter.print_error, kFinalistText);
  EXPECT_EQ(letter.batch_error, std::nullopt);

  EXPECT_EQ(Shown(/*with_diagnostics=*/true).batch_error, "FINALIST 12");
  browser_.open = false;
  EXPECT_EQ(Shown(/*with_diagnostics=*/true).batch_error, std::nullopt)
      << "only of a letter from the browser";
}

TEST_F(ABookmarkView, ReportsAReplyWithoutALetterAndAMissingRow) {
  View(false).ViewBookMark({});
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.ViewBookMark"));
  GivenListedLetter("F", "");
  pages_.tracking.sdgGrid.Bind(nullptr);
  envelope_.Send({.type = 83, .name = "Letter_BKView", .letter = {.sequence_number = 8}});
  fakes_.server.Reply(fakes::ScriptedReply::With("XML_CONTEXT", {{{"XML_CONTEXT", "<C/>"}}}));
  View(false).ViewBookMark(TakeReply());
  EXPECT_THAT(fakes_.errors.reports, SizeIs(2));
  EXPECT_THAT(forms_.information, IsEmpty());
}

}  // namespace
}  // namespace workspace
