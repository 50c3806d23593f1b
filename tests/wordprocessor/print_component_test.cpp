#include "wordprocessor/printing/print_component.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/whole_file.h"
#include "tests/fakes/manual_clock.h"
#include "tests/fakes/recording_errors.h"
#include "tests/fakes/recording_host.h"
#include "tests/support/waiting_event_queue.h"
#include "tests/wordprocessor/fake_queues.h"
#include "tests/wordprocessor/layout_letter.h"

namespace wordprocessor {
namespace {

using platform::Failure;
using platform::PreviewContent;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// A viewer whose reader is the test.
class Viewer : public platform::PreviewViewer {
 public:
  int opened = 0;
  std::filesystem::path pdf;  ///< of the window opened last
  std::string title;
  std::vector<std::string> not_filled;

  int open() const { return static_cast<int>(windows_.size()); }
  /// What the reader does in the window opened last; the function is the window's own.
  void Press(std::function<void()> platform::PreviewContent::*button) {
    (windows_.back()->content.*button)();
  }

  std::unique_ptr<platform::PreviewWindow> Open(platform::PreviewContent content) override {
    ++opened;
    pdf = content.pdf;
    title = content.title;
    not_filled = content.not_filled;
    return std::make_unique<Window>(*this, std::move(content));
  }

 private:
  struct Window : platform::PreviewWindow {
    Window(Viewer& its_viewer, platform::PreviewContent its_content)
        : viewer(its_viewer), content(std::move(its_content)) {
      viewer.windows_.push_back(this);
    }
    ~Window() override { std::erase(viewer.windows_, this); }
    Viewer& viewer;
    platform::PreviewContent content;
  };
  std::vector<Window*> windows_;
};

class Observer : public platform::PrintObserver {
 public:
  std::vector<std::string> lines;
  bool under_way = false;

  void LetterPrinted(const std::string& destination) override { lines.push_back("printed " + destination); }
  void LetterSaved(const std::filesystem::path& file) override { lines.push_back("saved " + file.string()); }
  void LayoutUnderWay(bool is_under_way) override { under_way = is_under_way; }
  void BookmarksNotFilled(const std::string& document, const std::vector<std::string>& names) override {
    for (const auto& name : names) lines.push_back("not filled " + document + " " + name);
  }
};

std::string Bookmark(const std::string& name) {
  return "<w:p><w:bookmarkStart w:id=\"1\" w:name=\"" + name +
         "\"/><w:r><w:t>blank</w:t></w:r><w:bookmarkEnd w:id=\"1\"/></w:p>";
}

constexpr const char* kContext = "<XML_CONTEXT><NAME>Ada Fuel Co.</NAME></XML_CONTEXT>";

/// A print component whose pages come from a fake layout process.
class PrintComponentTest : public testing::Test {
 protected:
  PrintComponentTest() {
    std::filesystem::create_directory(templates_);
    platform::WriteScratchFile(templates_ / "CTL110.docx", Letter(Paragraph("Dear") + Bookmark("NAME")));
    MakeComponent("zemlo-fake-worker");
  }

  void MakeComponent(const std::filesystem::path& program) {
    component_ = nullptr;
    LayoutSettings settings;
    settings.worker_program = std::filesystem::path(ZEMLO_BINARY_DIR) / "bin" / program;
    settings.work_folder = folder_ / "work";
    pool_ = std::make_unique<LayoutPool>(settings);
    component_ = std::make_unique<OfficePrintComponent>(
        PrintSurroundings{host_, events_, viewer_, observer_, errors_, *pool_, printers_}, templates_,
        printing_);
  }
  /// Opened and merged, its events written down.
  void GivenMergedLetter() {
    document_ = component_->NewDocument();
    document_->Prepare();
    document_->OpenDocument((templates_ / "CTL110.docx").string());
    end_ = notify_->DocEnd.Connect([this] { Heard("DocEnd"); });
    print_ = notify_->DocPrint.Connect([this] { Heard("DocPrint"); });
    document_->SetNotify(notify_);
    document_->SetNotifyEnabled(true);
    document_->MergeBookmarks(kContext);
  }
  void GivenPreview() {
    GivenMergedLetter();
    document_->ShowPreview();
    ASSERT_EQ(viewer_.open(), 0) << "opened inside ShowPreview";
    ASSERT_TRUE(component_->HasWorkUnderWay());
    events_.RunOne();
    ASSERT_EQ(viewer_.open(), 1);
    ASSERT_FALSE(component_->HasWorkUnderWay());
  }
  void Heard(const std::string& event) {
    heard_.push_back(event);
    if (event == drop_at_) document_ = nullptr;
  }
  std::string Refusal(const std::function<void()>& work) {
    try {
      work();
    } catch (const Failure& failure) {
      return failure.description();
    }
    return "done";
  }

