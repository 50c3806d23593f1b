#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "platform/whole_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/wordprocessor/docx_builder.h"
#include "tests/wordprocessor/layout_letter.h"
#include "wordprocessor/authoring/address.h"
#include "wordprocessor/authoring/leftovers.h"
#include "wordprocessor/authoring/mail_merge.h"
#include "wordprocessor/authoring/placeholders.h"
#include "wordprocessor/authoring/read_template.h"
#include "wordprocessor/authoring/typefaces.h"
#include "wordprocessor/document/document.h"
#include "wordprocessor/layout/pool.h"

/// Letters of templates that other programs wrote, laid out: the programs make the templates when the tests
/// run.
namespace other_programs {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using wordprocessor::DataContext;
using wordprocessor::DocxDocument;
using wordprocessor::LayoutPool;
using wordprocessor::TemplateField;

const std::filesystem::path kSources = ZEMLO_SOURCE_DIR;

const std::string kFields =
    "<X><CUSTOMER_NAME>Ada</CUSTOMER_NAME><AMOUNT>12.00</AMOUNT><OFFICE_NAME>Office K1</OFFICE_NAME>"
    "<LTR_DT>October 1, 2024</LTR_DT><GONE>WRONG</GONE><TAX_PERIODS "
    "State=\"1\"><R><PERIOD_NAME>July</PERIOD_NAME>"
    "<PERIOD_TAX>1.00</PERIOD_TAX></R><R><PERIOD_NAME>August</PERIOD_NAME><PERIOD_TAX>2.00</PERIOD_TAX></R>"
    "</TAX_PERIODS></X>";

std::string Quoted(const std::filesystem::path& path) {
  return " '" + path.string() + "'";
}

/// All white space as one blank.
std::string OnOneLine(const std::string& text) {
  return std::regex_replace(std::regex_replace(text, std::regex("\\s+"), " "), std::regex("^ | $"), "");
}

std::vector<wordprocessor::PlacedWord> PlacesIn(const std::filesystem::path& pdf) {
  std::vector<wordprocessor::PlacedWord> places;
  int page = -1;
  const auto boxes = OutputOf("pdftotext -bbox" + Quoted(pdf) + " -");
  const std::regex box("<page|<word xMin=\"([^\"]*)\" yMin=\"([^\"]*)\"[^>]*yMax=\"([^\"]*)\"[^>]*>([^<]*)<");
  for (std::sregex_iterator found(boxes.begin(), boxes.end(), box), end; found != end; ++found) {
    if (!(*found)[4].matched) ++page;
    const auto word = std::ranges::find(wordprocessor::kSampleAddress, (*found)[4].str());
    if (word == wordprocessor::kSampleAddress.end()) continue;
    places.push_back(
        {*word, page, std::stod((*found)[1]) / 72, std::stod((*found)[2]) / 72, std::stod((*found)[3]) / 72});
  }
  return places;
}

/// A document changed by hand: "from" becomes "to" where it first occurs in a part.
std::string ChangedIn(const std::string& bytes, const std::string& part, const std::string& from,
                      const std::string& to) {
  const auto package = wordprocessor::DocxPackage::FromBytes(bytes, "letter.docx");
  auto text = package.Read(part);
  text.replace(text.find(from), from.size(), to);
  return package.With({{part, text}});
}

/// A letter of the product, likewise.
std::string Changed(const std::string& name, const std::string& from, const std::string& to) {
  return ChangedIn(tests::ReadFile(kSources / "data/templates" / name), "word/document.xml", from, to);
}

class LettersOfOtherPrograms : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    world_ = std::make_unique<World>();
    const auto tests = kSources / "tests/wordprocessor";
    const auto templates = kSources / "data/templates";
    OutputOf("/usr/bin/python3" + Quoted(tests / "programs/make_with_libreoffice.py") +
             Quoted(world_->folder.path()) + Quoted(tests / "documents/commented.fodt") +
             Quoted(templates / "CTL110_2407.docx") + Quoted(templates / "PLN106_2409.docx"));
    OutputOf("/usr/bin/python3" + Quoted(tests / "programs/make_with_python_docx.py") +
             Quoted(File("python.docx")));
    OutputOf("/usr/bin/python3" + Quoted(tests / "programs/make_letterhead.py") +
             Quoted(File("letterhead.docx")) + Quoted(File("plain.docx")));
    OutputOf("pandoc -f markdown-auto_identifiers --track-changes=all -o" + Quoted(File("pandoc.docx")) +
             Quoted(tests / "documents/reviewed.md"));
    OutputOf("pandoc -f html -o" + Quoted(File("web_page.docx")) + Quoted(tests / "documents/web_page.html"));
  }
  static void TearDownTestSuite() { world_ = nullptr; }

  static std::filesystem::path File(const std::string& name) { return world_->folder / name; }

  static std::string Letter(const std::filesystem::path& file, const std::filesystem::path& common = {}) {
    auto document = DocxDocument::Open(file);
    if (!common.empty()) document.AttachTemplate(DocxDocument::Open(common));
    document.MergeBookmarks(DataContext::Parse(kFields));
    return document.Bytes();
  }

  static std::filesystem::path Pdf(const std::string& letter) {
    const auto pdf = File("letter.pdf");
    world_->pool.Layout("LETTER.docx", letter, pdf).get();
    return pdf;
  }

  /// What the check says of the address of a letter with the product's letterhead; "none" where it looks for
  /// none.
  static std::string AddressFindings(const std::string& bytes) {
    auto letter = DocxDocument::FromBytes(bytes, "letter.docx");
    letter.AttachTemplate(DocxDocument::Open(kSources / "data/templates/kvcorr.dot"));
    const auto sample = SampleLetter(letter);
    if (!sample) return "none";
    std::string told;
    for (const auto& finding : CheckAddress(PlacesIn(Pdf(sample->Bytes())))) told += finding.text;
    return told;
  }

 private:
  struct World {
    static wordprocessor::LayoutSettings Settings(const std::filesystem::path& folder) {
      wordprocessor::LayoutSettings settings;
      settings.worker_program = std::filesystem::path(ZEMLO_BINARY_DIR) / "bin/zemlo-office-worker";
      settings.work_folder = folder / "work";
      return settings;
    }
    tests::TemporaryFolder folder;
    LayoutPool pool{Settings(folder.path())};
  };

  static std::unique_ptr<World> world_;
};

