#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "tests/wordprocessor/docx_builder.h"
#include "wordprocessor/document/document.h"

/// Bodies nobody would write by hand: marks of bookmarks thrown in anywhere, crossing whatever they like.
namespace {

using wordprocessor::DataContext;
using wordprocessor::DocxDocument;

const std::vector<std::string> kNames = {"FIELD",  "LONG",    "EMPTY",   "PARA_GONE",    "PARA_TEXT", "TABLE",
                                         "COLUMN", "NO_ROWS", "UNKNOWN", "PARA_UNKNOWN", "_own"};

const std::string kContext =
    "<X><FIELD>value</FIELD><LONG>one||two\nthree||\n||</LONG><EMPTY/><PARA_GONE/><PARA_TEXT>text||more</"
    "PARA_TEXT>"
    "<TABLE State=\"1\"><R><COLUMN>1</COLUMN></R><R><COLUMN>2</COLUMN></R><R/></TABLE><NO_ROWS "
    "State=\"1\"/></X>";

class RandomBody {
 public:
  explicit RandomBody(unsigned seed) : random_(seed) {}

  std::string Make() { return "<w:body>" + Blocks(2) + "<w:sectPr/></w:body>"; }

 private:
  bool Chance(unsigned one_in) { return random_() % one_in == 0; }

  std::string Marks() {
    std::string marks;
    while (Chance(3)) {
      if (!open_.empty() && Chance(2)) {
        const auto at = random_() % open_.size();
        marks += "<w:bookmarkEnd w:id=\"" + std::to_string(open_[at]) + "\"/>";
        open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(at));
      } else {
        const auto id = std::to_string(next_);
        open_.push_back(next_++);
        marks += "<w:bookmarkStart w:id=\"" + id + "\" w:name=\"" + kNames[random_() % kNames.size()] + "__" +
                 id + "\"/>";
      }
    }
    return marks;
  }

  std::string Runs() {
    std::string runs = Marks();
    while (!Chance(3)) {
      const auto kind = random_() % 8;
      const std::string run = "<w:r><w:t>t</w:t></w:r>";
      if (kind == 0) runs += "<w:hyperlink>" + Marks() + run + Marks() + "</w:hyperlink>";
      if (kind == 1) runs += "<w:sdt><w:sdtPr/><w:sdtContent>" + run + Marks() + "</w:sdtContent></w:sdt>";
      if (kind == 2) runs += Field("begin") + Marks() + Field("separate") + run + Marks() + Field("end");
      if (kind == 3 && Chance(3)) {
        runs += "<w:r><w:pict><w:txbxContent>" + Paragraph() + "</w:txbxContent></w:pict></w:r>";
      }
      if (kind > 3) runs += run;
      runs += Marks();
    }
    return runs;
  }

  static std::string Field(const std::string& type) {
    return "<w:r><w:fldChar w:fldCharType=\"" + type + "\"/></w:r>";
  }

  std::string Paragraph() {
    return std::string("<w:p>") + (Chance(8) ? "<w:pPr><w:sectPr/></w:pPr>" : "") + Runs() + "</w:p>";
  }

  std::string Table(int depth) {
    std::string table = "<w:tbl><w:tblPr/>";
    do {
      table += Marks() + "<w:tr>";
      do table += Marks() + "<w:tc>" + Blocks(depth) + "</w:tc>";
      while (!Chance(2));
      table += Marks() + "</w:tr>";
    } while (!Chance(3));
    return table + Marks() + "</w:tbl>";
  }

  std::string Blocks(int depth) {
    std::string blocks = Marks();
    do {
      if (depth > 0 && Chance(4)) blocks += Table(depth - 1);
      if (Chance(8)) blocks += "<w:sdt><w:sdtContent>" + Paragraph() + "</w:sdtContent></w:sdt>";
      blocks += Marks() + Paragraph() + Marks();
    } while (!Chance(3));
    return blocks;
  }

  std::mt19937 random_;
  std::vector<int> open_;
  int next_ = 0;
};

/// What is wrong with the structure; "" where nothing is.
class StructureCheck {
 public:
  std::string Run(const pugi::xml_document& document) {
    Visit(document.document_element());
    if (fields_["begin"] != fields_["end"]) wrong_ += " a field is cut;";
    for (const auto& [name, count] : names_) {
      if (count > 1) wrong_ += " " + name + " occurs twice;";
    }
    return wrong_;
  }

 private:
  static bool IsMark(std::string_view name) { return name.starts_with("w:bookmark"); }

  void Visit(const pugi::xml_node& node) {
    const std::string name = node.name();
    const std::string parent = node.parent().name();
    const auto last = LastBlock(node);
    if (name == "w:tc" || name == "w:txbxContent") Expect(last == "w:p", name + " ends with " + last);
    if (name == "w:body") Expect(last == "w:sectPr", "body ends with " + last);
    const std::string around = node.parent().parent().name();
    if (name == "w:sdtContent" && around != "w:p")
      Expect(last == "w:p" || last == "w:tbl", "an empty control");
    if (name == "w:tbl") Expect(last == "w:tr", "a table without rows");
    if (name == "w:tr") Expect(last == "w:tc", "a row without cells");
    if (name == "w:p") Expect(parent != "w:p" && parent != "w:tr" && parent != "w:tbl", "p in " + parent);
    if (name == "w:r") Expect(parent != "w:body" && parent != "w:tc" && parent != "w:tr", "r in " + parent);
    if (name == "w:bookmarkStart") ++names_[node.attribute("w:name").value()];
    if (name == "w:fldChar") ++fields_[node.attribute("w:fldCharType").value()];
    for (const auto& child : node.children()) Visit(child);
  }

  static std::string LastBlock(const pugi::xml_node& node) {
    auto child = node.last_child();
    while (child && IsMark(child.name())) child = child.previous_sibling();
    return child.name();
  }

  void Expect(bool good, const std::string& text) {
    if (!good) wrong_ += " " + text + ";";
  }

  std::string wrong_;
  std::map<std::string, int> fields_;
  std::map<std::string, int> names_;
};

std::string WrongIn(const std::string& bytes) {
  pugi::xml_document document;
  const auto text = PartOf(bytes, "word/document.xml");
  if (!document.load_string(text.c_str(), pugi::parse_default)) return "no XML";
  return StructureCheck().Run(document);
}

TEST(RandomBodies, StayValidWhateverTheirBookmarksCross) {
  const auto context = DataContext::Parse(kContext);
  for (unsigned seed = 1; seed <= 100; ++seed) {
    const auto body = RandomBody(seed).Make();
    auto document = DocxDocument::FromBytes(LetterOf(body), "letter");
    document.Bookmarks();
    document.MergeBookmarks(context);
    const auto once = document.Bytes();
    EXPECT_EQ(WrongIn(once), "") << "seed " << seed;
    auto again = DocxDocument::FromBytes(once, "letter");
    again.MergeBookmarks(context);
    EXPECT_EQ(WrongIn(again.Bytes()), "") << "merged again, seed " << seed;
  }
}

}  // namespace
