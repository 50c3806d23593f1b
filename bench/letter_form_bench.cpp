// What the form costs in which a letter is completed: loading it, and from its confirmation to the merged
// document. The template is a real file in memory. Not in the figures: the prescribed wait, and the layout.
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/merge_template.h"
#include "composition/frm_letter.h"
#include "platform/text.h"
#include "tests/fakes/fake_services.h"
#include "wordprocessor/bookmarks/data_context.h"
#include "wordprocessor/document/document.h"

namespace {

/// Reads and merges, as the print component does, and shows nothing.
class MergingDocument : public platform::PrintDocument {
 public:
  explicit MergingDocument(const std::string& docx)
      : document_(wordprocessor::DocxDocument::FromBytes(docx, "letter.docx")) {}

  void Prepare() override {}
  bool IsDocumentOpen(const std::string&) override { return false; }
  void SetTemplate(const std::string&) override {}
  bool OpenDocument(const std::string&) override { return true; }
  void SetNotify(std::shared_ptr<platform::PrintNotify>) override {}
  void SetNotifyEnabled(bool) override {}
  void SetHandOver(std::shared_ptr<platform::HandOver>) override {}
  void SetProposedName(const std::string&) override {}
  std::vector<platform::DocumentBookmark> Bookmarks() override { return document_.Bookmarks(); }
  bool MergeBookmarks(const std::string& xml) override {
    benchmark::DoNotOptimize(document_.MergeBookmarks(wordprocessor::DataContext::Parse(xml)));
    return true;
  }
  void ShowPreview() override {}
  bool PrintOut(int, bool) override { return false; }
  void EndPrint(int) override {}
  void SaveToFile(const std::string&, const std::string&) override {}
  void Release(const std::string&) override {}

 private:
  wordprocessor::DocxDocument document_;
};

class MergingComponent : public platform::PrintComponent {
 public:
  explicit MergingComponent(std::string docx) : docx_(std::move(docx)) {}
  std::unique_ptr<platform::PrintDocument> NewDocument() override {
    return std::make_unique<MergingDocument>(docx_);
  }
  bool AskHow(std::size_t) override { return true; }

 private:
  const std::string docx_;
};

/// A letter of that many bookmarks, three in forty of them optional paragraphs, the others the user's.
class Letter {
 public:
  explicit Letter(int bookmarks) : Letter(MakeMergeTemplate(bookmarks)) {}

  std::unique_ptr<composition::frmLetter> Load() {
    auto form = std::make_unique<composition::frmLetter>(outside_.services(), "Letters");
    form->BookMarkInput = context_;
    form->FileName = "letter.docx";
    form->Load();
    return form;
  }
  /// As the user does, cell by cell.
  static void FillIn(composition::frmLetter& form) {
    for (std::size_t row = 0; row < form.sdgUserBookmark.rows()->RecordCount(); ++row)
      form.sdgUserBookmark.UserEdits(row, "a value");
  }

 private:
  explicit Letter(const MergeTemplate& made) : print_(made.docx), context_(OfParagraphType(made.context)) {}

  static std::string OfParagraphType(std::string context) {
    const auto end_of_name = context.find_first_of(" >");
    context.insert(end_of_name, " State=\"18\"");
    for (auto place = context.find("<PARA_"); place != std::string::npos;
         place = context.find("<PARA_", place + 1)) {
      const auto state = context.find("State=\"8\"", place);
      context.replace(state, 9, "State=\"210\"");
    }
    return context;
  }

  MergingComponent print_;
  fakes::FakeServices outside_{&print_};
  const std::string context_;
};

void LoadingTheForm(benchmark::State& state) {
  Letter letter(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(letter.Load());
}

void FromConfirmationToTheMergedLetter(benchmark::State& state) {
  Letter letter(static_cast<int>(state.range(0)));
  const auto form = letter.Load();
  Letter::FillIn(*form);
  for (auto _ : state) form->cmdOK.UserClicks();
  if (form->XMLBookMark.empty()) state.SkipWithError("the form was not confirmed");
}

BENCHMARK(LoadingTheForm)->Arg(40)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(FromConfirmationToTheMergedLetter)->Arg(40)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
