#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sys/stat.h>

#include "platform/failure.h"
#include "tests/support/failing.h"
#include "tests/support/temporary_folder.h"
#include "tests/wordprocessor/docx_builder.h"
#include "wordprocessor/document/document.h"
#include "wordprocessor/files/package.h"

namespace {

using platform::Failure;
using testing::HasSubstr;
using wordprocessor::DataContext;
using wordprocessor::DocxDocument;
using wordprocessor::DocxPackage;

const std::string kBody = "<w:body>" + Marked("NAME", "name", 1) + "</w:body>";

/// What opening these bytes is refused with; "" where it is not.
std::string Refusal(std::string bytes) {
  return tests::WhyNot([&] { DocxDocument::FromBytes(std::move(bytes), "CTL110.docx"); });
}

std::string WithPart(const std::string& name, const std::string& content) {
  auto parts = LetterParts(kBody);
  for (auto& part : parts) {
    if (part.name == name) {
      part.content = content;
      return ZipOf(parts);
    }
  }
  parts.push_back({name, content});
  return ZipOf(parts);
}

std::string Replaced(std::string bytes, const std::string& from, const std::string& to) {
  for (auto at = bytes.find(from); at != std::string::npos; at = bytes.find(from, at + to.size())) {
    bytes.replace(at, from.size(), to);
  }
  return bytes;
}

/// Sets the flag that says "encrypted" in local headers and directory.
std::string Encrypted(std::string bytes) {
  for (std::size_t i = 0; i + 10 < bytes.size(); ++i) {
    if (bytes.compare(i, 4, "PK\x03\x04") == 0) bytes[i + 6] = static_cast<char>(bytes[i + 6] | 1);
    if (bytes.compare(i, 4, "PK\x01\x02") == 0) bytes[i + 8] = static_cast<char>(bytes[i + 8] | 1);
  }
  return bytes;
}

std::string WithFlippedContent(const std::string& name) {
  auto bytes = LetterOf(kBody);
  const auto packed = PackedPartOf(bytes, name);
  const auto at = bytes.find(packed);
  bytes[at + packed.size() / 2] = static_cast<char>(bytes[at + packed.size() / 2] ^ 0x10);
  return bytes;
}

const std::string kOle = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";

std::string Utf16(const std::string& text) {
  std::string wide;
  for (const char letter : text) wide.append(1, letter).append(1, '\0');
  return wide;
}

std::string Repeated(const std::string& text, std::size_t times) {
  std::string all;
  all.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i) all += text;
  return all;
}

struct Bad {
  std::string what;
  std::string bytes;
  std::string says;
};

