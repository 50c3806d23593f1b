#include "composition/preview_doc.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"
#include "tests/fakes/recording_print_component.h"

namespace composition {
namespace {

using platform::Failure;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Not;

constexpr auto kFile = "templates/ctl.docx";
constexpr auto kTemplate = "CTL.docx";
constexpr auto kContext = R"(<XML_CONTEXT><U_NAME>Ann</U_NAME></XML_CONTEXT>)";

class PreviewDocTest : public testing::Test {
 protected:
  PreviewDocTest() {
    print.journal = &outside.journal;
    outside.clock.asleep = [this](auto wait) { outside.journal.Add("wait " + std::to_string(wait.count())); };
    preview = std::make_unique<ZEMLO_PreviewDoc>(services);
    word_printed_ = preview->WordPrinted.Connect([this] { ++prints_announced; });
    close_form_ = preview->CloseLetterForm.Connect([this] { ++forms_closed; });
  }

  void Preview(const std::string& context = kContext) { preview->PreviewDoc(kFile, kTemplate, context); }
  const std::vector<std::string>& Journal() const { return outside.journal.lines(); }
  std::vector<std::string> Reports() const { return outside.errors.Procedures(); }
  /// What the merge was given for this context.
  std::string Merged(const std::string& context) {
    Preview(context);
    return print.merged.empty() ? "(nothing)" : print.merged.back();
  }
  void ExpectPutBack() const {
    EXPECT_EQ(outside.status.LastText(), "Ready");
    EXPECT_EQ(outside.host.pointer, platform::MousePointer::kNormal);
  }