std::unique_ptr<LettersOfOtherPrograms::World> LettersOfOtherPrograms::world_;

TEST_F(LettersOfOtherPrograms, ShowTheFinalText) {
  struct Case {
    const char* file;
    const char* text;
  };
  const std::vector<Case> cases = {
      {"changes.docx",
       "Ada owes the new amount of 12.00 today. Thank you. "
       "First half and second half. Bold later. Kept one a Kept two c"},
      {"commented.docx", "Dear Ada, you owe 12.00. cell other Thank you."},
      {"whole_letter.docx",
       "Office K1 Notice of change Dear Ada, this is what changed: "
       "Period Tax July 1.00 August 2.00 Written on 10/1/24 A second section for Ada"},
      {"python.docx",
       "Office K1 Notice of rates Dear Ada, the rates below apply. Period Tax July 1.00 August 2.00 "
       "Sincerely 01.10.2024"},
      {"pandoc.docx",
       "Notice of change Dear Ada, you owe the new amount of 12.00.1 Thank you. 1 A note for Ada."},
  };
  for (const auto& [file, text] : cases) {
    const auto letter = Letter(File(file));
    EXPECT_EQ(OnOneLine(PdfText(Pdf(letter))), text) << file;
    for (const auto& part : PartNamesOf(letter)) {
      EXPECT_THAT(PartOf(letter, part), AllOf(Not(HasSubstr("LEAK")), Not(HasSubstr("secret"))))
          << file << " " << part;
    }
  }
}

TEST_F(LettersOfOtherPrograms, TellReadersWhoDoNotSeeThemWhatIsWhat) {
  const auto pdf = Pdf(Letter(File("whole_letter.docx")));
  EXPECT_THAT(OutputOf("pdfinfo" + Quoted(pdf)),
              AllOf(HasSubstr("Title:           Notice of change"), HasSubstr("Author:          Office K1"),
                    HasSubstr("Tagged:          yes"), Not(HasSubstr("LEAK"))));
  const auto structure = OnOneLine(OutputOf("pdfinfo -struct-text" + Quoted(pdf) + " | grep -v ' /'"));
  EXPECT_THAT(
      structure,
      AllOf(HasSubstr("H1 (block): \"Notice of change\""), HasSubstr("Figure:"),
            HasSubstr("TR: TH: P (block): \"Period\" TH: P (block): \"Tax\" TR: TD: P (block): \"July\"")));
  const auto bytes = platform::ReadWholeFile(pdf);
  EXPECT_THAT(bytes, HasSubstr("/Lang(en-US)"));
  // "The seal", as PDF writes an alternative text.
  EXPECT_THAT(bytes, HasSubstr("/Alt<FEFF005400680065002000730065"));
}