std::vector<Bad> BadPackages() {
  const std::string document = "word/document.xml";
  auto many = LetterParts(kBody);
  for (int i = 0; i < 2'000; ++i) many.push_back({"word/media/" + std::to_string(i) + ".png", ""});
  return {
      {"nothing", "", "is empty"},
      {"text", "Dear customer", "is no .docx document"},
      {"rich text", "{\\rtf1 }", "rich-text"},
      {"an old binary document", kOle + std::string(600, '\0') + Utf16("WordDocument"),
       "old binary .doc format"},
      {"an encrypted document", kOle + std::string(600, '\0') + Utf16("EncryptedPackage"), "with a password"},
      {"an encrypted entry", Encrypted(LetterOf(kBody)), "with a password"},
      {"a zip file", ZipOf({{"readme.txt", "hello"}}), "is a zip file but no document"},
      {"an empty zip file", std::string("PK\x05\x06") + std::string(18, '\0'),
       "is a zip file but no document"},
      {"no relation to a main part", WithPart("_rels/.rels", "<Relationships/>"),
       "is a zip file but no document"},
      {"a table calculation",
       WithPart("[Content_Types].xml",
                Replaced(LetterParts(kBody)[0].content, "wordprocessingml.document", "sheet")),
       "another kind of document"},
      {"a main part that is not there", Replaced(LetterOf(kBody), document, "word/documenl.xml"),
       "lacks its part"},
      {"a name that leaves the package", WithPart("../../etc/passwd", "x"), "unsafe name"},
      {"an absolute name", WithPart("/word/x.xml", "x"), "unsafe name"},
      {"a name for another system", WithPart("word\\..\\..\\x", "x"), "unsafe name"},
      {"a name with a drive", WithPart("c:x", "x"), "unsafe name"},
      {"a part twice", Replaced(WithPart("word/documenT.xml", "<x/>"), "documenT", "document"), ""},
      {"a part twice but for its case", WithPart("word/Document.XML", "<x/>"), "twice"},
      {"damaged content", WithFlippedContent(document), "is damaged"},
      {"a main part that is no XML", WithPart(document, "<w:document"), "while reading word/document.xml"},
      {"a main part of something else", WithPart(document, "<html/>"), "none of WordprocessingML"},
      {"a document type", WithPart(document, "<!DOCTYPE x [<!ENTITY a \"b\">]><x>&a;</x>"),
       "word/document.xml"},
      {"deep nesting", WithPart(document, Repeated("<a>", 300) + Repeated("</a>", 300)), "word/document.xml"},
      {"relations that are no XML", WithPart("word/_rels/document.xml.rels", "<"), "document.xml.rels"},
      {"too many parts", ZipOf(many), "more than 2000 parts"},
      {"a part that unpacks without end", WithPart("word/media/a.png", std::string(3'000'000, 'a')),
       "unpacks to far"},
  };
}

TEST(DocxPackage, RefusesWhatIsNoSoundDocumentAndSaysWhatToDo) {
  for (const auto& bad : BadPackages()) {
    const auto refusal = Refusal(bad.bytes);
    EXPECT_NE(refusal, "") << bad.what;
    EXPECT_THAT(refusal, HasSubstr(bad.says)) << bad.what;
    EXPECT_THAT(refusal, HasSubstr("\"CTL110.docx\"")) << bad.what;
  }
}

TEST(DocxPackage, CountsWhatAllPartsUnpackTo) {
  auto parts = LetterParts(kBody);
  for (int i = 0; i < 10; ++i) parts.push_back({"word/media/" + std::to_string(i), std::string(10'000, 'a')});
  const auto bytes = ZipOf(parts);
  const auto open = [&](std::uint64_t total) {
    DocxPackage::FromBytes(bytes, "letter", {.entries = 100, .total_size = total});
  };
  EXPECT_NO_THROW(open(110'000));
  EXPECT_THROW(open(90'000), Failure);
}

TEST(DocxPackage, AnyTruncatedFileIsRefused) {
  const auto whole = LetterOf(kBody);
  for (std::size_t size = 0; size < whole.size(); size += 7) {
    EXPECT_NE(Refusal(whole.substr(0, size)), "") << size << " of " << whole.size();
  }
}

TEST(DocxPackage, ThePathOfAMissingOrStrangeFileIsInTheMessage) {
  const tests::TemporaryFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe.docx").c_str(), 0600), 0);
  for (const auto& [name, kind] :
       std::vector<std::pair<std::string, Failure::Kind>>{{"missing.docx", Failure::Kind::kNotFound},
                                                          {".", Failure::Kind::kRefused},
                                                          {"pipe.docx", Failure::Kind::kRefused}}) {
    EXPECT_THAT([&] { DocxDocument::Open(folder / name); }, tests::Fails(kind, HasSubstr(folder / name)));
  }
}

TEST(DocxPackage, PartsWithoutAChangeAreCopiedStillPacked) {
  auto parts = LetterParts(kBody);
  AddRelatedPart(parts, "header", "header1.xml",
                 WordPart("w:hdr", "<w:p><w:r><w:t>no bookmark</w:t></w:r></w:p>"));
  AddRelation(parts, "image", "media/image1.png");
  parts.push_back({"word/media/image1.png", Repeated("pixels ", 500)});
  const auto before = ZipOf(parts);
  auto document = DocxDocument::FromBytes(before, "letter");
  document.MergeBookmarks(DataContext::Parse("<X><NAME>value</NAME></X>"));
  const auto after = document.Bytes();
  for (const auto* name : {"word/header1.xml", "word/media/image1.png", "word/_rels/document.xml.rels"}) {
    EXPECT_EQ(PackedPartOf(after, name), PackedPartOf(before, name)) << name;
  }
  EXPECT_NE(PackedPartOf(after, "word/document.xml"), PackedPartOf(before, "word/document.xml"));
}

TEST(DocxPackage, TheMainPartIsFoundByItsRelationWhateverItIsCalled) {
  auto parts = LetterParts(kBody);
  AddRelatedPart(parts, "footer", "footer1.xml", WordPart("w:ftr", Marked("FOOT", "foot", 9)));
  for (auto& part : parts) {
    part.name = Replaced(part.name, "word/", "letters/");
    part.content =
        Replaced(Replaced(part.content, "word/", "letters/"), "Target=\"letters", "Target=\"/%6Cetters");
  }
  EXPECT_EQ(DocxDocument::FromBytes(ZipOf(parts), "letter").Bookmarks().size(), 2u);
}

TEST(DocxPackage, PartsInUtf16AreReadToo) {
  auto parts = LetterParts(kBody);
  parts[2].content = "\xFF\xFE" + Utf16(Replaced(parts[2].content, "UTF-8", "UTF-16"));
  auto document = DocxDocument::FromBytes(ZipOf(parts), "letter");
  EXPECT_THAT(document.MergeBookmarks(DataContext::Parse("<X><NAME>value</NAME></X>")), testing::IsEmpty());
  EXPECT_THAT(PartOf(document.Bytes(), "word/document.xml"), HasSubstr("value"));
}

}  // namespace
