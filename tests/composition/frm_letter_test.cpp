#include "composition/frm_letter.h"

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "composition/bookmark_name.h"
#include "tests/fakes/fake_services.h"
#include "tests/fakes/recording_print_component.h"

namespace composition {
namespace {

using platform::Failure;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr auto kLetter = R"(<XML_CONTEXT State="8"><LTR_DT State="4">today</LTR_DT>)"
                         R"(<U_NAME State="8" V_EnglishDesc="Name"/><U_TOWN State="8"/></XML_CONTEXT>)";
constexpr auto kLetterWithParagraphs =
    R"(<XML_CONTEXT State="18"><U_DAY State="8" V_EnglishDesc="Day"/><U_LANG State="8" V_EnglishDesc="Language"/>)"
    R"(<PARA_ONE State="210" V_EnglishDesc="First"/><PARA_FREE_TEXT State="210" V_EnglishDesc="Own text"/>)"
    R"(</XML_CONTEXT>)";

class TheLetterForm : public testing::Test {
 protected:
  TheLetterForm() {
    print.journal = &outside.journal;
    print.bookmarks = {
        {"U_DAY", "[day]", {"U_DAY"}},
        {"PARA_ONE", "An interpreter for [language].\rCome early.", {"PARA_ONE", "U_LANG", "U_DAY__1"}},
        {"U_LANG", "[language]", {"U_LANG"}},
        {"PARA_FREE_TEXT", "[text]", {"PARA_FREE_TEXT"}}};
  }
  void Load(const std::string& context) {
    form = std::make_unique<frmLetter>(outside.services(), "Letters");
    form->BookMarkInput = context;
    form->FileName = "templates/hrg.docx";
    form->TemplateName = "hrg.docx";
    form->Load();
    form->Activate();
  }
  static std::vector<std::string> Column(const platform::Grid& grid, const char* key) {
    std::vector<std::string> texts;
    for (std::size_t row = 0; row < grid.rows()->RecordCount(); ++row)
      texts.push_back(grid.rows()->Text(row, key));
    return texts;
  }
  std::vector<std::string> Listed() { return Column(form->sdgUserBookmark, UserBookmarks::kDescription); }
  void UserFills(std::size_t row, const char* value) { form->sdgUserBookmark.UserEdits(row, value); }
  void UserTicks(std::size_t row, bool tick = true) { form->sdgGrid.UserTicks(row, tick); }
  void UserWrites(const char* text) {
    form->txtParagraph.UserEdits(text);
    form->txtParagraph.UserLeaves();
  }
  void UserConfirms() { form->cmdOK.UserClicks(); }
  std::vector<std::string> Reports() const { return outside.errors.Procedures(); }
  std::string Message() const {
    return outside.host.messages.empty() ? "" : outside.host.messages.back().text;
  }

  static constexpr std::size_t kFirst = 0;
  static constexpr std::size_t kFreeText = 1;