struct Word {
  std::string text;
  double left;
  double top;
  double right = 0;
};

std::vector<Word> WordsOf(const std::filesystem::path& pdf) {
  const auto boxes = OutputOf("pdftotext -bbox" + Quoted(pdf) + " -");
  const std::regex box("<word xMin=\"([^\"]*)\" yMin=\"([^\"]*)\" xMax=\"([^\"]*)\"[^>]*>([^<]*)<");
  std::vector<Word> words;
  for (std::sregex_iterator found(boxes.begin(), boxes.end(), box), end; found != end; ++found) {
    words.push_back({(*found)[4], std::stod((*found)[1]), std::stod((*found)[2]), std::stod((*found)[3])});
  }
  return words;
}

// The letterhead stood at the sheet's edge, and the address above the envelope's window.
TEST_F(LettersOfOtherPrograms, ALetterSavedAgainLooksAsBefore) {
  const auto templates = kSources / "data/templates";
  const auto common = templates / "kvcorr.dot";
  for (const auto* name : {"CTL110_2407.docx", "PLN106_2409.docx"}) {
    const auto before = WordsOf(Pdf(Letter(templates / name, common)));
    const auto after = WordsOf(Pdf(Letter(File(name), common)));
    ASSERT_EQ(after.size(), before.size()) << name;
    ASSERT_GT(before.size(), 100u) << name;
    for (std::size_t i = 0; i < before.size(); ++i) {
      ASSERT_EQ(after[i].text, before[i].text) << name;
      // The office rounds the heights of a table's rows when it saves them.
      EXPECT_NEAR(after[i].left, before[i].left, 0.3) << name << " " << before[i].text;
      EXPECT_NEAR(after[i].top, before[i].top, 0.3) << name << " " << before[i].text;
    }
  }
}

/// A letter of the product in the author's own styles, on other paper.
std::string LetterInOwnStyles() {
  auto bytes = Changed("REG101_2401.docx", "<w:pgSz w:w=\"12240\" w:h=\"15840\"/>",
                       "<w:pgSz w:w=\"11906\" w:h=\"16838\" w:code=\"9\"/>");
  const std::vector<std::pair<std::string, std::string>> changes = {
      {"<w:pPrDefault><w:pPr/>",
       "<w:pPrDefault><w:pPr><w:spacing w:before=\"90\" w:after=\"200\" w:line=\"260\"/>"
       "<w:ind w:left=\"300\"/></w:pPr>"},
      {"<w:rPrDefault><w:rPr>", "<w:rPrDefault><w:rPr><w:b/><w:spacing w:val=\"10\"/>"},
      {"<w:name w:val=\"Normal\"/><w:qFormat/><w:pPr>",
       "<w:name w:val=\"Normal\"/><w:rPr><w:i/></w:rPr><w:pPr><w:jc w:val=\"right\"/>"},
      {"w:styleId=\"Footer\"", "w:styleId=\"FormerFooter\""},
      {"<w:name w:val=\"footer\"/>", "<w:name w:val=\"former\"/>"},
      {"</w:styles>",
       "<w:style w:type=\"paragraph\" w:styleId=\"Footer\"><w:name w:val=\"footer\"/><w:basedOn "
       "w:val=\"Normal\"/><w:pPr><w:tabs><w:tab w:val=\"center\" w:pos=\"4680\"/><w:tab w:val=\"right\" "
       "w:pos=\"9360\"/></w:tabs></w:pPr></w:style></w:styles>"}};
  for (const auto& [from, to] : changes) bytes = ChangedIn(bytes, "word/styles.xml", from, to);
  return bytes;
}

