#include "platform/xml/xml_strictness.h"

#include <gmock/gmock.h>

#include <string>

namespace platform {
namespace {

using testing::HasSubstr;
using namespace std::string_view_literals;

std::string Nested(std::size_t depth) {
  std::string text;
  for (std::size_t i = 0; i < depth; ++i) text += "<a>";
  for (std::size_t i = 0; i < depth; ++i) text += "</a>";
  return text;
}

struct Refused {
  std::string_view text;
  XmlFault fault;
};

// What a strict reader refuses; each row holds one fault.
constexpr auto kRefused = std::to_array<Refused>({
    {"", XmlFault::kNoRoot},
    {" \n", XmlFault::kNoRoot},
    {"<!-- only -->", XmlFault::kNoRoot},
    {"text", XmlFault::kOutsideRoot},
    {"<a/>text", XmlFault::kOutsideRoot},
    {"<a/><b/>", XmlFault::kOutsideRoot},
    {"<a/><![CDATA[x]]>", XmlFault::kOutsideRoot},

    {"<a>\xC0\xAF</a>", XmlFault::kCharacter},
    {"<a>\xE2\x82</a>", XmlFault::kCharacter},
    {"<a b='\xED\xA0\x80'/>", XmlFault::kCharacter},
    {"<!--\xFF--><a/>", XmlFault::kCharacter},
    {"<a>\0</a>"sv, XmlFault::kCharacter},
    {"<a>\x0B</a>", XmlFault::kCharacter},
    {"<a>\xEF\xBF\xBF</a>", XmlFault::kCharacter},
    {"\xFF\xFE<\0a\0/\0>\0"sv, XmlFault::kCharacter},
    {"\xEF\xBB\xBF\xEF\xBB\xBF<a/>", XmlFault::kOutsideRoot},

    {"<a>&#0;</a>", XmlFault::kReference},
    {"<a>&#xD800;</a>", XmlFault::kReference},
    {"<a>&#xFFFE;</a>", XmlFault::kReference},
    {"<a>&#x110000;</a>", XmlFault::kReference},
    {"<a>&#4294967361;</a>", XmlFault::kReference},
    {"<a>&#99999999999999999999999;</a>", XmlFault::kReference},
    {"<a>&#;</a>", XmlFault::kReference},
    {"<a>&#X41;</a>", XmlFault::kReference},
    {"<a>&#65</a>", XmlFault::kReference},
    {"<a>&#6A;</a>", XmlFault::kReference},
    {"<a>&nbsp;</a>", XmlFault::kReference},
    {"<a>&AMP;</a>", XmlFault::kReference},
    {"<a>Smith & Sons</a>", XmlFault::kReference},
    {"<a>&;</a>", XmlFault::kReference},

    {"<!DOCTYPE a><a/>", XmlFault::kDoctype},
    {"<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>", XmlFault::kDoctype},
    {"<?xml version='1.0'?><!DOCTYPE a SYSTEM 'file:///x'><a/>", XmlFault::kDoctype},

    {"<a b='1' b='2'/>", XmlFault::kDuplicateAttribute},
    {"<a b='1' c='2' d='3' b='1'></a>", XmlFault::kDuplicateAttribute},

    {"<a b='<'/>", XmlFault::kAttribute},
    {"<a b/>", XmlFault::kAttribute},
    {"<a b=1/>", XmlFault::kAttribute},
    {"<a b='1\"/>", XmlFault::kUnfinished},
    {"<a b='1'c='2'/>", XmlFault::kMarkup},
    {"<a ='1'/>", XmlFault::kName},

    {"<1a/>", XmlFault::kName},
    {"< a/>", XmlFault::kName},
    {"<>x</>", XmlFault::kName},
    {"<a><</a>", XmlFault::kName},
    {"<a b!='1'/>", XmlFault::kAttribute},
    {"<a!/>", XmlFault::kMarkup},
    {"<a 1b='x'/>", XmlFault::kName},
    {"<\xC3\x97/>", XmlFault::kName},  // a multiplication sign is no letter

    {"<a></b>", XmlFault::kTagMismatch},
    {"<a></A>", XmlFault::kTagMismatch},
    {"<a><b></a></b>", XmlFault::kTagMismatch},
    {"</a>", XmlFault::kTagMismatch},
    {"<a/></a>", XmlFault::kTagMismatch},
    {"<a></a b='1'>", XmlFault::kMarkup},
    {"<a></a/>", XmlFault::kMarkup},
    {"<a / >x</a>", XmlFault::kName},

    {"<a>]]></a>", XmlFault::kMarkup},
    {"<a><!-- a -- b --></a>", XmlFault::kMarkup},
    {"<a><!-- a ---></a>", XmlFault::kMarkup},
    {"<a><!ELEMENT a ANY></a>", XmlFault::kMarkup},
    {"<a><![cdata[x]]></a>", XmlFault::kMarkup},
    {"<a><? x?></a>", XmlFault::kName},
    {"<a><?x!?></a>", XmlFault::kMarkup},

    {" <?xml version='1.0'?><a/>", XmlFault::kDeclaration},
    {"<a><?xml version='1.0'?></a>", XmlFault::kDeclaration},
    {"<?XML version='1.0'?><a/>", XmlFault::kDeclaration},
    {"<?xml?><a/>", XmlFault::kDeclaration},
    {"<?xml version='2.0'?><a/>", XmlFault::kDeclaration},
    {"<?xml encoding='utf-8'?><a/>", XmlFault::kDeclaration},
    {"<?xml version='1.0' standalone='yes' encoding='utf-8'?><a/>", XmlFault::kDeclaration},
    {"<?xml version='1.0' version='1.0'?><a/>", XmlFault::kDeclaration},
    {"<?xml version='1.0'encoding='utf-8'?><a/>", XmlFault::kDeclaration},
    {"<?xml version='1.0' standalone='maybe'?><a/>", XmlFault::kDeclaration},
    {"<?xml version='1.0' encoding='ISO-8859-1'?><a/>", XmlFault::kEncoding},
});

TEST(StrictXml, RefusesWhatIsNotWellFormed) {
  for (const auto& refused : kRefused) {
    const auto error = FindXmlFault(refused.text);
    ASSERT_TRUE(error) << "taken: " << testing::PrintToString(refused.text);
    EXPECT_EQ(error->code, static_cast<int>(refused.fault))
        << testing::PrintToString(refused.text) << ": " << error->reason;
  }
}

TEST(StrictXml, TakesWhatIs) {
  const std::string_view taken[] = {
      "<a/>",
      " \r\n<a />\n",
      "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\" standalone='yes' ?>\n<a/>",
      "<?xml version='1.0' encoding='utf-8'?><a/>",
      "<?xml-stylesheet href='x'?><a/><?end?><!-- & < end - -->",
      "<a b = '1'\n\tc=\"2>'1\" >]] ></a\n>",
      "<a>&amp;&lt;&gt;&apos;&quot;&#65;&#x10FFFF;&#13;</a>",
      "<a b='&#xA;&quot;>'/>",
      "<a><![CDATA[ <b> & ]] > ]]></a>",
      "<a>]]&gt; ]&#93;></a>",
      "<a><![CDATA[]]>></a>",
      "<größe 日本='東京'>€😀</größe>",
      "<_a.b-c:d·1/>",
      "<a>\x7F\xC2\x85</a>",  // discouraged, yet characters
  };
  for (const auto text : taken) {
    const auto error = FindXmlFault(text);
    EXPECT_FALSE(error) << testing::PrintToString(text) << ": " << error->reason;
  }
}

TEST(StrictXml, SaysWhereTheFaultIsInLinesAndCharacters) {
  struct {
    std::string_view text;
    std::size_t line, column;
    std::string_view reason;
  } const cases[] = {
      {"<a>\r\n  <b>é</c>\n</a>", 2, 7, "\"c\" stands where \"b\" has to end"},
      {"<a>\r<b x='1'\n x='2'/></a>", 3, 2, "\"x\" is given twice"},
      {"<a>\n\n&nope;</a>", 3, 1, "\"nope\" is not declared"},
      {"<a>€\x01</a>", 1, 5, "does not allow"},
      {"<a>\n\xE9t\xE9</a>", 2, 1, "UTF-8"},
      {"<a><b>", 1, 7, "\"b\" has no end tag"},
      {"<?xml version='1.0' encoding='latin1'?><a/>", 1, 21, "\"latin1\""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.text));
    const auto error = FindXmlFault(c.text);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->line, c.line);
    EXPECT_EQ(error->column, c.column);
    EXPECT_THAT(error->reason, HasSubstr(c.reason));
  }
}

