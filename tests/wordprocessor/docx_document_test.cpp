#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/failure.h"
#include "tests/support/failing.h"
#include "tests/support/temporary_folder.h"
#include "tests/wordprocessor/docx_builder.h"
#include "wordprocessor/document/document.h"

namespace {

using platform::Failure;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using wordprocessor::BookmarkPlace;
using wordprocessor::DataContext;
using wordprocessor::DocxDocument;
using wordprocessor::PlaceName;

const std::filesystem::path kDocuments = ZEMLO_SOURCE_DIR "/tests/wordprocessor/documents";

/// "NAME=text (place)" in document order.
std::vector<std::string> Described(const DocxDocument& document) {
  std::vector<std::string> described;
  for (const auto& place : document.BookmarkPlaces()) {
    described.push_back(place.bookmark.Name + "=" + place.bookmark.Text + " (" +
                        std::string(PlaceName(place.where)) + ")");
  }
  return described;
}

std::vector<std::string> Merge(DocxDocument& document, const std::string& fields) {
  return document.MergeBookmarks(DataContext::Parse("<XML_CONTEXT>" + fields + "</XML_CONTEXT>"));
}

DocxDocument LetterWithAllPlaces() {
  auto parts =
      LetterParts("<w:body>" + Marked("BODY", "b", 1) + "<w:tbl><w:tr><w:tc>" + Marked("CELL", "c", 2) +
                  "</w:tc></w:tr></w:tbl><w:p><w:r><w:pict><w:txbxContent>" + Marked("BOX", "x", 3) +
                  "</w:txbxContent></w:pict></w:r></w:p></w:body>");
  AddRelatedPart(
      parts, "footnotes", "footnotes.xml",
      WordPart("w:footnotes", "<w:footnote w:id=\"1\">" + Marked("NOTE", "n", 1) + "</w:footnote>"));
  AddRelatedPart(parts, "footer", "footer1.xml", WordPart("w:ftr", Marked("FOOTER", "f", 1)));
  AddRelatedPart(parts, "header", "header1.xml", WordPart("w:hdr", Marked("HEADER", "h", 1)));
  return DocxDocument::FromBytes(ZipOf(parts), "letter");
}

TEST(DocxDocument, FillsBookmarksWhereverTheyStand) {
  auto document = LetterWithAllPlaces();
  EXPECT_THAT(Merge(document, "<BODY>1</BODY><CELL>2</CELL><BOX>3</BOX><NOTE>4</NOTE><HEADER>5</HEADER>"),
              ElementsAre("FOOTER"));
  EXPECT_THAT(Described(DocxDocument::FromBytes(document.Bytes(), "letter")),
              ElementsAre("BODY=1 (body)", "CELL=2 (table)", "BOX=3 (text box)", "HEADER=5 (header)",
                          "FOOTER=f (footer)", "NOTE=4 (note)"));
}

TEST(DocxDocument, ARangeSaysItsTextAndItsInnerBookmarks) {
  const auto document = DocxDocument::FromBytes(
      LetterOf(
          "<w:body><w:p><w:bookmarkStart w:id=\"1\" w:name=\"PARA_A\"/><w:r><w:t>You &amp; I</w:t><w:br/>"
          "<w:t>owe</w:t><w:tab/></w:r></w:p>" +
          Marked("U_AMOUNT", "12", 2) +
          "<w:p><w:bookmarkStart w:id=\"3\" w:name=\"SAME\"/><w:bookmarkStart w:id=\"4\" w:name=\"_Toc\"/>"
          "<w:r><w:t>now</w:t></w:r><w:bookmarkEnd w:id=\"4\"/><w:bookmarkEnd w:id=\"3\"/>"
          "<w:bookmarkEnd w:id=\"1\"/><w:bookmarkStart w:id=\"5\" w:name=\"AFTER\"/><w:bookmarkEnd "
          "w:id=\"5\"/></w:p></w:body>"),
      "letter");
  const auto bookmarks = document.Bookmarks();
  ASSERT_EQ(bookmarks.size(), 4u);
  EXPECT_EQ(bookmarks[0].Text, "You & I\nowe\t\r12\rnow");
  EXPECT_THAT(bookmarks[0].Inner, ElementsAre("PARA_A", "U_AMOUNT", "SAME"));
  EXPECT_THAT(bookmarks[1].Inner, ElementsAre("U_AMOUNT"));
  EXPECT_EQ(bookmarks[3].Text, "");
  EXPECT_THAT(bookmarks[3].Inner, ElementsAre("AFTER"));
}

TEST(DocxDocument, LettersOfOneDocumentDoNotTouchEachOther) {
  const auto letter =
      DocxDocument::FromBytes(LetterOf("<w:body>" + Marked("NAME", "name", 1) + "</w:body>"), "l");
  auto first = letter;
  auto second = letter;
  Merge(first, "<NAME>one</NAME>");
  Merge(second, "<NAME>two</NAME>");
  EXPECT_THAT(Described(first), ElementsAre("NAME=one (body)"));
  EXPECT_THAT(Described(second), ElementsAre("NAME=two (body)"));
  EXPECT_THAT(Described(letter), ElementsAre("NAME=name (body)"));
  Merge(first, "<NAME>again</NAME>");
  EXPECT_THAT(Described(first), ElementsAre("NAME=again (body)"));
}

TEST(DocxDocument, EqualLettersAreEqualFiles) {
  const auto bytes = LetterOf("<w:body>" + Marked("NAME", "name", 1) + "</w:body>");
  auto first = DocxDocument::FromBytes(bytes, "letter");
  auto second = DocxDocument::FromBytes(bytes, "letter");
  EXPECT_EQ(first.Bytes(), second.Bytes());
  Merge(first, "<NAME>one</NAME>");
  Merge(second, "<NAME>one</NAME>");
  EXPECT_EQ(first.Bytes(), second.Bytes());
}

TEST(DocxDocument, ManyRowsAndManyBookmarksStayQuick) {
  std::string fields = "<T State=\"1\">";
  std::string body = "<w:body>";
  for (int i = 0; i < 4'000; ++i) {
    const auto number = std::to_string(i);
    fields += "<R><C>" + number + "</C></R>";
    body += Marked("B" + number, "text", i + 10);
  }
  body += "<w:tbl><w:tr><w:tc><w:p><w:bookmarkStart w:id=\"1\" w:name=\"T\"/></w:p>" + Marked("C", "c", 2) +
          "<w:p><w:bookmarkEnd w:id=\"1\"/></w:p></w:tc></w:tr></w:tbl></w:body>";
  auto document = DocxDocument::FromBytes(LetterOf(body), "letter");
  EXPECT_EQ(Merge(document, fields + "</T>").size(), 4'000u);
  EXPECT_THAT(PartOf(document.Bytes(), "word/document.xml"), HasSubstr("<w:t>3999</w:t>"));
}

// Documents written by other programs.

const std::string kFields =
    "<CUSTOMER_NAME>Bolt Fuels</CUSTOMER_NAME><COLLAPSED> here</COLLAPSED><PARA_NOTICE/><LEFT>L</LEFT>"
    "<RIGHT>R</RIGHT><CHARGES State=\"1\"><R><KIND>Tax</KIND><AMOUNT>1</AMOUNT></R><R><KIND>Interest</KIND>"
    "<AMOUNT>2</AMOUNT></R></CHARGES><IN_BOX>Boxed</IN_BOX><IN_NOTE>Noted</IN_NOTE><IN_LINK>Linked</IN_LINK>"
    "<OFFICE_NAME>Office One</OFFICE_NAME><LTR_REF>R-1</LTR_REF>";

// A bookmark across paragraphs or cells was found with its last piece alone: LibreOffice writes a start in
// each of them, and an end for the last only.
TEST(DocxDocument, ABookmarkWrittenInPiecesIsOne) {
  auto document = DocxDocument::Open(kDocuments / "from_open_text.docx");
  const auto before = Described(document);
  EXPECT_THAT(before,
              testing::Contains("PARA_NOTICE=Two paragraphs of notice for amount\rsecond of notice (body)"));
  EXPECT_THAT(Merge(document, kFields), IsEmpty());
  EXPECT_THAT(Described(DocxDocument::FromBytes(document.Bytes(), "letter")),
              ElementsAre("CUSTOMER_NAME=Bolt Fuels (body)", "COLLAPSED= here (body)", "LEFT=LR (body)",
                          "RIGHT=R (body)", "CHARGES=Tax\r1 (table)", "KIND=Tax (table)", "AMOUNT=1 (table)",
                          "IN_BOX=Boxed (text box)", "IN_LINK=Linked (body)",
                          "OFFICE_NAME=Office One (header)", "LTR_REF=R-1 (footer)", "IN_NOTE=Noted (note)"));
  const auto text = PartOf(document.Bytes(), "word/document.xml");
  EXPECT_THAT(text, HasSubstr("<w:t>Interest</w:t>"));
  EXPECT_THAT(text, Not(HasSubstr("notice")));
  EXPECT_THAT(text, Not(HasSubstr("boxed")));
}

TEST(DocxDocument, ReadsWhatCameFromRichTextAndWebPages) {
  EXPECT_THAT(Described(DocxDocument::Open(kDocuments / "from_rich_text.docx")),
              ElementsAre("CUSTOMER_NAME=customer (body)", "PARA_X=an optional paragraph\rof two (body)",
                          "TWO_CELLS=a\rb (table)"));
  auto page = DocxDocument::Open(kDocuments / "from_a_web_page.docx");
  EXPECT_THAT(Merge(page, "<TITLE>T </TITLE><ANCHOR>a </ANCHOR><WORDS>w </WORDS><CELL>c </CELL>"), IsEmpty());
  EXPECT_THAT(Described(page),
              ElementsAre("TITLE=T  (body)", "ANCHOR=a  (body)", "WORDS=w  (body)", "CELL=c  (table)"));
}

// Writing.

class SavedLetter : public testing::Test {
 protected:
  SavedLetter() : document_(DocxDocument::FromBytes(LetterOf("<w:body/>"), "letter")) {
    std::ofstream(target_) << "what was there";
  }

  /// Saving fails, says where, and leaves folder and file as they were.
  void ExpectRefused(Failure::Kind kind) {
    EXPECT_THAT([&] { document_.Save(target_); },
                tests::Fails(kind, HasSubstr(target_.parent_path().string())));
  }

  tests::TemporaryFolder folder_;
  std::filesystem::path target_ = folder_ / "out.docx";
  DocxDocument document_;
};

TEST_F(SavedLetter, ReplacesTheFileInOneStep) {
  document_.Save(target_);
  EXPECT_EQ(tests::ReadFile(target_), document_.Bytes());
  EXPECT_THAT(folder_.Names(), ElementsAre("out.docx"));
}

TEST_F(SavedLetter, AFullDiskLeavesWhatWasThere) {
  struct rlimit before;
  getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const struct rlimit small = {64, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  ExpectRefused(Failure::Kind::kUnavailable);
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(tests::ReadFile(target_), "what was there");
  EXPECT_THAT(folder_.Names(), ElementsAre("out.docx"));
}

TEST_F(SavedLetter, AFolderThatMayNotBeWrittenLeavesWhatWasThere) {
  if (geteuid() == 0) GTEST_SKIP() << "the superuser may write everywhere";
  chmod(folder_.path().c_str(), 0500);
  ExpectRefused(Failure::Kind::kPermissionDenied);
  chmod(folder_.path().c_str(), 0700);
  EXPECT_EQ(tests::ReadFile(target_), "what was there");
}

TEST_F(SavedLetter, AFolderThatIsNotThereIsNamed) {
  target_ = folder_ / "none" / "out.docx";
  ExpectRefused(Failure::Kind::kNotFound);
}

}  // namespace