// Its footer ran together at the left, in the letter's type: word processors call such styles by the same
// names everywhere. On a larger sheet it was cut off.
TEST_F(LettersOfOtherPrograms, StandUnderALetterheadThatLooksAsItsAuthorSeesIt) {
  const std::vector<std::pair<std::string, std::string>> letters = {
      {"own styles", LetterInOwnStyles()}, {"python", tests::ReadFile(File("plain.docx"))}};
  for (const auto& common : {kSources / "data/templates/kvcorr.dot", File("letterhead.docx")}) {
    const auto letterhead = DocxDocument::Open(common);
    const auto wanted = WordsOf(Pdf(letterhead.Bytes()));
    ASSERT_GT(wanted.size(), 10u);
    for (const auto& [name, bytes] : letters) {
      auto letter = DocxDocument::FromBytes(bytes, "letter.docx");
      letter.AttachTemplate(letterhead);
      const auto pdf = Pdf(letter.Bytes());
      const auto there = WordsOf(pdf);
      for (const auto& word : wanted) {
        const auto is_it = [&](const Word& other) {
          return other.text == word.text && std::abs(other.left - word.left) < 0.3 &&
                 std::abs(other.top - word.top) < 0.3 && std::abs(other.right - word.right) < 0.3;
        };
        EXPECT_TRUE(std::ranges::any_of(there, is_it))
            << common << " over " << name << ": " << word.text << " " << word.left << " " << word.top;
      }
      EXPECT_THAT(OutputOf("pdfinfo" + Quoted(pdf)), HasSubstr("612 x 792 pts (letter)"));
    }
  }
}

/// The names of the typefaces in a PDF, without blanks and what tells its letters apart from all of them.
std::vector<std::string> TypefacesOfPdf(const std::filesystem::path& pdf) {
  std::istringstream lines(OutputOf("pdffonts" + Quoted(pdf)));
  std::vector<std::string> names;
  for (std::string line; std::getline(lines, line);) {
    const auto plus = line.find('+');
    if (plus != line.npos) names.push_back(line.substr(plus + 1, line.find(' ') - plus - 1));
  }
  return names;
}

/// What the check says that a document comes out in, likewise.
std::vector<std::string> TypefacesToldOf(const DocxDocument& document) {
  std::vector<std::string> names;
  for (const auto& use : TypefacesOf(document)) {
    names.push_back(std::regex_replace(use.laid_out_in, std::regex(" "), ""));
  }
  return names;
}

// Letters of any word processor come in its default typefaces; they were laid out in a much wider one, and
// nothing was said.
TEST_F(LettersOfOtherPrograms, AreLaidOutInTheTypefacesThatTheCheckTells) {
  std::string all;
  for (const std::string typeface :
       {"Calibri", "Cambria", "Times New Roman", "ARIAL", "Courier New", "Verdana", "Georgia", "Helvetica",
        "Palatino Linotype", "Office Script", "Liberation Serif;Calibri", "Office Script;Calibri"}) {
    all += "<w:p><w:r><w:rPr><w:rFonts w:ascii=\"" + typeface + "\" w:hAnsi=\"Calibri\"/></w:rPr><w:t>Tax" +
           typeface + "</w:t></w:r></w:p>";
  }
  std::vector<std::string> letters = {::Letter(all)};
  for (const auto* name : {"whole_letter.docx", "python.docx", "pandoc.docx", "commented.docx"}) {
    letters.push_back(tests::ReadFile(File(name)));
  }
  for (const auto& bytes : letters) {
    auto letter = DocxDocument::FromBytes(bytes, "letter.docx");
    letter.MergeBookmarks(DataContext::Parse(kFields));
    const auto told = TypefacesToldOf(letter);
    const auto there = TypefacesOfPdf(Pdf(letter.Bytes()));
    // "Carlito" is there as "Carlito-Bold".
    const auto is_told = [&](const std::string& name) {
      return std::ranges::any_of(told, [&](const auto& one) { return name.starts_with(one); });
    };
    const auto is_there = [&](const std::string& name) {
      return std::ranges::any_of(there, [&](const auto& one) { return one.starts_with(name); });
    };
    EXPECT_FALSE(told.empty());
    for (const auto& name : there) EXPECT_TRUE(is_told(name)) << name << testing::PrintToString(told);
    for (const auto& name : told) EXPECT_TRUE(is_there(name)) << name << testing::PrintToString(there);
  }
  EXPECT_THAT(TypefacesToldOf(DocxDocument::FromBytes(letters[0], "letter.docx")),
              AllOf(Contains("Carlito"), Contains("Caladea"), Contains("LiberationSerif")));
}

