#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/failure.h"
#include "tests/support/temporary_folder.h"
#include "tests/wordprocessor/docx_builder.h"
#include "wordprocessor/document/template_cache.h"

namespace {

using wordprocessor::DataContext;
using wordprocessor::DocxDocument;
using wordprocessor::TemplateCache;

class CachedTemplate : public testing::Test {
 protected:
  void GivenTemplate(const std::string& name, const std::string& text) {
    const auto fresh = folder_ / "fresh";
    std::ofstream(fresh) << LetterOf("<w:body>" + Marked("NAME", text, 1) + "</w:body>");
    std::filesystem::rename(fresh, folder_ / name);
  }

  std::string TextOf(const DocxDocument& document) { return document.Bookmarks().front().Text; }

  tests::TemporaryFolder folder_;
  TemplateCache cache_{2};
};

TEST_F(CachedTemplate, IsReadAgainOnlyWhenItsFileHasChanged) {
  GivenTemplate("a.docx", "first");
  auto letter = cache_.Open(folder_ / "a.docx");
  letter.MergeBookmarks(DataContext::Parse("<X><NAME>value</NAME></X>"));
  EXPECT_EQ(TextOf(cache_.Open(folder_ / "a.docx")), "first");

  // The same size, the same second: only the file is another one.
  GivenTemplate("a.docx", "other");
  EXPECT_EQ(TextOf(cache_.Open(folder_ / "a.docx")), "other");

  std::filesystem::remove(folder_ / "a.docx");
  EXPECT_THROW(cache_.Open(folder_ / "a.docx"), platform::Failure);
}

TEST_F(CachedTemplate, ForgetsTheOneNotUsedForLongest) {
  for (const auto name : {"a.docx", "b.docx", "c.docx"}) {
    GivenTemplate(name, name);
    EXPECT_EQ(TextOf(cache_.Open(folder_ / name)), name);
  }
  EXPECT_EQ(TextOf(cache_.Open(folder_ / "a.docx")), "a.docx");
}

TEST_F(CachedTemplate, ComesWithTheCommonTemplateAsThatIsNow) {
  GivenTemplate("a.docx", "letter");
  for (const std::string width : {"100", "200"}) {
    std::ofstream(folder_ / "kvcorr.dot")
        << LetterOf("<w:body><w:sectPr><w:pgSz w:w=\"" + width + "\"/></w:sectPr></w:body>");
    const auto bytes = cache_.Open(folder_ / "a.docx", folder_ / "kvcorr.dot").Bytes();
    EXPECT_THAT(PartOf(bytes, "word/document.xml"), testing::HasSubstr("w:w=\"" + width + "\""));
  }
  EXPECT_THAT(PartOf(cache_.Open(folder_ / "a.docx").Bytes(), "word/document.xml"),
              testing::Not(testing::HasSubstr("pgSz")));
}

TEST_F(CachedTemplate, ServesSeveralThreads) {
  GivenTemplate("a.docx", "text");
  std::atomic<int> good = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&, value = std::to_string(i)] {
      for (int round = 0; round < 20; ++round) {
        auto letter = cache_.Open(folder_ / "a.docx");
        letter.MergeBookmarks(DataContext::Parse("<X><NAME>" + value + "</NAME></X>"));
        if (TextOf(DocxDocument::FromBytes(letter.Bytes(), "letter")) == value) ++good;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(good, 80);
}

}  // namespace