  fakes::RecordingPrintComponent print;
  fakes::FakeServices outside{&print};
  std::unique_ptr<frmLetter> form;
};

TEST_F(TheLetterForm, ListsWhatTheUserSuppliesByDescriptionElseByName) {
  Load(
      R"(<C State="8"><A State="8" V_EnglishDesc="A &amp;lt; B"/><SYS State="4"/><IN State="808"/><B State="8"/>)"
      R"(<PARA_IN State="A10"/><PARA_HIDDEN State="10"/><PARA_ONE State="210"/></C>)");
  EXPECT_THAT(Listed(), ElementsAre("A < B", "B"));
  EXPECT_THAT(Column(form->sdgGrid, ParagraphChoice::kName), ElementsAre("PARA_ONE"));
  EXPECT_FALSE(form->sdgGrid.visible()) << "the letter itself has no paragraphs";
  EXPECT_FALSE(form->txtParagraph.visible());
  EXPECT_THAT(print.calls, IsEmpty());
  EXPECT_EQ(outside.status.LastText(), "Ready");
}

TEST_F(TheLetterForm, ReportsAContextThatDoesNotParseTwiceAndStaysEmpty) {
  const std::string broken = "<C>" + std::string(2000, 'x');
  Load(broken);
  ASSERT_THAT(Reports(), ElementsAre("frmLetter.load", "frmLetter.Load"));
  EXPECT_EQ(outside.errors.reports[0].description, "Message parsing error");
  EXPECT_EQ(outside.errors.reports[1].description, "Message; " + broken.substr(0, 1000));
  EXPECT_THAT(Listed(), IsEmpty());
  EXPECT_FALSE(form->cmdOK.enabled());
}

TEST_F(TheLetterForm, AsksForAllMissingValuesAndPutsTheCursorOnTheFirst) {
  Load(
      R"(<C State="8"><A State="8"/><B State="8" V_EnglishDesc="Bee"/><U_SHERIFFADDR2 State="8"/><D State="8"/></C>)");
  UserFills(0, "a");
  UserFills(3, "  ");
  UserConfirms();
  ASSERT_EQ(outside.host.messages.size(), 1u);
  EXPECT_EQ(Message(), "Enter following bookmark value(s):\r\nBee\r\nD\r\n");
  EXPECT_EQ(outside.host.messages[0].icon, platform::MessageIcon::kExclamation);
  EXPECT_EQ(outside.host.messages[0].title, "Letters");
  EXPECT_EQ(form->sdgUserBookmark.rows()->CurrentRow(), 1u);
  EXPECT_TRUE(form->shown());
  EXPECT_EQ(form->XMLBookMark, "");

  UserFills(1, "b");
  UserFills(3, "d");
  UserConfirms();
  EXPECT_EQ(outside.host.messages.size(), 1u) << "the second line of the sheriff's address may be missing";
  EXPECT_THAT(form->XMLBookMark, HasSubstr(">b</B>"));
}

TEST_F(TheLetterForm, TakesPastedTextWithoutWhatNoDocumentCarries) {
  Load(kLetter);
  UserFills(0, "Ann\v of\x01 Troy\xff");
  UserFills(1, "Troy");
  EXPECT_EQ(form->sdgUserBookmark.rows()->Text(0, UserBookmarks::kValue), "Ann of Troy");
  UserConfirms();
  EXPECT_THAT(form->XMLBookMark, HasSubstr(">Troy</U_TOWN>"));
  EXPECT_THAT(Reports(), IsEmpty());
}

// A cell copied from a spreadsheet ends with a line break, which stood in the middle of the printed sentence.
TEST_F(TheLetterForm, TakesAValueAsOneLineWithoutBlanksAroundIt) {
  Load(kLetter);
  UserFills(0, "\u00A0 Ann\r\n");
  EXPECT_EQ(outside.status.reason, "");
  UserFills(1, " 12 Main St\r\n  Troy\n");
  EXPECT_THAT(Column(form->sdgUserBookmark, UserBookmarks::kValue), ElementsAre("Ann", "12 Main St Troy"));
  EXPECT_EQ(outside.status.reason, "The lines of \"U_TOWN\" have become one line.");
  // The merge would end a paragraph there, and take the marks alone for nothing.
  for (const auto* text : {"Troy||\nOhio", "Troy || Ohio||", "Troy|\x01|Ohio"}) {
    UserFills(1, text);
    EXPECT_THAT(Column(form->sdgUserBookmark, UserBookmarks::kValue), ElementsAre("Ann", "Troy Ohio"))
        << text;
  }
  UserFills(1, "Troy | Ohio");
  EXPECT_THAT(Column(form->sdgUserBookmark, UserBookmarks::kValue), ElementsAre("Ann", "Troy | Ohio"));
  UserFills(1, "||");
  EXPECT_THAT(Column(form->sdgUserBookmark, UserBookmarks::kValue), ElementsAre("Ann", ""));
  UserFills(1, "\u00A0\u200B\uFEFF\u3000\r\n");
  form->sdgUserBookmark.MoveTo(0);
  EXPECT_EQ(form->sdgUserBookmark.NextBlank(), 1u);
  UserConfirms();
  EXPECT_EQ(Message(), "Enter following bookmark value(s):\r\nU_TOWN\r\n");
}

TEST_F(TheLetterForm, CannotBeConfirmedWhereAFieldCouldNotBeRead) {
  Load(R"(<C State="8"><A State="8"/><B State="oops"/><D State="8"/></C>)");
  EXPECT_THAT(Reports(), ElementsAre("frmLetter.GetBookMarkCollection"));
  EXPECT_FALSE(form->cmdOK.enabled());
}

TEST_F(TheLetterForm, LeadsFromOneBlankValueToTheOthersOnly) {
  Load(kLetter);
  form->sdgUserBookmark.MoveTo(0);
  EXPECT_EQ(form->sdgUserBookmark.NextBlank(), 1u);
  UserFills(1, "Troy");
  form->sdgUserBookmark.MoveTo(0);
  EXPECT_EQ(form->sdgUserBookmark.NextBlank(), std::nullopt);
}

TEST_F(TheLetterForm, WritesTheValuesAndOpensThePreview) {
  Load(kLetter);
  UserFills(0, "<Ann & Co>");
  UserFills(1, "Troy");
  UserConfirms();
  EXPECT_EQ(
      form->XMLBookMark,
      R"(<XML_CONTEXT State="8"><LTR_DT State="4">today</LTR_DT><U_NAME State="8" V_EnglishDesc="Name">)"
      R"(&lt;Ann &amp; Co&gt;</U_NAME><U_TOWN State="8">Troy</U_TOWN></XML_CONTEXT>)");
  EXPECT_THAT(print.merged, ElementsAre(form->XMLBookMark));
  EXPECT_THAT(print.calls, Contains("OpenDocument templates/hrg.docx"));
  EXPECT_TRUE(form->shown());
  EXPECT_FALSE(form->DocPrinted);
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(TheLetterForm, ClosesWhenThePreviewWasPrintedAndStaysWhenItWasClosed) {
  Load(kLetter);
  UserFills(0, "Ann");
  UserFills(1, "Troy");
  UserConfirms();
  print.UserCloses();
  EXPECT_TRUE(form->shown());
  UserFills(1, "Rome");
  UserConfirms();
  EXPECT_THAT(print.merged.back(), HasSubstr("Rome"));
  print.UserPrints();
  EXPECT_FALSE(form->shown());
  EXPECT_TRUE(form->DocPrinted);
  EXPECT_THAT(form->XMLBookMark, HasSubstr("Rome"));
}

TEST_F(TheLetterForm, IsLeftEmptyHandedByCancel) {
  Load(kLetterWithParagraphs);
  UserFills(0, "Monday");
  UserTicks(kFirst);
  UserFills(1, "Welsh");
  UserConfirms();
  print.UserCloses();
  form->cmdCancel.UserClicks();
  EXPECT_FALSE(form->shown());
  EXPECT_EQ(form->XMLBookMark, "");
  EXPECT_FALSE(form->DocPrinted);
}

TEST_F(TheLetterForm, GoesOnWithThePreviewWhereAValueHasNoPlace) {
  Load(kLetter);
  UserFills(0, "Ann");
  UserFills(1, "Troy");
  form->sdgUserBookmark.rows()->Set(0, UserBookmarks::kName, "GONE");
  UserConfirms();
  EXPECT_THAT(Reports(), ElementsAre("frmLetter.ReplaceUserBK"));
  EXPECT_THAT(print.merged.back(), Not(HasSubstr("Troy"))) << "the rows after the failed one are not written";
}

TEST_F(TheLetterForm, OpensTheTemplateForItsParagraphsOnceAndReleasesIt) {
  Load(kLetterWithParagraphs);
  const std::string common = outside.settings.TemplateFolder() + "kvcorr.dot";
  EXPECT_THAT(print.calls, ElementsAre("NewDocument", "IsDocumentOpen templates/hrg.docx",
                                       "SetTemplate " + common, "OpenDocument templates/hrg.docx",
                                       "SetNotify", "SetNotifyEnabled true", "Bookmarks"));
  EXPECT_TRUE(form->sdgGrid.visible());
  UserTicks(kFirst);
  EXPECT_EQ(std::ranges::count(print.calls, "Bookmarks"), 1);
  print.calls.clear();
  form->Close();
  EXPECT_THAT(print.calls, ElementsAre("Release kvcorr.dot", "dropped"));
}

TEST_F(TheLetterForm, ReadsTheTemplateAgainWhenItsDocumentWasClosedMeanwhile) {
  Load(kLetterWithParagraphs);
  print.UserCloses();  // the only document open is the one for the paragraphs
  EXPECT_THAT(print.calls, Contains("dropped"));
  UserTicks(kFirst);
  EXPECT_THAT(form->txtParagraph.text(), HasSubstr("An interpreter"));
  print.calls.clear();
  form->Close();
  EXPECT_THAT(print.calls, Contains("Release kvcorr.dot"));
}

TEST_F(TheLetterForm, ShowsTheTickedParagraphsWordingAndKeepsTheFreeText) {
  Load(kLetterWithParagraphs);
  EXPECT_TRUE(form->txtParagraph.read_only());
  UserTicks(kFirst);
  EXPECT_EQ(form->txtParagraph.text(), "An interpreter for [language].\r\nCome early.");
  EXPECT_TRUE(form->txtParagraph.read_only());

  UserTicks(kFreeText);
  EXPECT_EQ(form->txtParagraph.text(), "");
  EXPECT_FALSE(form->txtParagraph.read_only());
  UserWrites("one\ntwo");
  UserTicks(kFreeText, false);
  EXPECT_EQ(form->txtParagraph.text(), "");
  EXPECT_TRUE(form->txtParagraph.read_only());
  form->sdgGrid.UserMovesTo(kFirst);
  EXPECT_THAT(form->txtParagraph.text(), HasSubstr("Come early"));
  UserTicks(kFreeText);
  EXPECT_EQ(form->txtParagraph.text(), "one\r\ntwo");
}

TEST_F(TheLetterForm, ShowsNothingForAParagraphThatTheTemplateLacks) {
  print.bookmarks.erase(print.bookmarks.begin() + 1);
  Load(kLetterWithParagraphs);
  UserTicks(kFirst);
  EXPECT_EQ(form->txtParagraph.text(), "");
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(TheLetterForm, LetsAValueInAnUntickedParagraphBeMissing) {
  Load(kLetterWithParagraphs);
  UserConfirms();
  EXPECT_EQ(Message(), "Enter following bookmark value(s):\r\nDay\r\n") << "its repeat there does not count";
  UserFills(0, "Monday");
  UserConfirms();
  EXPECT_EQ(print.merged.size(), 1u);

  print.UserCloses();
  UserTicks(kFirst);
  UserConfirms();
  EXPECT_EQ(Message(), "Enter following bookmark value(s):\r\nLanguage\r\n");
  EXPECT_EQ(print.merged.size(), 1u);
}

// A refund was denied "for the reason given here:", and none was given.
TEST_F(TheLetterForm, AsksForAParagraphOfAGroupThatTheLetterNeeds) {
  Load(R"(<C State="18"><U_DAY State="8" V_EnglishDesc="Day"/><PARA_HELLO State="210"/>)"
       R"(<PARA_ONE State="210" V_EnglishDesc="First" OneOf="WHY"/>)"
       R"(<PARA_FREE_TEXT State="210" V_EnglishDesc="Own text" OneOf="WHY"/></C>)");
  UserTicks(0);
  UserConfirms();
  EXPECT_EQ(Message(), "Enter following bookmark value(s):\r\nDay\r\nAt least one of: First, Own text\r\n");
  UserFills(0, "Monday");
  UserConfirms();
  EXPECT_EQ(Message(), "Enter following bookmark value(s):\r\nAt least one of: First, Own text\r\n");
  EXPECT_EQ(form->sdgGrid.rows()->CurrentRow(), 1u) << "the cursor goes to the group";
  ASSERT_EQ(form->missing().size(), 1u);
  EXPECT_THAT(form->missing()[0].names, ElementsAre("PARA_ONE", "PARA_FREE_TEXT"));
  EXPECT_THAT(print.merged, IsEmpty());

  UserTicks(2);
  UserWrites("\u00A0\n");
  UserConfirms();
  EXPECT_THAT(print.merged, IsEmpty()) << "a free text without a word gives no reason";
  UserWrites("The claim was paid before.");
  UserConfirms();
  EXPECT_EQ(print.merged.size(), 1u);
  EXPECT_THAT(form->missing(), IsEmpty());
  EXPECT_THAT(Reports(), IsEmpty());
}

// What took a quarter of an hour to type was gone with one press of Esc.
TEST_F(TheLetterForm, KeepsWhatWasEnteredForTheNextFormHoweverItCloses) {
  Load(kLetterWithParagraphs);
  EXPECT_EQ(form->offered_notice.caption(), "");
  UserFills(0, "Monday");
  UserTicks(kFirst);
  UserTicks(kFreeText);
  form->txtParagraph.UserEdits("ABC");  // and the box still has the keyboard
  form->cmdCancel.UserClicks();
  const auto kept = form->Entries();
  EXPECT_EQ(form->XMLBookMark, "");

  form = std::make_unique<frmLetter>(outside.services(), "Letters");
  form->BookMarkInput = kLetterWithParagraphs;
  form->FileName = "templates/hrg.docx";
  form->Offered = kept;
  form->Load();
  form->Activate();
  EXPECT_NE(form->offered_notice.caption(), "");
  EXPECT_THAT(Column(form->sdgUserBookmark, UserBookmarks::kValue), ElementsAre("Monday", ""));
  EXPECT_TRUE(form->sdgGrid.IsTicked(kFirst));
  EXPECT_THAT(form->txtParagraph.text(), HasSubstr("An interpreter")) << "the wording of the first paragraph";
  form->sdgGrid.UserMovesTo(kFreeText);
  EXPECT_EQ(form->txtParagraph.text(), "ABC");
  UserFills(1, "Welsh");
  UserConfirms();
  EXPECT_THAT(print.merged.back(), HasSubstr("ABC||"));
}

TEST_F(TheLetterForm, OffersNothingToFieldsThatTheLetterDoesNotHave) {
  form = std::make_unique<frmLetter>(outside.services(), "Letters");
  form->BookMarkInput = kLetter;
  form->Offered = {.values = {{"GONE", "x"}}, .ticked = {"PARA_ONE"}, .free_text = "ABC"};
  form->Load();
  EXPECT_EQ(form->offered_notice.caption(), "");
  EXPECT_TRUE(form->Entries().values.empty());
}

TEST_F(TheLetterForm, SaysInTheContextWhatIsTickedWhenItIsConfirmed) {
  const auto confirmed = [this] {
    UserConfirms();
    const auto paragraphs = form->XMLBookMark.substr(form->XMLBookMark.find("<PARA_ONE"));
    print.UserCloses();
    return paragraphs;
  };
  Load(kLetterWithParagraphs);
  UserFills(0, "Monday");
  UserFills(1, "Welsh");
  EXPECT_EQ(confirmed(), R"(<PARA_ONE V_EnglishDesc="First" State="40210"/>)"
                         R"(<PARA_FREE_TEXT V_EnglishDesc="Own text" State="40210"/></XML_CONTEXT>)");
  UserTicks(kFirst);
  UserTicks(kFreeText);
  UserWrites("ABC");
  EXPECT_THAT(confirmed(), HasSubstr(R"(<PARA_ONE V_EnglishDesc="First" State="210"/>)"));
  EXPECT_THAT(print.merged.back(), Not(HasSubstr("<PARA_ONE"))) << "its wording stands";
  EXPECT_THAT(print.merged.back(), HasSubstr(R"(State="40210">ABC||&#13;)"));
  EXPECT_THAT(print.merged.back(), HasSubstr("||</PARA_FREE_TEXT>"));
  UserTicks(kFirst, false);
  form->sdgGrid.UserMovesTo(kFreeText);
  UserWrites("   ");
  EXPECT_EQ(confirmed(), R"(<PARA_ONE V_EnglishDesc="First" State="40210"/>)"
                         R"(<PARA_FREE_TEXT V_EnglishDesc="Own text" State="40210"/></XML_CONTEXT>)");
}

TEST_F(TheLetterForm, ReportsAnOperationThatFailsAndGoesOn) {
  print.failing["OpenDocument"] = Failure::Kind::kNotFound;
  Load(kLetterWithParagraphs);
  EXPECT_THAT(Reports(), ElementsAre("frmLetter.GetParagraphBookmark"));
  EXPECT_THAT(Listed(), ElementsAre("Day", "Language"));
  UserTicks(kFirst);
  EXPECT_EQ(form->txtParagraph.text(), "");
}

// Every tick opened the template anew and reported again that it cannot be opened.
TEST_F(TheLetterForm, TriesATemplateThatDoesNotOpenOnceUntilItLetsItGo) {
  print.opens = false;
  Load(kLetterWithParagraphs);
  UserTicks(kFirst);
  UserTicks(kFreeText);
  UserTicks(kFirst, false);
  EXPECT_THAT(Reports(), ElementsAre("frmLetter.GetParagraphBookmark"));

  print.opens = true;
  UserFills(0, "Monday");
  UserFills(1, "Welsh");
  UserConfirms();  // lets the document go for its preview
  UserTicks(kFirst);
  EXPECT_THAT(form->txtParagraph.text(), HasSubstr("An interpreter"));
}

TEST(ABookmarkName, IsARepeatsWithBlanksAroundItToo) {
  EXPECT_TRUE(CheckDoubleUnderScore(" NAME__1 "));
  EXPECT_FALSE(CheckDoubleUnderScore(" NAME__ "));
}

TEST(ABookmarkName, LosesOneLevelOfEscaping) {
  std::string text = "&lt;&gt;&apos;&quot;&amp;lt; & &x;";
  XmlEscapeDecode(text);
  EXPECT_EQ(text, "<>'\"&lt; & &x;");
}

}  // namespace
}  // namespace composition