  tests::TemporaryFolder folder_;
  const std::filesystem::path templates_ = folder_ / "templates";
  const std::filesystem::path printed_ = folder_ / "printed";
  fakes::RecordingHost host_;
  fakes::RecordingErrors errors_;
  fakes::ManualClock clock_;
  tests::WaitingEventQueue events_;
  Viewer viewer_;
  Observer observer_;
  FakeQueues queues_;
  Printers printers_{queues_, printed_, clock_};
  OfficePrintComponent::Printing printing_;
  std::unique_ptr<LayoutPool> pool_;
  std::unique_ptr<OfficePrintComponent> component_;

  std::shared_ptr<platform::PrintNotify> notify_ = std::make_shared<platform::PrintNotify>();
  platform::Connection end_, print_;
  std::vector<std::string> heard_;
  std::string drop_at_;  ///< the event at which the holder drops the document
  std::unique_ptr<platform::PrintDocument> document_;
};

TEST_F(PrintComponentTest, ShowsThePagesAndTellsWhenTheReaderClosesThem) {
  GivenPreview();
  const auto pdf = viewer_.pdf;
  EXPECT_EQ(viewer_.title, "CTL110.docx");
  EXPECT_THAT(platform::ReadWholeFile(pdf), StartsWith("pages by "));
  viewer_.Press(&PreviewContent::closed);
  EXPECT_THAT(heard_, ElementsAre("DocEnd"));
  events_.RunOne();
  EXPECT_EQ(viewer_.open(), 0);
  document_ = nullptr;
  EXPECT_FALSE(std::filesystem::exists(pdf)) << "nobody looks at it any more";
}

TEST_F(PrintComponentTest, TellsWhileALetterIsBeingLaidOut) {
  GivenMergedLetter();
  document_->ShowPreview();
  EXPECT_TRUE(observer_.under_way);
  events_.RunOne();
  EXPECT_FALSE(observer_.under_way);
}

TEST_F(PrintComponentTest, PrintsFromThePreview) {
  GivenPreview();
  viewer_.Press(&PreviewContent::print);
  const auto file = printed_ / "2004-03-15 09.00.00 CTL110 1.pdf";
  EXPECT_THAT(observer_.lines, ElementsAre("printed " + file.string()));
  EXPECT_THAT(heard_, ElementsAre("DocPrint"));
  EXPECT_EQ(platform::ReadWholeFile(file), platform::ReadWholeFile(viewer_.pdf));
}

TEST_F(PrintComponentTest, ReportsAPrinterThatRefusesAndTellsOfNoPrint) {
  queues_.names = {"laser"};
  queues_.jammed = true;
  GivenPreview();
  viewer_.Press(&PreviewContent::print);
  EXPECT_THAT(errors_.Procedures(), ElementsAre("ZEMLO_Print.PrintOut"));
  EXPECT_THAT(heard_, IsEmpty());
  EXPECT_THAT(observer_.lines, IsEmpty());
}

TEST_F(PrintComponentTest, ReportsPagesThatCannotBeLaidOutAndEndsTheDocument) {
  MakeComponent("no-such-program");
  GivenMergedLetter();
  document_->ShowPreview();
  events_.RunOne();
  EXPECT_THAT(errors_.Procedures(), ElementsAre("ZEMLO_Print.ShowPreview"));
  EXPECT_THAT(errors_.reports.at(0).description, HasSubstr("\"CTL110.docx\""));
  EXPECT_THAT(heard_, ElementsAre("DocEnd"));
  EXPECT_EQ(viewer_.opened, 0);
}

TEST_F(PrintComponentTest, SurvivesAHolderThatDropsTheDocumentInsideAnEvent) {
  const auto saved = folder_ / "letter.docx";
  const std::vector<std::pair<const char*, std::function<void()>>> steps = {
      {"DocEnd", [&] { viewer_.Press(&PreviewContent::closed); }},
      {"DocPrint", [&] { viewer_.Press(&PreviewContent::print); }},
      {"DocPrint", [&] { viewer_.Press(&PreviewContent::save); }},
      {"DocPrint", [&] { document_->PrintOut(1, false); }},
      {"DocPrint", [&] { document_->SaveToFile(saved.string(), ""); }},
  };
  for (std::size_t step = 0; step < steps.size(); ++step) {
    SCOPED_TRACE(step);
    heard_.clear();
    drop_at_.clear();
    GivenPreview();
    drop_at_ = steps[step].first;
    host_.save_files = {saved.string()};
    steps[step].second();
    EXPECT_THAT(heard_, ElementsAre(drop_at_));
    EXPECT_EQ(document_, nullptr);
    if (viewer_.open() > 0) events_.RunOne();
    EXPECT_EQ(viewer_.open(), 0) << "the window stands without its letter";
  }
  EXPECT_THAT(errors_.Procedures(), IsEmpty());
}

TEST_F(PrintComponentTest, OpensNoWindowForALetterDroppedBeforeItsPagesCame) {
  GivenMergedLetter();
  document_->ShowPreview();
  document_ = nullptr;
  events_.RunOne();
  EXPECT_EQ(viewer_.opened, 0);
  EXPECT_THAT(heard_, IsEmpty());
  pool_ = nullptr;
  EXPECT_TRUE(std::filesystem::is_empty(folder_ / "work"));
}

TEST_F(PrintComponentTest, SavesByTheEndingOfTheFile) {
  GivenMergedLetter();
  document_->ShowPreview();
  const auto pdf = (folder_ / "letter.PDF").string();
  const auto docx = (folder_ / "letter.docx").string();
  document_->SaveToFile(pdf, "");
  EXPECT_THAT(platform::ReadWholeFile(pdf), StartsWith("pages by ")) << "the layout was still under way";
  document_->SaveToFile(docx, "");
  EXPECT_THAT(OutputOf("unzip -p '" + docx + "' word/document.xml"), HasSubstr("Ada Fuel Co."));
  EXPECT_THAT(heard_, ElementsAre("DocPrint", "DocPrint"));
  EXPECT_THAT(observer_.lines, ElementsAre("saved " + pdf, "saved " + docx));

  host_.save_files = {std::nullopt};
  document_->SaveToFile("", "");
  EXPECT_THAT(Refusal([&] { document_->SaveToFile("letter.txt", ""); }),
              HasSubstr("\"letter.txt\" is neither."));
  EXPECT_EQ(heard_.size(), 2U) << "a save that did not take place was told";
}

TEST_F(PrintComponentTest, PrintsWithoutAPreviewOnThePrinterTheUserChose) {
  queues_.names = {"laser", "second floor"};
  GivenMergedLetter();
  host_.print_choices = {std::nullopt};
  EXPECT_FALSE(document_->PrintOut(1, true));
  host_.print_choices = {platform::PrintChoice{.printer = "second floor"}};
  EXPECT_TRUE(document_->PrintOut(1, true));
  EXPECT_TRUE(document_->PrintOut(1, false)) << "the choice lasts";
  EXPECT_THAT(queues_.printed, ElementsAre("second floor: CTL110.docx", "second floor: CTL110.docx"));
}

TEST_F(PrintComponentTest, PrintsARunAsTheUserChoseOnceAndPagesOfOneLetterOnce) {
  using platform::PrintChoice;
  queues_.names = {"laser", "second floor"};
  GivenMergedLetter();
  const PrintChoice run = {.printer = "second floor", .copies = 2, .sides = PrintChoice::Sides::kBoth};
  host_.print_choices = {run};
  ASSERT_TRUE(component_->AskHow(50));
  EXPECT_EQ(host_.print_questions.back().letters, 50u);
  EXPECT_EQ(host_.print_questions.back().proposed.printer, "laser");
  for (int letter = 0; letter < 2; ++letter) {
    document_->PrintOut(1, false);
    EXPECT_EQ(queues_.last, run);
  }

  auto one = run;
  one.pages = "1-2";
  host_.print_choices = {one};
  ASSERT_TRUE(component_->AskHow(1));
  document_->PrintOut(1, false);
  EXPECT_EQ(queues_.last, one);
  document_->PrintOut(1, false);
  EXPECT_EQ(queues_.last, (PrintChoice{.printer = "second floor", .sides = PrintChoice::Sides::kBoth}));
  host_.print_choices = {std::nullopt};
  EXPECT_FALSE(component_->AskHow(3));
}

TEST_F(PrintComponentTest, AsksAboutAPrintFromThePreview) {
  queues_.names = {"laser"};
  GivenPreview();
  host_.print_choices = {std::nullopt, platform::PrintChoice{.printer = "laser", .pages = "2"}};
  viewer_.Press(&PreviewContent::print);
  EXPECT_THAT(heard_, IsEmpty()) << "cancelled";
  viewer_.Press(&PreviewContent::print);
  EXPECT_EQ(queues_.last.pages, "2");
  EXPECT_THAT(heard_, ElementsAre("DocPrint"));
  host_.print_choices = {platform::PrintChoice{.printer = "laser", .pages = "1-3"}};
  viewer_.Press(&PreviewContent::print);
  ASSERT_THAT(errors_.Procedures(), ElementsAre("ZEMLO_Print.PrintOut"));
  EXPECT_THAT(errors_.reports[0].description, HasSubstr("The letter has 2 pages, there is no page 3 in it."));
  EXPECT_THAT(heard_, ElementsAre("DocPrint"));
}

TEST_F(PrintComponentTest, PrintsWithoutAskingUntilThePrinterTakesNoLetter) {
  printing_.without_asking = true;
  queues_.names = {"laser"};
  MakeComponent("zemlo-fake-worker");
  GivenPreview();
  const auto asked_after_print = [&] {
    viewer_.Press(&PreviewContent::print);
    return host_.print_questions.back().with_dialog;
  };
  EXPECT_FALSE(asked_after_print());
  queues_.jammed = true;
  EXPECT_FALSE(asked_after_print());
  queues_.jammed = false;
  EXPECT_TRUE(asked_after_print());
  EXPECT_FALSE(asked_after_print());
}

TEST_F(PrintComponentTest, TellsWhichBookmarksNoFieldFilled) {
  platform::WriteScratchFile(templates_ / "OTHER.docx", Letter(Bookmark("PHONE")));
  const auto document = component_->NewDocument();
  document->OpenDocument((templates_ / "OTHER.docx").string());
  EXPECT_TRUE(document->MergeBookmarks(kContext));
  EXPECT_THAT(observer_.lines, ElementsAre("not filled OTHER.docx PHONE"));
}

/// Answers for a letter that may show placeholders.
struct Asked : platform::HandOver {
  bool answer = false;
  std::vector<std::string> steps;

