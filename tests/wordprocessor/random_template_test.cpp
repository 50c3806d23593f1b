#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"
#include "tests/wordprocessor/docx_builder.h"
#include "tests/wordprocessor/layout_letter.h"
#include "tests/wordprocessor/letter_markup.h"
#include "wordprocessor/authoring/leftovers.h"
#include "wordprocessor/authoring/mail_merge.h"
#include "wordprocessor/authoring/placeholders.h"
#include "wordprocessor/authoring/read_template.h"
#include "wordprocessor/document/document.h"
#include "wordprocessor/layout/pool.h"

/// Templates with everything that authors leave in them, strewn over their text, and beside each the plain
/// text that its letters have to show.
namespace markup {
namespace {

using wordprocessor::DataContext;
using wordprocessor::DocxDocument;

constexpr int kBookmarks = 40;

struct Piece {
  std::string xml;
  std::string shown;
};

/// How an author says where a value goes.
enum class Marks { kAround, kMergeFields, kBesidePlaceholders };

class RandomTemplate {
 public:
  /// `for_pages` leaves out what stands on pages in another order than in the file.
  RandomTemplate(unsigned seed, bool for_pages, Marks marks = Marks::kAround)
      : random_(seed), for_pages_(for_pages), marks_(marks) {}

  /// The blocks of a part: `bookmarks` of them, and at least as much of everything else.
  Piece Story(int bookmarks) {
    left_ = bookmarks;
    Piece story;
    while (left_ > 0) Append(story, Chance(5) ? OneTable() : Block());
    Append(story, {Paragraph(Text("end")), "end/"});
    return story;
  }

  /// The bookmarks that go with deleted text.
  const std::set<std::string>& Lost() const { return lost_; }

  std::string Context() const { return "<X><LTR_DT>October 1, 2024</LTR_DT>" + fields_ + "</X>"; }

 private:
  bool Chance(unsigned one_in) { return random_() % one_in == 0; }

  static void Append(Piece& to, const Piece& piece) {
    to.xml += piece.xml;
    to.shown += piece.shown;
  }

  std::string Word() { return "w" + std::to_string(next_word_++) + " "; }

  Piece Words() {
    const auto word = Word();
    return {Text(word), word};
  }

  /// Nothing of it is shown.
  std::string Gone() {
    const auto word = Word();
    switch (random_() % 5) {
      case 0:
        return Del(word);
      case 1:
        return By("moveFrom", Text(word));
      case 2:
        return By("ins", Del(word));
      case 3:
        return Text(word, "<w:vanish/>");
      default: {
        const auto id = next_id_++;
        const auto name = "GONE_" + std::to_string(id);
        lost_.insert(name);
        return Del(word) + Mark(name, Del(word), id) + Del(word);
      }
    }
  }

  Piece Inserted() {
    const auto word = Word();
    return {Chance(2) ? Ins(word) : By("moveTo", Text(word)), word};
  }

  std::string Comment(const std::string& around) {
    const auto id = "w:id=\"" + std::to_string(next_id_++) + "\"/>";
    return "<w:commentRangeStart " + id + around + "<w:commentRangeEnd " + id + "<w:r><w:commentReference " +
           id + "</w:r>";
  }

  Piece OneField() {
    const auto word = Word();
    switch (random_() % 6) {
      case 0:
        return {Field(" DATE \\@ &quot;dd.MM.yyyy&quot; ", Text("1.1.") + Text("1999")) + Text(" "),
                "01.10.2024 "};
      case 1:
        return {SimpleField("SAVEDATE", Text("old")) + Text(" "), "October 1, 2024 "};
      case 2:
        return {Field("IF " + Field("MERGEFIELD x", Text("old")) + " = 1", Text(word)), word};
      case 3:
        return {Field("INCLUDETEXT &quot;a.docx&quot;", Text(word) + Gone()), word};
      case 4:
        return {SimpleField("AUTHOR", Text(word)), word};
      default:
        return for_pages_ ? Words() : Piece{Field("PAGE", Text("1")), "{PAGE}1"};
    }
  }

  std::string MergeField(const std::string& name) {
    switch (random_() % 5) {
      case 0:
        return SimpleField("MERGEFIELD " + name, Text("\u00ABx\u00BB"));
      case 1:
        return By("ins", Field(" MERGEFIELD &quot;" + name + "&quot; \\* MERGEFORMAT ", Text("[old] ")));
      case 2:
        return "<w:hyperlink r:id=\"rFile\">" + Field("mergefield " + name, "") + "</w:hyperlink>";
      case 3:
        return Field("MERGEFIELD " + name, Text("[old]") + Gone() + Comment(Text("x")));
      default:
        return Field("MERGEFIELD " + name, Text("\u00ABx\u00BB"));
    }
  }

