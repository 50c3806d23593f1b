#include "wordprocessor/bookmarks/data_context.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/failure.h"
#include "wordprocessor/bookmarks/text.h"

namespace {

using wordprocessor::DataContext;
using wordprocessor::SplitFieldText;
using wordprocessor::TextPiece;

TEST(DataContext, ReadsFieldsTablesAndBlocks) {
  const auto context = DataContext::Parse(
      "<XML_CONTEXT State=\"10\"><NAME State=\"4\"> a b </NAME><NAME>later</NAME>\n"
      "<ADDRESS><LINE1>12 Main</LINE1><LINE2/><CITY>Springfield</CITY></ADDRESS>"
      "<CHARGES State=\"1\"><ROW><KIND>Tax</KIND></ROW><ROW/></CHARGES><NONE State=\"201\"/>"
      "<UNMARKED><ROW><KIND>Interest</KIND></ROW></UNMARKED></XML_CONTEXT>");
  EXPECT_EQ(context.Find("NAME")->text, " a b ");
  EXPECT_EQ(context.Find("NAME__7"), context.Find("NAME"));
  EXPECT_EQ(context.Find("NAME__"), nullptr);
  EXPECT_EQ(context.Find("KIND"), nullptr);
  EXPECT_EQ(context.Find("ADDRESS")->text, "12 Main\nSpringfield");
  EXPECT_EQ(context.Find("CITY")->text, "Springfield");
  ASSERT_EQ(context.Find("CHARGES")->rows.size(), 2u);
  EXPECT_EQ(context.Find("CHARGES")->rows[0].Find("KIND__1")->text, "Tax");
  EXPECT_TRUE(context.Find("NONE")->table);
  EXPECT_TRUE(context.Find("UNMARKED")->table);
}

TEST(DataContext, RefusesWhatAStrictReaderWould) {
  for (const std::string bad : {"", "<A>", "<A/><B/>", "<A x='1' x='2'/>", "<A>&#1;</A>", "<A>\xFF</A>",
                                "<!DOCTYPE A><A/>", "<A>a & b</A>"}) {
    EXPECT_THROW(DataContext::Parse(bad), platform::Failure) << bad;
  }
}

TEST(DataContext, RefusesAFieldOfWhichItCannotTellWhetherItIsATable) {
  for (const std::string field : {"<A State=\"1G\"/>", "<A><ROW State=\"\"/></A>"}) {
    EXPECT_THROW(DataContext::Parse("<XML_CONTEXT>" + field + "</XML_CONTEXT>"), platform::Failure) << field;
  }
}

/// Paragraphs between "[" and "]", line breaks as "/", tabs as ">".
std::string Drawn(const std::string& text) {
  std::string drawn;
  for (const auto& paragraph : SplitFieldText(text)) {
    drawn += '[';
    for (const auto& piece : paragraph) {
      drawn += piece.kind == TextPiece::Kind::kLineBreak ? "/"
               : piece.kind == TextPiece::Kind::kTab     ? ">"
                                                         : "";
      drawn += piece.text;
    }
    drawn += ']';
  }
  return drawn;
}

TEST(FieldText, SplitsAtItsMarks) {
  struct Case {
    std::string text;
    std::string drawn;
  };
  for (const auto& [text, drawn] : std::vector<Case>{
           {"", "[]"},
           {"plain | text", "[plain | text]"},
           {"a\r\nb\nc\rd", "[a/b/c/d]"},
           {"\n\n", "[//]"},
           {"a\tb", "[a>b]"},
           {"ABC||\r\n||", "[ABC][][]"},
           {"a||\r\n\r\nb", "[a][/b]"},
           {"|||", "[][|]"},
           {"a\n||b", "[a/][b]"},
       }) {
    EXPECT_EQ(Drawn(text), drawn) << testing::PrintToString(text);
  }
}

}  // namespace