TEST(StrictXml, TakesElementsUpToADepthAndAnyNumberBesideEachOther) {
  EXPECT_FALSE(FindXmlFault(Nested(kDeepestElement)));
  for (const std::size_t depth : {kDeepestElement + 1, std::size_t{1'000'000}}) {
    const auto error = FindXmlFault(Nested(depth));
    ASSERT_TRUE(error) << depth;
    EXPECT_EQ(error->code, static_cast<int>(XmlFault::kTooDeep));
  }
  std::string wide = "<a";
  for (int i = 0; i < 20'000; ++i) wide += " a" + std::to_string(i) + "=''";
  wide += ">";
  for (int i = 0; i < 20'000; ++i) wide += "<b/>";
  EXPECT_FALSE(FindXmlFault(wide + "</a>"));
}

TEST(StrictXml, RefusesEveryTruncationOfADocument) {
  constexpr std::string_view kWhole =
      "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?><!-- c --><a b='&#x41;'><?p "
      "i?>é&amp;<![CDATA[x]]>"
      "<c d=\"1\" e='2' /><!-- - --></a>";
  ASSERT_FALSE(FindXmlFault(kWhole));
  for (std::size_t length = 0; length < kWhole.size(); ++length) {
    const auto error = FindXmlFault(kWhole.substr(0, length));
    ASSERT_TRUE(error) << "taken: " << kWhole.substr(0, length);
    EXPECT_NE(error->code, 0);
    EXPECT_FALSE(error->reason.empty());
  }
}

}  // namespace
}  // namespace platform