  /// A bookmark that is to be filled, with all sorts of things around, in and across it.
  Piece Filled() {
    if (left_ == 0) return Words();
    --left_;
    const auto id = next_id_++;
    const auto name = "NAME_" + std::to_string(id);
    const auto value = "v" + std::to_string(id);
    fields_ += "<" + name + ">" + value + "</" + name + ">";
    const auto start = "<w:bookmarkStart w:id=\"" + std::to_string(id) + "\" w:name=\"" + name + "\"/>";
    const auto end = "<w:bookmarkEnd w:id=\"" + std::to_string(id) + "\"/>";
    const auto text = Text("[" + name + "]");
    const std::string space = Text(" ");
    if (marks_ == Marks::kMergeFields) return {MergeField(name) + space, value + " "};
    if (marks_ == Marks::kBesidePlaceholders) {
      const auto between = Chance(3) ? Gone() : "";
      const auto placeholder =
          Chance(2) ? Text("[" + name + "] ") : Text("[") + between + Text(name) + Text("] ", "<w:b/>");
      return {start + end + between + placeholder, value + " "};
    }
    switch (random_() % 10) {
      case 0:
        return {start + Del("[old]") + Ins("[new]") + end + space, value + " "};
      case 1:
        return {start + text + By("del", "<w:r><w:delText>x</w:delText></w:r>" + end) + space, value + " "};
      case 2:
        return {By("ins", start + text) + Gone() + end + space, value + " "};
      case 3:
        return {start + Comment(text) + end + space, value + " "};
      case 4:
        return {start + OneField().xml + end + space, value + " "};
      case 5:
        return {
            "<w:sdt><w:sdtPr><w:lock w:val=\"sdtLocked\"/>"
            "<w:showingPlcHdr/><w:dataBinding w:xpath=\"/a\"/></w:sdtPr><w:sdtContent>" +
                start + text + end + "</w:sdtContent></w:sdt>" + space,
            value + " "};
      case 6:
        return {"<w:hyperlink r:id=\"rFile\">" + start + text + end + "</w:hyperlink>" + space, value + " "};
      case 7:
        return {Text("n") + start + end + space, "n" + value + " "};
      default:
        return {start + text + end + space, value + " "};
    }
  }

  Piece TextBox() {
    if (for_pages_ || in_box_) return Words();
    in_box_ = true;
    const auto inside = OneParagraph();
    in_box_ = false;
    return {BoxAndTwin(inside.xml), inside.shown + inside.shown};
  }

  /// The runs of a paragraph; the first word is always shown.
  Piece Runs() {
    auto runs = Words();
    while (!Chance(5)) {
      switch (random_() % 8) {
        case 0:
          runs.xml += Gone();
          break;
        case 1:
          Append(runs, Inserted());
          break;
        case 2:
          Append(runs, OneField());
          break;
        case 3:
          runs.xml += Comment("");
          break;
        case 4:
          if (Chance(3)) Append(runs, TextBox());
          break;
        default:
          Append(runs, Filled());
      }
    }
    return runs;
  }

  Piece OneParagraph() {
    const auto runs = Runs();
    return {Chance(5) ? EndIs("ins", runs.xml) : Paragraph(runs.xml), runs.shown + "/"};
  }

  Piece Block() {
    const auto first = Runs();
    const auto second = Runs();
    const auto gone = EndIs("del", Del(Word())) + EndIs("moveFrom", By("moveFrom", Text(Word())));
    switch (random_() % 6) {
      case 0:
        return {EndIs("del", first.xml) + Paragraph(second.xml), first.shown + second.shown + "/"};
      case 1:
        return {EndIs("moveFrom", first.xml) + gone + Paragraph(second.xml),
                first.shown + second.shown + "/"};
      case 2:
        return {Paragraph(first.xml) + gone + Paragraph(second.xml), first.shown + "/" + second.shown + "/"};
      case 3:
        return {Paragraph(first.xml) + Paragraph(Text("x", "<w:vanish/>"), "<w:rPr><w:vanish/></w:rPr>") +
                    Paragraph(second.xml),
                first.shown + "/" + second.shown + "/"};
      default:
        return {Paragraph(first.xml) + Paragraph(second.xml), first.shown + "/" + second.shown + "/"};
    }
  }

  Piece OneTable() {
    std::string rows;
    std::string shown;
    do {
      if (Chance(3)) rows += Row(Cell(EndIs("del", Del(Word()))), By("del", ""));
      const auto blocks = OneParagraph();
      const auto more = Chance(4) ? Cell(Paragraph(Del(Word())), By("cellDel", "")) : "";
      rows += Row(Cell(blocks.xml) + more, Chance(3) ? By("ins", "") : "");
      shown += blocks.shown + ";";
    } while (!Chance(2));
    return {Table(rows) + Paragraph(Text(".")), shown + "./"};
  }

