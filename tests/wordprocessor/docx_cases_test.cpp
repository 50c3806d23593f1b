#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <pugixml.hpp>

#include "tests/support/temporary_folder.h"
#include "tests/wordprocessor/docx_builder.h"
#include "wordprocessor/document/document.h"

namespace {

using wordprocessor::DataContext;
using wordprocessor::DocxDocument;

const std::filesystem::path kCases = ZEMLO_SOURCE_DIR "/tests/wordprocessor/cases";

/// One element a line, so that a difference can be read. White space between elements does not count.
std::string LaidOut(const std::string& xml) {
  pugi::xml_document document;
  EXPECT_TRUE(
      document.load_buffer(xml.data(), xml.size(), pugi::parse_default | pugi::parse_ws_pcdata_single));
  std::ostringstream out;
  const auto body = document.document_element().first_child();
  (body ? body : document.document_element()).print(out, "  ");
  return out.str();
}

std::vector<std::string> CaseNames() {
  std::vector<std::string> names;
  for (const auto& folder : std::filesystem::directory_iterator(kCases)) {
    names.push_back(folder.path().filename());
  }
  std::ranges::sort(names);
  return names;
}

class MergeCase : public testing::TestWithParam<std::string> {};

/// A case is a folder: body.xml (a w:body, or the whole document part), context.xml, what has to come of the
/// body (expected.xml) and, where some were not filled, the names reported (unfilled.txt).
TEST_P(MergeCase, GivesTheExpectedBody) {
  const auto folder = kCases / GetParam();
  auto document = DocxDocument::FromBytes(LetterOf(tests::ReadFile(folder / "body.xml")), GetParam());
  std::string unfilled;
  for (const auto& name :
       document.MergeBookmarks(DataContext::Parse(tests::ReadFile(folder / "context.xml")))) {
    unfilled += (unfilled.empty() ? "" : " ") + name;
  }
  const auto bytes = document.Bytes();
  EXPECT_NO_THROW(DocxDocument::FromBytes(bytes, GetParam()));
  const auto expected = tests::ReadFile(folder / "expected.xml");
  EXPECT_EQ(LaidOut(PartOf(bytes, "word/document.xml")), expected);
  EXPECT_EQ(unfilled + "\n", std::filesystem::exists(folder / "unfilled.txt")
                                 ? tests::ReadFile(folder / "unfilled.txt")
                                 : "\n");
}

INSTANTIATE_TEST_SUITE_P(Cases, MergeCase, testing::ValuesIn(CaseNames()),
                         [](const auto& folder) { return folder.param; });

}  // namespace