  fakes::RecordingPrintComponent print;
  fakes::FakeServices outside{&print};
  const platform::Services& services = outside.services();
  int prints_announced = 0;
  int forms_closed = 0;
  std::unique_ptr<ZEMLO_PreviewDoc> preview;
  platform::Connection word_printed_;
  platform::Connection close_form_;
};

TEST_F(PreviewDocTest, APreviewOpensWaitsMergesAndShowsInThisOrder) {
  EXPECT_FALSE(preview->PreviewDoc(kFile, kTemplate, kContext));
  EXPECT_THAT(Journal(),
              ElementsAre("print NewDocument", "status Prepare Print Preview", "print Prepare",
                          "print SetHandOver", "print IsDocumentOpen templates/ctl.docx",
                          "print SetTemplate templates/kvcorr.dot", "print OpenDocument templates/ctl.docx",
                          "wait 1500", "print SetNotify", "print SetNotifyEnabled true",
                          "print MergeBookmarks", "print ShowPreview", "status Ready", "pointer normal"));
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(PreviewDocTest, APrintTakesNoTemplateAndNoNoticeAndKeepsNoDocument) {
  EXPECT_TRUE(preview->PrintDocument(kFile, kContext, true));
  EXPECT_THAT(Journal(),
              ElementsAre("print NewDocument", "status Prepare Print", "print Prepare", "print SetHandOver",
                          "print IsDocumentOpen templates/ctl.docx", "print OpenDocument templates/ctl.docx",
                          "print MergeBookmarks", "print PrintOut 1 dialog", "print EndPrint 1",
                          "status Ready", "pointer normal", "print dropped"));
  EXPECT_EQ(prints_announced, 0);
}

TEST_F(PreviewDocTest, APrintAnswersWhatThePrinterAnswered) {
  print.prints = false;
  EXPECT_FALSE(preview->PrintDocument(kFile, kContext, false));
  EXPECT_TRUE(print.HasCalled("PrintOut 1"));
  EXPECT_TRUE(print.HasCalled("EndPrint 1"));
}

// The letter lay in the tray, and was called not printed.
TEST_F(PreviewDocTest, APrintStaysPrintedWhereItsEndFails) {
  print.failing = {{"EndPrint", Failure::Kind::kUnavailable}};
  EXPECT_TRUE(preview->PrintDocument(kFile, kContext, false));
  EXPECT_THAT(Reports(), ElementsAre("ZEMLO_Corresp.PrintDocument"));
  EXPECT_EQ(print.calls.back(), "dropped");
}

TEST_F(PreviewDocTest, ALetterWithAPlaceholderGoesOutOnlyWhenItsReaderSaysSo) {
  print.not_filled = {"DUE_DT", "U_DAY"};
  outside.host.answers = {platform::MessageAnswer::kNo};
  Preview();
  EXPECT_THAT(outside.host.messages, IsEmpty()) << "it can be looked at";
  print.UserPrints();
  EXPECT_EQ(prints_announced, 0);
  preview->SaveDocument(kFile, kTemplate, kContext);
  EXPECT_EQ(prints_announced, 0) << "No is the default";
  ASSERT_EQ(outside.host.messages.size(), 2u);
  const auto& question = outside.host.messages[1];
  EXPECT_EQ(
      question.text,
      "Nothing fills these places of the letter, which show the template's placeholder:\r\nDUE_DT\r\nU_DAY"
      "\r\nShould the letter go out all the same?");
  EXPECT_EQ(question.title, outside.host.caption);
  EXPECT_EQ(question.icon, platform::MessageIcon::kQuestion);
  EXPECT_EQ(question.topic, platform::MessageTopic::kUnfilledLetter);
  EXPECT_THAT(outside.print_journal.notes, IsEmpty());

  outside.host.answers = {platform::MessageAnswer::kYes};
  print.UserPrints();
  EXPECT_EQ(prints_announced, 1);
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(PreviewDocTest, ALetterWithAPlaceholderIsNeverPrintedUnseen) {
  print.not_filled = {"DUE_DT", "U_DAY"};
  EXPECT_FALSE(preview->PrintDocument(kFile, kContext, false));
  ASSERT_THAT(Reports(), ElementsAre("ZEMLO_Corresp.PrintDocument"));
  EXPECT_THAT(outside.errors.reports[0].description,
              testing::HasSubstr("nothing fills \"DUE_DT\", \"U_DAY\"."));
  EXPECT_THAT(outside.host.messages, IsEmpty());
  ExpectPutBack();
}

TEST_F(PreviewDocTest, ASaveProposesTheNameThatTheHolderGives) {
  preview->ProposedName = "Refund Claim Denial - Ann - 2026-07-14";
  preview->SaveDocument(kFile, kTemplate, kContext);
  EXPECT_THAT(print.proposed_names, ElementsAre(preview->ProposedName));
}

TEST_F(PreviewDocTest, ASaveIsAPreviewThatThenAsksForAFile) {
  preview->SaveDocument(kFile, kTemplate, kContext);
  const auto& lines = Journal();
  EXPECT_THAT(std::vector(lines.end() - 6, lines.end()),
              ElementsAre("print ShowPreview", "status Ready", "pointer normal", "print SaveToFile '' ''",
                          "status Ready", "pointer normal"));
  EXPECT_EQ(prints_announced, 1);
}

TEST_F(PreviewDocTest, WaitsForTheDelayThatIsSetButNeverLessThanAMomentAndAHalf) {
  for (const auto& [set, waited] : {std::pair{0, 1500}, {1500, 1500}, {1501, 1501}, {2000, 2000}}) {
    outside.settings.preview_delay = std::chrono::milliseconds(set);
    Preview();
    EXPECT_EQ(outside.clock.waits.back().count(), waited) << set;
  }
}

TEST_F(PreviewDocTest, ADocumentThatIsOpenAlreadyIsLeftAlone) {
  print.is_document_open = true;
  Preview();
  EXPECT_EQ(print.calls.back(), "IsDocumentOpen templates/ctl.docx");
  EXPECT_FALSE(preview->PrintDocument(kFile, kContext, false));
  EXPECT_THAT(print.calls, Not(Contains("OpenDocument templates/ctl.docx")));
  EXPECT_THAT(Reports(), IsEmpty());
  ExpectPutBack();
}

TEST_F(PreviewDocTest, OnlyMarkedParagraphsReachTheMerge) {
  struct Case {
    const char* context;
    const char* merged;
  };
  for (const auto& [context, merged] : {
           Case{R"(<C><PARA_A State="40010"/></C>)", R"(<C><PARA_A State="40010"/></C>)"},
           Case{R"(<C><PARA_A State="10"/><PARA_B/>x<U>1</U></C>)", R"(<C>x<U>1</U></C>)"},
           Case{R"(<C><MYPARA_X/><para_x/><PARA/></C>)", R"(<C><para_x/><PARA/></C>)"},
           Case{R"(<C><T><PARA_IN/></T></C>)", R"(<C><T><PARA_IN/></T></C>)"},
           Case{R"(<PARA_C/>)", R"(<PARA_C/>)"},
       }) {
    EXPECT_EQ(Merged(context), merged) << context;
  }
}

TEST_F(PreviewDocTest, AContextThatCannotBeReadIsReportedAndOpensNothing) {
  for (const std::string context : {"", "<C>", "<C><PARA_A State='?'/></C>"}) {
    SCOPED_TRACE(context);
    print.calls.clear();
    outside.errors.reports.clear();
    Preview(context);
    EXPECT_FALSE(preview->PrintDocument(kFile, context, false));
    EXPECT_THAT(Reports(), ElementsAre("ZEMLO_PreviewDoc.GetBKforPrint", "ZEMLO_PreviewDoc.GetBKforPrint"));
    EXPECT_THAT(print.calls,
                ElementsAre("NewDocument", "Release kvcorr.dot", "dropped", "NewDocument", "dropped"));
    ExpectPutBack();
  }
  EXPECT_THAT(outside.status.texts, Contains("Prepare Print Preview"));
}

TEST_F(PreviewDocTest, WithoutPermissionForAStepTheNextOnesFollow) {
  Preview();
  const auto undisturbed = print.calls;
  for (const auto* step :
       {"Prepare", "IsDocumentOpen", "SetTemplate", "OpenDocument", "SetNotify", "SetNotifyEnabled"}) {
    SCOPED_TRACE(step);
    preview = std::make_unique<ZEMLO_PreviewDoc>(services);
    print.failing = {{step, Failure::Kind::kPermissionDenied}};
    print.calls.clear();
    Preview();
    EXPECT_THAT(print.calls, ElementsAreArray(undisturbed));
  }
  print.failing = {{"Release", Failure::Kind::kPermissionDenied}};
  print.merged.clear();
  Preview();
  EXPECT_EQ(print.merged.size(), 1u);
  EXPECT_THAT(Reports(), IsEmpty());
}

// The save went on with whatever was open, and the report said that no letter was.
TEST_F(PreviewDocTest, ALetterThatWasNotMergedIsNeitherShownNorSavedAndTheReportNamesTheCause) {
  struct Case {
    std::map<std::string, Failure::Kind> failing;
    const char* report;
  };
  const auto denied = Failure::Kind::kPermissionDenied;
  const auto broken = Failure::Kind::kUnavailable;
  for (const auto& [failing, report] :
       {Case{{{"MergeBookmarks", denied}}, "MergeBookmarks has failed"},
        Case{{{"MergeBookmarks", broken}}, "MergeBookmarks has failed"},
        Case{{{"OpenDocument", denied}, {"MergeBookmarks", broken}}, "OpenDocument has failed"},
        Case{{{"ShowPreview", denied}}, "ShowPreview has failed"}}) {
    SCOPED_TRACE(report);
    print.failing = failing;
    print.calls.clear();
    outside.errors.reports.clear();
    preview->SaveDocument(kFile, kTemplate, kContext);
    ASSERT_THAT(Reports(), ElementsAre("ZEMLO_Corresp.PreviewDoc"));
    EXPECT_EQ(outside.errors.reports[0].description, report);
    EXPECT_EQ(print.HasCalled("ShowPreview"), failing.contains("ShowPreview"));
    EXPECT_FALSE(print.HasCalled("SaveToFile '' ''"));
    ExpectPutBack();
  }
}

TEST_F(PreviewDocTest, AnyOtherFailureIsReportedAndEndsThePreviewWithTheScreenPutBack) {
  for (const auto* step : {"NewDocument", "Prepare", "IsDocumentOpen", "SetTemplate", "OpenDocument",
                           "SetNotify", "SetNotifyEnabled", "MergeBookmarks", "ShowPreview"}) {
    SCOPED_TRACE(step);
    outside.errors.reports.clear();
    outside.status.texts.clear();
    print.failing = {{step, Failure::Kind::kUnavailable}};
    Preview();
    EXPECT_THAT(print.calls.back(), testing::StartsWith(step));
    EXPECT_THAT(Reports(), ElementsAre("ZEMLO_Corresp.PreviewDoc"));
    ExpectPutBack();
  }
}

TEST_F(PreviewDocTest, APrintReportsEvenMissingPermissionAndDropsTheDocument) {
  print.failing = {{"PrintOut", Failure::Kind::kPermissionDenied}};
  EXPECT_FALSE(preview->PrintDocument(kFile, kContext, false));
  EXPECT_THAT(Reports(), ElementsAre("ZEMLO_Corresp.PrintDocument"));
  EXPECT_EQ(print.calls.back(), "dropped");
  ExpectPutBack();
}

TEST_F(PreviewDocTest, ALetterThatDidNotOpenOrMergeIsNeverPrinted) {
  print.opens = false;
  EXPECT_FALSE(preview->PrintDocument(kFile, kContext, false));
  print.opens = true;
  print.merges = false;
  EXPECT_FALSE(preview->PrintDocument(kFile, kContext, false));
  EXPECT_FALSE(print.HasCalled("PrintOut 1"));
  EXPECT_THAT(Reports(), ElementsAre("ZEMLO_Corresp.PrintDocument", "ZEMLO_Corresp.PrintDocument"));
}

TEST_F(PreviewDocTest, AFailedSaveIsReportedUnderItsOwnName) {
  print.failing = {{"SaveToFile", Failure::Kind::kPermissionDenied}};
  preview->SaveDocument(kFile, kTemplate, kContext);
  EXPECT_THAT(Reports(), ElementsAre("ZEMLO_Corresp.SaveDoc"));
  ExpectPutBack();
}

TEST_F(PreviewDocTest, EveryPrintFromThePreviewIsAnnounced) {
  Preview();
  print.UserPrints();
  print.UserPrints();
  EXPECT_EQ(prints_announced, 2);
  EXPECT_EQ(forms_closed, 2);
}

TEST_F(PreviewDocTest, ABadAddressSwallowsOnePrintButStillClosesTheForm) {
  Preview();
  preview->BadAddress = true;
  print.UserPrints();
  EXPECT_EQ(prints_announced, 0);
  EXPECT_EQ(forms_closed, 1);
  EXPECT_FALSE(preview->BadAddress);
  print.UserPrints();
  EXPECT_EQ(prints_announced, 1);
}

TEST_F(PreviewDocTest, ACancelledSaveLeavesTheBadAddressForTheHolderToSee) {
  print.save_is_cancelled = true;
  preview->BadAddress = true;
  preview->SaveDocument(kFile, kTemplate, kContext);
  EXPECT_TRUE(preview->BadAddress);
  EXPECT_EQ(prints_announced, 0);
}

TEST_F(PreviewDocTest, ThePreviousPreviewIsReleasedBeforeTheNextDocumentIsMade) {
  Preview();
  print.calls.clear();
  Preview();
  EXPECT_THAT(std::vector(print.calls.begin(), print.calls.begin() + 3),
              ElementsAre("Release kvcorr.dot", "dropped", "NewDocument"));
  print.calls.clear();
  preview->PrintDocument(kFile, kContext, false);
  EXPECT_THAT(std::vector(print.calls.begin(), print.calls.begin() + 3),
              ElementsAre("Release kvcorr.dot", "dropped", "NewDocument"));
}

TEST_F(PreviewDocTest, TheDocumentIsReleasedOnceWhenItsReaderClosesIt) {
  Preview();
  print.calls.clear();
  print.UserCloses();
  print.UserCloses();
  print.UserPrints();
  preview.reset();
  EXPECT_THAT(print.calls, ElementsAre("Release kvcorr.dot", "dropped"));
  EXPECT_EQ(prints_announced, 0);
}

TEST_F(PreviewDocTest, TheEndOfTheObjectReleasesAnOpenPreview) {
  Preview();
  print.calls.clear();
  print.failing = {{"Release", Failure::Kind::kUnavailable}};
  preview.reset();
  EXPECT_THAT(print.calls, ElementsAre("Release kvcorr.dot", "dropped"));
  EXPECT_THAT(Reports(), ElementsAre("ZEMLO_PreviewDoc.Class_Terminate"));
}

TEST_F(PreviewDocTest, AReleaseThatFailsWhenTheReaderClosesIsReported) {
  Preview();
  print.failing = {{"Release", Failure::Kind::kPermissionDenied}};
  print.UserCloses();
  EXPECT_THAT(Reports(), ElementsAre("ZEMLO_PreviewDoc.mclsNotify_DocEnd"));
}

TEST_F(PreviewDocTest, AHolderMayDestroyItWhateverItIsTold) {
  const auto drop = [this] { preview.reset(); };
  const auto print_it = [this] {
    Preview();
    print.UserPrints();
  };
  struct Case {
    platform::Event<> ZEMLO_PreviewDoc::*told;
    std::function<void()> user;
  };
  for (const auto& [told, user] :
       {Case{&ZEMLO_PreviewDoc::WordPrinted, print_it},
        Case{&ZEMLO_PreviewDoc::WordPrinted, [this] { preview->SaveDocument(kFile, kTemplate, kContext); }},
        Case{&ZEMLO_PreviewDoc::CloseLetterForm, print_it}}) {
    preview = std::make_unique<ZEMLO_PreviewDoc>(services);
    const auto holder = ((*preview).*told).Connect(drop);
    user();
    EXPECT_EQ(preview, nullptr);
    EXPECT_EQ(print.calls.back(), "dropped");
    ExpectPutBack();
  }
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(PreviewDocTest, AHolderThatFailsIsReportedUnderTheNotice) {
  const auto holder =
      preview->WordPrinted.Connect([] { throw Failure(Failure::Kind::kUnavailable, "no server"); });
  Preview();
  print.UserPrints();
  EXPECT_THAT(Reports(), ElementsAre("ZEMLO_PreviewDoc.Err_mclsNotify_DocPrint"));
}

}  // namespace
}  // namespace composition