TEST_F(LettersOfOtherPrograms, HaveTheirAddressInTheEnvelopesWindow) {
  for (const auto& entry : std::filesystem::directory_iterator(kSources / "data/templates")) {
    const auto name = entry.path().filename().string();
    if (entry.path().extension() != ".docx") continue;
    // One goes to the sheriff; in a warrant the address is part of a text.
    const bool none = name.starts_with("LVY108") || name.starts_with("WAR109");
    EXPECT_EQ(AddressFindings(tests::ReadFile(entry.path())), none ? "none" : "") << name;
  }
  for (const auto* name : {"CTL110_2407.docx", "PLN106_2409.docx"}) {
    EXPECT_EQ(AddressFindings(tests::ReadFile(File(name))), "") << "saved again: " << name;
  }
}

TEST_F(LettersOfOtherPrograms, AreToldOfAnAddressThatTheEnvelopeHides) {
  const std::string start = "<w:body>";
  const auto lines = [&](int count) {
    auto body = start;
    for (int i = 0; i < count; ++i) body += "<w:p><w:r><w:t>Page</w:t></w:r></w:p>";
    return Changed("CTL110_2407.docx", start, body);
  };
  EXPECT_THAT(AddressFindings(lines(3)),
              HasSubstr("stand between 3.2 and 4.0 inches below the top edge; the window of a "
                        "No. 10 envelope shows what stands between 2.4 and 3.2 inches."));
  EXPECT_THAT(AddressFindings(lines(60)), HasSubstr("stands on page "));
  EXPECT_THAT(AddressFindings(Changed("CTL110_2407.docx", "w:after=\"1180\"", "w:after=\"500\"")),
              HasSubstr("stand between 1.9 and 2.7 inches"));
  EXPECT_THAT(AddressFindings(Changed("CTL110_2407.docx", "<w:tblInd w:w=\"0\"", "<w:tblInd w:w=\"2880\"")),
              HasSubstr("begins 3.0 inches from the left edge; the window of a No. 10 envelope shows what "
                        "stands between 0.9 and 4.5 inches."));
}

TEST_F(LettersOfOtherPrograms, AreToldOfAHeaderThatIsTooDeep) {
  const auto letter = [](int lines) {
    auto parts = LetterParts(
        "<w:body><w:p><w:pPr><w:spacing w:after=\"0\"/></w:pPr><w:bookmarkStart w:id=\"1\" "
        "w:name=\"CUSTOMER_ADDR\"/><w:r><w:t>[Address]</w:t></w:r><w:bookmarkEnd w:id=\"1\"/></w:p>"
        "<w:sectPr><w:headerReference w:type=\"default\" r:id=\"rel_header1.xml\"/><w:pgSz w:w=\"12240\" "
        "w:h=\"15840\"/><w:pgMar w:top=\"3500\" w:right=\"1440\" w:bottom=\"1440\" w:left=\"1440\" "
        "w:header=\"720\" w:footer=\"720\"/></w:sectPr></w:body>");
    std::string head;
    for (int i = 0; i < lines; ++i) head += "<w:p><w:r><w:t>Department</w:t></w:r></w:p>";
    AddRelatedPart(parts, "header", "header1.xml", WordPart("w:hdr", head));
    return ZipOf(parts);
  };
  EXPECT_EQ(AddressFindings(letter(3)), "");
  EXPECT_THAT(AddressFindings(letter(15)), HasSubstr("Change the page header"));
}

/// A letter in a typeface that no machine has; with `font` it brings that along, hidden as word processors do
/// it.
std::string LetterIn(const std::string& typeface, std::string font) {
  const std::string key = "0123456789ABCDEF0123456789ABCDEF";
  for (std::size_t i = 0; i < 32 && i < font.size(); ++i) {
    const auto digits = key.substr(30 - 2 * (i % 16), 2);
    font[i] = static_cast<char>(font[i] ^ static_cast<char>(std::stoi(digits, nullptr, 16)));
  }
  auto parts = LetterParts("<w:body><w:p><w:r><w:rPr><w:rFonts w:ascii=\"" + typeface + "\" w:hAnsi=\"" +
                           typeface + "\"/></w:rPr><w:t>Tax</w:t></w:r></w:p></w:body>");
  if (font.empty()) return ZipOf(parts);
  AddRelatedPart(parts, "fontTable", "fontTable.xml",
                 WordPart("w:fonts", "<w:font w:name=\"" + typeface +
                                         "\"><w:embedRegular r:id=\"rFont\" "
                                         "w:fontKey=\"{01234567-89AB-CDEF-0123-456789ABCDEF}\"/></w:font>"));
  parts.push_back(
      {"word/_rels/fontTable.xml.rels",
       "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship "
       "Id=\"rFont\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/font\" "
       "Target=\"fonts/font1.odttf\"/></Relationships>"});
  parts.push_back({"word/fonts/font1.odttf", font});
  parts[0].content.insert(parts[0].content.find("<Default"),
                          "<Default Extension=\"odttf\" "
                          "ContentType=\"application/vnd.openxmlformats-officedocument.obfuscatedFont\"/>");
  return ZipOf(parts);
}