  bool MayGoUnfilled(const std::vector<std::string>& names) override {
    for (const auto& name : names) steps.push_back("asks " + name);
    return answer;
  }
  void Begins() override { steps.emplace_back("begins"); }
  void Accepted() override { steps.emplace_back("accepted"); }
  void Failed() override { steps.emplace_back("failed"); }
};

// "...in writing by [Answer or payment due by]." went to the customer.
TEST_F(PrintComponentTest, AsksBeforeALetterWithAPlaceholderGoesOut) {
  platform::WriteWholeFile(templates_ / "CTL110.docx", Letter(Bookmark("NAME") + Bookmark("DUE_DT")));
  GivenMergedLetter();
  const auto holder = std::make_shared<Asked>();
  document_->SetHandOver(holder);
  document_->ShowPreview();
  events_.RunOne();
  EXPECT_THAT(viewer_.not_filled, ElementsAre("DUE_DT"));
  EXPECT_THAT(holder->steps, IsEmpty());

  viewer_.Press(&PreviewContent::print);
  viewer_.Press(&PreviewContent::save);
  EXPECT_FALSE(document_->PrintOut(1, false));
  EXPECT_THAT(holder->steps, ElementsAre("asks DUE_DT", "asks DUE_DT", "asks DUE_DT"));
  EXPECT_THAT(host_.suggested_files, IsEmpty()) << "asked for a file that is not written";
  EXPECT_THAT(heard_, IsEmpty());

  holder->answer = true;
  viewer_.Press(&PreviewContent::print);
  EXPECT_THAT(heard_, ElementsAre("DocPrint"));
}

TEST_F(PrintComponentTest, ProposesTheNameItWasGivenElseTheTemplates) {
  GivenMergedLetter();
  document_->SaveToFile("", "");
  document_->SetProposedName("Refund - Ada Fuel Co. - 2026-07-14");
  document_->SaveToFile("", "");
  EXPECT_THAT(host_.suggested_files, ElementsAre("CTL110.docx", "Refund - Ada Fuel Co. - 2026-07-14.docx"));
}

TEST_F(PrintComponentTest, OpensTemplatesOfItsFolderOnly) {
  platform::WriteScratchFile(folder_ / "outside.docx", Letter(Paragraph("Not a template.")));
  std::filesystem::create_directory(templates_ / "old");
  platform::WriteScratchFile(templates_ / "old" / "CTL110.docx", Letter(Paragraph("Old.")));
  const auto folder = templates_.string() + "/";
  const struct {
    std::string name;
    const char* answer;
  } cases[] = {
      {folder + "ctl110.DOCX", "done"},
      {templates_.string() + "\\CTL110.docx", "done"},
      {folder + "../outside.docx", "is not in the template folder"},
      {folder + "..\\outside.docx", "is not in the template folder"},
      {folder + "old/CTL110.docx", "is not in the template folder"},
      {folder + "C:CTL110.docx", "is not in the template folder"},
      {folder + "C:\\windows\\CTL110.docx", "is not in the template folder"},
      {folder + "..", "is not in the template folder"},
      {(folder_ / "outside.docx").string(), "is not in the template folder"},
      {folder, "is not in the template folder"},
      {folder + "GONE.docx", "There is no template \"GONE.docx\""},
  };
  for (const auto& [name, answer] : cases) {
    EXPECT_THAT(Refusal([&] { component_->NewDocument()->OpenDocument(name); }), HasSubstr(answer)) << name;
  }
}

TEST_F(PrintComponentTest, AnswersForItsOwnDocumentOnly) {
  GivenMergedLetter();
  EXPECT_TRUE(document_->IsDocumentOpen((templates_ / "ctl110.docx").string()));
  EXPECT_FALSE(document_->IsDocumentOpen((templates_ / "OTHER.docx").string()));
  EXPECT_FALSE(component_->NewDocument()->IsDocumentOpen((templates_ / "CTL110.docx").string()));
  document_->Release("kvcorr.dot");
  EXPECT_FALSE(document_->IsDocumentOpen((templates_ / "CTL110.docx").string()));
  EXPECT_THAT(Refusal([&] { document_->PrintOut(1, false); }), HasSubstr("No letter is open."));
}

/// A common template with a letterhead.
std::string Letterhead(const std::string& text) {
  return Letter("<w:p/><w:sectPr><w:headerReference w:type=\"default\" r:id=\"rHead\"/></w:sectPr>",
                R"(<Relationship Id="rHead" Type="http://schemas.openxmlformats.org/officeDocument/2006/)"
                R"(relationships/header" Target="header1.xml"/>)",
                {{"word/header1.xml",
                  R"(<w:hdr xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main">)" +
                      Paragraph(text) + "</w:hdr>"}});
}

TEST_F(PrintComponentTest, AttachesTheSetTemplateElseTheOneBesideTheLetter) {
  platform::WriteScratchFile(templates_ / "KVCORR.DOT", Letterhead("Fuel Tax Office"));
  platform::WriteScratchFile(templates_ / "other.dot", Letterhead("Another Office"));
  const auto file = (folder_ / "letter.docx").string();
  for (const std::string set : {"", "other.dot"}) {
    const auto document = component_->NewDocument();
    if (!set.empty()) document->SetTemplate((templates_ / set).string());
    document->OpenDocument((templates_ / "CTL110.docx").string());
    document->SaveToFile(file, "docx");
    EXPECT_THAT(OutputOf("unzip -p '" + file + "'"),
                HasSubstr(set.empty() ? "Fuel Tax Office" : "Another Office"));
  }
  EXPECT_THAT(Refusal([&] { component_->NewDocument()->SetTemplate((templates_ / "gone.dot").string()); }),
              HasSubstr("There is no template \"gone.dot\""));
}

}  // namespace
}  // namespace wordprocessor
