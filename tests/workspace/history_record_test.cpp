#include "workspace/letters/history_record.h"

#include "tests/workspace/workspace_room_test.h"
#include "workspace/letters/listed_letters.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;

/// A list with one letter.
struct OneLetterList : LetterSource {
  std::string number;
  bool IsOpen() const override { return true; }
  bool IsBatchBrowser() const override { return true; }
  std::string CurrentText(std::string_view column) const override {
    return column == "SEQ_NBR" ? number : "";
  }
  std::size_t SelectedCount() const override { return 1; }
  void MakeSelectedCurrent(std::size_t) override {}
};

class HistoryRecordTest : public WorkspaceRoomTest {
 protected:
  std::vector<std::string> Sent(RequestDescription message) {
    message.type = 82;
    message.name = "LetterAU";
    envelope_.Send(message);
    return fakes_.server.LastRequest().FindRecord("CORRHIST").Assigned();
  }
  LetterData letter_;
  std::vector<std::string> SentForNewLetter() {
    RequestDescription message;
    history_.SendLetterHistoryADD(message, letter_);
    return Sent(message);
  }
};

TEST_F(HistoryRecordTest, HoldsEverythingOfANewLetter) {
  letter_ = {.letter_type = "120",
             .template_name = "CIT120.docx",
             .form_type = "C",
             .form_number = "1234567",
             .check_digit = "8",
             .context = "<X a='1'>O'Neil</X>",
             .customer_id = "4711",
             .print_status = "V",
             .county_number = "55",
             .process_time = "2004-03-15 09.00.00",
             .address_type = 2};
  EXPECT_THAT(
      SentForNewLetter(),
      ElementsAre("ACTION=ADD", "LTR_TYP_ID=120", "CUST_ID=4711", "FORM_NBR=1234567", "FORM_CK_DGT_NBR=8",
                  "FORM_TYP_CD=C", "DCMT_FILE_TXT=CIT120.docx", "PRNT_STTS_CD=F",
                  "LST_PRNT_TS=1900-01-01 01.01.01", "LST_PRCS_TS=2004-03-15 09.00.00", "SYS_RFRNC_CD=O",
                  "QZ_CNTY_NBR=55", "ADDR_TYP_CD=2", "XML_CONTEXT=<X a=`1`>O`Neil</X>"));
  EXPECT_EQ(letter_.context, "<X a=`1`>O`Neil</X>");
}

// It was reported as a failure to print.
TEST_F(HistoryRecordTest, ThatCannotBeMadeIsReportedUnderTheNameOfWhoFillsIt) {
  const std::pair<const char*, std::function<void(RequestDescription&)>> fillers[] = {
      {"ZEMLO_Corresp.SendLetterHistoryADD",
       [this](auto& message) { history_.SendLetterHistoryADD(message, letter_); }},
      {"ZEMLO_Corresp.SendLetterHistoryUPD",
       [this](auto& message) { history_.SendLetterHistoryUPD(message, letter_); }},
  };
  for (const auto& [procedure, fill] : fillers) {
    fakes_.errors.reports.clear();
    RequestDescription message{.type = 82, .name = "LetterAU"};
    fill(message);
    message.records[0].rows[0].emplace_back("NO_SUCH_COLUMN", "1");
    EXPECT_THROW(envelope_.Send(message), platform::AbandonStep);
    EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre(procedure));
    EXPECT_TRUE(fakes_.server.requests.empty());
  }
}

TEST_F(HistoryRecordTest, LeavesFormColumnsNullWhereThereIsNoForm) {
  SentForNewLetter();
  const auto& row = *fakes_.server.LastRequest().FindRecord("CORRHIST").rows;
  for (const auto* column : {"FORM_NBR", "FORM_CK_DGT_NBR", "FORM_TYP_CD", "SEQ_NBR"}) {
    EXPECT_TRUE(row.Get(column).IsNull()) << column;
  }
  EXPECT_FALSE(row.Get("CUST_ID").IsNull());
}

// The row that the batch letter browser showed at the print used to be recorded.
TEST_F(HistoryRecordTest, NamesTheReprintedLetterWhateverRowTheBrowserIsOnByThen) {
  OneLetterList browser;
  browser.number = "17";
  envelope_.Send({.type = 83, .name = "Letter_Preview", .letter = CurrentLetter(browser)});
  browser.number = "99";
  fakes_.server.ReplyWithNothing();
  auto letter = TakeReply().letter;
  printing_.PrintDoc(letter, "Letter_Preview");
  EXPECT_THAT(fakes_.server.LastRequest().FindRecord("CORRHIST").Assigned(),
              ElementsAre("ACTION=UPD", "SEQ_NBR=17", "PRNT_STTS_CD=F", "LST_PRNT_TS=1900-01-01 01.01.01"));
  EXPECT_EQ(pending_.name(), "BatchAU");
}

}  // namespace
}  // namespace workspace
