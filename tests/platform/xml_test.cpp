#include "platform/xml/xml.h"

#include <gmock/gmock.h>

#include "platform/failure.h"

namespace platform {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::ThrowsMessage;

XmlDocument Parsed(std::string_view text) {
  return XmlDocument::Parse(text).OrFail();
}

/// What is read, as it is written again.
std::string Rewritten(std::string_view text) {
  return Parsed(text).Root().Xml();
}

std::vector<std::string> Ids(const std::vector<XmlElement>& elements) {
  std::vector<std::string> ids;
  for (const auto& element : elements) ids.push_back(element.Attribute("id").value_or("none"));
  return ids;
}

TEST(AnXmlDocument, IsEitherThereOrSaysWhyNot) {
  const auto good = XmlDocument::Parse("<a/>");
  EXPECT_TRUE(good.document);
  EXPECT_EQ(good.error.code, 0);

  auto bad = XmlDocument::Parse("<a>\n</b>");
  EXPECT_FALSE(bad.document);
  EXPECT_NE(bad.error.code, 0);
  EXPECT_THAT([&] { std::move(bad).OrFail(); },
              ThrowsMessage<Failure>(AllOf(HasSubstr("\"b\""), HasSubstr("(line 2, column 1)"))));
}

TEST(AnXmlDocument, IsWrittenAsItWasReadWithoutLayOut) {
  struct {
    std::string_view read, written;
  } const cases[] = {
      {"<?xml version='1.0'?>\n<a>\n  <b x='1'/>\n</a>\n", "<a><b x=\"1\"/></a>"},
      {"<a></a>", "<a/>"},
      {"<a> </a>", "<a> </a>"},
      {"<a>  x <b/> y </a>", "<a>  x <b/> y </a>"},
      {"<a>l1\r\nl2\rl3</a>", "<a>l1\nl2\nl3</a>"},
      {"<a>x&#13;&#10;y</a>", "<a>x&#13;\ny</a>"},
      {"<a>&lt;b&gt; &amp;amp; \"q\" 'p'</a>", "<a>&lt;b&gt; &amp;amp; \"q\" 'p'</a>"},
      {"<a b='\"&lt;&gt;&amp;&#9;&#10;&#13;'/>", "<a b=\"&quot;&lt;&gt;&amp;&#9;&#10;&#13;\"/>"},
      {"<a b='x\n\ty'/>", "<a b=\"x  y\"/>"},
      {"<a><![CDATA[<b>&amp;]]>t</a>", "<a><![CDATA[<b>&amp;]]>t</a>"},
      {"<a>é&#x20AC;😀</a>", "<a>é€😀</a>"},
      {"<a>x<!-- c -->y<?p i?>z</a>", "<a>xyz</a>"},
      {"<a>&#x20;\t<b/>&#10;</a>", "<a>&#32;\t<b/>&#10;</a>"},
      {"<a>x<!-- c -->&#32;<b/>&#32;<?p?>&#32;y</a>", "<a>x <b/>  y</a>"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Rewritten(c.read), c.written) << c.read;
    EXPECT_EQ(Rewritten(c.written), c.written);
  }
}

TEST(AnXmlElement, HasTheTextOfAllItsDescendants) {
  const auto document = Parsed("<a>one <b>two<c/><![CDATA[ <three>]]></b><!-- no --> four&#13;</a>");
  EXPECT_EQ(document.Root().Text(), "one two <three> four\r");
  EXPECT_EQ(document.FirstByTagName("b").Text(), "two <three>");
  EXPECT_EQ(document.FirstByTagName("c").Text(), "");
}

TEST(AnXmlElement, FindsDescendantsByNameInDocumentOrder) {
  const auto document =
      Parsed("<r id='r'><x id='1'><x id='2'/><y/></x><y id='3'><x id='4'/></y>t<X id='5'/></r>");
  EXPECT_THAT(Ids(document.Root().Children()), ElementsAre("1", "3", "5"));
  const auto first = document.FirstByTagName("x");
  EXPECT_EQ(first.Attribute("id"), "1");
  EXPECT_EQ(first.FirstByTagName("x").Attribute("id"), "2") << "not itself";
  EXPECT_FALSE(first.FirstByTagName("x").FirstByTagName("x")) << "nothing behind it";
  EXPECT_EQ(document.FirstByTagName("r"), document.Root());
  EXPECT_FALSE(document.Root().FirstByTagName("r"));
  EXPECT_FALSE(document.FirstByTagName("z"));
}

TEST(AnXmlElement, TakesNewAttributesTextsAndChildren) {
  XmlDocument document("XML_CONTEXT");
  auto root = document.Root();
  auto name = root.AppendChild("CUST_NAME");
  name.SetText("Müller & <Söhne>\r\nGmbH");
  name.SetAttribute("State", "0001");
  name.SetAttribute("Err", "\"0\"");
  name.SetAttribute("State", "0002");
  EXPECT_EQ(root.Xml(),
            "<XML_CONTEXT><CUST_NAME State=\"0002\" Err=\"&quot;0&quot;\">Müller &amp; "
            "&lt;Söhne&gt;&#13;\nGmbH</CUST_NAME></XML_CONTEXT>");
  EXPECT_EQ(Parsed(root.Xml()).Root().Text(), name.Text());

  name.RemoveAttribute("Err");
  name.RemoveAttribute("None");
  EXPECT_EQ(name.Attribute("Err"), std::nullopt);
  name.AppendChild("INNER");
  name.SetText("");
  EXPECT_EQ(name.Xml(), "<CUST_NAME State=\"0002\"/>");
  root.RemoveChild(name);
  EXPECT_THAT(root.Children(), IsEmpty());
}

TEST(AnXmlElement, RefusesWhatXmlCannotCarry) {
  XmlDocument document("a");
  auto root = document.Root();
  root.SetText("kept");
  for (const std::string_view text : {std::string_view("\0", 1), std::string_view("x\x1By"),
                                      std::string_view("\xE9"), std::string_view("\xEF\xBF\xBE")}) {
    EXPECT_THROW(root.SetText(text), Failure);
    EXPECT_THROW(root.SetAttribute("b", text), Failure);
  }
  for (const auto* name : {"", "1a", "a b", "a<", "a\x01"}) {
    EXPECT_THROW(root.AppendChild(name), Failure) << name;
    EXPECT_THROW(root.SetAttribute(name, "x"), Failure) << name;
  }
  EXPECT_EQ(root.Xml(), "<a>kept</a>");
}

TEST(NoXmlElement, ReadsAsNothingAndTakesNothing) {
  XmlElement none;
  EXPECT_FALSE(none);
  EXPECT_EQ(none.Name() + none.Text() + none.Xml(), "");
  EXPECT_EQ(none.Attribute("a"), std::nullopt);
  EXPECT_THAT(none.Children(), IsEmpty());
  EXPECT_FALSE(none.FirstByTagName("a"));
  EXPECT_THROW(none.SetText("x"), Failure);
  EXPECT_THROW(none.SetAttribute("a", "x"), Failure);
  EXPECT_THROW(none.AppendChild("x"), Failure);
}

TEST(AnXmlElement, IsNotRemovedFromAnElementThatIsNotItsParent) {
  const auto document = Parsed("<a><b><c/></b></a>");
  EXPECT_THROW(document.Root().RemoveChild(document.FirstByTagName("c")), Failure);
  EXPECT_TRUE(document.FirstByTagName("c"));
}

}  // namespace
}  // namespace platform
