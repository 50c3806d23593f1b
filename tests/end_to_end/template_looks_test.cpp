#include <gmock/gmock.h>

#include <filesystem>

#include "tests/end_to_end/program.h"

/// The check of a template that an author has changed.
namespace tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::filesystem::path kTemplates = std::filesystem::path(ZEMLO_SOURCE_DIR) / "data/templates";

/// Pushes the address down, and sets a line in a typeface that no machine of ours has.
constexpr const char* kAuthor = R"(
import sys, docx
letter = docx.Document(sys.argv[1])
first = letter.paragraphs[0]
for _ in range(3):
    first.insert_paragraph_before("More words above.")
letter.paragraphs[0].runs[0].font.name = "Office Script"
letter.save(sys.argv[2])
)";

TEST(TemplateLooks, AreToldWithPlaceAndTypeface) {
  const TemporaryFolder folder;
  const auto file = (folder / "CTL110_2407.docx").string();
  const auto made = RunShell("/usr/bin/python3 -c " + Quoted(kAuthor) + " " +
                             Quoted((kTemplates / "CTL110_2407.docx").string()) + " " + Quoted(file));
  ASSERT_EQ(made.status, 0) << made.err;

  const auto run = RunLetters({"bookmarks", file});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(
      run.err,
      AllOf(HasSubstr("warning: CUSTOMER_ADDR, text, in a table, after \"[Customer name]\": Four lines of "
                      "address stand between 3."),
            HasSubstr("warning: text: The typeface \"Office Script\" is laid out in \"")));
  EXPECT_THAT(run.out, AllOf(HasSubstr("Laid out in"), HasSubstr("Liberation Serif  Liberation Serif")));

  const auto quick = RunLetters({"bookmarks", "--quick", "--json", file});
  EXPECT_THAT(quick.out, AllOf(HasSubstr("\"typefaces\": ["), HasSubstr("\"name\": \"Office Script\""),
                               HasSubstr("\"widths\": \"other\""), Not(HasSubstr("Four lines"))));
}

/// Pushes the address so far to the right that its cell has room for one letter in a line.
constexpr const char* kNarrow = R"(
import sys, docx
letter = docx.Document(sys.argv[1])
for paragraph in letter.tables[0].cell(0, 0).paragraphs:
    paragraph.paragraph_format.left_indent = docx.shared.Inches(3.7)
letter.save(sys.argv[2])
)";

// It was said that the address is on no page.
TEST(TemplateLooks, AnAddressBrokenIntoLettersIsFound) {
  const TemporaryFolder folder;
  const auto file = (folder / "CTL110_2407.docx").string();
  const auto made = RunShell("/usr/bin/python3 -c " + Quoted(kNarrow) + " " +
                             Quoted((kTemplates / "CTL110_2407.docx").string()) + " " + Quoted(file));
  ASSERT_EQ(made.status, 0) << made.err;
  EXPECT_THAT(RunLetters({"bookmarks", file}).err,
              AllOf(HasSubstr("warning: CUSTOMER_ADDR, text, in a table, after \"[Customer name]\": "),
                    HasSubstr("The address begins 4.7 inches from the left edge")));
}

TEST(TemplateLooks, ALetterWithoutThemIsCheckedForTheRest) {
  const auto file = (kTemplates / "CTL110_2407.docx").string();
  const auto run = RunLetters({"bookmarks", file});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.err, IsEmpty());
  const auto without = RunLetters({"bookmarks", file}, "ZEMLO_OFFICE_FOLDER=/no/such/folder");
  EXPECT_EQ(without.status, 0);
  EXPECT_THAT(without.err, HasSubstr("Whether the envelope's window shows the address is not checked: "));
}

}  // namespace
}  // namespace tests
