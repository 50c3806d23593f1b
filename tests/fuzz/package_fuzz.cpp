#include <string>

#include "tests/fuzz/fuzz_input.h"
#include "wordprocessor/document/document.h"
#include "wordprocessor/files/package.h"

// A package that is taken can be written, and what was written is taken again; and a letter can be made of it
// that opens, or it says why not.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using wordprocessor::DocxPackage;
  constexpr wordprocessor::PackageLimits kSmall{
      .entries = 100, .total_size = 1 << 20, .ratio = 200, .ratio_from = 1 << 16};
  const std::string bytes(fuzz::TextOf(data, size));
  fuzz::Answered([&] {
    const auto package = DocxPackage::FromBytes(bytes, "fuzz.docx", kSmall);
    std::string written = package.With({{"word/added.xml", "<a/>"}});
    bool read_again = false;
    fuzz::Answered([&] {
      read_again = DocxPackage::FromBytes(std::move(written), "again.docx").Read("word/added.xml") == "<a/>";
    });
    fuzz::Require(read_again, "what was written is read");
    auto letter = wordprocessor::DocxDocument::FromBytes(bytes, "fuzz.docx");
    letter.MergeBookmarks(wordprocessor::DataContext::Parse("<X><NAME>value</NAME></X>"));
    bool opens = false;
    fuzz::Answered([&] {
      wordprocessor::DocxDocument::FromBytes(letter.Bytes(), "letter.docx");
      opens = true;
    });
    fuzz::Require(opens, "a letter that was made opens");
  });
  return 0;
}