  std::mt19937 random_;
  const bool for_pages_;
  const Marks marks_;
  std::set<std::string> lost_;
  bool in_box_ = false;
  int left_ = 0;
  int next_word_ = 0;
  int next_id_ = 1;
  std::string fields_;
};

std::string Template(const std::string& body, const std::string& header, const std::string& notes) {
  auto parts = LetterParts(WordPart("w:document", "<w:body>" + body + "<w:sectPr/></w:body>"));
  const std::string link =
      "<Relationship Id=\"rFile\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
      "hyperlink\" Target=\"file:///C:/LEAK.doc\" TargetMode=\"External\"/>";
  parts[3].content.insert(parts[3].content.rfind("</Relationships>"), link);
  if (!header.empty()) AddRelatedPart(parts, "header", "header1.xml", WordPart("w:hdr", header));
  if (!notes.empty()) {
    AddRelatedPart(parts, "footnotes", "footnotes.xml",
                   WordPart("w:footnotes", "<w:footnote w:id=\"2\">" + notes + "</w:footnote>"));
  }
  return ZipOf(parts);
}

std::string Merged(const std::string& docx, const std::string& context) {
  auto document = DocxDocument::FromBytes(docx, "letter.docx");
  EXPECT_THAT(document.MergeBookmarks(DataContext::Parse(context)), testing::IsEmpty());
  return document.Bytes();
}

TEST(RandomTemplates, MakeLettersThatShowTheFinalText) {
  for (unsigned seed = 1; seed <= 500 && !testing::Test::HasFailure(); ++seed) {
    RandomTemplate random(seed, /*for_pages=*/false);
    const auto body = random.Story(kBookmarks / 2);
    const auto header = random.Story(kBookmarks / 4);
    const auto notes = random.Story(kBookmarks / 4);
    const auto letter = Merged(Template(body.xml, header.xml, notes.xml), random.Context());
    EXPECT_EQ(ShownIn(letter), body.shown) << "seed " << seed;
    EXPECT_EQ(ShownIn(letter, "word/header1.xml"), header.shown) << "seed " << seed;
    EXPECT_EQ(ShownIn(letter, "word/footnotes.xml"), notes.shown) << "seed " << seed;
    for (const auto& part : PartNamesOf(letter))
      EXPECT_EQ(PartOf(letter, part).find("LEAK"), std::string::npos);
  }
}

std::set<std::string> LostBookmarksTold(const DocxDocument& document) {
  std::set<std::string> names;
  for (const auto& finding : wordprocessor::FindingsOfLeftovers(StoriesAsWritten(document), {})) {
    if (finding.bookmark.empty()) continue;
    EXPECT_TRUE(names.insert(finding.bookmark).second) << finding.bookmark;
  }
  return names;
}

TEST(RandomTemplates, ComeOutRightOfMailMergesAndOfMarksBesidePlaceholders) {
  for (unsigned seed = 1; seed <= 60 && !testing::Test::HasFailure(); ++seed) {
    const bool merge = seed % 2 == 0;
    RandomTemplate random(seed, /*for_pages=*/false,
                          merge ? Marks::kMergeFields : Marks::kBesidePlaceholders);
    const auto body = random.Story(kBookmarks / 2);
    const auto header = random.Story(kBookmarks / 4);
    const auto notes = random.Story(kBookmarks / 4);
    const auto source = DocxDocument::FromBytes(Template(body.xml, header.xml, notes.xml), "source");
    // An empty bookmark among deleted words goes with them until it stands around its placeholder.
    if (merge) {
      EXPECT_EQ(LostBookmarksTold(source), random.Lost()) << "seed " << seed;
    }
    const auto made = merge ? wordprocessor::BookmarksOfMergeFields(source.Source(), {}).bytes
                            : wordprocessor::RepairPlaceholders(source, {}).bytes;
    SCOPED_TRACE("seed " + std::to_string(seed));
    const auto letter = Merged(made, random.Context());
    EXPECT_EQ(ShownIn(letter), body.shown);
    EXPECT_EQ(ShownIn(letter, "word/header1.xml"), header.shown);
    EXPECT_EQ(ShownIn(letter, "word/footnotes.xml"), notes.shown);
  }
}

std::string WithoutGaps(std::string text) {
  std::erase_if(text, [](char character) {
    return std::string_view(" \n\f/;").find(character) != std::string_view::npos;
  });
  return text;
}

// The office reads what the letter is made of in its own way, and loads no document with comments at all.
TEST(RandomTemplates, ShowTheSameOnTheirPages) {
  const tests::TemporaryFolder folder;
  wordprocessor::LayoutSettings settings;
  settings.worker_program = std::filesystem::path(ZEMLO_BINARY_DIR) / "bin/zemlo-office-worker";
  settings.work_folder = folder / "work";
  wordprocessor::LayoutPool pool(settings);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  for (unsigned seed = 1; seed <= 500 && !testing::Test::HasFailure(); ++seed) {
    RandomTemplate random(seed, /*for_pages=*/true);
    const auto body = random.Story(kBookmarks);
    const auto letter = Merged(Template(body.xml, "", ""), random.Context());
    pool.Layout("LETTER.docx", letter, folder / "letter.pdf").get();
    EXPECT_EQ(WithoutGaps(PdfText(folder / "letter.pdf")), WithoutGaps(body.shown)) << "seed " << seed;
    if (std::chrono::steady_clock::now() > end) {
      RecordProperty("documents", static_cast<int>(seed));
      break;
    }
  }
}

}  // namespace
}  // namespace markup