// The office goes on using what one letter brought along, whoever comes next: a letter would come out
// otherwise after that one than before it.
TEST_F(LettersOfOtherPrograms, ATypefaceThatALetterBringsIsItsOwn) {
  const auto font = tests::ReadFile("/usr/share/fonts/truetype/crosextra/Caladea-Regular.ttf");
  const auto fonts_of = [](const std::string& docx) {
    return OutputOf("pdffonts" + Quoted(Pdf(DocxDocument::FromBytes(docx, "letter").Bytes())));
  };
  EXPECT_THAT(fonts_of(LetterIn("Office Script", "")), Not(HasSubstr("Caladea")));
  EXPECT_THAT(fonts_of(LetterIn("Office Script", font)), HasSubstr("+Caladea"));
  EXPECT_THAT(fonts_of(LetterIn("Office Script", "")), Not(HasSubstr("Caladea")));
}

const std::vector<TemplateField> kFieldsOfLetter = {
    {"CUSTOMER_NAME"},
    {"AMOUNT"},
    {"OFFICE_NAME"},
    {"LTR_DT"},
    {"GONE"},
    {"TAX_PERIODS", TemplateField::Kind::kTable},
    {"PERIOD_NAME", TemplateField::Kind::kColumn, "TAX_PERIODS"},
    {"PERIOD_TAX", TemplateField::Kind::kColumn, "TAX_PERIODS"}};

/// What the check finds of what the author left: "grade BOOKMARK: place: sentence".
std::vector<std::string> LeftIn(const std::filesystem::path& file) {
  std::vector<std::string> told;
  for (const auto& finding :
       wordprocessor::FindingsOfLeftovers(StoriesAsWritten(DocxDocument::Open(file)), kFieldsOfLetter)) {
    const bool error = finding.grade == wordprocessor::TemplateFinding::Grade::kError;
    told.push_back((error ? "error " : "warning ") + finding.bookmark + ": " + finding.place + ": " +
                   finding.text);
  }
  return told;
}

TEST_F(LettersOfOtherPrograms, TheCheckNamesWhatTheirAuthorsLeftAndWhere) {
  struct Case {
    const char* file;
    std::size_t findings;
    std::vector<std::string> among;
  };
  const std::string anonymous = "Tracked changes by Unknown Author: ";
  const std::vector<Case> cases = {
      {"changes.docx",
       6,
       {"error : text, after \"[Customer name] owes the\": " + anonymous +
            "deleted \"old \", inserted \"new \".",
        "error GONE: text, after \"new amount of [Amount] today.\": The bookmark goes with text",
        "error : text, after \"First half\": " + anonymous + "deleted the end of a paragraph."}},
      {"commented.docx",
       3,
       {"warning : text, after \"Dear [Customer\": Comment by LEAK: \"LEAK: in the bookmark\".",
        "warning : text, in a table, after \"cell\": Comment by LEAK: \"LEAK: at a point\"."}},
      {"whole_letter.docx",
       2,
       {"The text \" secret words\" is hidden", "page footer, after \"Written on\": The date field \"DATE "}},
      {"python.docx",
       3,
       {"The field \"INCLUDETEXT \"C:\\\\LEAK.docx\"\"",
        "warning : page footer of the first page: The date field"}},
      {"pandoc.docx",
       5,
       {"Comment by LEAK: \"LEAK?\".", "error : notes, after \"A note for [Customer name].\""}},
      {"CTL110_2407.docx", 0, {}},  // saved again by another program
  };
  for (const auto& [file, findings, among] : cases) {
    const auto told = LeftIn(File(file));
    EXPECT_EQ(told.size(), findings) << file << testing::PrintToString(told);
    for (const auto& finding : among) EXPECT_THAT(told, Contains(HasSubstr(finding))) << file;
  }
}

// Only text in a character style became a link of the PDF: where the author had none, or had formatted the
// link by hand, there was none, and nobody was told.
TEST_F(LettersOfOtherPrograms, HaveLinksThatWork) {
  const auto link = [](const std::string& words, const std::string& looks = "") {
    return "<w:r><w:rPr>" + looks + "</w:rPr><w:t xml:space=\"preserve\">" + words + "</w:t></w:r>";
  };
  const std::string plain = "<w:r><w:t>plain</w:t></w:r>";
  const auto mark = [](const std::string& type) {
    return "<w:r><w:fldChar w:fldCharType=\"" + type + "\"/></w:r>";
  };
  auto parts =
      LetterParts("<w:body><w:p><w:hyperlink r:id=\"rLink\">" + plain + link(" bold", "<w:b/>") +
                  "</w:hyperlink></w:p><w:p><w:hyperlink r:id=\"rMail\">" +
                  link("absent", "<w:rStyle w:val=\"Gone\"/>") + "</w:hyperlink></w:p><w:p>" + mark("begin") +
                  "<w:r><w:instrText> HYPERLINK \"https://field.korvada.example/\" </w:instrText></w:r>" +
                  mark("separate") + plain + mark("end") +
                  "</w:p><w:p><w:fldSimple w:instr=\" HYPERLINK &quot;tel:5550100400&quot; \">" + plain +
                  "</w:fldSimple></w:p></w:body>");
  const auto relation = [](const std::string& id, const std::string& target) {
    return "<Relationship Id=\"" + id +
           "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/hyperlink\" "
           "Target=\"" +
           target + "\" TargetMode=\"External\"/>";
  };
  AddRelatedPart(parts, "styles", "styles.xml",
                 WordPart("w:styles",
                          "<w:style w:type=\"paragraph\" w:default=\"1\" w:styleId=\"Normal\"><w:name "
                          "w:val=\"Normal\"/></w:style>"));
  for (auto& part : parts) {
    const auto end = part.content.find("</Relationships>");
    if (part.name != "word/_rels/document.xml.rels") continue;
    part.content.insert(end, relation("rLink", "https://page.korvada.example/") +
                                 relation("rMail", "mailto:tax@korvada.example"));
  }
  const auto pdf = Pdf(DocxDocument::FromBytes(ZipOf(parts), "letter.docx").Bytes());
  EXPECT_THAT(OutputOf("pdfinfo -url" + Quoted(pdf)),
              AllOf(HasSubstr("https://page.korvada.example/"), HasSubstr("mailto:tax@korvada.example"),
                    HasSubstr("https://field.korvada.example/"), HasSubstr("tel:5550100400")));
  // As black as before.
  EXPECT_THAT(OutputOf("pdftocairo -svg" + Quoted(pdf) + " - | grep -c 'rgb([^0]'"), "0\n");
}

TEST_F(LettersOfOtherPrograms, BecomeTemplatesOfAMailMergeAndOfAWebPage) {
  const auto text_of = [](const std::string& made) {
    auto letter = DocxDocument::FromBytes(made, "made.docx");
    for (const auto& finding : CheckTemplate(letter, kFieldsOfLetter)) {
      EXPECT_NE(finding.grade, wordprocessor::TemplateFinding::Grade::kError) << finding.text;
    }
    EXPECT_THAT(letter.MergeBookmarks(DataContext::Parse(kFields)), testing::IsEmpty());
    return OnOneLine(PdfText(Pdf(letter.Bytes())));
  };
  const auto merged = DocxDocument::Open(File("mail_merge.docx"));
  EXPECT_EQ(LeftIn(File("mail_merge.docx")).size(), 6u);
  EXPECT_EQ(text_of(BookmarksOfMergeFields(merged.Source(), kFieldsOfLetter).bytes),
            "Office K1 Dear Ada, you owe 12.001 Amount 12.00 For Ada 1 Due from Ada");
  const auto page = DocxDocument::Open(File("web_page.docx"));
  EXPECT_EQ(FindingsOfPlaceholders(StoriesAsWritten(page), kFieldsOfLetter).size(), 3u);
  EXPECT_EQ(text_of(RepairPlaceholders(page, kFieldsOfLetter).bytes),
            "Dear Ada, you owe 12.00 now, see [1]. Office K1");
}

}  // namespace
}  // namespace other_programs
